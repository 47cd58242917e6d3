// SPDX-License-Identifier: BSD-3-Clause
#include "decompressionbomb.h"
#include "httpserver.h"
#include "picturefile.h"
#include "themesession.h"
#include "unitaddressspace.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QTest>

#include <algorithm>

namespace {

const QString Path = QStringLiteral("/a.png");
const QSize Huge(30000, 30000);
const QSize Megapixels48(8000, 6000);
const QSize Megapixels108(12000, 9000);

/// The head of a WebP picture of one pixel, followed by zeros that need almost all of the memory
/// that the daemon may have. The plugin for WebP reads a whole file before it decodes it.
bool writeFileLargerThanMemory(const QString& path)
{
    constexpr qint64 lessThanAnIdleDaemonHas = qint64(64) * 1024 * 1024;
    return InstalledBundles::write(path, QByteArray("RIFF\xf8\xff\xff\x3fWEBPVP8X\x0a\0\0\0", 20))
        && QFile::resize(path, unitAddressSpace() - lessThanAnIdleDaemonHas);
}

bool writeLargePicture(const QString& path, const QSize& size, bool isProgressive)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::green);
    QImageWriter writer(path);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image);
}

/// The number of threads in Qt's pool that the process has.
int pooledThreads(qint64 process)
{
    const QDir threads(QStringLiteral("/proc/%1/task").arg(process));
    const QStringList ids = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return int(std::count_if(ids.begin(), ids.end(), [&](const QString& id) {
        QFile name(threads.filePath(id + QStringLiteral("/comm")));
        return name.open(QIODevice::ReadOnly) && name.readAll() == "Thread (pooled)\n";
    }));
}

/// A user whose daemon has the address space of its unit, and whose phone has a large screen.
struct LimitedSession : ThemeSession
{
    LimitedSession()
    {
        daemon.limitAddressSpace(unitAddressSpace());
        UserStore::writeScreenSize(QSize(1080, 2520));
    }
};

} // namespace

/// Tests pictures for which the daemon has not enough memory, and the largest ones for which it
/// has.
class LargePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneThreadForScalingIsThereBeforeAnyPicture()
    {
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writeLargePicture(path, QSize(3000, 3000), false));
        QVERIFY(session.startAtRest());
        const qint64 process = session.daemon.processId();

        QCOMPARE(pooledThreads(process), 1);

        QVERIFY(ThemeSession::set(path));
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(path));
        QCOMPARE(pooledThreads(process), 1);
    }

    void daemonOutlivesABomb_data() { addBombRows(); }

    void daemonOutlivesABomb()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, messages);
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("bomb.jpg"));
        QVERIFY(InstalledBundles::write(path, bytes));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), messages);
    }

    void daemonOutlivesAFileLargerThanMemory()
    {
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.webp"));
        QVERIFY(writeFileLargerThanMemory(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
    }

    void daemonOutlivesADownloadedBomb()
    {
        LimitedSession session;
        HttpServer server;
        server.answer(Path, pngBomb(Huge));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(server.url(Path)));

        const QString warning =
            QStringLiteral("Failed to save online image... \"%1\"")
                .arg(session.folders.picture(QStringLiteral("online_img0.jpg")));
        QVERIFY(session.daemon.waitForLine(warning));
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList(warning));
    }

    void scanTakesInBombs()
    {
        LimitedSession session;
        const UserFolders& folders = session.folders;
        QVERIFY(InstalledBundles::write(folders.picture(QStringLiteral("a.png")), pngBomb(Huge)));
        QVERIFY(InstalledBundles::write(
            folders.picture(QStringLiteral("b.png")), completePngBomb(Huge)));
        QVERIFY(InstalledBundles::write(folders.picture(QStringLiteral("c.jpg")), jpegBomb(Huge)));
        QVERIFY(InstalledBundles::write(
            folders.picture(QStringLiteral("d.jpg")), jpegBomb(Huge, true)));
        QVERIFY(InstalledBundles::write(folders.picture(QStringLiteral("e.bmp")), bmpBomb(Huge)));
        QVERIFY(InstalledBundles::write(folders.picture(QStringLiteral("f.gif")), gifBomb(Huge)));
        QVERIFY(writeFileLargerThanMemory(folders.picture(QStringLiteral("g.webp"))));
        QVERIFY(writePicture(folders.picture(QStringLiteral("h.png")), QSize(3, 2)));

        QVERIFY(session.startAtRest());

        const auto size = [&](const char* name) {
            return session.pictureSize(folders.picture(QLatin1String(name)));
        };
        for (const char* name : {"a.png", "b.png", "c.jpg", "d.jpg", "f.gif"}) {
            QVERIFY2(size(name) == Huge, name);
        }
        // The plugin for BMP refuses more than 16384 x 16384 pixels.
        QCOMPARE(size("e.bmp"), QSize(-1, -1));
        QCOMPARE(size("g.webp"), QSize(1, 1));
        QCOMPARE(size("h.png"), QSize(3, 2));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void largePhotoComesIntoForce_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isProgressive");
        QTest::newRow("PNG of 48 MP") << QStringLiteral("a.png") << Megapixels48 << false;
        QTest::newRow("JPEG of 48 MP") << QStringLiteral("a.jpg") << Megapixels48 << false;
        QTest::newRow("JPEG of 108 MP") << QStringLiteral("a.jpg") << Megapixels108 << false;
        QTest::newRow("progressive JPEG of 108 MP")
            << QStringLiteral("a.jpg") << Megapixels108 << true;
    }

    void largePhotoComesIntoForce()
    {
        QFETCH(QString, name);
        QFETCH(QSize, size);
        QFETCH(bool, isProgressive);
        LimitedSession session;
        const QString path = session.folders.elsewhere(name);
        QVERIFY(writeLargePicture(path, size, isProgressive));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), session.expectedTheme(path));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }
};

QTEST_GUILESS_MAIN(LargePicturesTest)

#include "tst_largepictures.moc"
