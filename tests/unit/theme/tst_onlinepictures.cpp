// SPDX-License-Identifier: BSD-3-Clause
#include "httpserver.h"
#include "messagelog.h"
#include "moodsetlibrary.h"
#include "storetrace.h"
#include "themefixture.h"
#include "themekeys.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QtTest>

#include <memory>

namespace {

const QString ReadyFunction = QStringLiteral("void SystemTheme::onlineImageReady(QNetworkReply*)");

/// A picture of one colour, as a server sends it.
QByteArray picture(const char* format = "png", const QColor& color = Qt::red)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(color);
    QByteArray data;
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format)) {
        QTest::qFail("Cannot make the picture", __FILE__, __LINE__);
    }
    return data;
}

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

/// The first key as it is written for a request.
QString request(const QString& path)
{
    return ThemeKeys::written(ThemeKeys::picture, path);
}

QStringList onlinePictures(const ThemeFixture& fixture)
{
    return QDir(fixture.onlinePicture(QString())).entryList(QDir::Files, QDir::Name);
}

} // namespace

/// What becomes of requests for pictures on the network.
class OnlinePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downloadedPictureComesIntoForce()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.set(server.url(QStringLiteral("/a.png")));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, QString()) + ThemeFixture::partnerSpaceKeys());
        QCOMPARE(
            fixture.moodsetRow(
                path, QStringLiteral("homeWallpaper, ringerVolume, enabledSounds, version")),
            QStringList(
                {ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg")), QStringLiteral("80"),
                 QStringLiteral("-1"), QStringLiteral("2")}));
        QCOMPARE(
            fixture.library.value(
                QStringLiteral("SELECT source FROM download WHERE fileId = ?"),
                {fixture.fileId(path)}),
            QVariant(server.url(QStringLiteral("/a.png")).toString()));
        QCOMPARE(onlinePictures(fixture), QStringList(QStringLiteral("online_img0.jpg")));
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
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a"), picture(format.constData()));

        fixture.create(server.url(QStringLiteral("/a")));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QImageReader reader(fixture.onlinePicture(QStringLiteral("online_img0.jpg")));
        QCOMPARE(reader.format(), QByteArray("jpeg"));
        QCOMPARE(reader.size(), QSize(40, 30));
    }

    void createdDownloadLeavesTheSystemAlone()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.create(server.url(QStringLiteral("/a.png")));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
    }

    void pictureInsideTheUrlNeedsNoNetwork()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QUrl url(
            QStringLiteral("data:image/png;base64,") + QString::fromLatin1(picture().toBase64()));

        fixture.set(url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, QString()) + ThemeFixture::partnerSpaceKeys());
    }

    void knownUrlIsNotDownloadedAgain()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());
        fixture.create(server.url(QStringLiteral("/a.png")));
        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));

        fixture.set(server.url(QStringLiteral("/a.png")));

        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, QString()) + ThemeFixture::partnerSpaceKeys());
        QCOMPARE(fixture.takeCreated(), QList<int>{static_cast<int>(fixture.fileId(path))});
        QCOMPARE(server.requests(), QStringList(QStringLiteral("/a.png")));
        QCOMPARE(onlinePictures(fixture), QStringList(QStringLiteral("online_img0.jpg")));
    }

    void knownUrlOfAPictureThatIsGoneFails()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());
        fixture.create(server.url(QStringLiteral("/a.png")));
        QCOMPARE(fixture.waitForCreated().size(), 1);
        QVERIFY(QFile::remove(fixture.onlinePicture(QStringLiteral("online_img0.jpg"))));

        fixture.set(server.url(QStringLiteral("/a.png")));

        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
        QCOMPARE(server.requests(), QStringList(QStringLiteral("/a.png")));
    }

    void urlThatIsUnderWayIsDownloadedTwice()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.set(server.url(QStringLiteral("/a.png")));
        fixture.set(server.url(QStringLiteral("/a.png")));

        QTRY_COMPARE(
            onlinePictures(fixture),
            QStringList({QStringLiteral("online_img0.jpg"), QStringLiteral("online_img1.jpg")}));
        QCOMPARE(
            server.requests(), QStringList({QStringLiteral("/a.png"), QStringLiteral("/a.png")}));
        QTRY_COMPARE(
            fixture.moodsetRow(
                fixture.onlinePicture(QStringLiteral("online_img1.jpg")),
                QStringLiteral("version")),
            QStringList(QStringLiteral("2")));
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

    /// The number is how many there are; a gap makes it that of a picture that is there.
    void number()
    {
        QFETCH(QStringList, present);
        QFETCH(QString, added);
        MessageLog log;
        ThemeFixture fixture;
        for (const QString& name : present) {
            const QString path = QStringLiteral("pictures/") + name;
            if (name.endsWith(QLatin1Char('/'))) {
                fixture.folder.makeDirectory(path);
            } else {
                fixture.folder.write(path);
            }
        }
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.create(server.url(QStringLiteral("/a.png")));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(QImage(fixture.onlinePicture(added)).size(), QSize(40, 30));
        QVERIFY(fixture.fileId(fixture.onlinePicture(added)) != 0);
    }

    void overwrittenPictureHasItsNewOrigin()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        for (const QString& path :
             {QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/c")}) {
            server.answer(path, picture());
        }
        for (const QString& path : {QStringLiteral("/a"), QStringLiteral("/b")}) {
            fixture.create(server.url(path));
            QCOMPARE(fixture.waitForCreated().size(), 1);
        }
        const QString second = fixture.onlinePicture(QStringLiteral("online_img1.jpg"));
        const qint64 id = fixture.fileId(second);
        QVERIFY(QFile::remove(fixture.onlinePicture(QStringLiteral("online_img0.jpg"))));

        fixture.create(server.url(QStringLiteral("/c")));

        QCOMPARE(fixture.waitForCreated(), QList<int>{static_cast<int>(id)});
        QCOMPARE(onlinePictures(fixture), QStringList(QStringLiteral("online_img1.jpg")));
        QCOMPARE(
            fixture.library.value(
                QStringLiteral("SELECT source FROM download WHERE fileId = ?"), {id}),
            QVariant(server.url(QStringLiteral("/c")).toString()));
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
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture(), status);

        const QUrl url = server.url(QStringLiteral("/a.png"));
        fixture.set(url);

        verifyFailure(&fixture, &log, {errorIn(url, error.arg(url.toString()))});
    }

    void serverThatHangsUp()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.hangUp(QStringLiteral("/a.png"));

        const QUrl url = server.url(QStringLiteral("/a.png"));
        fixture.set(url);

        verifyFailure(&fixture, &log, {errorIn(url, QStringLiteral("Connection closed"))});
    }

    void serverThatDoesNotListen()
    {
        MessageLog log;
        ThemeFixture fixture;
        auto server = std::make_unique<HttpServer>();
        const QUrl url = server->url(QStringLiteral("/a.png"));
        server.reset();

        fixture.set(url);

        verifyFailure(&fixture, &log, {errorIn(url, QStringLiteral("Connection refused"))});
    }

    void schemeThatNobodyKnows()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QUrl url(QStringLiteral("pigeon://loft/a.png"));

        fixture.set(url);

        verifyFailure(
            &fixture, &log, {errorIn(url, QStringLiteral("Protocol \"pigeon\" is unknown"))});
    }

    void certificateThatNobodyTrusts()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server(HttpServer::Transport::UntrustedCertificate);
        server.answer(QStringLiteral("/a.png"), picture());

        const QUrl url = server.url(QStringLiteral("/a.png"));
        fixture.set(url);

        verifyFailure(&fixture, &log, {errorIn(url, QStringLiteral("SSL handshake failed"))});
        QCOMPARE(server.requests(), QStringList());
    }

    void redirectIsNotFollowed()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/b.png"), picture());
        server.answer(
            QStringLiteral("/a.png"), QByteArray(), "302 Found",
            "Location: " + server.url(QStringLiteral("/b.png")).toEncoded() + "\r\n");

        fixture.set(server.url(QStringLiteral("/a.png")));

        verifyFailure(
            &fixture, &log, {notSaved(fixture.onlinePicture(QStringLiteral("online_img0.jpg")))});
        QCOMPARE(server.requests(), QStringList(QStringLiteral("/a.png")));
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
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.jpg"), body);

        fixture.set(server.url(QStringLiteral("/a.jpg")));

        verifyFailure(
            &fixture, &log, {notSaved(fixture.onlinePicture(QStringLiteral("online_img0.jpg")))});
    }

    void picturesFolderThatIsMissing()
    {
        MessageLog log;
        ThemeFixture fixture;
        fixture.folder.remove(QStringLiteral("pictures"));
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.set(server.url(QStringLiteral("/a.png")));

        verifyFailure(
            &fixture, &log, {notSaved(fixture.onlinePicture(QStringLiteral("online_img0.jpg")))});
        QVERIFY(!QDir(fixture.onlinePicture(QString())).exists());
    }

    void pictureThatGetsNoRowStaysAFile()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());
        MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));

        fixture.set(server.url(QStringLiteral("/a.png")));

        QStringList warnings;
        QTRY_VERIFY(!(warnings += log.takeWarnings()).isEmpty());
        MoodsetLibrary::exec(QStringLiteral("DROP TRIGGER refuse_INSERT_file;"));
        QCOMPARE(warnings.value(1), QStringLiteral("Failed to execute m_fileInsert."));
        QCOMPARE(
            warnings.mid(4),
            QStringList(
                {ReadyFunction, QStringLiteral("Failed to insert new image into database")}));
        QCOMPARE(onlinePictures(fixture), QStringList(QStringLiteral("online_img0.jpg")));
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
    }

    void pictureWhoseOriginIsNotKeptComesIntoForce()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        server.answer(QStringLiteral("/a.png"), picture());
        MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("download")));

        fixture.set(server.url(QStringLiteral("/a.png")));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        MoodsetLibrary::exec(QStringLiteral("DROP TRIGGER refuse_INSERT_download;"));
        const QStringList warnings = log.takeWarnings();
        QCOMPARE(warnings.size(), 4);
        QCOMPARE(warnings.at(1), QStringLiteral("Failed to execute m_insertDownload."));
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, QString()) + ThemeFixture::partnerSpaceKeys());
    }

    void slowBodyIsWaitedFor()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        startSlowly(&server, QStringLiteral("/a.png"));
        fixture.set(server.url(QStringLiteral("/a.png")));
        QTRY_VERIFY(server.isHolding(QStringLiteral("/a.png")));
        QCOMPARE(StoreTrace::take(), QStringList());

        server.release(QStringLiteral("/a.png"));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, QString()) + ThemeFixture::partnerSpaceKeys());
    }

    /// Which request a download belongs to is not kept, so that both come into force.
    void crossingDownloadsComeIntoForceAsTheyEnd()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        const QStringList paths{QStringLiteral("/a.png"), QStringLiteral("/b.png")};
        for (const QString& path : paths) {
            startSlowly(&server, path);
            fixture.set(server.url(path));
            QTRY_VERIFY(server.isHolding(path));
        }

        QStringList sources;
        for (const QString& path : {paths.at(1), paths.at(0)}) {
            server.release(path);
            QCOMPARE(fixture.waitForCreated().size(), 1);
            const QString file =
                fixture.onlinePicture(QStringLiteral("online_img%1.jpg").arg(sources.size()));
            QCOMPARE(
                ThemeFixture::takeKeys(),
                fixture.keysOf(file, QString()) + ThemeFixture::partnerSpaceKeys());
            sources.append(fixture.library
                               .value(
                                   QStringLiteral("SELECT source FROM download WHERE fileId = ?"),
                                   {fixture.fileId(file)})
                               .toString());
        }

        QCOMPARE(
            sources,
            QStringList({server.url(paths.at(1)).toString(), server.url(paths.at(0)).toString()}));
    }

    void downloadThatACreationOvertakesIsOnlyStored()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        startSlowly(&server, QStringLiteral("/a.png"));
        fixture.set(server.url(QStringLiteral("/a.png")));
        QTRY_VERIFY(server.isHolding(QStringLiteral("/a.png")));

        const QString other = fixture.addPicture();
        fixture.create(other);
        QCOMPARE(fixture.takeCreated(), QList<int>{static_cast<int>(fixture.fileId(other))});
        server.release(QStringLiteral("/a.png"));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(
            fixture.moodsetRow(
                fixture.onlinePicture(QStringLiteral("online_img0.jpg")),
                QStringLiteral("version")),
            QStringList(QStringLiteral("2")));
    }

    void createdDownloadThatOvertakesIsOnlyStoredToo()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        startSlowly(&server, QStringLiteral("/a.png"));
        server.answer(QStringLiteral("/b.png"), picture());
        fixture.set(server.url(QStringLiteral("/a.png")));
        QTRY_VERIFY(server.isHolding(QStringLiteral("/a.png")));

        fixture.create(server.url(QStringLiteral("/b.png")));
        QCOMPARE(fixture.waitForCreated().size(), 1);
        server.release(QStringLiteral("/a.png"));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
    }

    /// The first key then holds the request that overtook.
    void downloadThatAnActivationOvertakesComesIntoForceAfterIt()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        startSlowly(&server, QStringLiteral("/a.png"));
        fixture.set(server.url(QStringLiteral("/a.png")));
        QTRY_VERIFY(server.isHolding(QStringLiteral("/a.png")));
        const QString other = fixture.addPicture();
        fixture.set(other);
        QCOMPARE(fixture.takeCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys().value(0), request(other));

        server.release(QStringLiteral("/a.png"));

        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QString path = fixture.onlinePicture(QStringLiteral("online_img0.jpg"));
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(path, other) + ThemeFixture::partnerSpaceKeys());
    }

    void requestAfterAFailedDownloadWorks()
    {
        MessageLog log;
        ThemeFixture fixture;
        HttpServer server;
        const QUrl url = server.url(QStringLiteral("/a.png"));
        fixture.set(url);
        verifyFailure(
            &fixture, &log,
            {errorIn(
                url,
                QStringLiteral("Error transferring %1 - server replied: Not Found")
                    .arg(url.toString()))});
        server.answer(QStringLiteral("/a.png"), picture());

        fixture.set(url);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys().value(0), request(QString()));
    }

    void downloadUnderWayIsDroppedAtTheEnd()
    {
        MessageLog log;
        HttpServer server;
        startSlowly(&server, QStringLiteral("/a.png"));
        {
            ThemeFixture fixture;
            fixture.set(server.url(QStringLiteral("/a.png")));
            QTRY_VERIFY(server.isHolding(QStringLiteral("/a.png")));
        }

        QCOMPARE(log.takeWarnings(), QStringList());
        QCOMPARE(StoreTrace::take(), QStringList());
    }

private:
    static void startSlowly(HttpServer* server, const QString& path)
    {
        server->answer(path, picture());
        server->hold(path);
    }

    /// Waits for the warnings of a request that fails, which has no effect but these.
    static void verifyFailure(ThemeFixture* fixture, MessageLog* log, const QStringList& expected)
    {
        QStringList warnings;
        QTRY_VERIFY(!(warnings += log->takeWarnings()).isEmpty());
        QCOMPARE(warnings, expected);
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture->takeCreated(), QList<int>());
        QCOMPARE(onlinePictures(*fixture), QStringList());
    }
};

QTEST_GUILESS_MAIN(OnlinePicturesTest)

#include "tst_onlinepictures.moc"
