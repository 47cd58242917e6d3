// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>

class QVariant;

/// The time in a column's value, as QVariant::toDateTime() reads it. The form in which the database
/// driver writes local times, "2021-03-04T05:06:07.089", is read several times as fast.
QDateTime storedTime(const QVariant& value);
