// SPDX-License-Identifier: BSD-3-Clause
#include "themetable.h"

#include "jsonrecord.h"
#include "printabletext.h"
#include "text.h"
#include "texttable.h"

#include <moodsetnames.h>

namespace {

QString value(const QString& path, ColorStyle /*style*/)
{
    return path.isEmpty() ? QStringLiteral("-") : printableText(path);
}

QString value(const QColor& color, ColorStyle style)
{
    return displayColorWithText(JsonRecord::colorText(color), style);
}

} // namespace

QString themeTable(const Theme& theme, ColorStyle style, int terminalColumns)
{
    namespace ThemeKey = MoodsetNames::ThemeKey;
    QVector<QStringList> lines{{Text::tr("Key"), Text::tr("Value")}};
    const auto add = [&](const QLatin1String& key, const auto& set) {
        lines.append({key, value(set, style)});
    };
    add(ThemeKey::Request, theme.request);
    add(ThemeKey::HomeWallpaper, theme.homeWallpaper);
    add(ThemeKey::ApplicationWallpaper, theme.applicationWallpaper);
    add(ThemeKey::Highlight, theme.highlight);
    add(ThemeKey::SecondaryHighlight, theme.secondaryHighlight);
    add(ThemeKey::Primary, theme.primary);
    add(ThemeKey::Secondary, theme.secondary);
    add(ThemeKey::ActiveMoodset, theme.activeMoodset);
    return textTable(lines, {Fit::Whole, Fit::KeepEnd}, terminalColumns);
}
