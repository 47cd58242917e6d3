// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "neededprograms.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

namespace {

const QString Feedback = QStringLiteral("feedbackd");
const QString ServiceProgram = QStringLiteral("/usr/libexec/feedbackd");
const QString ProfileKey = QStringLiteral("/org/sigxcpu/feedbackd/profile");

const QString RingingKey = QStringLiteral("/com/zavro/profile/general/ringing.alert.tone");
const QString MailKey = QStringLiteral("/com/zavro/profile/general/email.alert.tone");

QString themeFolder()
{
    return qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/sounds/moodset");
}

/// A real feedback service, and a sound server without a device.
class Service
{
public:
    ~Service()
    {
        for (QProcess* process : {&m_service, &m_server}) {
            if (process->state() != QProcess::NotRunning) {
                process->kill();
                process->waitForFinished();
            }
        }
    }

    bool start()
    {
        // All other themes are based on this one. Without it, no sound is found.
        const QString below =
            qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/sounds/freedesktop");
        QDir().mkpath(below + QStringLiteral("/stereo"));
        QFile index(below + QStringLiteral("/index.theme"));
        if (!index.open(QIODevice::WriteOnly)
            || index.write("[Sound Theme]\nName=Default\nDirectories=stereo\n\n[stereo]\n"
                           "OutputProfile=stereo\n")
                < 0) {
            return false;
        }
        index.close();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // Otherwise, the service does not follow the sound theme.
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("Phosh:GNOME"));
        m_service.setProcessEnvironment(environment);
        for (QProcess* process : {&m_service, &m_server}) {
            process->setProcessChannelMode(QProcess::MergedChannels);
        }
        m_server.start(
            QStringLiteral("pulseaudio"),
            {QStringLiteral("-n"), QStringLiteral("--exit-idle-time=-1"),
             QStringLiteral("--daemonize=no"), QStringLiteral("-L"),
             QStringLiteral("module-null-sink sink_name=null"), QStringLiteral("-L"),
             QStringLiteral("module-native-protocol-unix")});
        const bool isServerUp = waitUntil([] {
            QProcess pactl;
            pactl.start(QStringLiteral("pactl"), {QStringLiteral("info")});
            return pactl.waitForFinished() && pactl.exitCode() == 0;
        });
        if (!isServerUp) {
            qWarning().noquote() << m_server.readAll();
            return false;
        }
        m_service.start(ServiceProgram, QStringList());
        return waitUntil([] {
            return QDBusConnection::sessionBus()
                .interface()
                ->isServiceRegistered(QStringLiteral("org.sigxcpu.Feedback"))
                .value();
        });
    }

    /// Whether the service opens the file while it plays an event.
    bool plays(const QString& event, const QString& file)
    {
        QProcess client;
        client.start(
            QStringLiteral("fbcli"),
            {QStringLiteral("-t"), QStringLiteral("3"), QStringLiteral("-E"), event});
        QStringList seen;
        const bool isPlayed =
            waitUntil([&] {
                seen += openSounds();
                return seen.contains(file) || client.state() == QProcess::NotRunning;
            })
            && seen.contains(file);
        client.kill();
        client.waitForFinished();
        if (!isPlayed) {
            seen.removeDuplicates();
            qWarning() << "opened:" << seen;
        }
        return isPlayed;
    }

private:
    /// The sounds that the service has open.
    QStringList openSounds() const
    {
        QStringList files;
        const QDir folder(QStringLiteral("/proc/%1/fd").arg(m_service.processId()));
        const QFileInfoList entries =
            folder.entryInfoList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
        for (const QFileInfo& entry : entries) {
            const QString target = entry.symLinkTarget();
            if (target.contains(QStringLiteral("tone"))
                || target.endsWith(QStringLiteral(".wav"))) {
                files.append(target);
            }
        }
        return files;
    }

    QProcess m_server;
    QProcess m_service;
};

} // namespace

/// Tests the bridge with a real feedback service.
class BridgeFeedbackTest : public QObject
{
    Q_OBJECT

private:
    /// Copies a long tone, so that it stays open for a while.
    static QString tone(const BridgeSession& session, const QString& name)
    {
        QString path = session.folder.path(name);
        if (!QFile::copy(QStringLiteral(LONG_TONE), path)) {
            QTest::qFail("The tone cannot be copied", __FILE__, __LINE__);
        }
        return path;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (skipsWithout(
                {QStringLiteral("pulseaudio"), QStringLiteral("pactl"), QStringLiteral("fbcli"),
                 QStringLiteral("/usr/libexec/feedbackd")})) {
            return;
        }
    }

    void playsTheTonesOfTheProfile()
    {
        Service service;
        BridgeSession session;
        QVERIFY(service.start());
        const QString ringing = tone(session, QStringLiteral("tone-ringing.ogg"));
        const QString mail = tone(session, QString::fromUtf8("tone \xc3\xbc%20'\"\n.ogg"));
        const QString other = tone(session, QStringLiteral("tone-other.ogg"));
        BridgeSession::write({{RingingKey, ringing}, {MailKey, mail}});
        QVERIFY(session.start());
        QVERIFY(session.waitForFirstLook(Feedback));

        QVERIFY(service.plays(QStringLiteral("phone-incoming-call"), ringing));
        QVERIFY(service.plays(QStringLiteral("message-new-email"), mail));

        BridgeSession::write({{RingingKey, other}});
        const QString link = themeFolder() + QStringLiteral("/stereo/phone-incoming-call.oga");
        QVERIFY(waitUntil([&] { return QFile::symLinkTarget(link) == other; }));
        QVERIFY(service.plays(QStringLiteral("phone-incoming-call"), other));
    }

    void leavesOutAToneThatCannotBePlayed()
    {
        Service service;
        BridgeSession session;
        QVERIFY(service.start());
        session.folder.write(QStringLiteral("tone.mp3"), "ID3 this is no tone");
        BridgeSession::write({{RingingKey, session.folder.path(QStringLiteral("tone.mp3"))}});

        QVERIFY(session.start());

        QVERIFY(session.waitForFailure(Feedback, QStringLiteral("is neither WAV nor Ogg Vorbis.")));
        QVERIFY(!QFileInfo(themeFolder() + QStringLiteral("/stereo/phone-incoming-call.oga"))
                     .isSymLink());
        QCOMPARE(session.takeWarnings().size(), 1);
    }

    void playsSilenceForAToneThatIsSwitchedOff()
    {
        Service service;
        BridgeSession session;
        QVERIFY(service.start());
        BridgeSession::write(
            {{RingingKey, tone(session, QStringLiteral("tone-ringing.ogg"))},
             {QStringLiteral("/com/zavro/profile/general/ringing.alert.enabled"),
              QStringLiteral("Off")}});
        QVERIFY(session.start());
        QVERIFY(session.waitForFirstLook(Feedback));

        QVERIFY(service.plays(
            QStringLiteral("phone-incoming-call"), themeFolder() + QStringLiteral("/silence.wav")));
    }

    void followsTheProfile_data()
    {
        QTest::addColumn<QByteArray>("configuration");
        QTest::addColumn<QString>("silent");
        QTest::newRow("quiet") << QByteArray() << QStringLiteral("quiet");
        QTest::newRow("silent") << QByteArray("[feedbackd]\nsilent=silent\n")
                                << QStringLiteral("silent");
    }

    void followsTheProfile()
    {
        QFETCH(QByteArray, configuration);
        QFETCH(QString, silent);
        Service service;
        BridgeSession session;
        BridgeSession::configure(configuration);
        QVERIFY(service.start());
        QVERIFY(session.start());
        QVERIFY(
            waitUntil([] { return BridgeSession::stored(ProfileKey) == QStringLiteral("full"); }));

        BridgeSession::write(
            {{QStringLiteral("/com/zavro/profile/active"), QStringLiteral("silent")}});

        QVERIFY(waitUntil([&] { return BridgeSession::stored(ProfileKey) == silent; }));
    }

    void restoresTheThemesOfTheUser()
    {
        Service service;
        BridgeSession session;
        QVERIFY(service.start());
        const QString themeKey = QStringLiteral("/org/gnome/desktop/sound/theme-name");
        BridgeSession::write(
            {{themeKey, QStringLiteral("mine")}, {ProfileKey, QStringLiteral("quiet")}});
        QVERIFY(session.start());
        QVERIFY(waitUntil(
            [&] { return BridgeSession::stored(themeKey) == QStringLiteral("moodset"); }));
        QVERIFY(session.waitForFirstLook(Feedback));

        QVERIFY2(session.run({QStringLiteral("--restore")}) == 0, qPrintable(session.output()));

        QCOMPARE(BridgeSession::stored(themeKey), QStringLiteral("mine"));
        QCOMPARE(BridgeSession::stored(ProfileKey), QStringLiteral("quiet"));
        QVERIFY(!QFile::exists(themeFolder()));
    }
};

QTEST_GUILESS_MAIN(BridgeFeedbackTest)

#include "tst_bridgefeedback.moc"
