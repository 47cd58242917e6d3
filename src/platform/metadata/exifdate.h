// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>

/// The time that a date text of a picture's tags means, or an invalid one.
///
/// - `date` can have the forms of Exif and of ISO 8601: year (four digits), month and day,
///   separated by ':', '-', '/' or '.', then blanks or 'T', then hours, minutes and, if given,
///   seconds, separated by ':', a fraction of a second after '.' or ',', and an offset from UTC
///   ("Z", "+02:00", "+0200", "+02"). A number may have a blank instead of its leading zero.
///   Blanks at the ends, and everything after a NUL, are ignored.
/// - A date without a time of day, or with a blank one, means the beginning of the day. A year or a
///   month alone gives an invalid time.
/// - `subSeconds` are the digits after the seconds, and `offset` is the offset from UTC, as
///   separate tags give them. If `date` contains them, too, those count. Invalid ones are ignored.
/// - Without an offset, the time is local. A local time that the clocks skipped becomes a later
///   one. Milliseconds are cut off, not rounded.
QDateTime exifDate(
    const QByteArray& date, const QByteArray& subSeconds = {}, const QByteArray& offset = {});
