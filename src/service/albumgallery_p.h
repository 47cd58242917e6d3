// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBasicTimer>
#include <QMimeDatabase>
#include <QObject>

class AlbumGallery;
class FileManager;
class SystemTheme;

/// The objects behind the service object, and the one place where changes wait to be announced.
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
    /// Announces moodsets; which one it was makes no difference.
    void moodsetCreated(int key);

protected:
    void timerEvent(QTimerEvent* event) override;
};
