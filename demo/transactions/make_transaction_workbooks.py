#!/usr/bin/env python3
"""Makes the small workbooks of the imports that refer to existing assets: for each kind a clean one and one with
typical mistakes.

Run it again after a change; the same files come out every time. Needs the Debian package python3-xlwt.
"""

import datetime
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from make_workbooks import write  # noqa: E402


def day(text):
    return datetime.datetime.strptime(text, "%d/%m/%Y").date()


SALE = ["ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"]
AMC = ["ASSETID", "RefNo", "RefDate", "AMCFrom", "AMCTo", "Amount", "Remarks"]
INSURANCE = ["ASSETID", "RefNo", "RefDate", "InsFrom", "InsTo", "PolicyNo", "PolicyAMT", "Remarks"]
CATEGORY = ["DocRef", "ASSETID", "CAT1", "CAT2", "CAT3", "Remarks"]
CHILD = ["PARENT_ID", "DESCRIPTION", "COST", "USEDATE", "VCHRNO", "VCHRDATE", "VENDOR", "BILLNO", "BILLDATE",
         "IgnoreCostIT", "SALVAGEVALUE", "CENVAT", "REMARKS"]
BREAKUP = ["ASSETID", "PARTICULARS", "AMOUNT", "COSTCATEGORY", "VCHRNO", "VCHRDATE", "BILLNO", "BILLDATE", "VENDOR"]
FIELDS = ["ASSETID", "UDV1", "UDV11"]

# File, columns, clean rows, rows with mistakes. A date or an amount that is none stays a text.
WORKBOOKS = [
    ("sales", SALE, [
        ["SPI-006", "INV/101", "15/12/2025", 18500, "S-101", "Old pattern"],
        ["SPI-008", "INV/102", "05/01/2026", 21000.5, "S-102", ""],
    ], [
        ["SPI-007", "INV/103", "20/12/2025", 40000, "S-103", "nothing wrong here"],
        ["SPI-010", "INV/104", "20/12/2025", 1000, "S-104", "sold before"],
        ["SPI-099", "INV/105", "20/12/2025", 1000, "S-105", "no such asset"],
        ["SPI-009", "INV/106", "20/12/2025", 1000, "S-106", "transferred out"],
        ["SPI-005", "INV/107", "31/09/2025", 1000, "S-107", "no such day"],
        ["SPI-005", "INV/108", "15/03/2025", 1000, "S-108", "closed year"],
        ["SPI-005", "INV/109", "30/09/2025", 1000, "S-109", "depreciation calculated"],
        ["SPI-004", "INV/110", "07/10/2025", 1000, "S-110", "not yet in use"],
        ["SPI-004", "INV/111", "20/12/2025", "forty", "S-111", "no amount"],
        ["SPI-004", "INV/112", "20/12/2025", 1000, "S-001", "serial number of another sale"],
        ["SPI-004", "", "20/12/2025", 1000, "S-113", "no invoice number"],
    ]),
    ("amc-details", AMC, [
        ["SPI-001", "AMC/2", "01/12/2025", "01/12/2025", "30/11/2026", 96000, "Preventive, four visits"],
        ["SPI-003", "AMC/3", "05/12/2025", "05/12/2025", "04/12/2026", 3500.75, ""],
    ], [
        ["SPI-001", "AMC/4", "01/12/2025", "01/12/2025", "30/11/2026", 96000, "nothing wrong here"],
        ["SPI-013", "AMC/5", "01/12/2025", "01/12/2025", "30/11/2026", 5000, "not yet in use"],
        ["SPI-001", "AMC/1", "01/12/2025", "01/12/2025", "30/11/2026", 5000, "number of another contract"],
        ["SPI-001", "AMC/6", "01/12/2026", "01/12/2026", "30/11/2027", 5000, "no such accounting year"],
        ["SPI-001", "AMC/7", "01/12/2025", "01/12/2025", "01/12/2025", 5000, "ends on the day it begins"],
        ["SPI-001", "AMC/8", "01/12/2025", "", "30/11/2026", 5000, "no beginning"],
        ["SPI-001", "AMC/9", "01/12/2025", "01/12/2025", "30/11/2026", 0, "no amount"],
    ]),
    ("insurance-details", INSURANCE, [
        ["SPI-001", "INS/2", "01/12/2025", "01/12/2025", "30/11/2026", "FB/77120", 18200, "Fire and burglary"],
        ["SPI-002", "INS/3", "01/12/2025", "01/12/2025", "30/11/2026", "FB/77121", 6450.5, ""],
    ], [
        ["SPI-001", "INS/4", "01/12/2025", "01/12/2025", "30/11/2026", "FB/77122", 18200, "nothing wrong here"],
        ["SPI-010", "INS/5", "01/12/2025", "01/12/2025", "30/11/2026", "FB/77123", 500, "sold before"],
        ["SPI-002", "INS/1", "01/12/2025", "01/12/2025", "30/11/2026", "FB/77124", 500, "number of another policy"],
        ["SPI-002", "INS/6", "01/12/2025", "01/12/2025", "30/11/2026", "", 500, "no policy number"],
        ["SPI-002", "INS/7", "15/02/2025", "01/12/2025", "30/11/2026", "FB/77125", 500, "before the asset was in use"],
    ]),
    ("change-of-category", CATEGORY, [
        ["RC/1", "SPI-003", "Computers", "Personal Computers", "Laptops", "Wrong level III"],
        ["RC/2", "SPI-007", "Furniture and Fixtures", "Shop Floor Furniture", "", ""],
    ], [
        ["RC/3", "SPI-005", "Vehicles", "Goods Vehicles", "", "nothing wrong here"],
        ["RC/4", "SPI-004", "Computers", "Personal Computers", "Desktops", "no depreciation yet"],
        ["RC/5", "SPI-001", "Plant and Machinery", "Machine Tools", "CNC Turning", "the category that it has"],
        ["RC/6", "SPI-002", "Plant and Machinery", "Personal Computers", "", "level II of another level I"],
        ["RC/7", "SPI-014", "Machinery", "Utilities", "", "no such level I"],
        ["RC/8", "SPI-005", "Office Equipment", "Air Conditioners", "", "the asset of the first row"],
        ["RC/3", "SPI-001", "Plant and Machinery", "Machine Tools", "Grinding", "the reference of the first row"],
    ]),
    ("child-assets", CHILD, [
        ["SPI-004", "Docking station", 35000, "15/11/2025", "JV/25-26/9101", "12/11/2025", "Nilgiri Infotech Ltd",
         "NIL-811", "10/11/2025", "No", "", 5400, ""],
        ["SPI-001", "Discount on the machine", -20000, "15/11/2025", "JV/25-26/9102", "12/11/2025",
         "Deccan Machine Tools Pvt Ltd", "DEC-812", "10/11/2025", "No", "", "", ""],
        ["SPI-002", "Refrigerated air dryer", 118000.5, "20/11/2025", "JV/25-26/9103", "18/11/2025",
         "Malabar Pneumatics", "MAL-7", "17/11/2025", "Yes", "", "", "The vendor is added"],
    ], [
        ["SPI-001", "Coolant tank", 27000, "15/11/2025", "JV/25-26/9104", "12/11/2025", "", "DEC-813", "10/11/2025",
         "No", "", "", "nothing wrong here"],
        ["SPI-099", "Cover", 100, "15/11/2025", "", "12/11/2025", "", "X-1", "10/11/2025", "No", "", "", "no asset"],
        ["SPI-013", "Hook", 100, "15/11/2025", "", "12/11/2025", "", "X-2", "10/11/2025", "No", "", "", "not in use"],
        ["SPI-011", "Tank", 100, "15/11/2025", "", "12/11/2025", "", "X-3", "10/11/2025", "No", "", "", "leased"],
        ["SPI-002", "Hose", 100, "15/09/2025", "", "12/09/2025", "", "X-4", "10/09/2025", "No", "", "",
         "depreciation calculated"],
        ["SPI-005", "Mat", 10.125, "15/11/2025", "", "12/11/2025", "", "X-5", "10/11/2025", "No", "", "",
         "three decimals"],
        ["SPI-004", "Rebate", -200000, "15/11/2025", "", "12/11/2025", "", "X-6", "10/11/2025", "No", "", "",
         "more than the asset cost"],
        ["SPI-007", "Glass top", 4500, "15/11/2025", "", "12/11/2025", "", "X-7", "10/11/2025", "", "", "",
         "income tax not decided"],
    ]),
    ("cost-breakup", BREAKUP, [
        ["SPI-005", "Car", 1200000, "BASIC", "JV/25-26/9005", "10/06/2025", "GOD-1", "09/06/2025", "Godavari Motors"],
        ["SPI-005", "Taxes", 200000, "TAX", "JV/25-26/9005", "10/06/2025", "GOD-1", "09/06/2025", "Godavari Motors"],
        ["SPI-005", "Registration", 50000, "REGN", "JV/25-26/9005", "10/06/2025", "", "09/06/2025", ""],
        ["SPI-007", "Table", 91500.25, "BASIC", "", "15/04/2025", "VIN-3", "14/04/2025", "Vindhya Furniture Works"],
        ["SPI-007", "Freight", 3499.75, "FREIGHT", "", "15/04/2025", "VIN-4", "14/04/2025", ""],
    ], [
        ["SPI-001", "Machine", 2300000, "BASIC", "", "12/05/2025", "DEC-1", "11/05/2025", ""],
        ["SPI-001", "Erection", 99999.99, "ERECTION", "", "12/05/2025", "DEC-2", "11/05/2025", ""],
        ["SPI-012", "Building", 12500000, "BASIC", "", "31/03/2025", "SAT-1", "30/03/2025", ""],
        ["SPI-099", "Cover", 100, "BASIC", "", "31/03/2025", "SAT-2", "30/03/2025", ""],
        ["SPI-002", "Compressor", "8,50,000", "BASIC", "", "14/05/2025", "KON-1", "13/05/2025", ""],
        ["SPI-006", "Cupboard", 42000, "", "", "15/04/2025", "VIN-1", "14/04/2025", ""],
    ]),
    ("user-defined-fields", FIELDS, [
        ["SPI-001", "TC-2025-0417", "19/05/2025"],
        ["SPI-002", "KAS/37/1182", ""],
    ], [
        ["SPI-001", "TC-2025-0417", "19/05/2025"],
        ["SPI-002", "KAS/37/1182", "31/06/2025"],
        ["SPI-003", "", ""],
        ["SPI-010", "X 4410", ""],
        ["SPI-099", "nothing", ""],
    ]),
]

DATES = ("SaleDate", "RefDate", "AMCFrom", "AMCTo", "InsFrom", "InsTo", "USEDATE", "VCHRDATE", "BILLDATE", "UDV11")
AMOUNTS = ("SaleAMT", "Amount", "PolicyAMT", "COST", "SALVAGEVALUE", "CENVAT", "AMOUNT")


def cell(heading, value):
    if heading not in DATES or value == "":
        return value
    try:
        return day(value)
    except ValueError:
        return value


def main():
    folder = pathlib.Path(__file__).resolve().parent
    for name, headings, clean, mistaken in WORKBOOKS:
        assert all(len(row) == len(headings) for row in clean + mistaken), name
        for suffix, rows in (("", clean), ("-with-mistakes", mistaken)):
            cells = [{heading: cell(heading, value) for heading, value in zip(headings, row)} for row in rows]
            write(folder / f"{name}{suffix}.xls", headings, cells, AMOUNTS)


if __name__ == "__main__":
    main()
