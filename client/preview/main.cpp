// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlibrary.h"
#include "phonepreview.h"
#include "printabletext.h"
#include "theme.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QTextStream>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

namespace {

int fail(const QString& reason)
{
    QTextStream(stderr) << "moodset-preview: " << printableText(reason) << '\n';
    return EXIT_FAILURE;
}

QImage readWallpaper(const QString& path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    return reader.read();
}

// The name of the active moodset; of its file if it has none, as those of pictures.
QString moodsetName(const QString& path)
{
    const Moodset moodset = MoodsetLibrary().moodset(QUrl::fromLocalFile(path));
    return moodset && !moodset->displayName.isEmpty() ? moodset->displayName
                                                      : QFileInfo(path).completeBaseName();
}

int writePreview(const QString& file)
{
    const Theme theme = Theme::read();
    if (theme.activeMoodset.isEmpty()) {
        return fail(QStringLiteral("no moodset is active"));
    }
    const Wallpapers wallpapers{
        readWallpaper(theme.homeWallpaper), readWallpaper(theme.applicationWallpaper)};
    if (wallpapers.home.isNull()) {
        return fail(QStringLiteral("%1: cannot be read").arg(theme.homeWallpaper));
    }
    if (wallpapers.application.isNull()) {
        return fail(QStringLiteral("%1: cannot be read").arg(theme.applicationWallpaper));
    }
    const QString name = moodsetName(theme.activeMoodset);
    if (!phonePreview(theme, wallpapers, name).save(file, "PNG")) {
        return fail(QStringLiteral("%1: cannot be written").arg(file));
    }
    return EXIT_SUCCESS;
}

} // namespace

/// moodset-preview FILE: writes a picture of phones with the theme in force, as PNG.
int main(int argc, char** argv)
{
    // A platform without a display, which every machine has, and which cleans up after itself, as
    // "offscreen" does not.
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2) {
        return fail(QStringLiteral("needs the name of one file to write"));
    }
    return writePreview(arguments.at(1));
}
