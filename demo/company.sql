-- The demonstration company, in the Access dialect. Made for a company that was just created:
--   orva-import new DEMO && orva-import sql --company DEMO < demo/company.sql

update Company set coname = 'Sahyadri Precision Industries Ltd';
update Parameter set AutoAssetid = true, RegionCode = 'MH', Digits = 4, Centre = true, Users = true, Validation = false;

-- The first accounting and financial year is closed, the second is open.
insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2024-2025', #04/01/2024#, #03/31/2025#, true);
insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2025-2026', #04/01/2025#, #03/31/2026#, false);
insert into FinYear (FinYear, FinOpDt, FinClDt, Closed) values ('2024-2025', #04/01/2024#, #03/31/2025#, true);
insert into FinYear (FinYear, FinOpDt, FinClDt, Closed) values ('2025-2026', #04/01/2025#, #03/31/2026#, false);

-- Category level I: prefix of the identifier, book code, income-tax block, life in months.
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('BL', 'Buildings', 'BL', 'BLDG', 'B10', false, false, 360);
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('PM', 'Plant and Machinery', 'PM', 'PLANT', 'P15', false, false, 180);
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('FF', 'Furniture and Fixtures', 'FF', 'FURN', 'F10', false, false, 120);
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('OE', 'Office Equipment', 'OE', 'OFFEQ', 'P15', false, false, 60);
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('CO', 'Computers', 'CO', 'COMP', 'C40', false, false, 36);
insert into FADefinition (DefCode, Description, Prefix, FACode, BlockCode, CostSalvage, blnLeaseHold, AssetLife) values ('VH', 'Vehicles', 'VH', 'VEH', 'P15', false, false, 96);

-- Category level II. An empty code inherits that of level I.
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('BL', 'BL-01', 'Factory Buildings', 'FB', 'BLDG', 'B10', 360);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('BL', 'BL-02', 'Civil Works', 'CW', 'CIVIL', 'B10', 120);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('PM', 'PM-01', 'Machine Tools', 'MT', 'PLANT', 'P15', 180);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('PM', 'PM-02', 'Utilities', 'UT', 'PLANT', 'P15', 180);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('PM', 'PM-03', 'Testing and Inspection', 'TI', 'PLANT', 'P15', 120);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('PM', 'PM-04', 'Material Handling', 'MH', 'PLANT', 'P15', 180);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('FF', 'FF-01', 'Office Furniture', 'OF', 'FURN', 'F10', 120);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('FF', 'FF-02', 'Shop Floor Furniture', 'SF', 'FURN', 'F10', 120);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('OE', 'OE-01', 'Air Conditioners', 'AC', 'OFFEQ', 'P15', 60);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('OE', 'OE-02', 'Security and Communication', 'SC', 'OFFEQ', 'P15', 60);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('CO', 'CO-01', 'Personal Computers', 'PC', 'COMP', 'C40', 36);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('CO', 'CO-02', 'Servers and Network', 'SN', 'SERVER', 'C40', 72);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('VH', 'VH-01', 'Cars', 'CR', 'VEH', 'P15', 96);
insert into Classification (DefCode, ClassCode, ClassDesc, Prefix, FACode, BlockCode, AssetLife1) values ('VH', 'VH-02', 'Goods Vehicles', 'GV', 'VEH', 'P15', 96);

-- Category level III.
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('PM', 'PM-01', 'PM-01-01', 'CNC Turning', 'TC', 180);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('PM', 'PM-01', 'PM-01-02', 'CNC Milling', 'MC', 180);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('PM', 'PM-01', 'PM-01-03', 'Grinding', 'GR', 180);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('PM', 'PM-02', 'PM-02-01', 'Compressors', 'CM', 180);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('PM', 'PM-02', 'PM-02-02', 'Power and Back-up', 'PB', 120);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('CO', 'CO-01', 'CO-01-01', 'Desktops', 'DT', 36);
insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, AssetLife2) values ('CO', 'CO-01', 'CO-01-02', 'Laptops', 'LT', 36);

-- Rates of both years: books, then income tax.
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'BLDG', 'Factory buildings', 'SLM', 3.17, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'CIVIL', 'Roads and civil works', 'SLM', 9.50, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'PLANT', 'Plant and machinery', 'SLM', 6.33, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'FURN', 'Furniture and fixtures', 'SLM', 9.50, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'OFFEQ', 'Office equipment', 'SLM', 19.00, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'COMP', 'Computers', 'WDV', 63.16, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'SERVER', 'Servers and network', 'WDV', 39.30, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'VEH', 'Vehicles', 'SLM', 11.88, '2024-2025');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'BLDG', 'Factory buildings', 'SLM', 3.17, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'CIVIL', 'Roads and civil works', 'SLM', 9.50, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'PLANT', 'Plant and machinery', 'SLM', 6.33, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'FURN', 'Furniture and fixtures', 'SLM', 9.50, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'OFFEQ', 'Office equipment', 'SLM', 19.00, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'COMP', 'Computers', 'WDV', 63.16, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'SERVER', 'Servers and network', 'WDV', 39.30, '2025-2026');
insert into FARate (Cocd, FACode, [Desc], Method, Rate, Accyear) values ('DEMO', 'VEH', 'Vehicles', 'SLM', 11.88, '2025-2026');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'B10', 'Buildings', 10, '2024-2025');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'F10', 'Furniture and fittings', 10, '2024-2025');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'P15', 'Plant, equipment and vehicles', 15, '2024-2025');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'C40', 'Computers and software', 40, '2024-2025');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'B10', 'Buildings', 10, '2025-2026');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'F10', 'Furniture and fittings', 10, '2025-2026');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'P15', 'Plant, equipment and vehicles', 15, '2025-2026');
insert into ITaxRates (Cocd, BlockCode, [Desc], Rate, FinYear) values ('DEMO', 'C40', 'Computers and software', 40, '2025-2026');

-- Masters. The workbook names a few more, which the import creates.
insert into Dept (Deptcode, DeptName) values ('0001', 'Production');
insert into Dept (Deptcode, DeptName) values ('0002', 'Maintenance');
insert into Dept (Deptcode, DeptName) values ('0003', 'Quality Assurance');
insert into Dept (Deptcode, DeptName) values ('0004', 'Stores');
insert into Dept (Deptcode, DeptName) values ('0005', 'Accounts');
insert into Dept (Deptcode, DeptName) values ('0006', 'Information Technology');
insert into Dept (Deptcode, DeptName) values ('0007', 'Administration');
insert into Vendor (Vendorcode, VendorName, City) values ('0001', 'Deccan Machine Tools Pvt Ltd', 'Pune');
insert into Vendor (Vendorcode, VendorName, City) values ('0002', 'Konkan Air Systems', 'Mumbai');
insert into Vendor (Vendorcode, VendorName, City) values ('0003', 'Nilgiri Infotech Ltd', 'Bengaluru');
insert into Vendor (Vendorcode, VendorName, City) values ('0004', 'Vindhya Furniture Works', 'Indore');
insert into Vendor (Vendorcode, VendorName, City) values ('0005', 'Godavari Motors', 'Nashik');
insert into Vendor (Vendorcode, VendorName, City) values ('0006', 'Satpura Constructions', 'Pune');
insert into Costcentre (CentreCode, CentreName) values ('0001', 'Pune Works');
insert into Costcentre (CentreCode, CentreName) values ('0002', 'Nashik Works');
insert into Costcentre (CentreCode, CentreName) values ('0003', 'Head Office');
insert into Users (Usedby, Username) values ('0001', 'A. Kulkarni');
insert into Users (Usedby, Username) values ('0002', 'R. Deshpande');
insert into Users (Usedby, Username) values ('0003', 'S. Iyer');
insert into Users (Usedby, Username) values ('0004', 'M. Fernandes');
insert into Users (Usedby, Username) values ('0005', 'P. Sharma');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 1, 'Pune', 'Shop 1', 'Bay A');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 2, 'Pune', 'Shop 1', 'Bay B');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 3, 'Pune', 'Office', 'First Floor');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 4, 'Pune', 'Utility Block', 'Ground');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 5, 'Nashik', 'Shop 2', 'Bay A');
insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) values ('DEMO', 6, 'Mumbai', 'Head Office', 'Fourth Floor');

-- Two masters of the company's own (their names are column names of the workbook) and two fields of its own.
insert into MisMaster (MName) values ('Project');
insert into MisMaster (MName) values ('Funding');
insert into MisData (Master, Code, MName) values ('M1', '0001', 'Line 4 Expansion');
insert into MisData (Master, Code, MName) values ('M1', '0002', 'Replacement');
insert into MisData (Master, Code, MName) values ('M2', '0001', 'Own Funds');
insert into MisData (Master, Code, MName) values ('M2', '0002', 'Term Loan');
insert into UDFields (UDF1, UDF11) values ('Machine serial number', 'Commissioned on');
