// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/photoqueryagent.h"
#include "contentlibrary.h"
#include "failuremessages.h"
#include "messagelog.h"
#include "statementprobe.h"

#include <QSqlQuery>

namespace {

const QString Selection = QStringLiteral(
    "SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, file.fileName, "
    "file.displayName, file.permissions, image.dateTaken, image.width, image.height, "
    "image.orientation FROM file INNER JOIN directory on file.directoryId = directory.id ");
const QString Listing = Selection
    + QStringLiteral("INNER JOIN image on file.id = image.fileId ORDER BY image.dateTaken;");
const QString ListFunction =
    QStringLiteral("virtual bool PhotoQueryAgent::query("
                   "QueryAgent::Recipient*, const QueryAgent::Parameters&)");

QDateTime day(int number)
{
    return QDateTime(QDate(2020, 1, number), QTime(12, 30, 15, 250));
}

} // namespace

class PhotoQueryAgentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowBecomesARecord()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addPhoto(QStringLiteral("/a/b.jpg"), day(3));
        library.writer.exec(QStringLiteral("UPDATE file SET displayName = 'B'"));
        library.writer.exec(QStringLiteral("UPDATE image SET orientation = 6"));
        PhotoQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(recorder.contents().size(), 1);
        const Content content = recorder.contents().constFirst();
        QCOMPARE(content.type(), 2);
        const auto* const photo = static_cast<const PhotoData*>(content.data());
        QCOMPARE(photo->id, id);
        QCOMPARE(photo->url, QUrl(QStringLiteral("file:///a/b.jpg")));
        QCOMPARE(photo->mimeType, QStringLiteral("image/jpeg"));
        QCOMPARE(photo->fileName, QStringLiteral("b.jpg"));
        QCOMPARE(photo->displayName, QStringLiteral("B"));
        QCOMPARE(photo->permissions, 3);
        QCOMPARE(photo->dateTaken, day(3));
        QCOMPARE(photo->width, 4);
        QCOMPARE(photo->height, 3);
        QCOMPARE(photo->orientation, 6);
    }

    void listingGoesByTheTimeOfTaking()
    {
        ContentLibrary library;
        library.writer.addPhoto(QStringLiteral("/a/third.jpg"), day(9));
        library.writer.addPhoto(QStringLiteral("/a/second.jpg"), day(2));
        library.writer.addPhoto(QStringLiteral("/a/unknown.jpg"));
        PhotoQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(
            recorder.fileNames(),
            QStringList(
                {QStringLiteral("unknown.jpg"), QStringLiteral("second.jpg"),
                 QStringLiteral("third.jpg")}));
        const auto* const first =
            static_cast<const PhotoData*>(recorder.contents().constFirst().data());
        QVERIFY(first->dateTaken.isNull());
    }

    void listingHoldsOnlyReadPictures()
    {
        ContentLibrary library;
        library.writer.addFile(QStringLiteral("/a/unread.jpg"), QStringLiteral("image/jpeg"));
        library.writer.addPhoto(QStringLiteral("/a/read.jpg"));
        PhotoQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(recorder.fileNames(), QStringList{QStringLiteral("read.jpg")});
    }

    void parametersAreNotRead()
    {
        ContentLibrary library;
        library.writer.addPhoto(QStringLiteral("/a/b.jpg"));
        StatementProbe probe(library.reader);
        PhotoQueryAgent agent(library.reader);
        QueryAgent::Parameters parameters;
        parameters.mimeType = QStringLiteral("text/plain");
        parameters.directories = QStringList{QStringLiteral("/z")};
        parameters.favoriteFilter = QueryAgent::Parameters::Favorites;
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, parameters));

        QCOMPARE(recorder.batchSizes(), QList<int>{1});
        QCOMPARE(probe.takeExecuted(), QStringList{Listing});
    }

    void singlePictureCannotBeRead_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<QString>("tail");
        QTest::newRow("by id") << QUrl()
                               << QStringLiteral("INNER JOIN photo ON file.id = photo.fileId "
                                                 "WHERE file.id = ?;");
        QTest::newRow("by path") << QUrl(QStringLiteral("file:///a/b.jpg"))
                                 << QStringLiteral(
                                        "LEFT JOIN photo ON file.id = photo.fileId "
                                        "WHERE directory.path = ? AND file.fileName = ?;");
        QTest::newRow("by source")
            << QUrl(QStringLiteral("http://host/b.jpg"))
            << QStringLiteral("LEFT JOIN photo ON file.id = photo.fileId WHERE file.id "
                              "IN (SELECT fileId FROM download WHERE source = ?);");
    }

    void singlePictureCannotBeRead()
    {
        QFETCH(QUrl, url);
        QFETCH(QString, tail);
        MessageLog log;
        ContentLibrary library;
        const qint64 id = library.writer.addPhoto(QStringLiteral("/a/b.jpg"));
        library.writer.setSource(id, QStringLiteral("http://host/b.jpg"));
        PhotoQueryAgent agent(library.reader);

        // The cache does not keep the failed statement: it is prepared and reported each time.
        for (int call = 0; call < 2; ++call) {
            const Content content = url.isEmpty() ? agent.queryById(id) : agent.queryByUrl(url);

            QVERIFY(!content.isValid());
            QCOMPARE(
                log.takeWarnings(),
                QStringList(
                    {QStringLiteral("QSqlQuery QueryAgent::prepareQuery(const QString&)"),
                     QStringLiteral("Failed to prepare query"),
                     QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                    "\"no such table: photo\")"),
                     QLatin1Char('"') + Selection + tail + QLatin1Char('"'),
                     QStringLiteral("Content PhotoQueryAgent::querySinglePhoto(QSqlQuery&)"),
                     QStringLiteral("Failed to query photo"),
                     QStringLiteral("QSqlError(\"\", \"Driver not loaded\", "
                                    "\"Driver not loaded\")"),
                     QStringLiteral("\"\"")}));
        }
        QCOMPARE(library.reader.cache.size(), 0);
    }

    void onePictureIsReadByItsId()
    {
        ContentLibrary library;
        const qint64 file = library.writer.addFile(QStringLiteral("/a/unread.jpg"));
        const qint64 photo = library.writer.addPhoto(QStringLiteral("/a/b.jpg"), day(3));
        library.writer.exec(
            QStringLiteral("UPDATE file SET modificationTime = '2021-03-04T05:06:07.089'"));
        PhotoQueryAgent agent(library.reader);

        const Content content = agent.queryPhoto(photo);

        QCOMPARE(content.type(), 2);
        const auto* const read = static_cast<const PhotoData*>(content.data());
        QCOMPARE(read->id, photo);
        QCOMPARE(read->url, QUrl(QStringLiteral("file:///a/b.jpg")));
        QCOMPARE(read->dateTaken, day(3));
        QCOMPARE(read->width, 4);
        QCOMPARE(read->modificationTime(), QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7, 89)));
        QVERIFY(!agent.queryPhoto(file).isValid());
        QVERIFY(!agent.queryPhoto(0).isValid());
    }

    void pagesGoByTheirOrder_data()
    {
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("limit");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QString>("names");
        const int newest = PhotoQueryAgent::Page::NewestFirst;
        const int oldest = PhotoQueryAgent::Page::OldestFirst;
        QTest::newRow("newest") << newest << -1 << 0 << QStringLiteral("d c b u t");
        QTest::newRow("oldest") << oldest << -1 << 0 << QStringLiteral("b c d t u");
        QTest::newRow("limit") << newest << 2 << 0 << QStringLiteral("d c");
        QTest::newRow("offset") << newest << -1 << 3 << QStringLiteral("u t");
        QTest::newRow("both") << oldest << 2 << 1 << QStringLiteral("c d");
        QTest::newRow("none") << newest << 0 << 0 << QString();
        QTest::newRow("over the end") << newest << 2 << 5 << QString();
    }

    void pagesGoByTheirOrder()
    {
        QFETCH(int, order);
        QFETCH(int, limit);
        QFETCH(int, offset);
        QFETCH(QString, names);
        ContentLibrary library;
        library.writer.addPhoto(QStringLiteral("/a/t"));
        library.writer.addPhoto(QStringLiteral("/a/c"), day(5));
        library.writer.addPhoto(QStringLiteral("/a/b"), day(2));
        library.writer.addPhoto(QStringLiteral("/a/u"));
        library.writer.addPhoto(QStringLiteral("/a/d"), day(9));
        PhotoQueryAgent agent(library.reader);
        PhotoQueryAgent::Page page;
        page.order = static_cast<PhotoQueryAgent::Page::Order>(order);
        page.limit = limit;
        page.offset = offset;
        BatchRecorder recorder;

        QVERIFY(agent.queryPage(&recorder, page));

        QCOMPARE(recorder.fileNames().join(QLatin1Char(' ')), names);
    }

    void failuresOfPagesAndOfOnePictureAreReported()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.exec(QStringLiteral("DROP TABLE image"));
        PhotoQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(!agent.queryPage(&recorder, {}));
        QVERIFY(!agent.queryPhoto(1).isValid());

        QVERIFY(recorder.batchSizes().isEmpty());
        const QStringList warnings = log.takeWarnings();
        QVERIFY(warnings.contains(
            QStringLiteral("bool PhotoQueryAgent::queryPage(QueryAgent::Recipient*, const "
                           "PhotoQueryAgent::Page&)")));
        QVERIFY(warnings.contains(QStringLiteral("Content PhotoQueryAgent::queryPhoto(qint64)")));
    }

    void failedListingIsReported()
    {
        MessageLog log;
        ContentLibrary library;
        PhotoQueryAgent agent(library.reader);
        QVERIFY(agent.query(nullptr, {}));
        library.writer.exec(QStringLiteral("DROP TABLE image"));
        BatchRecorder recorder;

        QVERIFY(!agent.query(&recorder, {}));

        QVERIFY(recorder.batchSizes().isEmpty());
        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                ListFunction, QStringLiteral("Failed to execute photo query"),
                QStringLiteral(
                    "QSqlError(\"1\", \"Unable to fetch row\", \"no such table: image\")"),
                Listing));
    }
};

QTEST_GUILESS_MAIN(PhotoQueryAgentTest)

#include "tst_photoqueryagent.moc"
