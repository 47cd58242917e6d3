// SPDX-License-Identifier: BSD-3-Clause
#include "moodsettable.h"

#include "printabletext.h"
#include "text.h"
#include "texttable.h"

#include <QStringList>

namespace {

QString answer(bool yes)
{
    return yes ? Text::tr("yes") : QStringLiteral("-");
}

QString displayColors(const ListedMoodset& moodset, ColorStyle style)
{
    // The size of four texts. Without it, each of many lines would be moved several times.
    constexpr int usualSize = 40;
    QString text;
    text.reserve(usualSize);
    text += displayColor(moodset.primaryColor, style);
    for (const QString* color :
         {&moodset.secondaryColor, &moodset.highlightColor, &moodset.secondaryHighlightColor}) {
        text += QLatin1Char(' ');
        text += displayColor(*color, style);
    }
    return text;
}

} // namespace

QString calledName(const ListedMoodset& moodset)
{
    if (!moodset.displayName.isEmpty()) {
        return moodset.displayName;
    }
    // The same as QFileInfo::completeBaseName(), but several times as fast. Lists can have
    // thousands of pictures.
    const int start = moodset.path.lastIndexOf(QLatin1Char('/')) + 1;
    const int dot = moodset.path.lastIndexOf(QLatin1Char('.'));
    return moodset.path.mid(start, dot < start ? -1 : dot - start);
}

QString moodsetTable(
    const QVector<ListedMoodset>& moodsets, const QString& activeFile, ColorStyle style,
    int terminalColumns)
{
    QVector<QStringList> lines{
        {Text::tr("Id"), Text::tr("Name"), Text::tr("Favourite"), Text::tr("Active"),
         Text::tr("File"), Text::tr("Colours")}};
    lines.reserve(moodsets.size() + 1);
    const QString yes = answer(true);
    const QString no = answer(false);
    for (const ListedMoodset& moodset : moodsets) {
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
