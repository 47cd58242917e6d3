// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

/// Copies of wallpapers, in a directory of their own, with new names of letters and digits.
///
/// Shells do not load a picture again if they know its name, they do not quote names correctly, and
/// some cannot read all directories of the user.
class PictureCopies
{
public:
    /// A copy, or why there is none.
    struct Copy
    {
        QString path;
        QString problem;
    };

    /// `last` is the value of last() in the former process.
    PictureCopies(const QString& directory, const QJsonObject& last);

    /// The copy of a JPEG or PNG file. If the file has not changed since the last copy, this is the
    /// last copy, otherwise a new one. If the file was deleted, its last copy stays.
    Copy copyOf(const QString& source);

    /// The file that was copied last, and the name of the copy.
    QJsonObject last() const { return m_last; }

    /// Removes all copies except the last one and those whose path is part of one of the texts.
    void removeUnused(const QString& usedIn) const;

    /// Removes the directory with all files in it.
    void removeAll() const;

private:
    Copy makeCopy(const QString& source, const QString& suffix) const;

    const QString m_directory;
    QJsonObject m_last;
};
