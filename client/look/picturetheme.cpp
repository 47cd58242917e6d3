// SPDX-License-Identifier: BSD-3-Clause
#include "picturetheme.h"

#include "theme/backgroundpicture.h"
#include "theme/colouranalysis.h"
#include "theme/picturelook.h"

#include <velmoorzerlinbackground.h>

#include <QRectF>
#include <QSize>

#include <mgconfitem.h>
#include <moodsetnames.h>

namespace {

/// Blurs a picture as the daemon does, and keeps the wallpaper instead of writing it.
class Blur final : public VelmoorZerlinBackground
{
public:
    Blur()
        : VelmoorZerlinBackground(QString())
    {
    }

    QImage wallpaper;

protected:
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the base would write a file.
    bool processAppWallpaper(QImage* image) override
    {
        wallpaper = *image;
        return true;
    }
};

QSize screenSize()
{
    constexpr int usualWidth = 540;
    constexpr int usualHeight = 960;
    return {
        MGConfItem(MoodsetNames::ScreenKey::Width).value(usualWidth).toInt(),
        MGConfItem(MoodsetNames::ScreenKey::Height).value(usualHeight).toInt()};
}

} // namespace

PictureTheme PictureTheme::make(const QString& path, Kind kind)
{
    const QSize screen = screenSize();
    const QImage picture = kind == Kind::LegacyBundle ? loadLegacyBackgroundImage(path, screen)
                                                      : loadBackgroundImage(path, screen);
    if (picture.isNull()) {
        return {};
    }
    Blur blur;
    setBlurParameters(&blur, blurParameters(screen));
    const int side = std::max(screen.width(), screen.height());
    VelmoorZerlinBackground::buildBackgroundImageForPortrait(
        &blur, picture, path, QImage(), QRectF(0, 0, side, side));

    PictureTheme theme;
    theme.application = blur.wallpaper;
    theme.home = picture;
    if (kind == Kind::Picture) {
        blur.darken(&theme.home);
    }
    float average = 0;
    QColor dominant;
    analyseImageColors(theme.application, &average, &dominant);
    theme.highlight = highlightFromDominant(dominant);
    theme.secondaryHighlight = secondaryHighlightFrom(theme.highlight);
    theme.primary = usualPrimaryColor();
    theme.secondary = usualSecondaryColor();
    return theme;
}
