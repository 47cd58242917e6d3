// SPDX-License-Identifier: BSD-3-Clause
#include "albumgallery.h"

#include "accessory/dorselmonitor.h"
#include "albumgallery_p.h"
#include "attributes.h"
#include "content/moodsetcontent.h"
#include "indexing/filemanager.h"
#include "indexing/filename.h"
#include "moodset/installmanager.h"
#include "moodset/managerfactory.h"
#include "moodsetadaptor.h"
#include "servicelog.h"
#include "theme/systemtheme.h"

#include <mgconfitem.h>

#include <QDBusConnection>
#include <QDBusError>
#include <QStandardPaths>
#include <QTimerEvent>
#include <QUrl>

#include <dbus/dbus.h>

#include <limits>

namespace {

const char* const Constructor = "AlbumGallery::AlbumGallery(QObject*)";

const QLatin1String ServiceName("com.zavro.moodsetd");
const QLatin1String ObjectPath("/com/zavro/moodsetd");

/// A series of changes has ended when there was none for this long.
constexpr int AnnouncementDelay = 10; // milliseconds

/// The highest type that is announced.
constexpr int LastAnnouncedType = MoodsetContent::Download;

/// Stops the bus library from pausing a connection that has received much. Qt frees messages on the
/// main thread, where the pause cannot be ended, so the daemon would never receive anything again.
void keepReceiving(const QDBusConnection& bus)
{
    constexpr long unlimited = std::numeric_limits<long>::max();
    dbus_connection_set_max_received_size(
        static_cast<DBusConnection*>(bus.internalPointer()), unlimited);
}

/// Takes the bus name and registers the object, or ends the process.
void registerOnBus(AlbumGallery* gallery)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        keepReceiving(bus);
    }
    if (!bus.registerService(ServiceName)) {
        qCWarning(serviceLog) << bus.lastError();
        qFatal("DBUS service already taken. Kill the other instance first.");
    }
    if (!bus.registerObject(ObjectPath, gallery, QDBusConnection::ExportAdaptors)) {
        qFatal("Could not register object '/com/zavro/moodsetd'");
    }
}

void appendInstallDirectories()
{
    for (const QString& path : InstallManager::installPaths()) {
        InstallManager::fromRegistry()->appendDirectory(path);
    }
}

/// A longer text is not a URL. The daemon keeps the text in several places, and the bus allows
/// texts that are long enough to fill the memory.
constexpr int MaximumUrlLength = 64 * 1024;

/// Passes a client's URL to the theme. `function` is the signature of the slot that was called.
void generateMoodset(SystemTheme* theme, const QString& url, bool makeCurrent, const char* function)
{
    if (url.size() > MaximumUrlLength) {
        qCWarning(serviceLog) << function << "Invalid URL: " << url.size();
        return;
    }
    qCDebug(serviceLog) << function << url;
    const QUrl parsed(url);
    if (!parsed.isValid()) {
        qCWarning(serviceLog) << function << "Invalid URL: " << url;
        return;
    }
    theme->generateMoodset(parsed, makeCurrent);
}

} // namespace

AlbumGalleryPrivate* AlbumGalleryPrivate::instance = nullptr;

AlbumGalleryPrivate::AlbumGalleryPrivate(AlbumGallery* gallery)
    : QObject(gallery)
    , systemTheme(new SystemTheme(this))
    , fileManager(FileManager::fromRegistry())
    , q(gallery)
{
    instance = this;
    connect(DorselMonitor::instance(), &DorselMonitor::activeMoodset, q, &AlbumGallery::setMoodset);
    connect(systemTheme, &SystemTheme::moodsetCreated, this, &AlbumGalleryPrivate::moodsetCreated);
}

AlbumGalleryPrivate::~AlbumGalleryPrivate()
{
    instance = nullptr;
}

void AlbumGalleryPrivate::moodsetCreated(int key)
{
    Q_UNUSED(key)
    AlbumGallery::notifyContentChanged(MoodsetContent::Moodset);
}

void AlbumGalleryPrivate::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != changeTimer.timerId()) {
        return;
    }
    changeTimer.stop();
    const int types = changedTypes;
    changedTypes = 0;
    // An announced change survives this process, like the database's rows.
    MGConfItem::sync();
    for (int type = 0; type <= LastAnnouncedType; ++type) {
        if (types & (1 << type)) {
            Q_EMIT q->contentChanged(type);
        }
    }
}

AlbumGallery::AlbumGallery(QObject* parent)
    : QObject(parent)
{
    // The constructor of the private object asks for managers.
    ContentManager::setFactory(makeManager);
    ContentManager::setAnnouncer(notifyContentChanged);
    d = new AlbumGalleryPrivate(this);
    new MoodsetAdaptor(this);
    qCDebug(serviceLog) << Constructor << "Registering dbus...";
    registerOnBus(this);
    if (!QDBusConnection::sessionBus().connect(
            QString(), QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
            QStringLiteral("installedMoodset"), this, SLOT(moodsetInstalled(QString, QString)))) {
        qCWarning(serviceLog) << Constructor;
        qCWarning(serviceLog) << "Unable to connect to store client";
    }
    qCDebug(serviceLog) << Constructor << "Starting to monitor directories...";
    const QStringList pictures =
        QStandardPaths::standardLocations(QStandardPaths::PicturesLocation);
    for (const QString& path : pictures) {
        // If a location does not exist, it stays unknown until the next start.
        d->fileManager->appendDirectory(path, FileManager::AllEntries, true);
    }
    appendInstallDirectories();
}

AlbumGallery::~AlbumGallery()
{
    delete d;
    d = nullptr;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(ObjectPath);
    if (!bus.unregisterService(ServiceName)) {
        qCWarning(serviceLog) << "Failed to unregister org.pelmo.fastindexer service";
    }
}

void AlbumGallery::notifyContentChanged(int type)
{
    AlbumGalleryPrivate* const instance = AlbumGalleryPrivate::instance;
    if (!instance) {
        return;
    }
    instance->changedTypes |= 1 << type;
    instance->changeTimer.start(AnnouncementDelay, instance);
}

void AlbumGallery::indexFile(const QString& url)
{
    if (url.size() > MaximumUrlLength) {
        return;
    }
    const QUrl file(url);
    if (!file.isLocalFile()) {
        return;
    }
    // If the bytes of a path are not text, the text could be the path of another file.
    const QByteArray path =
        QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1());
    if (!decodeFileName(path)) {
        warnOfUndecodableName("void AlbumGallery::indexFile(const QString&)", path);
        return;
    }
    d->fileManager->insertFile(file.toLocalFile());
}

void AlbumGallery::setMoodset(const QString& url)
{
    generateMoodset(d->systemTheme, url, true, "void AlbumGallery::setMoodset(const QString&)");
}

void AlbumGallery::createMoodset(const QString& url)
{
    generateMoodset(d->systemTheme, url, false, "void AlbumGallery::createMoodset(const QString&)");
}

void AlbumGallery::remove(int contentType, qlonglong contentId)
{
    ContentManager* const manager = ContentManager::managerFromType(contentType);
    if (manager) {
        // A failure is announced, too.
        manager->remove(contentId);
        notifyContentChanged(contentType);
    }
}

void AlbumGallery::saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args)
{
    ContentManager* const manager = ContentManager::managerFromType(contentType);
    if (manager) {
        // A failure is announced, too.
        manager->save(contentId, plainAttributes(args));
        notifyContentChanged(contentType);
    }
}

void AlbumGallery::installPackage(const QString& path)
{
    InstallManager::fromRegistry()->install(path, QString(), true);
}

void AlbumGallery::refreshMoodsets()
{
    appendInstallDirectories();
    InstallManager::fromRegistry()->refreshInstalls();
}

void AlbumGallery::moodsetInstalled(const QString& path, const QString& dorselId)
{
    InstallManager::fromRegistry()->install(path, dorselId, true);
}
