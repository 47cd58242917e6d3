// SPDX-License-Identifier: BSD-3-Clause
#include "themekeys.h"

#include "librarydatabase.h"

namespace ThemeKeys {

const QString Picture = QStringLiteral("/desktop/tuvalo/background/portrait/picture_filename");
const QString HomeWallpaper =
    QStringLiteral("/desktop/zavro/background/portrait/home_picture_filename");
const QString ApplicationWallpaper =
    QStringLiteral("/desktop/zavro/background/portrait/app_picture_filename");
const QString HighlightColor = QStringLiteral("/desktop/zavro/theme/color/highlight");
const QString SecondaryHighlightColor =
    QStringLiteral("/desktop/zavro/theme/color/secondaryHighlight");
const QString PrimaryColor = QStringLiteral("/desktop/zavro/theme/color/primary");
const QString SecondaryColor = QStringLiteral("/desktop/zavro/theme/color/secondary");
const QString ActiveMoodset = QStringLiteral("/desktop/zavro/theme/active_moodset");
const QString PartnerSpace = QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset");

const QStringList& names()
{
    static const QStringList names{
        Picture,      HomeWallpaper,  ApplicationWallpaper, HighlightColor, SecondaryHighlightColor,
        PrimaryColor, SecondaryColor, ActiveMoodset};
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
