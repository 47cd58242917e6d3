-- SPDX-License-Identifier: BSD-3-Clause
-- The content database as version 8 left it. Statements are set apart by blank lines.
PRAGMA user_version = 8;

CREATE TABLE directory (id INTEGER PRIMARY KEY AUTOINCREMENT, parentId INTEGER, path TEXT UNIQUE,
    scope INTEGER NOT NULL);

CREATE TABLE file (id INTEGER PRIMARY KEY AUTOINCREMENT, directoryId INTEGER NOT NULL, mimeType TEXT,
    fileName TEXT, displayName TEXT, modificationTime DATETIME, permissions INTEGER NOT NULL,
    metadataCurrent BOOL);

CREATE TABLE image (fileId INTEGER PRIMARY KEY, dateTaken DATETIME, width INTEGER, height INTEGER,
    orientation INTEGER);

CREATE TABLE moodset (fileId INTEGER PRIMARY KEY, favorite INTEGER DEFAULT 0, homeWallpaper TEXT,
    applicationWallpaper TEXT, highlightColor TEXT, secondaryHighlightColor TEXT, primaryColor TEXT,
    secondaryColor TEXT, timestamp TEXT, ringerVolume INTEGER, enabledSounds INTEGER, partnerSpace TEXT);

CREATE TABLE dorselId (fileId INTEGER PRIMARY KEY, dorselId TEXT);

CREATE TABLE download (fileId INTEGER PRIMARY KEY, source TEXT);

CREATE TABLE resource (fileId INTEGER, resourceType TEXT, resourceId INTEGER);

CREATE UNIQUE INDEX file_directory ON file (directoryId, fileName);

CREATE UNIQUE INDEX resource_fileId_resourceType ON resource (fileId, resourceType);

CREATE INDEX resource_file_id ON resource (fileId);

CREATE INDEX resource_resource_id ON resource (resourceId);

CREATE TRIGGER delete_file_trigger BEFORE DELETE ON file FOR EACH ROW BEGIN
    DELETE FROM moodset WHERE fileId = OLD.id;
    DELETE FROM image WHERE fileId = OLD.id;
    DELETE FROM download WHERE fileId = OLD.id;
    DELETE FROM resource WHERE fileId = OLD.id OR resourceId = OLD.id;
    DELETE FROM dorselId WHERE fileId = OLD.id;
END;

CREATE TRIGGER delete_directory_trigger BEFORE DELETE ON directory FOR EACH ROW BEGIN
    DELETE FROM file WHERE directoryId = OLD.id;
    DELETE FROM directory WHERE parentId = OLD.id;
END;

INSERT INTO directory VALUES
    (1, NULL, '/home/user/Pictures', 0),
    (2, 1, '/home/user/Pictures/sea', 0),
    (3, NULL, '/usr/share/moodset', 1),
    (4, NULL, '/usr/share/moodset/harbour', 2);

INSERT INTO file VALUES
    (1, 2, 'image/jpeg', 'gull.jpg', NULL, '2019-07-14T10:00:00.000', 3, 1),
    (2, 3, 'application/x-zavro-moodset', 'own.moodset', 'Own', '2019-07-15T10:00:00.000', 1, 1),
    (3, 4, 'application/x-zavro-moodset', 'harbour.moodset', 'Harbour',
        '2019-07-16T10:00:00.000', 1, 1),
    (4, 4, 'audio/ogg', 'horn.ogg', 'Horn', '2019-07-16T10:00:00.000', 1, 1);

INSERT INTO image VALUES (1, '2019-07-14T09:59:58.000', 4000, 3000, 6);

INSERT INTO moodset VALUES
    (2, 1, '/home/user/Pictures/sea/gull.jpg', '/home/user/blurred.jpg', '#ff102030', '#ff203040',
        '#ffffffff', '#80ffffff', '2019-07-15T10:00:00Z', 60, -1, 'harbour'),
    (3, 0, '/usr/share/moodset/harbour/quay.jpg', NULL, '#ff405060', '#ff506070', '#ff000000',
        '#80000000', '2019-07-16T10:00:00Z', 80, 5, NULL);

INSERT INTO dorselId VALUES (3, '04a2b3c4');

INSERT INTO download VALUES (1, 'https://example.org/gull.jpg');

INSERT INTO resource VALUES (3, 'ringerToneFile', 4), (3, 'mailToneFile', 4);
