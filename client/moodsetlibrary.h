// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVector>

#include <libraryreader.h>

class QUrl;

/// Reads moodsets from the daemon's database, through the content library.
///
/// A call that fails gives an empty result and leaves its reason in error(). Each object reads the
/// database that there is when it first reads.
class MoodsetLibrary
{
public:
    /// All moodsets, favourites first, without their tones.
    QVector<Moodset> moodsets();

    /// The moodsets that a user means by `text`: the one with this id, or else all with this name,
    /// without their tones. See calledName().
    QVector<Moodset> find(const QString& text);

    /// The moodset of a local file, or of the picture that was downloaded from any other URL; a
    /// null handle if there is none.
    Moodset moodset(const QUrl& url);
    /// The moodset of an id, or a null handle.
    Moodset moodset(qint64 id);

    /// The reason why the last call failed, in one line. Empty if it succeeded.
    QString error() const;

private:
    template <typename Reading>
    void read(Reading reading);

    LibraryReader m_reader;
    bool m_isOpen = false;
    QString m_error;
};
