// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QVariantMap>

class AlbumGalleryPrivate;

/// The daemon's service object.
///
/// Its constructor brings the daemon up: the database, the managers, the bus name and the object,
/// and the directories to follow. It ends the process if the bus name is taken. All scanning
/// happens later, on the event loop. Its slots are called through the bus interface, one at a time,
/// on the main thread; none tells how it went.
class AlbumGallery : public QObject
{
    Q_OBJECT

public:
    explicit AlbumGallery(QObject* parent = nullptr);
    ~AlbumGallery() override;

    /// Asks for contentChanged() with a MoodsetContent::Type. It goes out 10 ms after the last such
    /// call, once for each type that was asked for; types above 4 are never announced. Does nothing
    /// without a service object.
    static void notifyContentChanged(int type);

Q_SIGNALS:
    /// Content of a MoodsetContent::Type may have changed and is to be read again.
    void contentChanged(int type);

public Q_SLOTS:
    /// Registers the file at a file URL; any other URL is ignored.
    void indexFile(const QString& url);
    /// Makes the moodset or picture at a URL the active moodset.
    void setMoodset(const QString& url);
    /// Makes a moodset from the picture at a URL without activating it.
    void createMoodset(const QString& url);
    /// Removes a content by its MoodsetContent::Type and `file.id`.
    void remove(int contentType, qlonglong contentId);
    /// Changes attributes of a content; which ones there are is up to its type.
    void saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args);
    /// Registers an installed package by the path of its directory.
    void installPackage(const QString& path);
    /// Looks for changes in the install directories.
    void refreshMoodsets();

private Q_SLOTS:
    /// The store client has installed a package, perhaps for a back cover.
    void moodsetInstalled(const QString& path, const QString& dorselId);

private:
    AlbumGalleryPrivate* d;
};
