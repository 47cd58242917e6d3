// SPDX-License-Identifier: BSD-3-Clause
// Tests how ImageManager handles more pictures than it reads in one turn. The pictures here have
// rows but no files, because their data do not matter.
#include "content/dbmanager.h"
#include "indexing/imagemanager.h"
#include "messagelog.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

namespace {

void run(const QString& statement)
{
    QSqlQuery query(*DbManager::instance());
    QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
}

int count(const QString& what)
{
    QSqlQuery query(*DbManager::instance());
    const bool found = query.exec(QStringLiteral("SELECT count(*) FROM ") + what) && query.next();
    return found ? query.value(0).toInt() : -1;
}

/// Pictures with the ids 1 to `pictures` that wait to be read.
void addPictures(int pictures)
{
    run(QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, '/missing', 0);"));
    run(QStringLiteral(
            "WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < %1)"
            " INSERT INTO file (id, directoryId, mimeType, fileName, permissions, metadataCurrent)"
            " SELECT n, 1, 'image/jpeg', n || '.jpg', 3, 0 FROM number;")
            .arg(pictures));
}

void markChanged(int id)
{
    run(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = %1;").arg(id));
}

const QString Images = QStringLiteral("image");
const QString Waiting = QStringLiteral("file WHERE metadataCurrent = 0");

} // namespace

class ImageBatchesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsAHundredPerTurnInTheOrderOfTheirIds();
    void readsAPictureAgainThatChangesBehindTheOthers();
    void readsPicturesAgainThatChangeAfterTheLast();
    void leavesOtherFilesAlone();
    void triesPicturesAgainWhoseRowsCouldNotBeWritten();
    void reportsTheFirstQueryAlsoWhenALaterTurnFails();
};

void ImageBatchesTest::init()
{
    for (const char* table : {"image", "file", "directory"}) {
        run(QStringLiteral("DELETE FROM %1;").arg(QLatin1String(table)));
    }
}

void ImageBatchesTest::readsAHundredPerTurnInTheOrderOfTheirIds()
{
    addPictures(250);
    ImageManager manager(*DbManager::instance());

    QVERIFY(manager.updateMetaData());
    QCOMPARE(count(Images), 100);
    QVERIFY(manager.updateMetaData());
    QCOMPARE(count(Images), 200);
    QCOMPARE(count(Waiting + QStringLiteral(" AND id <= 200")), 0);
    QVERIFY(!manager.updateMetaData());
    QCOMPARE(count(Images), 250);
    QCOMPARE(count(Waiting), 0);
}

void ImageBatchesTest::readsAPictureAgainThatChangesBehindTheOthers()
{
    addPictures(250);
    ImageManager manager(*DbManager::instance());
    QVERIFY(manager.updateMetaData());
    markChanged(5);
    run(QStringLiteral("DELETE FROM image WHERE fileId = 5;"));

    QVERIFY(manager.updateMetaData());
    QVERIFY(!manager.updateMetaData());

    QCOMPARE(count(Waiting), 0);
    QCOMPARE(count(Images), 250);
}

void ImageBatchesTest::readsPicturesAgainThatChangeAfterTheLast()
{
    addPictures(200);
    ImageManager manager(*DbManager::instance());
    QVERIFY(manager.updateMetaData());
    QVERIFY(manager.updateMetaData());
    markChanged(7);
    markChanged(150);

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(count(Waiting), 0);
}

void ImageBatchesTest::leavesOtherFilesAlone()
{
    addPictures(250);
    run(QStringLiteral("UPDATE file SET mimeType = 'text/plain' WHERE id IN (1, 120, 250);"));
    ImageManager manager(*DbManager::instance());

    QVERIFY(manager.updateMetaData());
    QVERIFY(manager.updateMetaData());
    QVERIFY(!manager.updateMetaData());

    QCOMPARE(count(Images), 247);
    QCOMPARE(count(Waiting), 3);
}

void ImageBatchesTest::triesPicturesAgainWhoseRowsCouldNotBeWritten()
{
    MessageLog log;
    addPictures(250);
    ImageManager manager(*DbManager::instance());
    QVERIFY(manager.updateMetaData());
    run(QStringLiteral("CREATE TEMP TRIGGER refusal BEFORE INSERT ON image "
                       "BEGIN SELECT RAISE(ABORT, 'refused'); END;"));

    QVERIFY(!manager.updateMetaData());
    QCOMPARE(log.takeWarnings().value(1), QStringLiteral("Failed to execute m_imageUpdate."));
    QCOMPARE(count(Waiting), 150);

    run(QStringLiteral("DROP TRIGGER refusal;"));
    QVERIFY(manager.updateMetaData());
    QVERIFY(!manager.updateMetaData());
    QCOMPARE(count(Waiting), 0);
}

void ImageBatchesTest::reportsTheFirstQueryAlsoWhenALaterTurnFails()
{
    MessageLog log;
    addPictures(250);
    ImageManager manager(*DbManager::instance());
    QVERIFY(manager.updateMetaData());
    run(QStringLiteral("ALTER TABLE directory RENAME TO elsewhere;"));

    QVERIFY(!manager.updateMetaData());

    const QStringList warnings = log.takeWarnings();
    run(QStringLiteral("ALTER TABLE elsewhere RENAME TO directory;"));
    QCOMPARE(warnings.size(), 4);
    QCOMPARE(warnings.at(1), QStringLiteral("Failed to execute m_modifiedQuery"));
    QVERIFY(warnings.at(3).startsWith(
        QStringLiteral("\"SELECT file.id, directory.path, file.fileName FROM file LEFT JOIN "
                       "directory ON file.directoryId = directory.id WHERE file.metadataCurrent")));
}

QTEST_GUILESS_MAIN(ImageBatchesTest)
#include "tst_imagebatches.moc"
