// SPDX-License-Identifier: BSD-3-Clause
#include "command.h"
#include "decompressionbomb.h"
#include "httpserver.h"
#include "themekeys.h"
#include "themesession.h"

#include <QFile>
#include <QtTest>

namespace {

const QSize Huge(30000, 30000);

/// A daemon that can have only so much address space.
struct LimitedSession : ThemeSession
{
    bool startWithLimit()
    {
        constexpr qint64 headroom = 512 * 1024 * 1024;
        return startAtRest()
            && runCommand(
                   QStringLiteral("prlimit"),
                   {QStringLiteral("--pid"), QString::number(daemon.processId()),
                    QStringLiteral("--as=%1").arg(addressSpace() + headroom)});
    }

    /// Whether an ordinary picture can become the theme. It is in no folder that is watched.
    bool goesOn()
    {
        const QString path = folders.elsewhere(QStringLiteral("a.png"));
        return writePicture(path) && set(path) && theme() == expectedTheme(path);
    }

private:
    /// In bytes.
    qint64 addressSpace() const
    {
        QFile sizes(QStringLiteral("/proc/%1/statm").arg(daemon.processId()));
        constexpr qint64 pageSize = 4096;
        return sizes.open(QIODevice::ReadOnly)
            ? sizes.readAll().split(' ').constFirst().toLongLong() * pageSize
            : 0;
    }
};

} // namespace

/// What becomes of small files that claim to be pictures larger than memory.
class HugePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hugePictureLeavesTheThemeAlone_data()
    {
        hugePictureOnTheNetworkIsNotSaved_data();
        // Its bits fit, but not the pixels to be scaled.
        QTest::newRow("whole PNG") << completePngBomb(Huge);
    }

    void hugePictureLeavesTheThemeAlone()
    {
        QFETCH(QByteArray, content);
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("huge.png"));
        QVERIFY(InstalledBundles::write(path, content));
        QVERIFY(session.startWithLimit());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        // What the decoders say of want is theirs.
        session.daemon.takeWarnings();
        QVERIFY(session.goesOn());
    }

    void hugePictureOnTheNetworkIsNotSaved_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("PNG") << pngBomb(Huge);
        QTest::newRow("BMP") << bmpBomb(Huge);
        QTest::newRow("GIF") << gifBomb(Huge);
    }

    void hugePictureOnTheNetworkIsNotSaved()
    {
        QFETCH(QByteArray, content);
        LimitedSession session;
        HttpServer server;
        server.answer(QStringLiteral("/huge.png"), content);
        const QString saved = session.folders.picture(QStringLiteral("online_img0.jpg"));
        QVERIFY(session.startWithLimit());

        QVERIFY(ThemeSession::set(server.url(QStringLiteral("/huge.png"))));

        const QString warning = QStringLiteral("Failed to save online image... \"%1\"").arg(saved);
        QVERIFY(session.daemon.waitForLine(warning));
        QCOMPARE(session.daemon.takeWarnings().constLast(), warning);
        QVERIFY(!QFile::exists(saved));
        QVERIFY(session.goesOn());
    }
};

QTEST_GUILESS_MAIN(HugePicturesTest)

#include "tst_hugepictures.moc"
