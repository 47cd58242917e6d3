// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"
#include "profilevalues.h"

#include <QObject>
#include <QSize>
#include <QUrl>

class DownloadManager;
class FileManager;
class MoodsetManager;
class QNetworkAccessManager;
class QNetworkReply;

/// Makes moodsets and applies them: this object writes the keys of the key/value store and the
/// values of the profile that decide how the system looks and sounds. docs/theme.md lists them.
///
/// A request is the URL of a moodset file, of a picture, or of a picture on the network, which is
/// downloaded first and then belongs to the user's pictures. Except for the download, a request is
/// finished when the call returns. Failures are only logged; the theme does not change then. If the
/// process has too few file descriptors left, the request is refused with a warning. Main thread
/// only.
class SystemTheme : public QObject
{
    Q_OBJECT

public:
    explicit SystemTheme(QObject* parent);

Q_SIGNALS:
    /// A moodset has been made or applied, and is stored. `key` is the low half of its id.
    void moodsetCreated(int key);

public Q_SLOTS:
    /// Makes a moodset from a URL, or finds the existing one, and stores it. With `makeCurrent` it
    /// is also applied. A request for the same URL as the last one with `makeCurrent` counts as one
    /// with `makeCurrent`. When a download ends, the latest request decides whether its moodset is
    /// applied: it is if that request was one with `makeCurrent`, whatever its URL.
    void generateMoodset(const QUrl& imageUrl, bool makeCurrent);

private Q_SLOTS:
    void generateWallpapersFrom(const Moodset& moodset, bool wasValid);
    void onlineImageReady(QNetworkReply* reply);
    void applyThemeColors(const Moodset& moodset);

private:
    void applyMoodset(const Moodset& moodset);
    void writeKeys(const Moodset& moodset);
    void applyRingerVolume(int volume);
    void applyTones(const Moodset& moodset);
    void fetchOnlineImage(const QUrl& url);
    qint64 insertFile(const QString& path);
    void readScreenSize();

    /// The latest request.
    QUrl m_imageUrl;
    /// The latest request with `makeCurrent`.
    QUrl m_currentUrl;
    /// The size in pixels. Invalid until the first wallpapers are made.
    QSize m_screenSize;
    ProfileValues m_profileManager;
    MoodsetManager* m_moodsetManager;
    FileManager* m_fileManager = nullptr;
    DownloadManager* m_downloadManager = nullptr;
    QNetworkAccessManager* m_networkManager = nullptr;
    /// The number of running downloads.
    int m_downloads = 0;
};
