// SPDX-License-Identifier: BSD-3-Clause
#include "valuecheck.h"

#include "text.h"

#include <colorstring.h>

namespace {

QString quoted(const char* fault, const QString& text)
{
    return Text::tr(fault).arg(text);
}

} // namespace

QString valueFault(ValueKind kind, const QString& text)
{
    if (kind == ValueKind::Shell) {
        return {};
    }
    if (text.isEmpty()) {
        return Text::tr("an argument is empty");
    }
    bool isGood = true;
    switch (kind) {
    case ValueKind::Switch:
        isGood = text == QLatin1String("on") || text == QLatin1String("off");
        return isGood ? QString()
                      : quoted(QT_TRANSLATE_NOOP("Text", "%1 is neither on nor off"), text);
    case ValueKind::Seconds:
        isGood = text.toDouble(&isGood) >= 0 && isGood;
        return isGood
            ? QString()
            : quoted(QT_TRANSLATE_NOOP("Text", "%1 is no number of seconds, 0 or more"), text);
    case ValueKind::Color:
        isGood = colorFromString(text).isValid();
        return isGood ? QString()
                      : quoted(
                          QT_TRANSLATE_NOOP(
                              "Text", "%1 is no colour: write #rrggbb, #aarrggbb or an SVG name"),
                          text);
    case ValueKind::Edit:
        isGood = text.indexOf(QLatin1Char('=')) > 0;
        return isGood ? QString()
                      : quoted(QT_TRANSLATE_NOOP("Text", "%1 is not of the form KEY=VALUE"), text);
    default:
        return {};
    }
}
