// SPDX-License-Identifier: BSD-3-Clause
#include "storedtime.h"

#include <QString>
#include <QVariant>

namespace {

/// The number that the decimal digits from `begin` up to `end` make, or -1 if there are others.
int number(const QString& text, int begin, int end)
{
    int result = 0;
    for (int i = begin; i < end; ++i) {
        const int digit = text.at(i).unicode() - '0';
        if (digit < 0 || digit > 9) {
            return -1;
        }
        result = 10 * result + digit;
    }
    return result;
}

/// Whether everything but the digits stands as in the driver's form.
bool hasDriversForm(const QString& text)
{
    constexpr int length = 23;
    return text.size() == length && text.at(4) == QLatin1Char('-') && text.at(7) == QLatin1Char('-')
        && text.at(10) == QLatin1Char('T') && text.at(13) == QLatin1Char(':')
        && text.at(16) == QLatin1Char(':') && text.at(19) == QLatin1Char('.');
}

} // namespace

QDateTime storedTime(const QVariant& value)
{
    if (value.isNull()) {
        return {};
    }
    const QString text = value.toString();
    if (hasDriversForm(text)) {
        const int year = number(text, 0, 4);
        const QDate date(year, number(text, 5, 7), number(text, 8, 10));
        const QTime time(
            number(text, 11, 13), number(text, 14, 16), number(text, 17, 19), number(text, 20, 23));
        // The year before the first is -1.
        if (year > 0 && date.isValid() && time.isValid()) {
            return {date, time};
        }
    }
    return value.toDateTime();
}
