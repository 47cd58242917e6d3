// SPDX-License-Identifier: BSD-3-Clause
#include "themekeys.h"

#include "librarydatabase.h"

namespace ThemeKeys {

const QString picture = QStringLiteral("/desktop/tuvalo/background/portrait/picture_filename");
const QString homeWallpaper =
    QStringLiteral("/desktop/zavro/background/portrait/home_picture_filename");
const QString applicationWallpaper =
    QStringLiteral("/desktop/zavro/background/portrait/app_picture_filename");
const QString highlightColor = QStringLiteral("/desktop/zavro/theme/color/highlight");
const QString secondaryHighlightColor =
    QStringLiteral("/desktop/zavro/theme/color/secondaryHighlight");
const QString primaryColor = QStringLiteral("/desktop/zavro/theme/color/primary");
const QString secondaryColor = QStringLiteral("/desktop/zavro/theme/color/secondary");
const QString activeMoodset = QStringLiteral("/desktop/zavro/theme/active_moodset");
const QString partnerSpace = QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset");

const QStringList& names()
{
    static const QStringList names{
        picture,      homeWallpaper,  applicationWallpaper, highlightColor, secondaryHighlightColor,
        primaryColor, secondaryColor, activeMoodset};
    return names;
}

QString written(const QString& key, const QString& text)
{
    return QStringLiteral("%1='%2'").arg(key, text);
}

QStringList ofMoodset(const LibraryDatabase& library, const QString& path, const QString& request)
{
    const QStringList row = library.moodset(
        path,
        QStringLiteral("homeWallpaper, applicationWallpaper, highlightColor, "
                       "secondaryHighlightColor, primaryColor, secondaryColor"));
    const QStringList texts = QStringList(request) + row + QStringList(path);
    QStringList keys;
    for (int i = 0; i < names().size(); ++i) {
        keys.append(written(names().at(i), texts.value(i)));
    }
    return keys;
}

} // namespace ThemeKeys

QString wallpaperName(const QString& source, const QString& suffix)
{
    quint32 hash = 0;
    for (const QChar unit : source) {
        hash = 31 * hash + unit.unicode();
    }
    return QString::number(hash, 16) + suffix;
}
