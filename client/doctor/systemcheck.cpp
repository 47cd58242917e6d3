// SPDX-License-Identifier: BSD-3-Clause
#include "checkup.h"

#include "printabletext.h"
#include "text.h"
#include "theme.h"
#include "wallpaperfiles.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QLocale>
#include <QMimeDatabase>
#include <QStandardPaths>

#include <mgconfitem.h>

namespace {

using State = Checkup::State;

Checkup checkStore()
{
    const auto id = QStringLiteral("store");
    const auto service = QStringLiteral("ca.desrt.dconf");
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const bool canWrite = bus.isConnected()
        && (bus.interface()->isServiceRegistered(service)
            || bus.interface()->activatableServiceNames().value().contains(service));
    if (canWrite) {
        return {id, State::Good, Text::tr("the key/value store can be written"), {}};
    }
    return {
        id, State::Problem,
        Text::tr("the key/value store cannot be written: its service is not installed"),
        QStringLiteral("sudo apt install dconf-service")};
}

Checkup checkDefaults()
{
    const auto id = QStringLiteral("defaults");
    // The defaults that an administrator has compiled have priority.
    const MGConfItem volume(QStringLiteral("/com/zavro/profile/fallback/ringing.alert.volume"));
    if (volume.value().isValid()) {
        return {
            id,
            State::Good,
            Text::tr("the defaults of volume and tones are compiled into the key/value store"),
            {}};
    }
    const QString file = QStandardPaths::locate(
        QStandardPaths::GenericDataLocation, QStringLiteral("moodsetd/profile-defaults"));
    if (QFileInfo(file).isReadable()) {
        return {id, State::Good, Text::tr("the defaults of volume and tones are installed"), {}};
    }
    return {
        id, State::Problem,
        Text::tr("the defaults of volume and tones are not installed: no data folder has "
                 "moodsetd/profile-defaults"),
        QStringLiteral("sudo apt install --reinstall moodsetd")};
}

Checkup checkFileTypes()
{
    const auto id = QStringLiteral("file-types");
    if (QMimeDatabase().mimeTypeForName(QStringLiteral("application/x-zavro-moodset")).isValid()) {
        return {id, State::Good, Text::tr("moodset files are known by their type"), {}};
    }
    return {
        id, State::Problem, Text::tr("the types of moodset and index files are not known"),
        QStringLiteral("sudo update-mime-database /usr/share/mime")};
}

Checkup checkTheme()
{
    const auto id = QStringLiteral("theme");
    const Theme theme = Theme::read();
    if (theme.activeMoodset.isEmpty()) {
        return {
            id, State::Advice, Text::tr("no moodset is active"),
            QStringLiteral("moodsetctl set MOODSET")};
    }
    for (const QString& path :
         {theme.homeWallpaper, theme.applicationWallpaper, theme.activeMoodset}) {
        if (!QFileInfo::exists(path)) {
            const bool isWallpaper = path != theme.activeMoodset;
            return {
                id, State::Problem,
                Text::tr("the theme names a file that is not there: %1").arg(printableText(path)),
                isWallpaper && QFileInfo::exists(theme.activeMoodset)
                    ? QStringLiteral("moodsetctl set \"%1\"").arg(theme.activeMoodset)
                    : QStringLiteral("moodsetctl set MOODSET")};
        }
    }
    return {id, State::Good, Text::tr("the files of the theme are there"), {}};
}

Checkup checkWallpapers()
{
    const auto id = QStringLiteral("wallpapers");
    const WallpaperFiles files = WallpaperFiles::read();
    if (!files.fault.isEmpty()) {
        return {id, State::Unknown, files.fault, {}};
    }
    if (files.unused.isEmpty()) {
        return {id, State::Good, Text::tr("all wallpapers are in use"), {}};
    }
    return {
        id, State::Advice,
        numbered(
            files.unused.size(),
            QT_TRANSLATE_NOOP("Text", "%1 wallpaper is used by nothing and takes %2"),
            QT_TRANSLATE_NOOP("Text", "%1 wallpapers are used by nothing and take %2"))
            .arg(QLocale().formattedDataSize(files.unusedSize, 1)),
        QStringLiteral("moodsetctl clean")};
}

} // namespace

Checkups checkSystem()
{
    return {checkStore(), checkDefaults(), checkFileTypes(), checkTheme(), checkWallpapers()};
}
