// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"
#include "profilemanager.h"

#include <QObject>
#include <QSize>
#include <QUrl>

class DownloadManager;
class FileManager;
class MoodsetManager;
class QNetworkAccessManager;
class QNetworkReply;

/// Makes moodsets and puts them into force: the state of the system follows from the keys of the
/// key/value store and the profile values that this object writes. docs/theme.md lists them.
///
/// A request is a URL: of a moodset file, of a picture, or of a picture on the network, which is
/// downloaded first and then belongs to the user's pictures. Requests run to their end inside the
/// call but for the download. No failure is reported but in the log; the theme then stays as it
/// was. Main thread only.
class SystemTheme : public QObject
{
    Q_OBJECT

public:
    explicit SystemTheme(QObject* parent);

Q_SIGNALS:
    /// A moodset has been made or has come into force, and is stored. `key` is the low half of its
    /// id.
    void moodsetCreated(int key);

public Q_SLOTS:
    /// Makes a moodset from a URL, or finds the one that it has, and stores it; with `makeCurrent`
    /// it also comes into force. A request for the same URL as the last one with `makeCurrent`
    /// counts as one with it. Whether a download's moodset comes into force is decided at its end,
    /// by the latest request: it does if that was one with `makeCurrent`, whatever its URL.
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
    /// The latest request that was to come into force.
    QUrl m_currentUrl;
    /// In pixels; invalid until the first wallpapers are made.
    QSize m_screenSize;
    ProfileManager m_profileManager;
    MoodsetManager* m_moodsetManager;
    FileManager* m_fileManager = nullptr;
    DownloadManager* m_downloadManager = nullptr;
    QNetworkAccessManager* m_networkManager = nullptr;
};
