// SPDX-License-Identifier: BSD-3-Clause
#include "lookrequest.h"

#include "contrast.h"
#include "jsonrecord.h"
#include "networkprobe.h"
#include "phonepreview.h"
#include "picturecheck.h"
#include "picturetheme.h"
#include "theme/picturelook.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

#include <colorstring.h>
#include <picturereader.h>

namespace {

/// The opacity of the black layer that toolkits draw over the application wallpaper.
constexpr qreal ToolkitDimming = 0.6;

QString text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString();
}

QJsonObject fault(const char* what, const QString& detail)
{
    return {{QStringLiteral("fault"), QLatin1String(what)}, {QStringLiteral("detail"), detail}};
}

QImage readWallpaper(const QString& path)
{
    if (path.isEmpty()) {
        return {};
    }
    PictureReader reader(path);
    reader.setAutoTransform(true);
    return reader.read();
}

PictureTheme::Kind kindOf(const QJsonObject& request)
{
    const QString kind = text(request, "kind");
    if (kind == QLatin1String("bundle")) {
        return PictureTheme::Kind::Bundle;
    }
    return kind == QLatin1String("legacy") ? PictureTheme::Kind::LegacyBundle
                                           : PictureTheme::Kind::Picture;
}

QJsonObject contrasts(const PictureTheme& theme, const QColor& color)
{
    const auto rounded = [](qreal contrast) { return qRound(contrast * 10) / 10.0; };
    return {
        {QStringLiteral("home"), rounded(contrastOn(meanColor(theme.home), color))},
        {QStringLiteral("application"),
         rounded(contrastOn(meanColor(theme.application, ToolkitDimming), color))}};
}

/// Writes an image to the path that the request has under `key`, if there is one.
bool writesOutput(const QImage& image, const QString& output)
{
    return output.isEmpty() || image.save(output, "PNG");
}

QJsonObject pictureColors(const QJsonObject& request)
{
    const QString path = text(request, "path");
    const PictureTheme theme = PictureTheme::make(path, PictureTheme::Kind::Picture);
    if (theme.home.isNull()) {
        return fault("unreadable", path);
    }
    const QString home = text(request, "homeOutput");
    const QString application = text(request, "applicationOutput");
    if (!writesOutput(theme.home, home) || !writesOutput(theme.application, application)) {
        return fault("unwritable", home);
    }
    return {
        {QStringLiteral("colors"),
         JsonRecord::colors(
             theme.primary, theme.secondary, theme.highlight, theme.secondaryHighlight)},
        {QStringLiteral("contrasts"),
         QJsonObject{
             {QStringLiteral("primary"), contrasts(theme, theme.primary)},
             {QStringLiteral("secondary"), contrasts(theme, theme.secondary)},
             {QStringLiteral("highlight"), contrasts(theme, theme.highlight)},
             {QStringLiteral("secondaryHighlight"), contrasts(theme, theme.secondaryHighlight)}}}};
}

/// The existing wallpapers if they can be read, and otherwise those that the daemon would make from
/// the picture.
PictureTheme previewed(const QJsonObject& request)
{
    PictureTheme theme;
    theme.home = readWallpaper(text(request, "homeWallpaper"));
    theme.application = readWallpaper(text(request, "applicationWallpaper"));
    const QString path = text(request, "path");
    if (path.isEmpty() || (!theme.home.isNull() && !theme.application.isNull())) {
        return theme;
    }
    const PictureTheme::Kind kind = kindOf(request);
    PictureTheme made = PictureTheme::make(path, kind);
    // The daemon does not cut the wallpaper of a bundle.
    if (kind == PictureTheme::Kind::Bundle && !made.home.isNull()) {
        made.home = theme.home;
    }
    return made;
}

bool save(const QImage& image, const QString& path)
{
    const QFileInfo place(path);
    // Saving would replace even a device.
    if (place.exists() && !place.isFile()) {
        return false;
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.flush()
        && file.commit();
}

QJsonObject preview(const QJsonObject& request)
{
    const PictureTheme made = previewed(request);
    if (made.home.isNull() || made.application.isNull()) {
        const QString path = text(request, "path");
        const char* const wallpaper = made.home.isNull() ? "homeWallpaper" : "applicationWallpaper";
        return fault("unreadable", path.isEmpty() ? text(request, wallpaper) : path);
    }
    const QJsonObject wanted = request.value(QLatin1String("colors")).toObject();
    const auto color = [&wanted](const char* name, const QColor& otherwise) {
        const QColor named = colorFromString(text(wanted, name));
        return named.isValid() ? named : otherwise;
    };
    Theme theme;
    theme.highlight = color("highlight", made.highlight);
    const QColor darker = theme.highlight == made.highlight
        ? made.secondaryHighlight
        : secondaryHighlightFrom(theme.highlight);
    theme.secondaryHighlight = color("secondaryHighlight", darker);
    theme.primary = color("primary", made.primary);
    theme.secondary = color("secondary", made.secondary);
    const QImage image =
        phonePreview(theme, Wallpapers{made.home, made.application}, text(request, "name"));
    const QString output = text(request, "output");
    if (!save(image, output)) {
        return fault("unwritable", output);
    }
    return {
        {QStringLiteral("colors"),
         JsonRecord::colors(
             theme.primary, theme.secondary, theme.highlight, theme.secondaryHighlight)}};
}

} // namespace

QJsonObject answerLookRequest(const QJsonObject& request)
{
    const QString wanted = text(request, "do");
    if (wanted == QLatin1String("check")) {
        return checkPicture(text(request, "path"));
    }
    if (wanted == QLatin1String("probe")) {
        return probeAddress(
            QUrl(text(request, "url")), request.value(QLatin1String("timeoutMs")).toInt());
    }
    if (wanted == QLatin1String("colors")) {
        return pictureColors(request);
    }
    if (wanted == QLatin1String("preview")) {
        return preview(request);
    }
    return fault("unknown-request", wanted);
}
