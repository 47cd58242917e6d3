// SPDX-License-Identifier: BSD-3-Clause
#include "systemtheme.h"

#include "accessory/partnerspacemanager.h"
#include "content/colorstring.h"
#include "content/contentmanager.h"
#include "content/downloadmanager.h"
#include "content/moodsetcontent.h"
#include "decodableimage.h"
#include "indexing/filemanager.h"
#include "moodset/moodsetmanager.h"
#include "systembackgroundimage.h"
#include "tonetable.h"

#include <mgconfitem.h>

#include <QDebug>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <malloc.h>

namespace {

const char* const ImageReadyFunction = "void SystemTheme::onlineImageReady(QNetworkReply*)";

constexpr int MaxRingerVolume = 100;

constexpr int DefaultScreenWidth = 540; // pixels
constexpr int DefaultScreenHeight = 960; // pixels

template <typename Manager>
Manager* managerOf(MoodsetContent::Type type)
{
    return static_cast<Manager*>(ContentManager::managerFromType(type));
}

void writeKey(const char* key, const QString& value)
{
    MGConfItem(QLatin1String(key)).set(value);
}

int screenLength(const char* name, int defaultValue)
{
    return MGConfItem(QStringLiteral("/vantile/screen/primary/") + QLatin1String(name))
        .value(defaultValue)
        .toInt();
}

QString picturesDirectory()
{
    const QStringList locations =
        QStandardPaths::standardLocations(QStandardPaths::PicturesLocation);
    return locations.isEmpty() ? QDir::homePath() + QDir::separator() + QStringLiteral("Pictures")
                               : locations.first();
}

/// The path of the next downloaded picture, numbered by how many there are. A gap in the numbers
/// makes it that of an earlier one, which is then overwritten: the only way one ever goes.
QString onlineImagePath()
{
    const QString pictures = picturesDirectory();
    const QStringList names =
        QDir(pictures).entryList({QStringLiteral("online_img*")}, QDir::Files, QDir::Name);
    return pictures + QDir::separator() + QStringLiteral("online_img")
        + QString::number(names.count()) + QStringLiteral(".jpg");
}

/// Returns the memory of pictures that are gone to the system, from which the C library would keep
/// as much as the next ones may need.
void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace

SystemTheme::SystemTheme(QObject* parent)
    : QObject(parent)
    , m_moodsetManager(managerOf<MoodsetManager>(MoodsetContent::Moodset))
{
    connect(
        m_moodsetManager, &MoodsetManager::activeMoodsetUpdated, this,
        &SystemTheme::applyThemeColors);
}

void SystemTheme::generateMoodset(const QUrl& imageUrl, bool makeCurrent)
{
    if (makeCurrent) {
        m_currentUrl = imageUrl;
    }
    m_imageUrl = imageUrl;
    Moodset moodset = m_moodsetManager->moodsetFromUrl(imageUrl);
    const bool wasValid = moodset;
    if (!wasValid) {
        if (!imageUrl.isLocalFile()) {
            fetchOnlineImage(imageUrl);
            return;
        }
        const qint64 id = insertFile(imageUrl.toLocalFile());
        if (id == 0) {
            return;
        }
        moodset = Moodset(new MoodsetData(id, imageUrl));
    }
    generateWallpapersFrom(moodset, wasValid);
}

void SystemTheme::fetchOnlineImage(const QUrl& url)
{
    if (!m_networkManager) {
        m_networkManager = new QNetworkAccessManager(this);
        connect(
            m_networkManager, &QNetworkAccessManager::finished, this,
            &SystemTheme::onlineImageReady);
    }
    m_networkManager->get(QNetworkRequest(url));
}

void SystemTheme::onlineImageReady(QNetworkReply* reply)
{
    if (reply->error() != QNetworkReply::NoError) {
        // The reply goes with its manager.
        qWarning() << ImageReadyFunction << "Error in" << reply->url() << ":"
                   << reply->errorString();
        return;
    }
    reply->deleteLater();
    const QString path = onlineImagePath();
    // The picture and the file are gone when the wallpapers are made, which takes memory, too.
    if (!imageFromData(reply->readAll()).save(path, nullptr, -1)) {
        qWarning() << "Failed to save online image..." << path;
        return;
    }
    const qint64 id = insertFile(path);
    if (id == 0) {
        qWarning() << ImageReadyFunction;
        qWarning() << "Failed to insert new image into database";
        return;
    }
    if (!m_downloadManager) {
        m_downloadManager = managerOf<DownloadManager>(MoodsetContent::Download);
    }
    m_downloadManager->create(id, reply->url());
    generateWallpapersFrom(Moodset(new MoodsetData(id, QUrl::fromLocalFile(path))), false);
}

qint64 SystemTheme::insertFile(const QString& path)
{
    if (!m_fileManager) {
        m_fileManager = managerOf<FileManager>(MoodsetContent::File);
    }
    return m_fileManager->insertFile(path);
}

void SystemTheme::generateWallpapersFrom(const Moodset& moodset, bool wasValid)
{
    if (m_screenSize.width() < 0 || m_screenSize.height() < 0) {
        readScreenSize();
    }
    SystemBackgroundImage builder;
    const int side = std::max(m_screenSize.width(), m_screenSize.height());
    const Moodset built = builder.buildBackgroundImages(
        moodset, QImage(), m_screenSize, QRectF(0, 0, side, side), wasValid);
    // Behind the reply to whoever asked for this.
    QTimer::singleShot(0, this, giveMemoryBack);
    if (built) {
        applyMoodset(built);
    }
}

void SystemTheme::readScreenSize()
{
    m_screenSize = QSize(
        screenLength("width", DefaultScreenWidth), screenLength("height", DefaultScreenHeight));
}

void SystemTheme::applyMoodset(const Moodset& moodset)
{
    if (m_imageUrl == m_currentUrl) {
        writeKeys(moodset);
        applyRingerVolume(moodset->ringerVolume);
        applyTones(moodset);
        PartnerSpaceManager::instance()->setPartnerSpace(moodset->partnerSpace);
    }
    m_moodsetManager->create(moodset);
    Q_EMIT moodsetCreated(static_cast<int>(moodset->id));
}

void SystemTheme::writeKeys(const Moodset& moodset)
{
    // The request, not the wallpaper: by its path the active moodset is known.
    writeKey("/desktop/tuvalo/background/portrait/picture_filename", m_imageUrl.toLocalFile());
    writeKey("/desktop/zavro/background/portrait/home_picture_filename", moodset->homeWallpaper);
    writeKey(
        "/desktop/zavro/background/portrait/app_picture_filename", moodset->applicationWallpaper);
    applyThemeColors(moodset);
    // Last, when the wallpapers and the colours stand.
    writeKey("/desktop/zavro/theme/active_moodset", moodset->url.toLocalFile());
    MGConfItem::sync();
}

void SystemTheme::applyThemeColors(const Moodset& moodset)
{
    writeKey("/desktop/zavro/theme/color/highlight", colorToString(moodset->highlightColor));
    writeKey(
        "/desktop/zavro/theme/color/secondaryHighlight",
        colorToString(moodset->secondaryHighlightColor));
    writeKey("/desktop/zavro/theme/color/primary", colorToString(moodset->primaryColor));
    writeKey("/desktop/zavro/theme/color/secondary", colorToString(moodset->secondaryColor));
}

/// A volume out of range leaves the profile as it is.
void SystemTheme::applyRingerVolume(int volume)
{
    if (volume < 0 || volume > MaxRingerVolume) {
        return;
    }
    m_profileManager.setRingerVolume(volume);
    m_profileManager.setActiveProfile(
        volume == 0 ? ProfileManager::Silent : ProfileManager::General);
}

/// A tone with a file is enabled, whatever its bit says; one without is switched off by its clear
/// bit, and else left as the user has it.
void SystemTheme::applyTones(const Moodset& moodset)
{
    for (int i = 0; i < Tones::Count; ++i) {
        const ToneRow& row = toneTable.at(static_cast<size_t>(i));
        const auto resource = moodset->resources.constFind(QLatin1String(row.key));
        if (resource != moodset->resources.constEnd()) {
            const QUrl url = resource->toMap().value(QStringLiteral("url")).toUrl();
            (m_profileManager.*row.setFile)(url.toLocalFile());
            (m_profileManager.*row.setEnabled)(true);
        } else if ((moodset->enabledSounds & (1 << i)) == 0) {
            (m_profileManager.*row.setEnabled)(false);
        }
    }
}
