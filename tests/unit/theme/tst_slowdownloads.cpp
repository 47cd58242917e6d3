// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"
#include "onlinefixture.h"
#include "storetrace.h"

#include <QTest>

/// Tests slow downloads during which other requests arrive.
class SlowDownloadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bodyIsWaitedFor()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.setSlowly(fixture.path);
        QCOMPARE(StoreTrace::take(), QStringList());

        fixture.server.release(fixture.path);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(fixture.saved));
    }

    void bodyThatBreaksOffIsNotSaved()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.setSlowly(fixture.path);

        fixture.server.breakOff(fixture.path);

        QStringList warnings;
        QTRY_VERIFY(!(warnings += log.takeWarnings()).isEmpty());
        QCOMPARE(
            warnings,
            QStringList(QStringLiteral("void SystemTheme::onlineImageReady(QNetworkReply*) Error "
                                       "in QUrl(\"%1\") : \"Connection closed\"")
                            .arg(fixture.url.toString())));
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.savedPictures(), QStringList());
    }

    /// A download does not record its request, so both are applied.
    void crossingDownloadsComeIntoForceAsTheyEnd()
    {
        MessageLog log;
        OnlineFixture fixture;
        const QString other = QStringLiteral("/b.png");
        fixture.setSlowly(fixture.path);
        fixture.setSlowly(other);

        fixture.server.release(other);
        QCOMPARE(fixture.waitForCreated().size(), 1);
        const QStringList keysOfTheOther = ThemeFixture::takeKeys();
        fixture.server.release(fixture.path);
        QCOMPARE(fixture.waitForCreated().size(), 1);

        const QString second = fixture.onlinePicture(QStringLiteral("online_img1.jpg"));
        QCOMPARE(keysOfTheOther, fixture.keysOfDownload(fixture.saved));
        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOfDownload(second));
        QCOMPARE(fixture.origin(fixture.saved), fixture.server.url(other).toString());
        QCOMPARE(fixture.origin(second), fixture.url.toString());
    }

    void downloadThatACreationOvertakesIsOnlyStored()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.setSlowly(fixture.path);

        const QString other = fixture.addPicture();
        fixture.create(other);
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(other))});
        fixture.server.release(fixture.path);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(
            fixture.moodsetRow(fixture.saved, QStringLiteral("version")),
            QStringList(QStringLiteral("2")));
    }

    void downloadThatACreatedOneOvertakesIsOnlyStored()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.setSlowly(fixture.path);

        fixture.download(QStringLiteral("/b.png"));
        fixture.server.release(fixture.path);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(StoreTrace::take(), QStringList());
    }

    /// The first key then has the value of the later request.
    void downloadThatAnActivationOvertakesComesIntoForceAfterIt()
    {
        MessageLog log;
        OnlineFixture fixture;
        fixture.setSlowly(fixture.path);
        const QString other = fixture.addPicture();
        fixture.set(other);
        QCOMPARE(
            ThemeFixture::takeKeys(), fixture.keysOf(other) + ThemeFixture::partnerSpaceKeys());
        fixture.takeCreated();

        fixture.server.release(fixture.path);

        QCOMPARE(fixture.waitForCreated().size(), 1);
        QCOMPARE(
            ThemeFixture::takeKeys(),
            fixture.keysOf(fixture.saved, other) + ThemeFixture::partnerSpaceKeys());
    }

    void downloadUnderWayIsDroppedAtTheEnd()
    {
        const QString path = QStringLiteral("/a.png");
        MessageLog log;
        HttpServer server;
        server.answer(path, OnlineFixture::picture());
        server.hold(path);
        {
            ThemeFixture fixture;
            fixture.set(server.url(path));
            QTRY_VERIFY(server.isHolding(path));
        }

        QCOMPARE(log.takeWarnings(), QStringList());
        QCOMPARE(StoreTrace::take(), QStringList());
    }
};

QTEST_GUILESS_MAIN(SlowDownloadsTest)

#include "tst_slowdownloads.moc"
