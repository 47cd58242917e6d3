// SPDX-License-Identifier: BSD-3-Clause
#include "moodsettable.h"

#include "printabletext.h"
#include "subject.h"
#include "text.h"
#include "texttable.h"

#include <QStringList>
#include <QUrl>

namespace {

QString answer(bool yes)
{
    return yes ? Text::tr("yes") : QStringLiteral("-");
}

QString displayColors(const LibraryReader::Summary& moodset, ColorStyle style)
{
    return displayColor(moodset.primaryColor, style) + QLatin1Char(' ')
        + displayColor(moodset.secondaryColor, style) + QLatin1Char(' ')
        + displayColor(moodset.highlightColor, style) + QLatin1Char(' ')
        + displayColor(moodset.secondaryHighlightColor, style);
}

} // namespace

QString moodsetTable(
    const QVector<LibraryReader::Summary>& moodsets, const QString& activeFile, ColorStyle style,
    int terminalColumns)
{
    QVector<QStringList> lines{
        {Text::tr("Id"), Text::tr("Name"), Text::tr("Favourite"), Text::tr("Active"),
         Text::tr("File"), Text::tr("Colours")}};
    lines.reserve(moodsets.size() + 1);
    const QString yes = answer(true);
    const QString no = answer(false);
    for (const LibraryReader::Summary& moodset : moodsets) {
        lines.append(
            {QString::number(moodset.id), printableText(calledName(moodset)),
             moodset.favorite ? yes : no, moodset.path == activeFile ? yes : no,
             printableText(moodset.path), displayColors(moodset, style)});
    }
    const QString number = numbered(
                               moodsets.size(), QT_TRANSLATE_NOOP("Text", "%1 moodset"),
                               QT_TRANSLATE_NOOP("Text", "%1 moodsets"))
        + QLatin1Char('\n');
    const QVector<Fit> fits{Fit::Whole, Fit::KeepStart, Fit::Whole, Fit::Whole, Fit::KeepEnd};
    return moodsets.isEmpty() ? number : textTable(lines, fits, terminalColumns) + number;
}
