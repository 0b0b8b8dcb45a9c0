#!/usr/bin/env python3
"""Makes the workbooks of demo/masters and demo/updates: of each one that can be posted and one with mistakes.

The masters are made for the company of demo/company.sql, the updates for the assets of acquired-assets.xls. Run it
again after a change. Needs the Debian package python3-xlwt.
"""

import pathlib

from make_transaction_workbooks import CAR, DESKTOP, GRINDER, LAPTOP, TURNING, day, write

# Headings; rows that can be posted; rows that are put in front of them in the workbook with mistakes.
MASTERS = {
    "department": (
        ["DeptCode", "DeptName"],
        [["0008", "Dispatch"], ["0009", "Human Resources"], ["R&D", "Research"]],
        [["0001", "Despatch"], ["", "Security"], ["0010", "stores"], ["DEPARTMENT-11", "Canteen"], ["0012", ""]]),
    "cost-centre": (
        ["CentreCode", "COSTCENTRE"],
        [["0004", "Nagpur Depot"], ["0005", "Training Centre"]],
        [["0003", "Nagpur Office"], ["0004", "Pune Works"], ["", "Guest House"]]),
    "location": (
        ["LocCode", "MAINLOC", "SUBLOC", "PHYLOC"],
        [["NGP-1", "Nagpur", "Depot", "Yard"], ["", "Pune", "Shop 3", "Bay A"]],
        [["", "PUNE", "Shop 1", "Bay A"], ["", "Nagpur", "", "Gate"]]),
    "user": (
        ["Usercode", "Username"],
        [["0006", "Z. Dsouza"], ["0007", "K. Menon"]],
        [["0001", "A. Joshi"], ["0006", "Z. D'Souza"], ["0008", ""]]),
    "vendor": (
        ["VendorCode", "VendorName", "add1", "City", "Pin", "PAN"],
        [["0007", "O'Neil Grinding Systems", "14, Industrial Estate", "Thane", "400604", "AAACO4821K"],
         ["0008", "Sahara Secure Solutions", "", "Pune", "", ""]],
        [["0009", "Konkan Air Systems", "", "Mumbai", "400001", "AAACK1111A"],
         ["0010", "Arihant Traders", "", "Pune", "411 001", "AAADA1234B"],
         ["", "Bharat Cables", "", "", "", "AAACB1234"]]),
    "misc": (
        ["Code", "MName"],
        [["0003", "Solar Roof"], ["0004", "Line 5"]],
        [["0001", "Line 4"], ["0005", ""]]),
}

UPDATES = {
    "lease-end": (
        ["Assetid", "LEOD"],
        [[LAPTOP, day("31/03/2029")], [DESKTOP, day("31/03/2029")]],
        [["MH\\CO\\PC\\LT9999", day("31/03/2029")], [CAR, day("01/04/2024")], [GRINDER, "end of 2030"], [TURNING, ""]]),
    "rate-method": (
        ["Assetid", "OVERRIDERATE", "OVERRIDEMETHOD"],
        [[TURNING, 12.5, "wdv"], [GRINDER, 7.42, "SLM"]],
        [["MH\\PM\\MT\\TC9999", 10, "SLM"], [CAR, 12.345, "WDV"], [LAPTOP, 110, "DB"]]),
}


def write_all(folder, kinds, sheet_name):
    folder.mkdir(exist_ok=True)
    for kind, (headings, good, mistakes) in kinds.items():
        write(folder / f"{kind}.xls", headings, good, sheet_name)
        write(folder / f"{kind}-with-mistakes.xls", headings, mistakes + good, sheet_name)


if __name__ == "__main__":
    demo = pathlib.Path(__file__).resolve().parent
    write_all(demo / "masters", MASTERS, "Master")
    write_all(demo / "updates", UPDATES, "Asset")
