// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content.h"
#include "filedata.h"

#include <QColor>
#include <QDateTime>
#include <QVariantMap>

/// A moodset: wallpapers, colours, tones and the other parts of a look.
///
/// Roles 0 to 3 are those of FileData. Role 4 is named "readOnly" but gives the file path, and the
/// numbers from 6 on have their own meanings here. Use `permissions` to find out whether a moodset
/// is read-only.
class MOODSET_CONTENT_EXPORT MoodsetData : public FileData
{
public:
    enum Role : int {
        ReadOnlyRole = 4, ///< QString, the local path
        DisplayNameRole = 5, ///< QString
        FavoriteRole = 6, ///< bool
        WallpaperUrlRole = 7, ///< QUrl, empty if there is no wallpaper
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
        VersionRole = 23 ///< int, the version of the moodset file's format
    };

    static constexpr MoodsetContent::Type contentType = MoodsetContent::Moodset;

    MoodsetData(qint64 fileId, const QUrl& fileUrl);

    MoodsetData* clone() const override;
    QVariant data(int role) const override;

    /// Sets roles 5, 6 and 9 to 21. A value that is not a colour makes a colour role invalid.
    bool setData(int role, const QVariant& value) override;

    static QHash<int, QByteArray> roleNames();

    /// Whether all fields are the same.
    bool hasSameFields(const MoodsetData& other) const;

    /// The moodset's name. FileData's member of the same name stays empty.
    QString displayName;
    /// Local paths.
    QString homeWallpaper;
    QString applicationWallpaper;
    QString partnerSpace;
    /// The id of the back cover that the moodset belongs to, or empty.
    QString dorselId;
    QColor highlightColor;
    QColor secondaryHighlightColor;
    QColor primaryColor;
    QColor secondaryColor;
    QDateTime timestamp;
    /// The files of the tones. The keys are names such as "ringerToneFile"; each value is a map
    /// with the keys "url" (QUrl), "fileName" and, if it was read from the database, "displayName".
    QVariantMap resources;
    int ringerVolume = 80;
    /// One bit for each of the seven tones, in the order of the tone roles. -1 enables all.
    int enabledSounds = -1;
    int version = 2;
    bool favorite = false;

protected:
    MoodsetData(const MoodsetData&) = default;

    template <typename T>
    friend class QSharedDataPointer;
};

using Moodset = ContentSpecialization<MoodsetData>;
