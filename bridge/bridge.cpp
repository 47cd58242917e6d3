// SPDX-License-Identifier: BSD-3-Clause
#include "bridge.h"

#include "adapters/feedbackadapter.h"
#include "adapters/filesadapter.h"
#include "adapters/gnomeadapter.h"
#include "adapters/plasmaadapter.h"
#include "adapters/portaladapter.h"
#include "adapters/swayadapter.h"
#include "filecontent.h"

#include <QDebug>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>

namespace {

/// The keys of the look change together.
constexpr int LookRestMs = 8;
/// The volume, the profile and the tones change one after another.
constexpr int SoundRestMs = 15;

} // namespace

std::vector<std::unique_ptr<Adapter>> makeAdapters(
    const BridgeConfiguration& configuration, const QString& pictures)
{
    std::vector<std::unique_ptr<Adapter>> adapters;
    adapters.push_back(std::make_unique<GnomeAdapter>(pictures));
    adapters.push_back(std::make_unique<PlasmaAdapter>(pictures));
    adapters.push_back(std::make_unique<PortalAdapter>());
    adapters.push_back(std::make_unique<FeedbackAdapter>(configuration.keepsSilent));
    adapters.push_back(std::make_unique<SwayAdapter>());
    adapters.push_back(std::make_unique<FilesAdapter>(configuration));
    return adapters;
}

BridgeFolder BridgeFolder::ofUser()
{
    return {
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/moodset-bridge")};
}

Bridge::Bridge(
    const BridgeConfiguration& configuration, const BridgeFolder& folder, QObject* parent)
    : QObject(parent)
    , m_state(folder.state())
    , m_pictures(folder.pictures(), m_state.picture)
    , m_lookKeys({"/desktop/zavro/background/portrait/", "/desktop/zavro/theme/"}, LookRestMs)
    , m_soundKeys({"/com/zavro/profile/"}, SoundRestMs)
{
    connect(&m_lookKeys, &ChangeGroup::changed, this, &Bridge::handleLook);
    connect(&m_soundKeys, &ChangeGroup::changed, this, &Bridge::handleSound);
    // If a picture is applied again, its wallpaper is replaced, but no key changes.
    connect(&m_wallpapers, &FileWatch::touched, &m_lookKeys, &ChangeGroup::touch);
    for (std::unique_ptr<Adapter>& adapter : makeAdapters(configuration, folder.pictures())) {
        const AdapterSetting setting = configuration.adapter(adapter->name());
        m_drivers.push_back(std::make_unique<AdapterDriver>(std::move(adapter), setting, &m_state));
        connect(m_drivers.back().get(), &AdapterDriver::stateChanged, this, &Bridge::storeSoon);
        connect(m_drivers.back().get(), &AdapterDriver::rested, this, &Bridge::handleRest);
    }
}

void Bridge::start()
{
    for (const std::unique_ptr<AdapterDriver>& driver : m_drivers) {
        driver->start();
    }
    m_lookKeys.follow();
    m_soundKeys.follow();
    storeSoon();
}

void Bridge::handleLook()
{
    Look look = Look::read();
    m_wallpapers.follow({look.wallpaper, look.applicationWallpaper});
    if (!look.wallpaper.isEmpty()) {
        handOutWallpaper(&look);
    }
    m_appearance.look = look;
    hand(Adapter::Subject::Look);
}

void Bridge::handleSound()
{
    m_appearance.sound = Sound::read();
    hand(Adapter::Subject::Sound);
}

void Bridge::hand(Adapter::Subject subject)
{
    for (const std::unique_ptr<AdapterDriver>& driver : m_drivers) {
        if (driver->subject() == subject) {
            driver->hand(m_appearance);
        }
    }
}

// The application wallpaper is always a JPEG file.
void Bridge::handOutWallpaper(Look* look)
{
    PictureCopies::Copy copy = m_pictures.copyOf(look->wallpaper);
    if (copy.path.isEmpty() && pictureSuffix(look->wallpaper).isEmpty()) {
        const PictureCopies::Copy second = m_pictures.copyOf(look->applicationWallpaper);
        if (!second.path.isEmpty()) {
            copy = second;
        }
    }
    look->wallpaper = copy.path;
    look->problem = copy.problem;
    m_state.picture = m_pictures.last();
}

// A copy is needed as long as a shell may still show it.
void Bridge::handleRest()
{
    const bool isAnyRunning = std::any_of(
        m_drivers.begin(), m_drivers.end(),
        [](const std::unique_ptr<AdapterDriver>& driver) { return driver->isRunning(); });
    if (isAnyRunning) {
        return;
    }
    QString used;
    for (const AdapterState& state : qAsConst(m_state.adapters)) {
        used += QString::fromUtf8(
            QJsonDocument(state.record.set).toJson()
            + QJsonDocument(state.record.earlier).toJson());
    }
    m_pictures.removeUnused(used);
}

void Bridge::storeSoon()
{
    if (!m_willStore) {
        m_willStore = true;
        QMetaObject::invokeMethod(this, &Bridge::store, Qt::QueuedConnection);
    }
}

void Bridge::store()
{
    m_willStore = false;
    const QString failure = m_state.store();
    if (!failure.isEmpty() && failure != m_storeFailure) {
        qWarning().noquote() << failure;
    }
    m_storeFailure = failure;
}
