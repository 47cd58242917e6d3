// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photo.h"

#include <QObject>
#include <QTextStream>
#include <QVector>

class Library;
class MoodsetService;

/// Prints each picture that is added to the library, changed in it or removed from it, one to a
/// line, as the daemon announces it.
class PhotoWatch : public QObject
{
    Q_OBJECT

public:
    /// Follows changes from the state that the library is in now. Make the watch before anything
    /// that shows this state, so that no change falls in between; photos() is that state.
    PhotoWatch(
        const MoodsetService& service, const Library& library, const QString& folder,
        QTextStream& output, QObject* parent = nullptr);

    /// The pictures as last seen.
    QVector<Photo> photos() const;

private:
    void printChanges();

    const Library& m_library;
    QString m_folder;
    QTextStream& m_output;
    QVector<Photo> m_photos;
};
