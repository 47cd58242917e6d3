// SPDX-License-Identifier: BSD-3-Clause
#include "themekeys.h"
#include "themesession.h"

#include <QDir>
#include <QFileInfo>
#include <QHostAddress>
#include <QSet>
#include <QTcpServer>
#include <QTest>

#include <algorithm>

namespace {

/// The undefined-behaviour sanitizer opens a pipe to see whether it may read an address.
#ifdef __SANITIZE_ADDRESS__
constexpr int SanitizerDescriptors = 2;
#else
constexpr int SanitizerDescriptors = 0;
#endif

QString refused(const char* function, const QUrl& url)
{
    return QStringLiteral("void SystemTheme::%1 Too few file descriptors are left for QUrl(\"%2\")")
        .arg(QLatin1String(function), url.toString());
}

QString refusedRequest(const QUrl& url)
{
    return refused("generateMoodset(const QUrl&, bool)", url);
}

QString refusedDownload(const QUrl& url)
{
    return refused("fetchOnlineImage(const QUrl&)", url);
}

QString failedDownload(const QUrl& url)
{
    return QStringLiteral(
               "void SystemTheme::onlineImageReady(QNetworkReply*) Error in QUrl(\"%1\") "
               ": \"Connection refused\"")
        .arg(url.toString());
}

/// A picture on a host of this machine that refuses all connections.
QUrl unreachablePicture(int host)
{
    return QUrl(QStringLiteral("http://127.1.1.%1:1/a.png").arg(host));
}

/// A daemon with a limit on its descriptors, and a picture that it does not know.
struct LimitedSession : ThemeSession
{
    LimitedSession() = default;
    explicit LimitedSession(int limit) { daemon.limitDescriptors(limit); }

    bool start()
    {
        return ThemeSession::writePicture(path) && startOnBus()
            && daemon.waitForLine(QStringLiteral("InstallManager idle in"))
            && daemon.waitForLine(QStringLiteral("FileManager idle in"))
            && hasListedOrSaidSo(daemon.takeWarnings());
    }

    /// Whether all warnings of the start are about directories that could not be listed.
    static bool hasListedOrSaidSo(const QStringList& warnings)
    {
        return std::all_of(warnings.cbegin(), warnings.cend(), [](const QString& warning) {
            return warning.contains(
                QStringLiteral("Directory() Too few file descriptors are left for \"/"));
        });
    }

    bool isTheme() const
    {
        return UserStore::value(ThemeKeys::ActiveMoodset) == QStringLiteral("'%1'").arg(path);
    }

    const QString path = folders.elsewhere(QStringLiteral("a.png"));
    const QUrl url = QUrl::fromLocalFile(path);
};

} // namespace

/// Tests a daemon that has few file descriptors left. GLib would end a process without them.
class FewDescriptorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The daemon has 15 descriptors open after its start.
    void requestsAreRefusedOrDone_data()
    {
        QTest::addColumn<int>("limit");
        for (const int limit : {16, 17, 18, 19, 22, 36, 38, 42, 48}) {
            QTest::addRow("%d", limit) << limit + SanitizerDescriptors;
        }
    }

    void requestsAreRefusedOrDone()
    {
        QFETCH(int, limit);
        LimitedSession session(limit);
        QVERIFY(session.start());

        QVERIFY(ThemeSession::set(session.url));
        const QStringList warnings = session.daemon.takeWarnings();

        const bool isDone = session.isTheme();
        QCOMPARE(warnings, isDone ? QStringList() : QStringList(refusedRequest(session.url)));
        QCOMPARE(ThemeSession::theme().isEmpty(), !isDone);
        QCOMPARE(session.fileId(session.path) != 0, isDone);
    }

    void downloadsAreRefusedOrTried_data() { requestsAreRefusedOrDone_data(); }

    void downloadsAreRefusedOrTried()
    {
        QFETCH(int, limit);
        LimitedSession session(limit);
        QVERIFY(session.start());
        const QUrl url = unreachablePicture(1);

        QVERIFY(ThemeSession::set(url));

        QVERIFY(session.daemon.waitForLine(QStringLiteral("QUrl(\"%1\")").arg(url.toString())));
        const QString warning = session.daemon.takeWarnings().join(QLatin1Char('\n'));
        const QStringList all{refusedRequest(url), refusedDownload(url), failedDownload(url)};
        QVERIFY2(all.contains(warning), qPrintable(warning));
        QVERIFY(BusClient::isAnswered());
    }

    /// The network layer keeps their sockets for two minutes.
    void failedDownloadsLeaveDescriptorsForTheNextRequest()
    {
        LimitedSession session(64);
        QVERIFY(session.start());
        constexpr int downloads = 100;
        QSet<QString> expected;
        for (int host = 1; host <= downloads; ++host) {
            const QUrl url = unreachablePicture(host);
            QVERIFY(ThemeSession::set(url));
            expected += {refusedDownload(url), failedDownload(url)};
        }

        QStringList warnings;
        QTRY_COMPARE_WITH_TIMEOUT(
            (warnings += session.daemon.takeWarnings()).size(), downloads,
            DaemonProcess::deadlineMs);
        QVERIFY(ThemeSession::set(session.url));

        QVERIFY(session.isTheme());
        for (const QString& warning : std::as_const(warnings)) {
            QVERIFY2(expected.contains(warning), qPrintable(warning));
        }
        QVERIFY(warnings.contains(refusedDownload(unreachablePicture(downloads))));
        QVERIFY(warnings.contains(failedDownload(unreachablePicture(1))));
    }

    void downloadsUnderWayLeaveDescriptorsForTheNextRequest()
    {
        // Clients can connect to it, but it never answers. It ends after the daemon.
        QTcpServer server;
        LimitedSession session(64);
        QVERIFY(server.listen(QHostAddress::AnyIPv4));
        server.pauseAccepting();
        QVERIFY(session.start());

        QVERIFY(session.daemon.pause());
        constexpr int downloads = 100;
        QStringList refused;
        for (int host = 1; host <= downloads; ++host) {
            QUrl url = unreachablePicture(host);
            url.setPort(server.serverPort());
            refused.append(refusedDownload(url));
            BusClient::send(QStringLiteral("setMoodset"), {url.toString()});
        }
        session.daemon.resume();
        QVERIFY(ThemeSession::set(session.url));

        QVERIFY(session.isTheme());
        const QStringList warnings = session.daemon.takeWarnings();
        QVERIFY(!warnings.isEmpty() && warnings.size() < downloads);
        QCOMPARE(warnings, refused.mid(downloads - warnings.size()));
    }

    void aStartForgetsNothing_data()
    {
        QTest::addColumn<int>("limit");
        for (int limit = 4; limit <= 18; ++limit) {
            QTest::addRow("%d", limit) << limit + SanitizerDescriptors;
        }
    }

    /// If it cannot open something, it must take it neither for damaged nor for empty.
    void aStartForgetsNothing()
    {
        QFETCH(int, limit);
        ThemeSession session;
        const QString picture = session.folders.picture(QStringLiteral("album/a.png"));
        QVERIFY(QDir().mkpath(QFileInfo(picture).path()));
        QVERIFY(ThemeSession::writePicture(picture));
        const QString bundle = QStringLiteral("sea");
        QVERIFY(ThemeSession::writeBundle(
            bundle, R"({"version": 2, "displayName": "Sea", "wallpaper": "w.png"})"));
        QVERIFY(session.startAtRest());
        QVERIFY(ThemeSession::create(picture));
        const QString color = QStringLiteral("#ff010203");
        const QStringList edited{picture, ThemeSession::bundleFile(bundle)};
        for (const QString& path : edited) {
            QVERIFY(session.edit(path, {{QStringLiteral("highlightColor"), color}}));
        }
        const QStringList files = session.libraryFiles();
        QVERIFY(session.daemon.terminate());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());

        session.daemon.limitDescriptors(limit);
        const int linesBefore = session.daemon.lines().size();
        QVERIFY(session.daemon.start());
        const auto isIdle = [&] {
            const QStringList lines = session.daemon.lines().mid(linesBefore);
            return !lines.filter(QStringLiteral("InstallManager idle in")).isEmpty()
                && !lines.filter(QStringLiteral("FileManager idle in")).isEmpty();
        };
        // With the smallest number of descriptors, it ends.
        QTRY_VERIFY_WITH_TIMEOUT(
            !session.daemon.isRunning() || isIdle(), DaemonProcess::deadlineMs);
        QVERIFY(!session.daemon.isRunning() || session.daemon.terminate());
        const QStringList warnings = session.daemon.takeWarnings();

        QVERIFY2(
            warnings.filter(QStringLiteral("Nuking")).isEmpty(),
            qPrintable(warnings.join(QLatin1Char('\n'))));
        QCOMPARE(session.libraryFiles(), files);
        for (const QString& path : edited) {
            QCOMPARE(
                session.library().moodset(path, QStringLiteral("highlightColor")),
                QStringList(color));
        }
    }

    void editThatCannotReachTheStoreIsKeptInTheLibrary()
    {
        LimitedSession session;
        QVERIFY(session.start());
        QVERIFY(ThemeSession::set(session.url));
        const QStringList theme = ThemeSession::theme();
        QVERIFY(session.daemon.terminate());
        session.daemon.limitDescriptors(17 + SanitizerDescriptors);
        QVERIFY(session.start());

        const QString color = QStringLiteral("#ff010203");
        QVERIFY(session.edit(session.path, {{QStringLiteral("highlightColor"), color}}));

        QStringList warnings;
        for (const QString& key : ThemeKeys::names().filter(QStringLiteral("/color/"))) {
            warnings.append(
                QStringLiteral("Failed to write to the key/value store: \"%1\" \"Too few file "
                               "descriptors are left\"")
                    .arg(key));
        }
        QCOMPARE(session.daemon.takeWarnings(), warnings);
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(ThemeSession::theme(), theme);
        QCOMPARE(
            session.library().moodset(session.path, QStringLiteral("highlightColor")),
            QStringList(color));
    }
};

QTEST_GUILESS_MAIN(FewDescriptorsTest)

#include "tst_fewdescriptors.moc"
