#!/usr/bin/env python3
"""Makes the workbooks of demo/transactions: for every kind of transaction one that can be posted and one with mistakes.

They refer to assets that the import of acquired-assets.xls posts into the demonstration company, after
demo/transactions/company.sql. Run it again after a change. Needs the Debian package python3-xlwt.
"""

import datetime
import pathlib

import xlwt

GRINDER, CABINET, LAPTOP = "MH\\PM\\MT\\GR0006", "MH\\FF\\OF0004", "MH\\CO\\PC\\LT0013"
AIR, COMPRESSOR, DESKTOP = "MH\\OE\\AC0009", "MH\\PM\\UT\\CM0006", "MH\\CO\\PC\\DT0010"
TURNING, GAUGE, CAR, RACK = "MH\\PM\\MT\\TC0013", "MH\\PM\\TI0013", "MH\\VH\\CR0004", "MH\\FF\\SF0006"


def day(text):
    return datetime.datetime.strptime(text, "%d/%m/%Y").date()


# Headings; rows that can be posted; rows that take their place in the workbook with mistakes.
KINDS = {
    "sale": (
        ["ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"],
        [[CABINET, "INV-071", day("10/02/2026"), 4000, "S-001", "Sold to a dealer"],
         [AIR, "INV-072", day("12/02/2026"), 21500.5, "S-002", "Replaced"],
         [RACK, "INV-073", day("12/02/2026"), 0, "S-003", "Discarded, no value"]],
        [["MH\\FF\\OF9999", "INV-071", day("10/02/2026"), 4000, "S-001", ""],
         [AIR, "", day("12/02/2026"), 21500.5, "S-002", ""],
         [RACK, "INV-073", day("12/05/2025"), 0, "S-003", ""],
         [CAR, "INV-074", day("12/02/2026"), "nil", "S-004", ""],
         [GRINDER, "INV-075", day("12/02/2026"), 500000, "", ""]]),
    "amc": (
        ["ASSETID", "RefNo", "RefDate", "AMCFrom", "AMCTo", "Amount", "Remarks"],
        [[COMPRESSOR, "AMC/26/01", day("01/10/2025"), day("01/10/2025"), day("30/09/2026"), 46000, "Four visits"],
         [GRINDER, "AMC/26/02", day("01/11/2025"), day("01/11/2025"), day("31/10/2026"), 82000, ""]],
        [[COMPRESSOR, "AMC/26/01", day("01/10/2025"), day("01/10/2025"), day("30/09/2025"), 46000, ""],
         [GRINDER, "AMC/26/02", day("10/04/2025"), day("01/11/2025"), day("31/10/2026"), 82000, ""],
         [TURNING, "", day("01/11/2025"), day("01/11/2025"), day("31/10/2026"), 82000, ""],
         [GAUGE, "AMC/26/04", day("01/11/2025"), day("01/11/2025"), day("31/10/2026"), 0, ""]]),
    "insurance": (
        ["ASSETID", "RefNo", "RefDate", "InsFrom", "InsTo", "PolicyNo", "PolicyAMT", "Remarks"],
        [[CAR, "INS-1", day("20/05/2025"), day("20/05/2025"), day("19/05/2026"), "OG-25-1901", 38500, "Comprehensive"],
         [TURNING, "INS-2", day("01/06/2025"), day("01/06/2025"), day("31/05/2026"), "OG-25-1902", 61250, "Fire"]],
        [[CAR, "INS-1", day("20/05/2025"), "", day("19/05/2026"), "OG-25-1901", 38500, ""],
         [TURNING, "INS-2", day("01/06/2025"), day("01/06/2025"), day("31/05/2026"), "", 61250, ""],
         [GRINDER, "INS-3", day("01/06/2027"), day("01/06/2025"), day("31/05/2026"), "OG-25-1903", 61250, ""]]),
    "change-category": (
        ["ASSETID", "DocRef", "CAT1", "CAT2", "Remarks"],
        [[LAPTOP, "RC-01", "Computers", "Servers and Network", "Used as a server"],
         [DESKTOP, "RC-02", "Office Equipment", "Security and Communication", "Gate camera station"]],
        [[LAPTOP, "RC-01", "Computers", "Vessels", ""],
         [DESKTOP, "RC-01", "Computers", "Servers and Network", ""],
         [GAUGE, "RC-03", "Computers", "Servers and Network", ""]]),
    "dep-child": (
        ["PARENT_ID", "DESCRIPTION", "COST", "USEDATE", "VCHRDATE", "VENDOR", "VCHRNO", "IgnoreCostIT", "SALVAGEVALUE"],
        [[TURNING, "Chip conveyor", 185000, day("10/02/2026"), day("05/02/2026"), "Deccan Machine Tools Pvt Ltd",
          "JV/2201", "No", 5000],
         [TURNING, "Price correction", -12000, day("10/02/2026"), day("05/02/2026"), "", "JV/2202", "No", ""]],
        [["MH\\PM\\MT\\TC9999", "Chip conveyor", 185000, day("10/02/2026"), day("05/02/2026"), "", "JV/2201", "No", ""],
         [TURNING, "Coolant unit", 10.125, day("10/02/2026"), day("05/02/2026"), "", "JV/2203", "No", ""],
         [GRINDER, "Magnetic table", 40000, day("10/04/2025"), day("05/04/2025"), "", "JV/2204", "No", ""],
         [GAUGE, "Probe", 40000, day("10/02/2026"), day("05/02/2026"), "", "JV/2205", "perhaps", ""]]),
    "cost-breakup": (
        ["ASSETID", "PARTICULARS", "AMOUNT", "COSTCATEGORY", "VCHRDATE", "BILLDATE", "VCHRNO", "VENDOR"],
        [[COMPRESSOR, "Basic price", 700000, "BASIC", day("15/04/2025"), day("12/04/2025"), "JV/0011", ""],
         [COMPRESSOR, "Freight", 18300, "FREIGHT", day("15/04/2025"), day("14/04/2025"), "JV/0012", ""],
         [COMPRESSOR, "Erection", 50000, "ERECT", day("15/04/2025"), day("20/04/2025"), "JV/0013", ""]],
        [[COMPRESSOR, "Basic price", 700000, "BASIC", day("15/04/2025"), day("12/04/2025"), "JV/0011", ""],
         [COMPRESSOR, "Freight", 18000, "FREIGHT", day("15/04/2025"), day("14/04/2025"), "JV/0012", ""],
         [GRINDER, "Basic price", "unknown", "BASIC", day("15/04/2025"), day("12/04/2025"), "JV/0014", ""]]),
    "udf": (
        ["ASSETID", "UDV1", "UDV11"],
        [[TURNING, "TC-88213-A", day("10/05/2025")], [GRINDER, "GR-5521", ""]],
        [[TURNING, "", ""], ["MH\\PM\\MT\\TC9999", "TC-88213-B", ""], [GRINDER, "GR-5521", "31/02/2025"]]),
}


def write(path, headings, rows, sheet_name="Asset"):
    workbook = xlwt.Workbook()
    sheet = workbook.add_sheet(sheet_name)
    date = xlwt.easyxf(num_format_str="dd/mm/yyyy")
    for column, heading in enumerate(headings):
        sheet.write(0, column, heading)
    for number, row in enumerate(rows, 1):
        for column, cell in enumerate(row):
            if cell == "":
                continue
            style = (date,) if isinstance(cell, datetime.date) else ()
            sheet.write(number, column, cell, *style)
    workbook.save(str(path))


if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent / "transactions"
    for kind, (headings, good, mistakes) in KINDS.items():
        write(folder / f"{kind}.xls", headings, good)
        write(folder / f"{kind}-with-mistakes.xls", headings, mistakes)
