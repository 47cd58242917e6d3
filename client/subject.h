// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QUrl>

#include <libraryreader.h>
#include <moodsetdata.h>

/// The value that was found, or the reason why there is none, in one line.
template <typename Value>
struct Found
{
    Value value;
    QString fault;
};

/// The one moodset that a user means by an id or a name, with its tones.
Found<Moodset> namedMoodset(const QString& text);

/// The local file or the address that a user means by a path or a URL. A local one is a file that
/// can be read.
Found<QUrl> namedPicture(const QString& text);

/// The moodset or picture that a user means. If a text names both a file and a moodset, the file is
/// used.
Found<QUrl> namedSource(const QString& text);

/// The name to show for a moodset: its own name, or the name of its file if it has none, as
/// moodsets of pictures.
QString calledName(const MoodsetData& moodset);

/// The path of a URL for people to read, or the URL if it is not local.
QString shownUrl(const QUrl& url);

/// "subject: fault", or an empty text if there is no fault.
QString about(const QString& subject, const QString& fault);
