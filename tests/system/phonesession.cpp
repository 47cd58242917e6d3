// SPDX-License-Identifier: BSD-3-Clause
#include "phonesession.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString Bundle = InstalledBundles::folder() + QStringLiteral("coast-light");

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
    , m_bundles(folders)
{
    QFile marker(wizardMarkerPath());
    m_isReady =
        isThere && m_bundles.isValid() && m_store.isValid() && marker.open(QIODevice::WriteOnly);
}

PhoneSession::~PhoneSession()
{
    daemon.terminate();
    QFile::remove(wizardMarkerPath());
}

bool PhoneSession::startOnPhone()
{
    return m_isReady && startOnBus() && lock.waitForCalls(1)
        && daemon.waitForLine(QStringLiteral("InstallManager idle in "));
}

bool PhoneSession::installBundle(bool isFavorite)
{
    if (!InstalledBundles::installSample(QStringLiteral("coast-light"))) {
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
    return UserStore::value(QStringLiteral("/desktop/zavro/theme/") + key);
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
