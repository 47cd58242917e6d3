// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBasicTimer>
#include <QMimeDatabase>
#include <QObject>

class AlbumGallery;
class FileManager;
class SystemTheme;

/// The private part of the service object: it owns the other objects and collects the changes to
/// announce.
class AlbumGalleryPrivate : public QObject
{
    Q_OBJECT

public:
    explicit AlbumGalleryPrivate(AlbumGallery* gallery);
    ~AlbumGalleryPrivate() override;

    /// The object of the running service, or null.
    static AlbumGalleryPrivate* instance;

    SystemTheme* systemTheme;
    FileManager* fileManager;
    QBasicTimer changeTimer;
    QMimeDatabase mimeDatabase;
    /// Bit n is set if content of type n has changed since the last announcement.
    int changedTypes = 0;
    AlbumGallery* q;

public Q_SLOTS:
    /// Announces a change of moodsets. `key` does not matter.
    void moodsetCreated(int key);

protected:
    void timerEvent(QTimerEvent* event) override;
};
