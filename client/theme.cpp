// SPDX-License-Identifier: BSD-3-Clause
#include "theme.h"

#include "activemoodset.h"

#include <colorstring.h>
#include <mgconfitem.h>
#include <moodsetnames.h>

namespace {

QString text(const QLatin1String& key)
{
    return MGConfItem(key).value().toString();
}

QColor color(const QLatin1String& key)
{
    return colorFromString(text(key));
}

} // namespace

Theme Theme::read()
{
    namespace ThemeKey = MoodsetNames::ThemeKey;
    Theme theme;
    theme.request = text(ThemeKey::Request);
    theme.homeWallpaper = text(ThemeKey::HomeWallpaper);
    theme.applicationWallpaper = text(ThemeKey::ApplicationWallpaper);
    theme.highlight = color(ThemeKey::Highlight);
    theme.secondaryHighlight = color(ThemeKey::SecondaryHighlight);
    theme.primary = color(ThemeKey::Primary);
    theme.secondary = color(ThemeKey::Secondary);
    theme.activeMoodset = readActiveMoodset();
    return theme;
}
