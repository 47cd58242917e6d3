// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photochange.h"

#include <QObject>
#include <QVector>

class LibraryReader;
class MoodsetService;

/// Reports each picture that is added to the library, changed in it or removed from it, when the
/// daemon announces it.
class PhotoWatch : public QObject
{
    Q_OBJECT

public:
    /// Follows the changes from the present state of the library, which photos() returns. Create
    /// the watch before you show this state, so that no change is missed in between.
    PhotoWatch(
        const MoodsetService& service, const LibraryReader& library, QObject* parent = nullptr);

    /// The pictures as last seen.
    QVector<LibraryFile> photos() const;

Q_SIGNALS:
    /// Some pictures have changed; emitted once for each announcement that brought any.
    void changed(const QVector<PhotoChange>& changes);

private:
    void look();

    const LibraryReader& m_library;
    QVector<LibraryFile> m_photos;
};
