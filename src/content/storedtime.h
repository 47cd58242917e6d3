// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>

class QVariant;

/// The time in a column's value, as QVariant::toDateTime() reads it. This is faster for the
/// form in which the database driver writes local times, "2021-03-04T05:06:07.089".
QDateTime storedTime(const QVariant& value);

/// The same time as milliseconds since the beginning of 1970 on a clock that shows the local time;
/// 0 for none. Does not ask for the time zone, which is most of what a time costs.
qint64 storedMilliseconds(const QVariant& value);
