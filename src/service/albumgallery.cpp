// SPDX-License-Identifier: BSD-3-Clause
#include "albumgallery.h"

#include "accessory/dorselmonitor.h"
#include "albumgallery_p.h"
#include "attributes.h"
#include "content/moodsetcontent.h"
#include "indexing/filemanager.h"
#include "moodset/installmanager.h"
#include "moodsetadaptor.h"
#include "theme/systemtheme.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDebug>
#include <QStandardPaths>
#include <QTimerEvent>
#include <QUrl>

namespace {

const char* const Constructor = "AlbumGallery::AlbumGallery(QObject*)";

const QLatin1String ServiceName("com.zavro.moodsetd");
const QLatin1String ObjectPath("/com/zavro/moodsetd");

/// A burst of changes ends with a pause of this length.
constexpr int AnnouncementDelay = 10; // milliseconds

/// The highest type that is announced.
constexpr int LastAnnouncedType = MoodsetContent::Download;

/// Takes the name and shows the object on the bus, or ends the process.
void registerOnBus(AlbumGallery* gallery)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerService(ServiceName)) {
        qWarning() << bus.lastError();
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

/// Hands a client's URL on to the theme; `function` is the signature of the slot that it came to.
void generateMoodset(SystemTheme* theme, const QString& url, bool makeCurrent, const char* function)
{
    qDebug() << function << url;
    const QUrl parsed(url);
    if (!parsed.isValid()) {
        qWarning() << function << "Invalid URL: " << url;
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
    for (int type = 0; type <= LastAnnouncedType; ++type) {
        if (types & (1 << type)) {
            Q_EMIT q->contentChanged(type);
        }
    }
}

AlbumGallery::AlbumGallery(QObject* parent)
    : QObject(parent)
    , d(new AlbumGalleryPrivate(this))
{
    new MoodsetAdaptor(this);
    qDebug() << Constructor << "Registering dbus...";
    registerOnBus(this);
    if (!QDBusConnection::sessionBus().connect(
            QString(), QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
            QStringLiteral("installedMoodset"), this, SLOT(moodsetInstalled(QString, QString)))) {
        qWarning() << Constructor;
        qWarning() << "Unable to connect to store client";
    }
    qDebug() << Constructor << "Starting to monitor directories...";
    const QStringList pictures =
        QStandardPaths::standardLocations(QStandardPaths::PicturesLocation);
    for (const QString& path : pictures) {
        // A location that does not exist stays unknown until the next start.
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
        qWarning() << "Failed to unregister org.pelmo.fastindexer service";
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
    const QUrl file(url);
    if (file.isLocalFile()) {
        d->fileManager->insertFile(file.toLocalFile());
    }
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
        // Announced also after a failure.
        manager->remove(contentId);
        notifyContentChanged(contentType);
    }
}

void AlbumGallery::saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args)
{
    ContentManager* const manager = ContentManager::managerFromType(contentType);
    if (manager) {
        // Announced also after a failure.
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
