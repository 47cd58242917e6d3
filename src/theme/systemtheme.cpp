// SPDX-License-Identifier: BSD-3-Clause
#include "systemtheme.h"

#include "accessory/partnerspacemanager.h"
#include "content/colorstring.h"
#include "content/downloadmanager.h"
#include "indexing/filemanager.h"
#include "moodset/moodsetmanager.h"
#include "systembackgroundimage.h"
#include "themelog.h"
#include "tonetable.h"

#include <freedescriptors.h>
#include <mgconfitem.h>
#include <picturereader.h>

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

/// The number of descriptors that a request may need, besides those of its download: for files, for
/// the threads that scale and download pictures, and for the store's connection.
constexpr int RequestDescriptors = 24;
/// The number of descriptors that a download may need: two sockets, and a thread for the host's
/// address with one more.
constexpr int DownloadDescriptors = 4;

void warnOfDescriptors(const char* function, const QUrl& url)
{
    qCWarning(themeLog) << function << "Too few file descriptors are left for" << url;
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

/// The path of the next downloaded picture. Its number is the number of the pictures that exist. If
/// there is a gap in the numbers, this is the path of an earlier picture, which is overwritten;
/// downloaded pictures are never removed in another way.
QString onlineImagePath()
{
    const QString pictures = picturesDirectory();
    const QStringList names =
        QDir(pictures).entryList({QStringLiteral("online_img*")}, QDir::Files, QDir::Name);
    return pictures + QDir::separator() + QStringLiteral("online_img")
        + QString::number(names.count()) + QStringLiteral(".jpg");
}

/// Returns the memory of released pictures to the system. The C library would keep it for later
/// allocations.
void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace

SystemTheme::SystemTheme(QObject* parent)
    : QObject(parent)
    , m_moodsetManager(MoodsetManager::fromRegistry())
{
    connect(
        m_moodsetManager, &MoodsetManager::activeMoodsetUpdated, this,
        &SystemTheme::applyThemeColors);
}

void SystemTheme::generateMoodset(const QUrl& imageUrl, bool makeCurrent)
{
    if (!areDescriptorsFree(RequestDescriptors)) {
        warnOfDescriptors("void SystemTheme::generateMoodset(const QUrl&, bool)", imageUrl);
        return;
    }
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
    // However many downloads are running, enough descriptors must remain for the next request.
    if (!areDescriptorsFree(RequestDescriptors + (m_downloads + 1) * DownloadDescriptors)) {
        warnOfDescriptors("void SystemTheme::fetchOnlineImage(const QUrl&)", url);
        return;
    }
    if (!m_networkManager) {
        m_networkManager = new QNetworkAccessManager(this);
        connect(
            m_networkManager, &QNetworkAccessManager::finished, this,
            &SystemTheme::onlineImageReady);
    }
    m_networkManager->get(QNetworkRequest(url));
    ++m_downloads;
}

void SystemTheme::onlineImageReady(QNetworkReply* reply)
{
    --m_downloads;
    if (reply->error() != QNetworkReply::NoError) {
        // The reply is deleted together with its manager.
        qCWarning(themeLog) << ImageReadyFunction << "Error in" << reply->url() << ":"
                            << reply->errorString();
        return;
    }
    reply->deleteLater();
    const QString path = onlineImagePath();
    // The decoded picture and the downloaded bytes are released before the wallpapers are made,
    // which also needs memory.
    if (!PictureReader(reply->readAll()).read().save(path, nullptr, -1)) {
        qCWarning(themeLog) << "Failed to save online image..." << path;
        return;
    }
    const qint64 id = insertFile(path);
    if (id == 0) {
        qCWarning(themeLog) << ImageReadyFunction;
        qCWarning(themeLog) << "Failed to insert new image into database";
        return;
    }
    if (!m_downloadManager) {
        m_downloadManager = DownloadManager::fromRegistry();
    }
    m_downloadManager->create(id, reply->url());
    generateWallpapersFrom(Moodset(new MoodsetData(id, QUrl::fromLocalFile(path))), false);
}

qint64 SystemTheme::insertFile(const QString& path)
{
    if (!m_fileManager) {
        m_fileManager = FileManager::fromRegistry();
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
    // This runs after the reply to the client has been sent.
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
    Q_EMIT moodsetCreated(int(moodset->id));
}

void SystemTheme::writeKeys(const Moodset& moodset)
{
    // This is the path of the request, not of the wallpaper: it identifies the active moodset.
    writeKey("/desktop/tuvalo/background/portrait/picture_filename", m_imageUrl.toLocalFile());
    writeKey("/desktop/zavro/background/portrait/home_picture_filename", moodset->homeWallpaper);
    writeKey(
        "/desktop/zavro/background/portrait/app_picture_filename", moodset->applicationWallpaper);
    applyThemeColors(moodset);
    // This comes last, when the wallpapers and the colours are written.
    writeKey("/desktop/zavro/theme/active_moodset", moodset->url.toLocalFile());
    MGConfItem::sync();
}

void SystemTheme::applyThemeColors(const Moodset& moodset)
{
    if (!moodset) {
        return;
    }
    writeKey("/desktop/zavro/theme/color/highlight", colorToString(moodset->highlightColor));
    writeKey(
        "/desktop/zavro/theme/color/secondaryHighlight",
        colorToString(moodset->secondaryHighlightColor));
    writeKey("/desktop/zavro/theme/color/primary", colorToString(moodset->primaryColor));
    writeKey("/desktop/zavro/theme/color/secondary", colorToString(moodset->secondaryColor));
}

/// A volume outside of the range does not change the profile.
void SystemTheme::applyRingerVolume(int volume)
{
    if (volume < 0 || volume > MaxRingerVolume) {
        return;
    }
    m_profileManager.setRingerVolume(volume);
    m_profileManager.setActiveProfile(volume == 0 ? ProfileValues::Silent : ProfileValues::General);
}

/// A tone with a file is enabled, whatever its bit is. A tone without a file is disabled if its bit
/// is clear, and otherwise does not change.
void SystemTheme::applyTones(const Moodset& moodset)
{
    for (int i = 0; i < Tones::Count; ++i) {
        const ToneRow& row = ToneTable.at(size_t(i));
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
