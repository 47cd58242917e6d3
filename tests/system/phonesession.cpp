// SPDX-License-Identifier: BSD-3-Clause
#include "phonesession.h"

#include "dconfcommand.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

namespace {

const QString InstallPath = QStringLiteral("/usr/share/moodset/");
const QString Bundle = InstallPath + QStringLiteral("coast-light");

bool run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished(DaemonProcess::deadlineMs)
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString wizardMarkerPath()
{
    return QDir::home().filePath(QStringLiteral(".zavro-startupwizard-usersession-done"));
}

} // namespace

const QString PhoneSession::CoverId = QStringLiteral("cover-7");
const QString PhoneSession::MoodsetFile = Bundle + QStringLiteral("/coast-light.moodset");

Phone::Phone()
    : isThere(cover.appear() && lock.appear() && store.appear() && feedback.appear())
{
}

PhoneSession::PhoneSession(const QString& executable)
    : DaemonSession(executable)
{
    // The store's service has the machine's folder, whoever the user is.
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    const QString stored =
        qEnvironmentVariable("PRIVATE_MACHINE") + QStringLiteral("/config/dconf");
    const QString mime = folders.data() + QStringLiteral("/mime");
    QFile marker(wizardMarkerPath());
    m_isReady =
        isThere && QDir().mkpath(stored) && QFile::link(stored, config + QStringLiteral("/dconf"))
        && QDir().mkpath(mime + QStringLiteral("/packages"))
        && QFile::copy(
            QStringLiteral(MIME_DEFINITION), mime + QStringLiteral("/packages/moodsetd.xml"))
        && run(QStringLiteral("update-mime-database"), {mime}) && marker.open(QIODevice::WriteOnly);
}

PhoneSession::~PhoneSession()
{
    daemon.terminate();
    QFile::remove(wizardMarkerPath());
    QDir(Bundle).removeRecursively();
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
}

bool PhoneSession::startOnPhone()
{
    return m_isReady && startOnBus() && lock.waitForCalls(1)
        && daemon.waitForLine(QStringLiteral("InstallManager idle in "));
}

bool PhoneSession::installBundle(bool isFavorite)
{
    if (!run(
            QStringLiteral("cp"),
            {QStringLiteral("-r"), QStringLiteral(SAMPLE_BUNDLES "/coast-light"), InstallPath})) {
        return false;
    }
    store.send(
        QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
        QStringLiteral("installedMoodset"), {Bundle, CoverId});
    if (!QTest::qWaitFor([this] { return isMoodset(); }, DaemonProcess::deadlineMs)) {
        return false;
    }
    BusClient::call(
        QStringLiteral("saveAttributes"),
        {1, fileId(MoodsetFile), QVariantMap{{QStringLiteral("favorite"), isFavorite}}});
    return true;
}

void PhoneSession::attach()
{
    cover.announce({{QStringLiteral("DORSELID"), CoverId}, {QStringLiteral("Ready"), 1}});
}

int PhoneSession::sounds()
{
    m_sounds += feedback.takeCalls().filter(QStringLiteral("\"dorsel_attach\"")).count();
    return m_sounds;
}

QString PhoneSession::stored(const QString& key)
{
    return QString::fromUtf8(
        runDconf({QStringLiteral("read"), QStringLiteral("/desktop/zavro/theme/") + key}));
}

bool PhoneSession::isMoodset()
{
    return !library()
                .rows(
                    QStringLiteral("SELECT 1 FROM moodset JOIN dorselId USING (fileId) "
                                   "WHERE fileId = ?"),
                    {fileId(MoodsetFile)})
                .isEmpty();
}
