// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "dconfcommand.h"
#include "decompressionbomb.h"
#include "picturefile.h"

#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUrl>

namespace {

const QSize Huge(30000, 30000);
const QSize Megapixels48(8000, 6000);
const QSize Megapixels108(12000, 9000);

/// The addresses that the daemon's unit lets it have, in bytes; 0 if it names no number.
qint64 unitAddressSpace()
{
    QFile unit(QStringLiteral(DAEMON_UNIT));
    const QByteArray setting = "LimitAS=";
    if (unit.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = unit.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith(setting)) {
                return line.mid(setting.size()).toLongLong();
            }
        }
    }
    return 0;
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// The head of a WebP picture of one pixel, and behind it nothing, for almost all that the daemon
/// may have. The plugin for WebP reads a whole file before it decodes it.
bool writeFileLargerThanMemory(const QString& path)
{
    constexpr qint64 lessThanAnIdleDaemonHas = 64 * 1024 * 1024;
    return writeFile(path, QByteArray("RIFF\xf8\xff\xff\x3fWEBPVP8X\x0a\0\0\0", 20))
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

/// Answers each request with one body.
class PictureServer : public QTcpServer
{
public:
    explicit PictureServer(const QByteArray& body)
    {
        connect(this, &QTcpServer::newConnection, this, [this, body] {
            QTcpSocket* const socket = nextPendingConnection();
            socket->write("HTTP/1.0 200 OK\r\n\r\n" + body);
            socket->disconnectFromHost();
        });
        if (!listen(QHostAddress::LocalHost)) {
            QTest::qFail("The server cannot listen", __FILE__, __LINE__);
        }
    }

    [[nodiscard]] QString url() const
    {
        return QStringLiteral("http://127.0.0.1:%1/a.png").arg(serverPort());
    }
};

/// A user whose daemon has the addresses of its unit.
struct LimitedSession : DaemonSession
{
    LimitedSession() { daemon.limitAddressSpace(unitAddressSpace()); }

    /// Asks for a moodset as a client does; false if the daemon does not answer.
    static bool set(const QString& url)
    {
        return BusClient::call(QStringLiteral("setMoodset"), {url}).type()
            == QDBusMessage::ReplyMessage;
    }
    static bool setFile(const QString& path) { return set(QUrl::fromLocalFile(path).toString()); }

    /// The moodset in force. The store's service has the machine's folder, whoever the user is.
    static QString activeMoodset()
    {
        const QByteArray ofUser = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", qgetenv("PRIVATE_MACHINE") + "/config");
        const QByteArray value = runDconf(
            {QStringLiteral("read"), QStringLiteral("/desktop/zavro/theme/active_moodset")});
        qputenv("XDG_CONFIG_HOME", ofUser);
        return QString::fromUtf8(value.mid(1, value.size() - 2));
    }

    /// Whether a picture that fits comes into force.
    bool setsGoodPicture() const
    {
        const QString path = folders.elsewhere(QStringLiteral("good.png"));
        return writePicture(path, QSize(200, 300)) && setFile(path) && activeMoodset() == path;
    }
};

} // namespace

/// Pictures for which the daemon has no memory, and the largest for which it has.
class LargePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void daemonOutlivesABomb_data() { addBombRows(); }

    void daemonOutlivesABomb()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, messages);
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("bomb.jpg"));
        QVERIFY(writeFile(path, bytes));
        QVERIFY(session.start());
        const QString before = LimitedSession::activeMoodset();

        QVERIFY(LimitedSession::setFile(path));

        QCOMPARE(LimitedSession::activeMoodset(), before);
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), messages);
    }

    void daemonOutlivesAFileLargerThanMemory()
    {
        LimitedSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.webp"));
        QVERIFY(writeFileLargerThanMemory(path));
        QVERIFY(session.start());

        QVERIFY(LimitedSession::setFile(path));

        QVERIFY(LimitedSession::activeMoodset() != path);
        QVERIFY(session.setsGoodPicture());
    }

    void daemonOutlivesADownloadedBomb()
    {
        LimitedSession session;
        const PictureServer server(pngBomb(Huge));
        QVERIFY(session.start());

        QVERIFY(LimitedSession::set(server.url()));

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
        QVERIFY(writeFile(folders.picture(QStringLiteral("a.png")), pngBomb(Huge)));
        QVERIFY(writeFile(folders.picture(QStringLiteral("b.png")), completePngBomb(Huge)));
        QVERIFY(writeFile(folders.picture(QStringLiteral("c.jpg")), jpegBomb(Huge)));
        QVERIFY(writeFile(folders.picture(QStringLiteral("d.jpg")), jpegBomb(Huge, true)));
        QVERIFY(writeFile(folders.picture(QStringLiteral("e.bmp")), bmpBomb(Huge)));
        QVERIFY(writeFile(folders.picture(QStringLiteral("f.gif")), gifBomb(Huge)));
        QVERIFY(writeFileLargerThanMemory(folders.picture(QStringLiteral("g.webp"))));
        QVERIFY(writePicture(folders.picture(QStringLiteral("h.png")), QSize(3, 2)));

        QVERIFY(session.start());

        const auto size = [&](const char* name) {
            return session.pictureSize(folders.picture(QLatin1String(name)));
        };
        for (const char* name : {"a.png", "b.png", "c.jpg", "d.jpg", "f.gif"}) {
            QVERIFY2(size(name) == Huge, name);
        }
        // The plugin for BMP takes no more than 16384 x 16384 pixels for possible.
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
        QVERIFY(session.start());

        QVERIFY(LimitedSession::setFile(path));

        QCOMPARE(LimitedSession::activeMoodset(), path);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }
};

QTEST_GUILESS_MAIN(LargePicturesTest)

#include "tst_largepictures.moc"
