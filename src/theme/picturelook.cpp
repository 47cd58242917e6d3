// SPDX-License-Identifier: BSD-3-Clause
#include "picturelook.h"

#include <mgconfitem.h>
#include <velmoorzerlinbackground.h>

#include <QString>
#include <QVariant>

namespace {

/// The secondary highlight colour is darker than the highlight colour by this factor.
constexpr int SecondaryHighlightDarkness = 125; // percent

template <typename T>
T setting(const char* name, T defaultValue)
{
    const QVariant value =
        MGConfItem(QStringLiteral("/desktop/velmoor/zerlin/") + QLatin1String(name)).value();
    return value.isValid() ? value.value<T>() : defaultValue;
}

} // namespace

BlurParameters blurParameters(const QSize& size)
{
    return {
        setting("theme_pixel_ratio", float(size.width() / 540.0)),
        setting("theme_bg_blur_rounds", 15), setting("theme_bg_blur_radius", 4),
        setting("theme_bg_blur_sigma", 1.3)};
}

void setBlurParameters(VelmoorZerlinBackground* background, const BlurParameters& parameters)
{
    background->setPixelRatio(parameters.pixelRatio);
    background->setBlurRounds(parameters.rounds);
    background->setBlurRadius(parameters.radius);
    background->setBlurSigma(parameters.sigma);
}

QColor secondaryHighlightFrom(const QColor& highlight)
{
    return highlight.darker(SecondaryHighlightDarkness);
}

QColor usualPrimaryColor()
{
    return QColor(255, 255, 255, 255);
}

QColor usualSecondaryColor()
{
    return QColor(255, 255, 255, 176);
}
