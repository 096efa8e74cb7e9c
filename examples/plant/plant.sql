-- The project database of the sample process unit, read by pdsreview when it opens
-- plant.dri beside it (as plant.db, made with: sqlite3 plant.db < plant.sql). The
-- design system's own tables, one for each kind of item, are keyed by the MSLINK that
-- each drawn element's DMRS linkage carries; the view element_attributes gives their
-- attributes one row each, with the entity number that the linkages carry for the table.
-- Plain SQL: PostgreSQL reads it too (psql -f plant.sql).

CREATE TABLE piping (mslink INTEGER PRIMARY KEY, line_number TEXT, nps TEXT, spec TEXT,
                     service TEXT, insulation TEXT);
CREATE TABLE valves (mslink INTEGER PRIMARY KEY, tag_number TEXT, type TEXT, pn INTEGER,
                     inspection_date TEXT);
CREATE TABLE equipment (mslink INTEGER PRIMARY KEY, tag_number TEXT, type TEXT,
                        inspection_date TEXT);
CREATE TABLE nozzles (mslink INTEGER PRIMARY KEY, tag_number TEXT, type TEXT,
                      inspection_date TEXT);
CREATE TABLE members (mslink INTEGER PRIMARY KEY, profile TEXT, grade TEXT);

-- Process lines 101-106 and utility lines 201-203 of pipes.dgn; line 107 is planned and
-- not drawn yet, so no element carries its rows.
INSERT INTO piping VALUES
    (101, 'P-101', '6', 'A1', 'Feed', 'H50'),
    (102, 'P-102', '6', 'A1', 'Feed', 'H50'),
    (103, 'P-103', '4', 'A1', 'Feed', 'H50'),
    (104, 'P-104', '10', 'B2', 'Product', 'none'),
    (105, 'P-105', '10', 'B2', 'Product', 'none'),
    (106, 'P-106', '3', 'B2', 'Product', 'P25'),
    (107, 'P-107', '3', 'B2', 'Product', 'none'),
    (201, 'UW-201', '2', 'C3', 'Cooling water', 'none'),
    (202, 'UW-202', '2', 'C3', 'Cooling water', 'none'),
    (203, 'UA-203', '1.5', 'C3', 'Instrument air', 'none');
-- The valves of pipes.dgn.
INSERT INTO valves VALUES
    (301, 'V-301', 'gate', 16, '2023-05-10'),
    (302, 'V-302', 'globe', 16, '2024-11-02'),
    (303, 'V-303', 'check', 40, '2025-02-20'),
    (304, 'V-304', 'gate', 40, '2022-08-15');
-- Tanks and pumps of equipment.dgn, and the tanks' nozzles.
INSERT INTO equipment VALUES
    (1, 'TK-101', 'tank', '2024-06-01'),
    (2, 'TK-102', 'tank', '2025-03-15'),
    (3, 'PU-201A', 'pump', '2024-12-01'),
    (4, 'PU-201B', 'pump', '2025-01-20'),
    (5, 'PU-202', 'pump', '2023-10-05');
INSERT INTO nozzles VALUES
    (1, 'TK-101-N1', 'nozzle', '2024-06-01'),
    (2, 'TK-102-N1', 'nozzle', '2025-03-15');
-- The members of steel.dgn: columns 1-10, beams 11-24 (those along the grid's long side
-- 11, 12, 18 and 19), bracing 25 and 26.
INSERT INTO members VALUES
    (1, 'HEB 300', 'S355'),
    (2, 'HEB 300', 'S355'),
    (3, 'HEB 300', 'S355'),
    (4, 'HEB 300', 'S355'),
    (5, 'HEB 300', 'S355'),
    (6, 'HEB 300', 'S355'),
    (7, 'HEB 300', 'S355'),
    (8, 'HEB 300', 'S355'),
    (9, 'HEB 300', 'S355'),
    (10, 'HEB 300', 'S355'),
    (11, 'IPE 400', 'S355'),
    (12, 'IPE 400', 'S355'),
    (13, 'IPE 300', 'S275'),
    (14, 'IPE 300', 'S275'),
    (15, 'IPE 300', 'S275'),
    (16, 'IPE 300', 'S275'),
    (17, 'IPE 300', 'S275'),
    (18, 'IPE 400', 'S355'),
    (19, 'IPE 400', 'S355'),
    (20, 'IPE 300', 'S275'),
    (21, 'IPE 300', 'S275'),
    (22, 'IPE 300', 'S275'),
    (23, 'IPE 300', 'S275'),
    (24, 'IPE 300', 'S275'),
    (25, 'L 100x10', 'S235'),
    (26, 'L 100x10', 'S235');

-- Entity numbers: 12 piping, 13 valves, 21 equipment, 22 nozzles, 40 structural members.
-- Numbers are cast to text, so that every value is a text.
CREATE VIEW element_attributes AS
    SELECT 12 AS entity, mslink AS occurrence, 'line_number' AS name, line_number AS value FROM piping
    UNION ALL
    SELECT 12, mslink, 'nps', nps FROM piping
    UNION ALL
    SELECT 12, mslink, 'spec', spec FROM piping
    UNION ALL
    SELECT 12, mslink, 'service', service FROM piping
    UNION ALL
    SELECT 12, mslink, 'insulation', insulation FROM piping
    UNION ALL
    SELECT 13, mslink, 'tag_number', tag_number FROM valves
    UNION ALL
    SELECT 13, mslink, 'type', type FROM valves
    UNION ALL
    SELECT 13, mslink, 'rating', CAST(pn AS TEXT) FROM valves
    UNION ALL
    SELECT 13, mslink, 'inspection_date', inspection_date FROM valves
    UNION ALL
    SELECT 21, mslink, 'tag_number', tag_number FROM equipment
    UNION ALL
    SELECT 21, mslink, 'type', type FROM equipment
    UNION ALL
    SELECT 21, mslink, 'inspection_date', inspection_date FROM equipment
    UNION ALL
    SELECT 22, mslink, 'tag_number', tag_number FROM nozzles
    UNION ALL
    SELECT 22, mslink, 'type', type FROM nozzles
    UNION ALL
    SELECT 22, mslink, 'inspection_date', inspection_date FROM nozzles
    UNION ALL
    SELECT 40, mslink, 'profile', profile FROM members
    UNION ALL
    SELECT 40, mslink, 'grade', grade FROM members;
