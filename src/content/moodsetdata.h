// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content.h"
#include "filedata.h"

#include <QColor>
#include <QDateTime>
#include <QVariantMap>

/// A moodset: wallpapers, colours, tones and what else a look consists of.
///
/// Roles 0 to 3 are those of FileData; role 4, named "readOnly" here, answers with the file path,
/// and from 6 on the numbers have meanings of their own. Use `permissions` to tell a read-only
/// moodset.
class MOODSET_CONTENT_EXPORT MoodsetData : public FileData
{
public:
    enum Role : int {
        ReadOnlyRole = 4, ///< QString, the local path
        DisplayNameRole = 5, ///< QString
        FavoriteRole = 6, ///< bool
        WallpaperUrlRole = 7, ///< QUrl, empty where there is no wallpaper
        ApplicationWallpaperUrlRole = 8, ///< QUrl, likewise
        PrimaryColorRole = 9, ///< QColor
        SecondaryColorRole = 10, ///< QColor
        HighlightColorRole = 11, ///< QColor
        SecondaryHighlightColorRole = 12, ///< QColor
        RingerVolumeRole = 13, ///< int, 0 to 100
        RingerToneEnabledRole = 14, ///< bool
        MessageToneEnabledRole = 15, ///< bool
        MailToneEnabledRole = 16, ///< bool
        InternetCallToneEnabledRole = 17, ///< bool
        ChatToneEnabledRole = 18, ///< bool
        CalendarToneEnabledRole = 19, ///< bool
        ClockAlarmToneEnabledRole = 20, ///< bool
        ResourcesRole = 21, ///< QVariantMap
        DorselIdRole = 22, ///< QString, the back cover's id
        VersionRole = 23 ///< int, of the moodset file's format
    };

    static constexpr MoodsetContent::Type contentType = MoodsetContent::Moodset;

    MoodsetData(qint64 fileId, const QUrl& fileUrl);

    MoodsetData* clone() const override;
    QVariant data(int role) const override;

    /// Takes roles 5, 6 and 9 to 21. A value that is no colour makes a colour role invalid.
    bool setData(int role, const QVariant& value) override;

    static QHash<int, QByteArray> roleNames();

    /// The moodset's name; FileData's field of that name stays empty.
    QString displayName;
    /// Local paths.
    QString homeWallpaper;
    QString applicationWallpaper;
    QString partnerSpace;
    /// The id of the back cover that the moodset belongs to; empty when it has none.
    QString dorselId;
    QColor highlightColor;
    QColor secondaryHighlightColor;
    QColor primaryColor;
    QColor secondaryColor;
    QDateTime timestamp;
    /// The files that the moodset refers to: a tone key such as "ringerToneFile" to a map with the
    /// keys "url" (QUrl), "fileName" and, if read from the database, "displayName".
    QVariantMap resources;
    int ringerVolume = 80;
    /// One bit for each of the seven tones, in the order of the tone roles; -1 enables all.
    int enabledSounds = -1;
    int version = 2;
    bool favorite = false;

protected:
    MoodsetData(const MoodsetData&) = default;

    template <typename T>
    friend class QSharedDataPointer;
};

using Moodset = ContentSpecialization<MoodsetData>;
