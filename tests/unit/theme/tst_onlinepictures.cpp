// SPDX-License-Identifier: BSD-3-Clause
#include "fewdescriptors.h"
#include "messagelog.h"
#include "moodsetlibrary.h"
#include "onlinefixture.h"
#include "storetrace.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QNetworkReply>
#include <QTest>

namespace {

const QString ReadyFunction = QStringLiteral("void SystemTheme::onlineImageReady(QNetworkReply*)");

QString errorIn(const QUrl& url, const QString& error)
{
    QString printed = error;
    printed.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return ReadyFunction
        + QStringLiteral(" Error in QUrl(\"%1\") : \"%2\"").arg(url.toString(), printed);
}

QString notSaved(const QString& path)
{
    return QStringLiteral("Failed to save online image... \"%1\"").arg(path);
}

} // namespace

/// Tests requests for pictures on the network.
class OnlinePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downloadedPictureComesIntoForce()
    {
        MessageLog log;
        OnlineFixture fixture;

        fixture.set(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
        QCOMPARE(
            fixture.moodsetRow(
                fixture.saved,
                QStringLiteral("homeWallpaper, ringerVolume, enabledSounds, version")),
            QStringList(
                {ThemeFixture::wallpaper(fixture.saved, QStringLiteral("hp.jpg")),
                 QStringLiteral("80"), QStringLiteral("-1"), QStringLiteral("2")}));
        QCOMPARE(fixture.origin(fixture.saved), fixture.url.toString());
        QCOMPARE(fixture.savedPictures(), QStringList(QStringLiteral("online_img0.jpg")));
    }

    void pictureOfAnyFormatIsSavedAsJpeg_data()
    {
        QTest::addColumn<QByteArray>("format");
        for (const char* const format : {"png", "jpg", "bmp", "webp"}) {
            QTest::newRow(format) << QByteArray(format);
        }
    }

    void pictureOfAnyFormatIsSavedAsJpeg()
    {
        QFETCH(QByteArray, format);
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.answer(fixture.path, OnlineFixture::picture(format.constData()));

        fixture.create(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QImageReader reader(fixture.saved);
        QCOMPARE(reader.format(), QByteArray("jpeg"));
        QCOMPARE(reader.size(), QSize(40, 30));
    }

    void replyOfADownloadIsFreed()
    {
        MessageLog log;
        OnlineFixture fixture;
        const auto replies = [&] { return fixture.theme.findChildren<QNetworkReply*>().size(); };

        fixture.create(fixture.url);

        QCOMPARE(replies(), 1);
        QCOMPARE(fixture.waitForCreated().size(), 1);
        QTRY_COMPARE(replies(), 0);
    }

    void createdDownloadLeavesTheSystemAlone()
    {
        MessageLog log;
        OnlineFixture fixture;

        fixture.create(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
    }

    void pictureInsideTheUrlNeedsNoNetwork()
    {
        MessageLog log;
        OnlineFixture fixture;
        const QUrl url(
            QStringLiteral("data:image/png;base64,")
            + QString::fromLatin1(OnlineFixture::picture().toBase64()));

        fixture.set(url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
    }

    void knownUrlIsNotDownloadedAgain()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.create(fixture.url);
        QCOMPARE(fixture.waitForCreated().size(), 1);

        fixture.set(fixture.url);

        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(fixture.saved))});
        QCOMPARE(fixture.server.requests(), QStringList(fixture.path));
        QCOMPARE(fixture.savedPictures(), QStringList(QStringLiteral("online_img0.jpg")));
    }

    void knownUrlOfAPictureThatIsGoneFails()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.create(fixture.url);
        QCOMPARE(fixture.waitForCreated().size(), 1);
        QVERIFY(QFile::remove(fixture.saved));

        fixture.set(fixture.url);

        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
        QCOMPARE(fixture.server.requests(), QStringList(fixture.path));
    }

    void urlThatIsUnderWayIsDownloadedTwice()
    {
        MessageLog log;
        OnlineFixture fixture;

        fixture.set(fixture.url);
        fixture.set(fixture.url);

        QTRY_COMPARE(
            fixture.savedPictures(),
            QStringList({QStringLiteral("online_img0.jpg"), QStringLiteral("online_img1.jpg")}));
        QCOMPARE(fixture.server.requests(), QStringList({fixture.path, fixture.path}));
        QTRY_COMPARE(
            fixture.moodsetRow(
                fixture.onlinePicture(QStringLiteral("online_img1.jpg")),
                QStringLiteral("version")),
            QStringList(QStringLiteral("2")));
    }

    void eachOfTwoDownloadsHasItsOwnOrigin()
    {
        MessageLog log;
        OnlineFixture fixture;
        const QString path = QStringLiteral("/b.png");
        const QUrl second = fixture.server.url(path);
        fixture.server.answer(path, OnlineFixture::picture());

        fixture.create(fixture.url);
        fixture.create(second);

        QList<int> created;
        QTRY_COMPARE((created += fixture.takeCreated()).size(), 2);
        QStringList origins;
        const QStringList names = fixture.savedPictures();
        for (const QString& name : names) {
            origins.append(fixture.origin(fixture.onlinePicture(name)));
        }
        origins.sort();
        QCOMPARE(origins, QStringList({fixture.url.toString(), second.toString()}));
    }

    void number_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("added");
        QTest::newRow("first") << QStringList() << QStringLiteral("online_img0.jpg");
        QTest::newRow("next") << QStringList{QStringLiteral("online_img0.jpg")}
                              << QStringLiteral("online_img1.jpg");
        QTest::newRow("gap below")
            << QStringList{QStringLiteral("online_img1.jpg")} << QStringLiteral("online_img1.jpg");
        QTest::newRow("other names of the kind")
            << QStringList{QStringLiteral("online_img.png"), QStringLiteral("online_img_a.txt")}
            << QStringLiteral("online_img2.jpg");
        QTest::newRow("names of other kinds")
            << QStringList{QStringLiteral("img0.jpg"), QStringLiteral(".online_img0.jpg")}
            << QStringLiteral("online_img0.jpg");
        QTest::newRow("folder of the kind")
            << QStringList{QStringLiteral("online_img7/")} << QStringLiteral("online_img0.jpg");
    }

    /// The number is the number of existing files. If one was deleted, it can be the number of an
    /// existing file.
    void number()
    {
        QFETCH(QStringList, present);
        QFETCH(QString, added);
        MessageLog log;
        OnlineFixture fixture;
        for (const QString& name : present) {
            const QString path = QStringLiteral("pictures/") + name;
            if (name.endsWith(QLatin1Char('/'))) {
                fixture.folder.makeDirectory(path);
            } else {
                fixture.folder.write(path);
            }
        }

        fixture.create(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(QImage(fixture.onlinePicture(added)).size(), QSize(40, 30));
        QVERIFY(fixture.fileId(fixture.onlinePicture(added)) != 0);
    }

    void overwrittenPictureHasItsNewOrigin()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.download(QStringLiteral("/b.png"));
        fixture.download(QStringLiteral("/c.png"));
        const QString second = fixture.onlinePicture(QStringLiteral("online_img1.jpg"));
        const qint64 id = fixture.fileId(second);
        QVERIFY(QFile::remove(fixture.saved));

        fixture.create(fixture.url);

        QCOMPARE(fixture.waitForCreated(), QList<int>{int(id)});
        QCOMPARE(fixture.savedPictures(), QStringList(QStringLiteral("online_img1.jpg")));
        QCOMPARE(fixture.origin(second), fixture.url.toString());
    }

    void errorOfTheServer_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QString>("error");
        QTest::newRow("no such file")
            << QByteArray("404 Not Found")
            << QStringLiteral("Error transferring %1 - server replied: Not Found");
        QTest::newRow("server's own")
            << QByteArray("500 Internal Server Error")
            << QStringLiteral("Error transferring %1 - server replied: Internal Server Error");
        QTest::newRow("forbidden")
            << QByteArray("403 Keep \"out\"")
            << QStringLiteral("Error transferring %1 - server replied: Keep \"out\"");
    }

    void errorOfTheServer()
    {
        QFETCH(QByteArray, status);
        QFETCH(QString, error);
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.answer(fixture.path, OnlineFixture::picture(), status);

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {errorIn(fixture.url, error.arg(fixture.url.toString()))});
    }

    void serverThatHangsUp()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.hangUp(fixture.path);

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {errorIn(fixture.url, QStringLiteral("Connection closed"))});
    }

    void serverThatDoesNotListen()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.close();

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {errorIn(fixture.url, QStringLiteral("Connection refused"))});
    }

    void schemeThatNobodyKnows()
    {
        MessageLog log;
        OnlineFixture fixture;
        const QUrl url(QStringLiteral("pigeon://loft/a.png"));

        fixture.set(url);

        verifyFailure(
            &fixture, &log, {errorIn(url, QStringLiteral("Protocol \"pigeon\" is unknown"))});
    }

    void certificateThatNobodyTrusts()
    {
        MessageLog log;
        OnlineFixture fixture(HttpServer::Transport::UntrustedCertificate);

        fixture.set(fixture.url);

        verifyFailure(
            &fixture, &log, {errorIn(fixture.url, QStringLiteral("SSL handshake failed"))});
        QCOMPARE(fixture.server.requests(), QStringList());
    }

    void redirectIsNotFollowed()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.answer(QStringLiteral("/b.png"), OnlineFixture::picture());
        fixture.server.answer(
            fixture.path, QByteArray(), "302 Found",
            "Location: " + fixture.server.url(QStringLiteral("/b.png")).toEncoded() + "\r\n");

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {notSaved(fixture.saved)});
        QCOMPARE(fixture.server.requests(), QStringList(fixture.path));
    }

    void bodyThatIsNoPicture_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("page") << QByteArray("<html><body>no picture</body></html>");
        QTest::newRow("beginning of a picture") << QByteArray("BM");
        QTest::newRow("drawing with text")
            << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
                          "<text y='9'>a</text></svg>");
        QTest::newRow("packed drawing with text") << QByteArray::fromBase64(
            "H4sIAAAAAAACA7MpLktXqMjNySu2Vc8oKSmw0tcvLy/XKzfWyy9K1zcyMDDQB6pQVyjPTCnJ"
            "sFW3VFfISM1MzygBMe1sSlIrShQqwexEG30Qz84GpN4OACOrYPdXAAAA");
    }

    void bodyThatIsNoPicture()
    {
        QFETCH(QByteArray, body);
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.answer(fixture.path, body);

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {notSaved(fixture.saved)});
    }

    void picturesFolderThatIsMissing()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.folder.remove(QStringLiteral("pictures"));

        fixture.set(fixture.url);

        verifyFailure(&fixture, &log, {notSaved(fixture.saved)});
        QVERIFY(!QDir(fixture.onlinePicture(QString())).exists());
    }

    void pictureThatGetsNoRowStaysAFile()
    {
        MessageLog log;
        OnlineFixture fixture;
        MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));

        fixture.set(fixture.url);

        QStringList warnings;
        QTRY_VERIFY(!(warnings += log.takeWarnings()).isEmpty());
        MoodsetLibrary::exec(QStringLiteral("DROP TRIGGER refuse_INSERT_file;"));
        QCOMPARE(
            warnings,
            refusedWarnings(
                QStringLiteral("qint64 FileManager::insertFile(const QString&)"),
                QStringLiteral("Failed to execute m_fileInsert."),
                QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                               "modificationTime, permissions, metadataCurrent) "
                               "VALUES (?, ?, ?, ?, 3, 0);"))
                + QStringList(
                    {ReadyFunction, QStringLiteral("Failed to insert new image into database")}));
        QCOMPARE(fixture.savedPictures(), QStringList(QStringLiteral("online_img0.jpg")));
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
    }

    void pictureWhoseOriginIsNotKeptComesIntoForce()
    {
        MessageLog log;
        OnlineFixture fixture;
        MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("download")));

        fixture.set(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        MoodsetLibrary::exec(QStringLiteral("DROP TRIGGER refuse_INSERT_download;"));
        QCOMPARE(
            log.takeWarnings(),
            refusedWarnings(
                QStringLiteral("bool DownloadManager::create(qint64, QUrl)"),
                QStringLiteral("Failed to execute m_insertDownload."),
                QStringLiteral(
                    "INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);")));
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
    }

    void failedDownloadsTakeNoDescriptorsFromLaterOnes()
    {
        MessageLog log;
        OnlineFixture fixture;
        const QUrl url(QStringLiteral("pigeon://loft/a.png"));
        const QStringList expected{errorIn(url, QStringLiteral("Protocol \"pigeon\" is unknown"))};
        fixture.set(url);
        verifyFailure(&fixture, &log, expected);
        // These are enough for a request with a download, but not for many downloads at a time.
        const FewDescriptors limit(32);

        constexpr int downloads = 5;
        for (int i = 0; i < downloads; ++i) {
            fixture.set(url);
            verifyFailure(&fixture, &log, expected);
        }
    }

    void requestAfterAFailedDownloadWorks()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.server.answer(fixture.path, "no picture");
        fixture.set(fixture.url);
        verifyFailure(&fixture, &log, {notSaved(fixture.saved)});
        fixture.server.answer(fixture.path, OnlineFixture::picture());

        fixture.set(fixture.url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
    }

private:
    /// Waits for the warnings of a failing request, which has no other effect.
    static void verifyFailure(OnlineFixture* fixture, MessageLog* log, const QStringList& expected)
    {
        QStringList warnings;
        QTRY_VERIFY(!(warnings += log->takeWarnings()).isEmpty());
        QCOMPARE(warnings, expected);
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture->takeCreated(), QList<int>());
        QCOMPARE(fixture->savedPictures(), QStringList());
    }
};

QTEST_GUILESS_MAIN(OnlinePicturesTest)

#include "tst_onlinepictures.moc"
