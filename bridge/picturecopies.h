// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

/// Copies of wallpapers under fresh, harmless names, in a directory of their own.
///
/// Shells do not load a picture again whose name they know, quote names badly, and some may not
/// read all directories of the user.
class PictureCopies
{
public:
    /// A copy, or why there is none.
    struct Copy
    {
        QString path;
        QString problem;
    };

    /// `last` is what last() gave when the process ran before.
    PictureCopies(const QString& directory, const QJsonObject& last);

    /// The copy of a JPEG or PNG file: the one that was made last if the file is the same one and
    /// unchanged, else a new one. A file that is gone keeps the copy that was made of it.
    Copy copyOf(const QString& source);

    /// Which file was copied last, and to which name.
    QJsonObject last() const { return m_last; }

    /// Removes all copies but the last one and those whose path is in one of the texts.
    void removeUnused(const QString& usedIn) const;

    /// Removes the directory and all that lies in it.
    void removeAll() const;

private:
    Copy makeCopy(const QString& source, const QString& suffix) const;

    const QString m_directory;
    QJsonObject m_last;
};
