// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/imagemanager.h"

#include "announcements.h"
#include "content/moodsetcontent.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "fewdescriptors.h"
#include "hostilepicture.h"
#include "indexdatabase.h"
#include "mediapicture.h"
#include "messagelog.h"
#include "openedfiles.h"
#include "paintedpicture.h"
#include "picturefile.h"
#include "refusedcommit.h"
#include "testfolder.h"

#include <QSqlQuery>
#include <QTest>

namespace {

const QString Constructor = QStringLiteral("ImageManager::ImageManager(QueryAgentDatabase&)");
const QString UpdateMetaData = QStringLiteral("virtual bool ImageManager::updateMetaData()");
const QString ModifiedQuery = QStringLiteral(
    "SELECT file.id, directory.path, file.fileName FROM file LEFT JOIN directory ON "
    "file.directoryId = directory.id WHERE file.metadataCurrent = 0 AND file.mimeType GLOB "
    "'image/*' LIMIT 100;");
const QString ImageUpdate =
    QStringLiteral("INSERT OR REPLACE INTO image (fileId, dateTaken, width, height, orientation) "
                   "VALUES (?, ?, ?, ?, ?);");
const QString ModifiedReset = QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;");

/// A directory whose files have rows that wait for their metadata.
struct Pictures
{
    Pictures()
    {
        database.exec(QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, '%1', 0);")
                          .arg(folder.path()));
    }
    void addRow(const QString& name, const QString& mimeType = QStringLiteral("image/png"))
    {
        QSqlQuery query(database.connection());
        query.prepare(QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                                     "permissions, metadataCurrent) VALUES (1, ?, ?, 3, 0);"));
        query.bindValue(0, mimeType);
        query.bindValue(1, name);
        QVERIFY(query.exec());
    }
    void addRows(int count)
    {
        database.exec(QStringLiteral("BEGIN;"));
        for (int i = 0; i < count; ++i) {
            addRow(QStringLiteral("missing%1.png").arg(i));
        }
        database.exec(QStringLiteral("COMMIT;"));
    }
    void addPicture(const QString& name, const QSize& size)
    {
        QVERIFY(writePicture(folder.path(name), size));
        addRow(name);
    }
    int pendingRows() const
    {
        return database
            .value(QStringLiteral("SELECT count(*) FROM file WHERE metadataCurrent = 0;"))
            .toInt();
    }
    int imageRows() const
    {
        return database.value(QStringLiteral("SELECT count(*) FROM image;")).toInt();
    }
    QSize size(const QString& name) const
    {
        const LibraryDatabase::Rows rows = database.rows(
            QStringLiteral("SELECT width, height FROM image JOIN file ON fileId = id "
                           "WHERE fileName = ?;"),
            {name});
        return rows.size() == 1
            ? QSize(rows.constFirst().at(0).toInt(), rows.constFirst().at(1).toInt())
            : QSize(0, 0);
    }

    TestFolder folder;
    IndexDatabase database;
};

const QSize Unreadable(-1, -1);
const QSize Photo(40, 30);

} // namespace

class ImageManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handlesImages();
    void constructingLeavesNoTransactionOpen();
    void statementThatCannotBePreparedIsReported_data();
    void statementThatCannotBePreparedIsReported();
    void constructingInsideATransactionIsReported();
    void constructingOnAnUnopenedDatabaseIsReported();

    void pictureGetsItsSizeDateAndOrientation();
    void orientationDoesNotTurnTheSize_data();
    void orientationDoesNotTurnTheSize();
    void pictureWithoutADecoderGetsItsSize_data();
    void pictureWithoutADecoderGetsItsSize();
    void pictureIsOpenedOnce();
    void picturesAreReadWithFewDescriptors();
    void pictureWithoutTagsHasNone();
    void oddNamesAreRead_data();
    void oddNamesAreRead();
    void rowsFromTopToBottomMakeNoNegativeHeight();
    void picturesOfOtherFormatsGetAnInvalidSize_data();
    void picturesOfOtherFormatsGetAnInvalidSize();
    void badPictureGetsAnInvalidSize_data();
    void badPictureGetsAnInvalidSize();
    void badPictureDoesNotStopTheBatch();
    void pictureThatIsGoneGetsAnInvalidSize();
    void namesakeWithASuffixIsNotReadInPlaceOfAMissingPicture();
    void fifoInPlaceOfAPictureDoesNotBlock();
    void fileWithoutADirectoryRowGetsAnInvalidSize();
    void changedPictureKeepsItsRow();
    void filesOfOtherTypesAreLeftAlone_data();
    void filesOfOtherTypesAreLeftAlone();

    void batchesOfAHundred_data();
    void batchesOfAHundred();
    void nothingPendingStartsNoTransaction();
    void updatingInsideATransactionCommitsIt();

    void failedQueryIsReported();
    void failedResetIsReportedAndTriedAgain();
    void failedImageUpdateIsReportedAndTriedAgain();
    void failedCommitIsReportedAndTriedAgain();

    void imagesAreAnnounced();
    void nothingPendingIsNotAnnounced();
};

void ImageManagerTest::handlesImages()
{
    MessageLog log;
    IndexDatabase database;
    const ImageManager manager(database.connection());

    QCOMPARE(manager.mimeType(), QStringLiteral("image/*"));
}

void ImageManagerTest::constructingLeavesNoTransactionOpen()
{
    MessageLog log;
    IndexDatabase database;

    const ImageManager manager(database.connection());

    QVERIFY(!database.isInTransaction());
}

void ImageManagerTest::statementThatCannotBePreparedIsReported_data()
{
    QTest::addColumn<QByteArray>("verb");
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QStringList>("expected");
    const QString notAuthorized =
        QStringLiteral("QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")");
    QTest::newRow("m_imageUpdate")
        << QByteArray("INSERT") << QByteArray("image")
        << queryWarnings(
               Constructor, QStringLiteral("Failed to prepare m_imageUpdate."), notAuthorized,
               ImageUpdate);
    QTest::newRow("m_modifiedQuery")
        << QByteArray("SELECT") << QByteArray()
        << queryWarnings(
               Constructor, QStringLiteral("Failed to prepare m_modifiedQuery."), notAuthorized,
               ModifiedQuery);
    // The message is that of the statement before, which has no error.
    QTest::newRow("m_modifiedReset")
        << QByteArray("UPDATE") << QByteArray("file")
        << queryWarnings(
               Constructor, QStringLiteral("Failed to prepare m_modifiedQuery."),
               QStringLiteral("QSqlError(\"\", \"\", \"\")"), ModifiedQuery);
}

void ImageManagerTest::statementThatCannotBePreparedIsReported()
{
    QFETCH(QByteArray, verb);
    QFETCH(QByteArray, table);
    QFETCH(QStringList, expected);
    MessageLog log;
    IndexDatabase database;
    database.refuseToPrepare(verb, 1, table);

    const ImageManager manager(database.connection());

    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(!database.isInTransaction());
}

void ImageManagerTest::constructingInsideATransactionIsReported()
{
    MessageLog log;
    IndexDatabase database;
    QVERIFY(database.connection().transaction());

    const ImageManager manager(database.connection());

    const QStringList expected{
        Constructor, QStringLiteral("Failed to open transation on database"),
        QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                       "\"cannot start a transaction within a transaction\")")};
    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(database.isInTransaction());
}

void ImageManagerTest::constructingOnAnUnopenedDatabaseIsReported()
{
    MessageLog log;
    QueryAgentDatabase database;

    const ImageManager manager(database);

    const QStringList expected{
        Constructor, QStringLiteral("Failed to open transation on database"),
        QStringLiteral("QSqlError(\"\", \"\", \"\")")};
    QCOMPARE(log.takeWarnings(), expected);
}

void ImageManagerTest::pictureGetsItsSizeDateAndOrientation()
{
    MessageLog log;
    Pictures test;
    test.folder.write(
        QStringLiteral("a.jpg"),
        jpegWithExif(exifBlock("2019:08:07 06:05:04", 6), {}, QSize(40, 30)));
    test.addRow(QStringLiteral("a.jpg"), QStringLiteral("image/jpeg"));
    ImageManager manager(test.database.connection());

    QVERIFY(!manager.updateMetaData());

    const LibraryDatabase::Rows rows = test.database.rows(
        QStringLiteral("SELECT fileName, width, height, orientation, dateTaken, metadataCurrent "
                       "FROM image JOIN file ON fileId = id;"));
    QCOMPARE(rows.size(), 1);
    const QVariantList expected{QStringLiteral("a.jpg"), 40, 30, 6};
    QCOMPARE(rows.constFirst().mid(0, 4), expected);
    QCOMPARE(rows.constFirst().at(4).toDateTime(), QDateTime(QDate(2019, 8, 7), QTime(6, 5, 4)));
    QCOMPARE(rows.constFirst().at(5).toInt(), 1);
}

void ImageManagerTest::pictureWithoutADecoderGetsItsSize_data()
{
    QTest::addColumn<QByteArray>("brand");
    QTest::newRow("HEIF") << QByteArray("heic");
    QTest::newRow("AVIF") << QByteArray("avif");
}

void ImageManagerTest::pictureWithoutADecoderGetsItsSize()
{
    QFETCH(QByteArray, brand);
    MessageLog log;
    Pictures test;
    test.folder.write(QStringLiteral("a"), mediaPicture(brand, {QSize(512, 512), Photo}, 1));
    test.addRow(QStringLiteral("a"), QStringLiteral("image/") + QLatin1String(brand));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a")), Photo);
}

void ImageManagerTest::pictureIsOpenedOnce()
{
    constexpr int count = 40;
    MessageLog log;
    Pictures test;
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("%1.jpg").arg(i, 2, 10, QLatin1Char('0'));
        test.folder.write(name, jpegWithExif(exifBlock({}, 6)));
        test.addRow(name);
        paths.append(test.folder.path(name));
    }
    ImageManager manager(test.database.connection());
    OpenedFiles opened(test.folder.path());
    QVERIFY(opened.isValid());

    manager.updateMetaData();

    QCOMPARE(opened.paths(), paths);
}

void ImageManagerTest::picturesAreReadWithFewDescriptors()
{
    constexpr int count = 40;
    MessageLog log;
    for (int descriptors = 2; descriptors <= 40; ++descriptors) {
        Pictures test;
        for (int i = 0; i < count; ++i) {
            test.addPicture(QStringLiteral("%1.png").arg(i), Photo);
        }
        ImageManager manager(test.database.connection());
        {
            const FewDescriptors few(descriptors);
            manager.updateMetaData();
        }
        QCOMPARE(
            test.database.value(
                QStringLiteral("SELECT count(*) FROM image WHERE width = %1;").arg(Photo.width())),
            QVariant(count));
    }
}

void ImageManagerTest::orientationDoesNotTurnTheSize_data()
{
    QTest::addColumn<int>("orientation");
    for (int orientation = 1; orientation <= 8; ++orientation) {
        QTest::addRow("%d", orientation) << orientation;
    }
}

void ImageManagerTest::orientationDoesNotTurnTheSize()
{
    QFETCH(int, orientation);
    MessageLog log;
    Pictures test;
    test.folder.write(
        QStringLiteral("a.jpg"), jpegWithExif(exifBlock({}, orientation), {}, QSize(40, 30)));
    test.addRow(QStringLiteral("a.jpg"), QStringLiteral("image/jpeg"));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a.jpg")), QSize(40, 30));
    QCOMPARE(
        test.database.value(QStringLiteral("SELECT orientation FROM image;")),
        QVariant(orientation));
}

void ImageManagerTest::pictureWithoutTagsHasNone()
{
    MessageLog log;
    Pictures test;
    test.addPicture(QStringLiteral("a.png"), QSize(5, 6));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a.png")), QSize(5, 6));
    QCOMPARE(
        test.database.value(QStringLiteral(
            "SELECT count(*) FROM image WHERE dateTaken IS NULL AND orientation IS NULL;")),
        QVariant(1));
}

void ImageManagerTest::oddNamesAreRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\".png");
    QTest::newRow("line break") << QStringLiteral("two\nlines.png");
    QTest::newRow("glob characters") << QStringLiteral("[a]*?.png");
    QTest::newRow("placeholders") << QStringLiteral("%1 ? :name.png");
    QTest::newRow("255 bytes") << QString(251, QLatin1Char('x')) + QStringLiteral(".png");
    QTest::newRow("beyond ASCII") << QStringLiteral("\u00e4\U0001f4f7.png");
    QTest::newRow("resource-like") << QStringLiteral(":picture.png");
    QTest::newRow("wrong suffix") << QStringLiteral("picture.gif");
}

void ImageManagerTest::oddNamesAreRead()
{
    QFETCH(QString, name);
    MessageLog log;
    Pictures test;
    QVERIFY(writePicture(test.folder.path(name), QSize(7, 8), "png"));
    test.addRow(name);
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(name), QSize(7, 8));
}

void ImageManagerTest::rowsFromTopToBottomMakeNoNegativeHeight()
{
    MessageLog log;
    Pictures test;
    test.folder.write(QStringLiteral("a.bmp"), topDownBmp(quadrantPicture(QSize(64, 48))));
    test.addRow(QStringLiteral("a.bmp"), QStringLiteral("image/bmp"));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a.bmp")), QSize(64, 48));
}

void ImageManagerTest::picturesOfOtherFormatsGetAnInvalidSize_data()
{
    addUnlistedFormats();
    QTest::newRow("animation without an end") << endlessAnimation();
    QTest::newRow("nested vector picture") << nestedVectorPicture();
}

void ImageManagerTest::picturesOfOtherFormatsGetAnInvalidSize()
{
    QFETCH(QByteArray, bytes);
    MessageLog log;
    Pictures test;
    test.folder.write(QStringLiteral("a.jpg"), bytes);
    test.addRow(QStringLiteral("a.jpg"), QStringLiteral("image/jpeg"));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a.jpg")), Unreadable);
    QCOMPARE(test.pendingRows(), 0);
}

void ImageManagerTest::badPictureGetsAnInvalidSize_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("1 byte") << QByteArray("x");
    QTest::newRow("text") << QByteArray("no picture at all");
    QTest::newRow("cut off in the header") << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("zeros") << QByteArray(10000, '\0');
}

void ImageManagerTest::badPictureGetsAnInvalidSize()
{
    QFETCH(QByteArray, content);
    MessageLog log;
    Pictures test;
    test.folder.write(QStringLiteral("bad.png"), content);
    test.addRow(QStringLiteral("bad.png"));
    ImageManager manager(test.database.connection());

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(test.size(QStringLiteral("bad.png")), Unreadable);
    QCOMPARE(test.pendingRows(), 0);
    QCOMPARE(
        test.database.value(QStringLiteral(
            "SELECT count(*) FROM image WHERE dateTaken IS NULL AND orientation IS NULL;")),
        QVariant(1));
}

void ImageManagerTest::badPictureDoesNotStopTheBatch()
{
    MessageLog log;
    Pictures test;
    test.addPicture(QStringLiteral("a.png"), QSize(1, 2));
    test.folder.write(QStringLiteral("b.png"), "bad");
    test.addRow(QStringLiteral("b.png"));
    test.addPicture(QStringLiteral("c.png"), QSize(3, 4));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("a.png")), QSize(1, 2));
    QCOMPARE(test.size(QStringLiteral("b.png")), Unreadable);
    QCOMPARE(test.size(QStringLiteral("c.png")), QSize(3, 4));
}

void ImageManagerTest::pictureThatIsGoneGetsAnInvalidSize()
{
    MessageLog log;
    Pictures test;
    test.addRow(QStringLiteral("gone.png"));
    ImageManager manager(test.database.connection());

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(test.size(QStringLiteral("gone.png")), Unreadable);
    QCOMPARE(test.pendingRows(), 0);
}

void ImageManagerTest::namesakeWithASuffixIsNotReadInPlaceOfAMissingPicture()
{
    MessageLog log;
    Pictures test;
    QVERIFY(writePicture(test.folder.path(QStringLiteral("gone.png")), QSize(7, 8)));
    test.addRow(QStringLiteral("gone"));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("gone")), Unreadable);
}

void ImageManagerTest::fifoInPlaceOfAPictureDoesNotBlock()
{
    MessageLog log;
    Pictures test;
    test.folder.makeFifo(QStringLiteral("pipe.png"));
    test.addRow(QStringLiteral("pipe.png"));
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(test.size(QStringLiteral("pipe.png")), Unreadable);
}

void ImageManagerTest::fileWithoutADirectoryRowGetsAnInvalidSize()
{
    MessageLog log;
    Pictures test;
    test.addPicture(QStringLiteral("a.png"), QSize(1, 2));
    test.database.exec(QStringLiteral("UPDATE file SET directoryId = 99;"));
    ImageManager manager(test.database.connection());

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(test.size(QStringLiteral("a.png")), Unreadable);
    QCOMPARE(test.pendingRows(), 0);
}

void ImageManagerTest::changedPictureKeepsItsRow()
{
    MessageLog log;
    Pictures test;
    test.addPicture(QStringLiteral("a.png"), QSize(1, 2));
    ImageManager manager(test.database.connection());
    manager.updateMetaData();
    QVERIFY(writePicture(test.folder.path(QStringLiteral("a.png")), QSize(3, 4)));
    test.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0;"));

    manager.updateMetaData();

    QCOMPARE(test.imageRows(), 1);
    QCOMPARE(test.size(QStringLiteral("a.png")), QSize(3, 4));
}

void ImageManagerTest::filesOfOtherTypesAreLeftAlone_data()
{
    QTest::addColumn<QString>("mimeType");
    QTest::newRow("text") << QStringLiteral("text/plain");
    QTest::newRow("moodset") << QStringLiteral("application/x-zavro-moodset");
    QTest::newRow("image inside") << QStringLiteral("application/image/png");
    QTest::newRow("upper case") << QStringLiteral("IMAGE/png");
    QTest::newRow("images") << QStringLiteral("images/png");
    QTest::newRow("none") << QString();
}

void ImageManagerTest::filesOfOtherTypesAreLeftAlone()
{
    QFETCH(QString, mimeType);
    MessageLog log;
    Pictures test;
    QVERIFY(writePicture(test.folder.path(QStringLiteral("a.png")), QSize(1, 2)));
    test.addRow(QStringLiteral("a.png"), mimeType);
    test.addPicture(QStringLiteral("b.png"), QSize(3, 4));
    ImageManager manager(test.database.connection());

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(test.size(QStringLiteral("b.png")), QSize(3, 4));
    QCOMPARE(test.imageRows(), 1);
    QCOMPARE(test.pendingRows(), 1);
}

void ImageManagerTest::batchesOfAHundred_data()
{
    QTest::addColumn<int>("pending");
    QTest::addColumn<QVector<int>>("handled");
    QTest::newRow("1") << 1 << QVector<int>{1};
    QTest::newRow("99") << 99 << QVector<int>{99};
    QTest::newRow("100") << 100 << QVector<int>{100, 0};
    QTest::newRow("101") << 101 << QVector<int>{100, 1};
    QTest::newRow("250") << 250 << QVector<int>{100, 100, 50};
}

void ImageManagerTest::batchesOfAHundred()
{
    QFETCH(int, pending);
    QFETCH(QVector<int>, handled);
    MessageLog log;
    Pictures test;
    test.addRows(pending);
    ImageManager manager(test.database.connection());

    int expectedRows = 0;
    for (const int count : qAsConst(handled)) {
        QCOMPARE(manager.updateMetaData(), count == 100);
        expectedRows += count;
        QCOMPARE(test.imageRows(), expectedRows);
        QCOMPARE(test.pendingRows(), pending - expectedRows);
    }
    QCOMPARE(expectedRows, pending);
}

void ImageManagerTest::nothingPendingStartsNoTransaction()
{
    MessageLog log;
    Pictures test;
    ImageManager manager(test.database.connection());
    QVERIFY(test.database.connection().transaction());

    QVERIFY(!manager.updateMetaData());

    // A transaction of its own would have been committed, and this one with it.
    QVERIFY(test.database.isInTransaction());
}

void ImageManagerTest::updatingInsideATransactionCommitsIt()
{
    MessageLog log;
    Pictures test;
    test.addRows(1);
    ImageManager manager(test.database.connection());
    QVERIFY(test.database.connection().transaction());

    manager.updateMetaData();

    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(test.imageRows(), 1);
}

void ImageManagerTest::failedQueryIsReported()
{
    MessageLog log;
    Pictures test;
    ImageManager manager(test.database.connection());
    test.database.exec(QStringLiteral("DROP TABLE file;"));

    QVERIFY(!manager.updateMetaData());

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            UpdateMetaData, QStringLiteral("Failed to execute m_modifiedQuery"),
            noSuchTable(QStringLiteral("file")), ModifiedQuery));
}

void ImageManagerTest::failedResetIsReportedAndTriedAgain()
{
    MessageLog log;
    Pictures test;
    test.addRows(100);
    ImageManager manager(test.database.connection());
    test.database.exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("file")));

    QVERIFY(!manager.updateMetaData());
    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            UpdateMetaData, QStringLiteral("Failed to execute m_modifiedReset."), refusedError(),
            ModifiedReset));
    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(test.imageRows(), 0);
    QCOMPARE(test.pendingRows(), 100);

    test.database.exec(QStringLiteral("DROP TRIGGER refuse_UPDATE_file;"));
    QVERIFY(manager.updateMetaData());
    QCOMPARE(test.imageRows(), 100);
}

void ImageManagerTest::failedImageUpdateIsReportedAndTriedAgain()
{
    MessageLog log;
    Pictures test;
    test.addRows(100);
    ImageManager manager(test.database.connection());
    test.database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("image")));

    QVERIFY(!manager.updateMetaData());
    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            UpdateMetaData, QStringLiteral("Failed to execute m_imageUpdate."), refusedError(),
            ImageUpdate));
    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(test.imageRows(), 0);
    QCOMPARE(test.pendingRows(), 100);

    test.database.exec(QStringLiteral("DROP TRIGGER refuse_INSERT_image;"));
    QVERIFY(manager.updateMetaData());
    QCOMPARE(test.imageRows(), 100);
}

void ImageManagerTest::failedCommitIsReportedAndTriedAgain()
{
    MessageLog log;
    Pictures test;
    test.addRows(100);
    ImageManager manager(test.database.connection());
    test.database.exec(refuseCommit(QStringLiteral("INSERT"), QStringLiteral("image")));

    // Although the batch is full, the next one must not follow at once.
    QVERIFY(!manager.updateMetaData());
    QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(UpdateMetaData)));
    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(test.imageRows(), 0);
    QCOMPARE(test.pendingRows(), 100);

    test.database.exec(allowCommit());
    QVERIFY(manager.updateMetaData());
    QCOMPARE(test.imageRows(), 100);
}

void ImageManagerTest::imagesAreAnnounced()
{
    MessageLog log;
    const Announcements announcements;
    Pictures test;
    test.addRows(1);
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::Image});
}

void ImageManagerTest::nothingPendingIsNotAnnounced()
{
    MessageLog log;
    const Announcements announcements;
    Pictures test;
    ImageManager manager(test.database.connection());

    manager.updateMetaData();

    QCOMPARE(Announcements::take(), QVector<int>());
}

QTEST_GUILESS_MAIN(ImageManagerTest)

#include "tst_imagemanager.moc"
