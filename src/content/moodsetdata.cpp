// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetdata.h"

namespace {

/// The bit of `enabledSounds` that a tone role shows.
int toneBit(int role)
{
    return 1 << (role - MoodsetData::RingerToneEnabledRole);
}

bool isToneRole(int role)
{
    return role >= MoodsetData::RingerToneEnabledRole
        && role <= MoodsetData::ClockAlarmToneEnabledRole;
}

} // namespace

MoodsetData::MoodsetData(qint64 fileId, const QUrl& fileUrl)
    : FileData(fileId, fileUrl, contentType)
{
}

MoodsetData* MoodsetData::clone() const
{
    return new MoodsetData(*this);
}

QVariant MoodsetData::data(int role) const
{
    if (isToneRole(role)) {
        return (enabledSounds & toneBit(role)) != 0;
    }
    switch (role) {
    case DisplayNameRole:
        return displayName;
    case FavoriteRole:
        return favorite;
    case WallpaperUrlRole:
        return QUrl::fromLocalFile(homeWallpaper);
    case ApplicationWallpaperUrlRole:
        return QUrl::fromLocalFile(applicationWallpaper);
    case PrimaryColorRole:
        return primaryColor;
    case SecondaryColorRole:
        return secondaryColor;
    case HighlightColorRole:
        return highlightColor;
    case SecondaryHighlightColorRole:
        return secondaryHighlightColor;
    case RingerVolumeRole:
        return ringerVolume;
    case ResourcesRole:
        return resources;
    case DorselIdRole:
        return dorselId;
    case VersionRole:
        return version;
    }
    return FileData::data(role);
}

bool MoodsetData::setData(int role, const QVariant& value)
{
    if (isToneRole(role)) {
        enabledSounds =
            value.toBool() ? enabledSounds | toneBit(role) : enabledSounds & ~toneBit(role);
        return true;
    }
    switch (role) {
    case DisplayNameRole:
        displayName = value.toString();
        return true;
    case FavoriteRole:
        favorite = value.toBool();
        return true;
    case PrimaryColorRole:
        primaryColor = value.value<QColor>();
        return true;
    case SecondaryColorRole:
        secondaryColor = value.value<QColor>();
        return true;
    case HighlightColorRole:
        highlightColor = value.value<QColor>();
        return true;
    case SecondaryHighlightColorRole:
        secondaryHighlightColor = value.value<QColor>();
        return true;
    case RingerVolumeRole:
        ringerVolume = value.toInt();
        return true;
    case ResourcesRole:
        resources = value.toMap();
        return true;
    }
    return false;
}

QHash<int, QByteArray> MoodsetData::roleNames()
{
    return {
        {ContentIdRole, "contentId"},
        {UrlRole, "url"},
        {MimeTypeRole, "mimeType"},
        {FileNameRole, "fileName"},
        {DisplayNameRole, "displayName"},
        {FavoriteRole, "favorite"},
        {WallpaperUrlRole, "wallpaperUrl"},
        {ApplicationWallpaperUrlRole, "applicationWallpaperUrl"},
        {PrimaryColorRole, "primaryColor"},
        {SecondaryColorRole, "secondaryColor"},
        {HighlightColorRole, "highlightColor"},
        {SecondaryHighlightColorRole, "secondaryHighlightColor"},
        {RingerVolumeRole, "ringerVolume"},
        {RingerToneEnabledRole, "ringerToneEnabled"},
        {MailToneEnabledRole, "mailToneEnabled"},
        {MessageToneEnabledRole, "messageToneEnabled"},
        {InternetCallToneEnabledRole, "internetCallToneEnabled"},
        {ChatToneEnabledRole, "chatToneEnabled"},
        {CalendarToneEnabledRole, "calendarToneEnabled"},
        {ClockAlarmToneEnabledRole, "clockAlarmToneEnabled"},
        {ReadOnlyRole, "readOnly"},
        {ResourcesRole, "resources"},
        {DorselIdRole, "dorselId"},
        {VersionRole, "version"}};
}

bool MoodsetData::hasSameFields(const MoodsetData& other) const
{
    return FileData::hasSameFields(other) && favorite == other.favorite
        && ringerVolume == other.ringerVolume && enabledSounds == other.enabledSounds
        && version == other.version && displayName == other.displayName
        && homeWallpaper == other.homeWallpaper
        && applicationWallpaper == other.applicationWallpaper && partnerSpace == other.partnerSpace
        && dorselId == other.dorselId && highlightColor == other.highlightColor
        && secondaryHighlightColor == other.secondaryHighlightColor
        && primaryColor == other.primaryColor && secondaryColor == other.secondaryColor
        && timestamp == other.timestamp && resources == other.resources;
}
