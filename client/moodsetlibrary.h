// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVector>

#include <moodsetdata.h>

class QueryAgent;
class QUrl;

/// Reads moodsets from the daemon's database, through the content library.
///
/// A call that fails gives an empty result and leaves its reason in error().
class MoodsetLibrary
{
public:
    /// All moodsets, favourites first.
    QVector<Moodset> moodsets();

    /// The moodsets that a user means by text: the one of that id, or else all of that name.
    QVector<Moodset> find(const QString& text);

    /// The moodset of a local file, or of the picture that was downloaded from any other URL; a
    /// null handle if there is none.
    Moodset moodset(const QUrl& url);
    /// The moodset of an id, or a null handle.
    Moodset moodset(qint64 id);

    /// Why the last call failed, in one line; empty if it did not.
    QString error() const;

private:
    template <typename Reading>
    void read(Reading reading);

    QString m_error;
};
