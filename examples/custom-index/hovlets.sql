-- SPDX-License-Identifier: Apache-2.0
-- An empty locale serves every locale.
CREATE TABLE hovlet (key TEXT, locale TEXT, title TEXT, shortcut TEXT, PRIMARY KEY (key, locale));
CREATE TABLE paragraph (key TEXT, locale TEXT, position INTEGER, text TEXT);

INSERT INTO hovlet VALUES ('save', '', 'Save', 'Ctrl+S');
INSERT INTO paragraph VALUES ('save', '', 1, 'Writes the document to its file.');
INSERT INTO paragraph VALUES ('save', '', 2, 'This text is a row of a <b>database</b>.');

INSERT INTO hovlet VALUES ('save', 'de_DE', 'Sichern', 'Strg+S');
INSERT INTO paragraph VALUES ('save', 'de_DE', 1, 'Schreibt das Dokument in seine Datei.');
