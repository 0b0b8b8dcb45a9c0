#!/usr/bin/env python3
"""Makes the two demonstration workbooks: a clean register and the same one with typical mistakes.

Run it again after a change; the same files come out every time. Needs the Debian package python3-xlwt.
"""

import datetime
import pathlib
import random

import xlwt

HEADINGS = ["PHYID", "USEDATE", "VCHRDATE", "CAT1", "CAT2", "CAT3", "DESCRIPTION", "COST", "GST", "QTY", "MAINLOC",
            "SUBLOC", "PHYLOC", "DEPT", "VENDOR", "COSTCENTRE", "USER", "LIFE", "VCHRNO", "BILLNO", "BILLDATE",
            "SALVAGEVALUE", "Project", "Funding", "REMARKS"]

# Category levels I to III, least and largest cost in rupees, what is bought, vendor, place and department.
PUNE_A, PUNE_B = ("Pune", "Shop 1", "Bay A"), ("Pune", "Shop 1", "Bay B")
PUNE_OFFICE, UTILITY = ("Pune", "Office", "First Floor"), ("Pune", "Utility Block", "Ground")
NASHIK, NASHIK_B = ("Nashik", "Shop 2", "Bay A"), ("Nashik", "Shop 2", "Bay B")
MUMBAI = ("Mumbai", "Head Office", "Fourth Floor")
LOTS = [
    (22, "Plant and Machinery", "Machine Tools", "CNC Turning", 1800000, 4200000,
     ["CNC turning centre, 8 inch chuck", "CNC turning centre with bar feeder", "Twin spindle turning centre"],
     "Deccan Machine Tools Pvt Ltd", [PUNE_A, PUNE_B, NASHIK], "Production"),
    (18, "Plant and Machinery", "Machine Tools", "CNC Milling", 2600000, 6900000,
     ["Vertical machining centre 800 x 500", "Vertical machining centre, fourth axis", "Horizontal machining centre"],
     "Deccan Machine Tools Pvt Ltd", [PUNE_A, PUNE_B, NASHIK], "Production"),
    (12, "Plant and Machinery", "Machine Tools", "Grinding", 900000, 2400000,
     ["Cylindrical grinder", "Surface grinder, hydraulic", "Tool and cutter grinder"],
     "O'Neil Grinding Systems", [PUNE_B, NASHIK], "Production"),
    (10, "Plant and Machinery", "Utilities", "Compressors", 350000, 1200000,
     ["Screw air compressor 37 kW", "Refrigerated air dryer", "Air receiver, 2 cu.m"],
     "Konkan Air Systems", [UTILITY, NASHIK], "Maintenance"),
    (8, "Plant and Machinery", "Utilities", "Power and Back-up", 120000, 1900000,
     ["Diesel generating set 250 kVA", "UPS 40 kVA with batteries", "Power factor panel"],
     "Konkan Air Systems", [UTILITY], "Maintenance"),
    (16, "Plant and Machinery", "Testing and Inspection", "", 45000, 1500000,
     ["Coordinate measuring machine", "Surface roughness tester", "Height gauge, digital", "Hardness tester"],
     "Deccan Machine Tools Pvt Ltd", [PUNE_B], "Quality Assurance"),
    (12, "Plant and Machinery", "Material Handling", "", 60000, 1400000,
     ["Electric stacker, 1.5 t", "Overhead crane, 5 t", "Hydraulic pallet truck", "Jib crane, 500 kg"],
     "Deccan Machine Tools Pvt Ltd", [PUNE_A, NASHIK_B], "Stores"),
    (26, "Furniture and Fixtures", "Office Furniture", "", 8000, 95000,
     ["Workstation, four seats", "Revolving chair", "Steel cupboard", "Conference table", "Filing cabinet"],
     "Vindhya Furniture Works", [PUNE_OFFICE, MUMBAI], "Administration"),
    (14, "Furniture and Fixtures", "Shop Floor Furniture", "", 6000, 60000,
     ["Tool trolley", "Inspection table, granite top", "Heavy duty rack", "Work bench with vice"],
     "Vindhya Furniture Works", [PUNE_A, PUNE_B, NASHIK], "Production"),
    (12, "Office Equipment", "Air Conditioners", "", 38000, 210000,
     ["Split air conditioner 1.5 t", "Cassette air conditioner 3 t", "Packaged air conditioner 5.5 t"],
     "Konkan Air Systems", [PUNE_OFFICE, MUMBAI], "Administration"),
    (10, "Office Equipment", "Security and Communication", "", 15000, 240000,
     ["Camera system, 16 channels", "Access control, two doors", "Telephone exchange", "Fire alarm panel"],
     "Sahara Secure Solutions", [PUNE_OFFICE, NASHIK_B], "Administration"),
    (14, "Computers", "Personal Computers", "Desktops", 42000, 88000,
     ["Desktop computer, 16 GB", "Design workstation, 64 GB"], "Nilgiri Infotech Ltd", [PUNE_OFFICE, MUMBAI],
     "Information Technology"),
    (16, "Computers", "Personal Computers", "Laptops", 55000, 165000,
     ["Laptop 14 inch", "Laptop 16 inch, graphics"], "Nilgiri Infotech Ltd", [PUNE_OFFICE, MUMBAI], "Accounts"),
    (6, "Computers", "Servers and Network", "", 90000, 1250000,
     ["Rack server", "Storage system, 24 TB", "Core switch, 48 ports"], "Nilgiri Infotech Ltd", [PUNE_OFFICE],
     "Information Technology"),
    (4, "Vehicles", "Cars", "", 850000, 2300000, ["Sedan car", "Utility vehicle, 7 seats"], "Godavari Motors", [MUMBAI],
     "Administration"),
    (3, "Vehicles", "Goods Vehicles", "", 1300000, 2700000, ["Goods vehicle, 7 t", "Pick-up van"], "Godavari Motors",
     [PUNE_A], "Stores"),
    (2, "Buildings", "Civil Works", "", 250000, 900000, ["Compound wall, east side", "Internal road, concrete"],
     "Satpura Constructions", [UTILITY], "Maintenance"),
]

CENTRES = {"Pune": "Pune Works", "Nashik": "Nashik Works", "Mumbai": "Head Office"}
USERS = ["A. Kulkarni", "R. Deshpande", "S. Iyer", "M. Fernandes", "P. Sharma", "Z. D'Souza"]
GST_PERCENT = 18
FIRST_DAY = datetime.date(2025, 4, 7)


def round_to(amount, step):
    return amount // step * step


def asset(number, lot, chance):
    _, level1, level2, level3, least, largest, names, vendor, places, department = lot
    place = chance.choice(places)
    bought = FIRST_DAY + datetime.timedelta(days=chance.randrange(340))
    used = min(bought + datetime.timedelta(days=chance.randrange(1, 25)), datetime.date(2026, 3, 31))
    cost = round_to(chance.randrange(least, largest), 50) + chance.choice([0, 0, 0, 25.5, 40.75])
    quantity = chance.choice([2, 4, 6]) if level2.endswith("Furniture") and cost < 30000 else 1
    return {
        "PHYID": f"SPI/{place[0][:3].upper()}/{number:04d}", "USEDATE": used, "VCHRDATE": bought,
        "CAT1": level1, "CAT2": level2, "CAT3": level3, "DESCRIPTION": chance.choice(names),
        "COST": cost, "GST": round(cost * GST_PERCENT / 100, 2), "QTY": quantity,
        "MAINLOC": place[0], "SUBLOC": place[1], "PHYLOC": place[2], "DEPT": department, "VENDOR": vendor,
        "COSTCENTRE": CENTRES[place[0]], "USER": chance.choice(USERS), "LIFE": "",
        "VCHRNO": f"JV/25-26/{number:04d}", "BILLNO": f"{vendor[:3].upper()}-{chance.randrange(1000, 9999)}",
        "BILLDATE": bought - datetime.timedelta(days=chance.randrange(0, 6)),
        "SALVAGEVALUE": round(cost * 0.05, 2), "Project": chance.choice(["Line 4 Expansion", "Replacement", ""]),
        "Funding": "Term Loan" if cost > 1500000 else "Own Funds", "REMARKS": "",
    }


def register():
    chance = random.Random(20250407)
    lots = [lot for lot in LOTS for _ in range(lot[0])]
    chance.shuffle(lots)
    return [asset(number, lot, chance) for number, lot in enumerate(lots, start=1)]


# Workbook row (the header is row 1), column, and what somebody typed there.
MISTAKES = [
    (4, "CAT1", "Computer"),
    (9, "CAT2", ""),
    (15, "USEDATE", "31/02/2026"),
    (23, "VCHRDATE", datetime.date(2025, 3, 28)),
    (31, "USEDATE", datetime.date(2027, 1, 15)),
    (38, "COST", "1,25,000"),
    (46, "COST", -48500),
    (57, "COST", 98450.125),
    (66, "GST", 9999999),
    (74, "QTY", 0),
    (83, "QTY", "two"),
    (91, "LIFE", 1500),
    (102, "DESCRIPTION", ""),
    (118, "MAINLOC", "Director's Office"),
    (131, "DEPT", "ALL"),
    (146, "PHYID", ""),
    (160, "USER", "The whole of the second shift of the machine shop, Pune"),
    (177, "SALVAGEVALUE", "five percent"),
]


def with_mistakes(rows):
    rows = [dict(row) for row in rows]
    for line, column, value in MISTAKES:
        rows[line - 2][column] = value
    return rows


AMOUNTS = ("COST", "GST", "SALVAGEVALUE")


def write(path, headings, rows, amounts=AMOUNTS):
    book = xlwt.Workbook()
    sheet = book.add_sheet("Asset")
    heading_style = xlwt.easyxf("font: bold on; pattern: pattern solid, fore_colour gray25")
    date_style = xlwt.easyxf(num_format_str="dd/mm/yyyy")
    amount_style = xlwt.easyxf(num_format_str="0.00")
    for column, heading in enumerate(headings):
        sheet.write(0, column, heading, heading_style)
        sheet.col(column).width = 256 * (34 if heading == "DESCRIPTION" else 16)
    for line, row in enumerate(rows, start=1):
        for column, heading in enumerate(headings):
            value = row[heading]
            if value == "":
                continue
            if isinstance(value, datetime.date):
                sheet.write(line, column, value, date_style)
            elif heading in amounts and not isinstance(value, str):
                sheet.write(line, column, value, amount_style)
            else:
                sheet.write(line, column, value)
    sheet.set_panes_frozen(True)
    sheet.set_horz_split_pos(1)
    book.save(str(path))


def main():
    folder = pathlib.Path(__file__).resolve().parent
    rows = register()
    write(folder / "acquired-assets.xls", HEADINGS, rows)
    write(folder / "acquired-assets-with-mistakes.xls", HEADINGS, with_mistakes(rows))
    print(f"{len(rows)} assets, {len(MISTAKES)} mistakes")


if __name__ == "__main__":
    main()
