// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "dconfcommand.h"
#include "gnomeshell.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <memory>
#include <sys/resource.h>
#include <vector>

namespace {

const QString Gnome = QStringLiteral("gnome");
const QString Red = QStringLiteral("#ffe02030");
const QString Green = QStringLiteral("#ff209030");

QString statePath()
{
    return BridgeSession::dataFolder() + QStringLiteral("/state.json");
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Limits what the processes may have open that this one starts.
class DescriptorLimit
{
public:
    explicit DescriptorLimit(rlim_t count)
    {
        rlimit limit{};
        m_isSet = getrlimit(RLIMIT_NOFILE, &m_before) == 0;
        limit = {count, m_before.rlim_max};
        m_isSet = m_isSet && setrlimit(RLIMIT_NOFILE, &limit) == 0;
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &m_before); }
    Q_DISABLE_COPY_MOVE(DescriptorLimit)

    bool isSet() const { return m_isSet; }

private:
    rlimit m_before{};
    bool m_isSet = false;
};

} // namespace

/// The bridge that is killed, flooded with changes, or short of resources.
class BridgeRobustnessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void appliesWhatAnInterruptedRunHasNotSet()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);
        QVERIFY(session.start());
        QVERIFY(session.waitForFirstLook(Gnome));
        session.kill();
        // As if it had been killed between the record of the next look and the look.
        QJsonObject root = QJsonDocument::fromJson(contentOf(statePath())).object();
        QJsonObject adapters = root.value(QStringLiteral("adapters")).toObject();
        QJsonObject gnome = adapters.value(Gnome).toObject();
        QJsonObject set = gnome.value(QStringLiteral("set")).toObject();
        gnome.insert(QStringLiteral("earlier"), QJsonArray{set});
        gnome.insert(QStringLiteral("unfinished"), true);
        set.insert(BridgeSession::AccentKey, QStringLiteral("green"));
        gnome.insert(QStringLiteral("set"), set);
        adapters.insert(Gnome, gnome);
        root.insert(QStringLiteral("adapters"), adapters);
        QFile state(statePath());
        QVERIFY(state.open(QIODevice::WriteOnly));
        state.write(QJsonDocument(root).toJson());
        state.close();
        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(session.start());

        QVERIFY(hasAccent(QStringLiteral("green")));
    }

    void keepsAWholeRecordWhenItIsKilled()
    {
        constexpr int kills = 10;
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString other = session.picture(QStringLiteral("b.png"), Qt::green);
        for (int i = 0; i < kills; ++i) {
            QVERIFY(session.start());
            session.folder.write(QStringLiteral("go on"));
            QProcess writer;
            writer.start(
                QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("while [ -e '%4' ]; do dconf write %1 \"'%2'\"; dconf write %1 "
                                "\"'%3'\"; done")
                     .arg(
                         BridgeSession::WallpaperKey, picture, other,
                         session.folder.path(QStringLiteral("go on")))});
            QTest::qWait(17 * i); // the moment of the kill
            session.kill();
            session.folder.remove(QStringLiteral("go on"));
            QVERIFY(waitUntil([&] { return writer.state() == QProcess::NotRunning; }));
            if (QFile::exists(statePath())) { // it was not killed before its first record
                const QByteArray record = contentOf(statePath());
                QVERIFY2(QJsonDocument::fromJson(record).isObject(), record.constData());
            }
        }

        BridgeSession::setLook(picture, Green);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        QVERIFY(waitUntil([] { return BridgeSession::copies().size() == 1; }));
        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);
        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
    }

    void restoresWhatAKilledBridgeWasAboutToStore_data()
    {
        QTest::addColumn<bool>("isFirst");
        QTest::newRow("the first picture") << true;
        QTest::newRow("another picture") << false;
    }

    /// The user's own picture is still in the store, or else the bridge's former one.
    void restoresWhatAKilledBridgeWasAboutToStore()
    {
        QFETCH(bool, isFirst);
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        const QString picture = session.folder.path(QStringLiteral("a.png"));
        if (!isFirst) {
            session.picture(QStringLiteral("a.png"), Qt::red);
        }
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(hasAccent(QStringLiteral("red")));
        QVERIFY(session.waitForFailure(
            Gnome, isFirst ? QStringLiteral("is no JPEG or PNG picture") : QString()));
        const auto recordedPicture = [](const QJsonObject& status) {
            return status.value(QStringLiteral("set"))
                .toObject()
                .value(BridgeSession::PictureUriKey);
        };
        const QJsonValue before = recordedPicture(session.status(Gnome));
        QCOMPARE(before.isUndefined(), isFirst);
        // Otherwise the bridge may wait for the store, and not look for pictures.
        BridgeSession::settleStore();
        {
            PausedDconfService paused;
            QVERIFY(paused.isPaused());
            session.picture(QStringLiteral("b.png"), Qt::green);
            session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));
            QVERIFY(session.waitForStatus(Gnome, [&](const QJsonObject& status) {
                return recordedPicture(status) != before
                    && status.value(QStringLiteral("failure")).toString().isEmpty();
            }));
            session.kill();
            constexpr int pauseMs = 300;
            QTimer timer;
            timer.setSingleShot(true);
            QObject::connect(&timer, &QTimer::timeout, this, [&paused] { paused.resume(); });
            timer.start(pauseMs);

            QCOMPARE(session.run({QStringLiteral("--restore")}), 0);
        }

        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
        QCOMPARE(session.takeWarnings().size(), isFirst ? 1 : 0);
    }

    void followsManyWriters()
    {
        constexpr int writers = 8;
        constexpr int changes = 1000;
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString other = session.picture(QStringLiteral("b.png"), Qt::green);
        QVERIFY(session.start());
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < writers; ++i) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(
                QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("for i in 0 1 2 3 4; do dconf write %1 \"'%2'\"; done")
                     .arg(BridgeSession::WallpaperKey, i % 2 == 0 ? picture : other)});
        }
        for (int i = 0; i < changes; ++i) {
            BridgeSession::setLook(i % 2 == 0 ? other : picture, i % 2 == 0 ? Green : Red);
        }
        for (const std::unique_ptr<QProcess>& process : processes) {
            QVERIFY(waitUntil([&] { return process->state() == QProcess::NotRunning; }));
        }

        BridgeSession::setLook(other, Green);

        QVERIFY(waitUntil([&] { return showsCopyOf(other); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        QVERIFY(waitUntil([] { return BridgeSession::copies().size() == 1; }));
    }

    void isNotHeldUpByOtherFilesBesideTheWallpaper()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QProcess noise;
        noise.start(
            QStringLiteral("sh"),
            {QStringLiteral("-c"),
             QStringLiteral("while :; do : >%1; rm %1; sleep 0.02; done")
                 .arg(session.folder.path(QStringLiteral("noise")))});
        QVERIFY(noise.waitForStarted());

        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(hasAccent(QStringLiteral("green")));
        noise.kill();
        QVERIFY(noise.waitForFinished());
        QFile::remove(session.folder.path(QStringLiteral("noise")));
    }

    void setsNothingWithoutRoomForTheWayBack()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString disk = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
        session.setEnvironment(QStringLiteral("XDG_DATA_HOME"), disk);
        QFile filler(disk + QStringLiteral("/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(4096, 'x')) > 0) { }
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QStringList warnings;
        QVERIFY(waitUntil([&] {
            warnings += session.takeWarnings();
            return warnings.join(QLatin1Char('|')).contains(QStringLiteral("gnome: "));
        }));
        QVERIFY2(
            warnings.join(QLatin1Char('|')).contains(QStringLiteral("No space left")),
            qPrintable(warnings.join(QLatin1Char('|'))));
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QString());

        QVERIFY(filler.remove());
        BridgeSession::setLook(picture, Green);
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        static_cast<void>(session.takeWarnings());
        session.kill();
        QVERIFY(QDir(disk + QStringLiteral("/moodset-bridge")).removeRecursively());
    }

    void livesWithFewDescriptors()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        {
            const DescriptorLimit limit(32);
            QVERIFY(limit.isSet());
            QVERIFY(session.start());
        }

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
    }

    void endsWithItsBus()
    {
        const QString machine = qEnvironmentVariable("PRIVATE_MACHINE");
        const QString address = QStringLiteral("unix:path=%1/runtime/other-bus").arg(machine);
        QProcess bus;
        bus.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
             QStringLiteral("--print-address"),
             QStringLiteral("--config-file=%1/session-bus.conf").arg(machine),
             QStringLiteral("--address=") + address});
        QVERIFY(bus.waitForReadyRead());
        BridgeSession session;
        session.setEnvironment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        QVERIFY(session.start());
        // It has its name a moment before it follows.
        QVERIFY(session.waitForStatus(
            Gnome, [](const QJsonObject& status) { return !status.isEmpty(); }));

        bus.kill();

        QVERIFY(session.waitForEnd());
    }
};

QTEST_GUILESS_MAIN(BridgeRobustnessTest)

#include "tst_bridgerobustness.moc"
