// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>

/// The moment that a date text of a picture's tags means, or an invalid one.
///
/// - `date` is read in the spellings of Exif and of ISO 8601: year (four digits), month and day
///   with ':', '-', '/' or '.' between them, then blanks or 'T' and hours, minutes and, if given,
///   seconds with ':' between them, a fraction of a second behind '.' or ',', and an offset from
///   UTC
///   ("Z", "+02:00", "+0200", "+02"). A number may have a blank for its leading zero. Blanks and
///   whatever follows a NUL are no part of the text.
/// - A date without a time of day, or with a blank one, means the beginning of the day. A year or a
///   month alone means nothing.
/// - `subSeconds` are the digits behind the seconds and `offset` the offset from UTC, as the tags
///   beside the date give them; what `date` says itself goes first, and nonsense counts as not
///   given.
/// - Without an offset the time is local; a local time that the clocks skipped counts as so much
///   later. Milliseconds are cut, not rounded.
QDateTime exifDate(
    const QByteArray& date, const QByteArray& subSeconds = {}, const QByteArray& offset = {});
