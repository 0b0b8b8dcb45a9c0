-- Depreciation of two computers for the first half of the year, so that their category can be changed. For the
-- demonstration company after acquired-assets.xls was posted.
insert into Fadep (Cocd, Assetid, DocDt, FACode, Method, Rate, Days, Amount, AccDep, Cost, Accyear) values ('DEMO', 'MH\CO\PC\LT0013', #09/30/2025#, 'COMP', 'SLM', 31.67, 158, 13180, 13180, 96140.75, '2025-2026');
insert into Fadep (Cocd, Assetid, DocDt, FACode, Method, Rate, Days, Amount, AccDep, Cost, Accyear) values ('DEMO', 'MH\CO\PC\DT0010', #09/30/2025#, 'COMP', 'SLM', 31.67, 149, 7149, 7149, 55300, '2025-2026');
