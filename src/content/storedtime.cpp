// SPDX-License-Identifier: BSD-3-Clause
#include "storedtime.h"

#include <QString>
#include <QVariant>

namespace {

/// The number that the decimal digits from `begin` up to `end` give, or -1 if there are other
/// characters.
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

/// Whether all separators are where the driver writes them.
bool hasDriversForm(const QString& text)
{
    constexpr int length = 23;
    return text.size() == length && text.at(4) == QLatin1Char('-') && text.at(7) == QLatin1Char('-')
        && text.at(10) == QLatin1Char('T') && text.at(13) == QLatin1Char(':')
        && text.at(16) == QLatin1Char(':') && text.at(19) == QLatin1Char('.');
}

/// The time in the driver's form as `spec` reads it; an invalid one for any other text.
QDateTime timeInDriversForm(const QString& text, Qt::TimeSpec spec)
{
    if (!hasDriversForm(text)) {
        return {};
    }
    const int year = number(text, 0, 4);
    const QDate date(year, number(text, 5, 7), number(text, 8, 10));
    const QTime time(
        number(text, 11, 13), number(text, 14, 16), number(text, 17, 19), number(text, 20, 23));
    // The year before the first is -1.
    return year > 0 && date.isValid() && time.isValid() ? QDateTime(date, time, spec) : QDateTime();
}

} // namespace

QDateTime storedTime(const QVariant& value)
{
    if (value.isNull()) {
        return {};
    }
    const QDateTime time = timeInDriversForm(value.toString(), Qt::LocalTime);
    return time.isNull() ? value.toDateTime() : time;
}

qint64 storedMilliseconds(const QVariant& value)
{
    if (value.isNull()) {
        return 0;
    }
    const QDateTime time = timeInDriversForm(value.toString(), Qt::UTC);
    if (!time.isNull()) {
        return time.toMSecsSinceEpoch();
    }
    const QDateTime other = value.toDateTime().toLocalTime();
    return other.isValid() ? QDateTime(other.date(), other.time(), Qt::UTC).toMSecsSinceEpoch() : 0;
}
