// SPDX-License-Identifier: BSD-3-Clause
#include "moodsettable.h"

#include "printabletext.h"
#include "texttable.h"

#include <QStringList>
#include <QUrl>

#include <colorstring.h>

namespace {

QString answer(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("-");
}

QString displayColor(const QColor& color, ColorStyle style)
{
    if (!color.isValid()) {
        return QStringLiteral("-");
    }
    switch (style) {
    case ColorStyle::Text:
        return colorToString(color);
    case ColorStyle::Swatches:
        return QStringLiteral("\033[48;2;%1;%2;%3m    \033[0m")
            .arg(color.red())
            .arg(color.green())
            .arg(color.blue());
    }
    return {};
}

QString displayColors(const MoodsetData& moodset, ColorStyle style)
{
    QStringList colors;
    for (const QColor& color :
         {moodset.primaryColor, moodset.secondaryColor, moodset.highlightColor,
          moodset.secondaryHighlightColor}) {
        colors.append(displayColor(color, style));
    }
    return colors.join(QLatin1Char(' '));
}

} // namespace

QString moodsetTable(const QVector<Moodset>& moodsets, const QString& activeFile, ColorStyle style)
{
    QVector<QStringList> lines{
        {QStringLiteral("Id"), QStringLiteral("Name"), QStringLiteral("Favourite"),
         QStringLiteral("Active"), QStringLiteral("File"), QStringLiteral("Colours")}};
    for (const Moodset& moodset : moodsets) {
        const QString file = moodset->url.toLocalFile();
        lines.append(
            {QString::number(moodset->id), printableText(moodset->displayName),
             answer(moodset->favorite), answer(file == activeFile), displayPath(file, QString()),
             displayColors(*moodset, style)});
    }
    const QString number = numbered(moodsets.size(), "moodset", "moodsets") + QLatin1Char('\n');
    return moodsets.isEmpty() ? number : textTable(lines) + number;
}
