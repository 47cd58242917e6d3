// SPDX-License-Identifier: BSD-3-Clause
#include "encodedpicture.h"
#include "hostilepicture.h"
#include "httpserver.h"
#include "paintedpicture.h"
#include "testfolder.h"
#include "themesession.h"

#include <QFile>
#include <QTest>

namespace {

const QSize Unreadable(-1, -1);

/// This is more than a test could read in its time.
constexpr qint64 Endless = qint64(1) << 40;

bool writeEndless(const QString& path, const QByteArray& start)
{
    return InstalledBundles::write(path, start) && QFile::resize(path, Endless);
}

/// Whether a process has mapped a file into its memory.
bool hasMapped(qint64 process, const QByteArray& name)
{
    QFile maps(QStringLiteral("/proc/%1/maps").arg(process));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(name);
}

} // namespace

/// Tests files that strangers send as pictures.
class HostilePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startIsNotHeldUp()
    {
        ThemeSession session;
        const UserFolders& folders = session.folders;
        const auto path = [&](const char* name) { return folders.picture(QLatin1String(name)); };
        QVERIFY(InstalledBundles::write(path("animation.jpg"), endlessAnimation()));
        QVERIFY(InstalledBundles::write(path("vector.jpg"), nestedVectorPicture()));
        QVERIFY(InstalledBundles::write(path("vector.svg"), nestedVectorPicture()));
        QVERIFY(writeEndless(path("start.jpg"), "\xff\xd8\xff\xe0"));
        QVERIFY(writeEndless(path("start.gif"), "GIF89a"));
        QVERIFY(writeEndless(path("start.ppm"), "P6\n#"));
        QVERIFY(writeEndless(path("start.xpm"), "/* XPM */"));
        QVERIFY(ThemeSession::writePicture(path("good.png")));

        QVERIFY(session.startAtRest());

        for (const char* const name :
             {"animation.jpg", "vector.jpg", "vector.svg", "start.jpg", "start.gif", "start.ppm",
              "start.xpm"}) {
            QVERIFY2(session.pictureSize(path(name)) == Unreadable, name);
        }
        QCOMPARE(session.pictureSize(path("good.png")), QSize(200, 120));
        QVERIFY(BusClient::isAnswered());
        // We do not control what decoders log.
        session.daemon.takeWarnings();
    }

    void pictureOfAnotherFormatDoesNotBecomeTheTheme_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("animation without an end") << endlessAnimation();
        QTest::newRow("nested vector picture") << nestedVectorPicture();
        QTest::newRow("XPM") << encodedPicture(quadrantPicture(QSize(20, 20)), "xpm");
    }

    void pictureOfAnotherFormatDoesNotBecomeTheTheme()
    {
        QFETCH(QByteArray, bytes);
        ThemeSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.jpg"));
        QVERIFY(InstalledBundles::write(path, bytes));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void pictureOfAnotherFormatIsNotSavedFromTheNetwork_data()
    {
        pictureOfAnotherFormatDoesNotBecomeTheTheme_data();
    }

    void pictureOfAnotherFormatIsNotSavedFromTheNetwork()
    {
        QFETCH(QByteArray, bytes);
        ThemeSession session;
        HttpServer server;
        const QString address = QStringLiteral("/a.jpg");
        server.answer(address, bytes);
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(server.url(address)));

        const QString saved = session.folders.picture(QStringLiteral("online_img0.jpg"));
        const QString warning = QStringLiteral("Failed to save online image... \"%1\"").arg(saved);
        QVERIFY(session.daemon.waitForLine(warning));
        QVERIFY(!QFile::exists(saved));
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList(warning));
    }

    void startOfAnEndlessFileDoesNotBecomeTheTheme_data() { addStartsOfPictures(); }

    void startOfAnEndlessFileDoesNotBecomeTheTheme()
    {
        QFETCH(QByteArray, bytes);
        ThemeSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.jpg"));
        QVERIFY(writeEndless(path, bytes));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
        // We do not control what decoders log.
        session.daemon.takeWarnings();
    }

    void whatIsNoFileDoesNotBecomeTheTheme_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* const name : {"fifo.jpg", "link.jpg", "device.jpg"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void whatIsNoFileDoesNotBecomeTheTheme()
    {
        QFETCH(QString, name);
        ThemeSession session;
        TestFolder folder;
        folder.makeFifo(QStringLiteral("fifo.jpg"));
        folder.makeLink(QStringLiteral("link.jpg"), QStringLiteral("fifo.jpg"));
        folder.makeLink(QStringLiteral("device.jpg"), QStringLiteral("/dev/zero"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(folder.path(name)));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void pluginThatWantsToReadEveryFileIsNotAsked()
    {
        ThemeSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.jpg"));
        QVERIFY(InstalledBundles::write(path, "no picture"));
        for (const char* const name : {"a.jpg", "a.planted", "b.svg"}) {
            QVERIFY(InstalledBundles::write(
                session.folders.picture(QLatin1String(name)), "no picture"));
        }
        QVERIFY(ThemeSession::writePicture(session.folders.picture(QStringLiteral("c.png"))));
        session.daemon.setEnvironment(
            QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(PLANTED_PLUGINS));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));
        QVERIFY(session.setsGoodPicture());

        QCOMPARE(session.pictureSize(session.folders.picture(QStringLiteral("a.jpg"))), Unreadable);
        // The plugin would log every question. It is loaded: Qt has loaded it to write the
        // wallpapers.
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
        QVERIFY(hasMapped(session.daemon.processId(), "planted-plugin"));
    }
};

QTEST_GUILESS_MAIN(HostilePicturesTest)

#include "tst_hostilepictures.moc"
