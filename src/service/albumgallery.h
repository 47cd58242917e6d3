// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QVariantMap>

class AlbumGalleryPrivate;

/// The daemon's service object.
///
/// Its constructor starts the daemon: the database, the managers, the bus name and the object, and
/// the directories to follow. It ends the process if another one has the bus name. All scanning
/// happens later, on the event loop. The bus interface calls the slots on the main thread, one at a
/// time; they do not report failures to clients.
class AlbumGallery : public QObject
{
    Q_OBJECT

public:
    explicit AlbumGallery(QObject* parent = nullptr);
    ~AlbumGallery() override;

    /// Requests contentChanged() for a MoodsetContent::Type. The signal is sent 10 ms after the
    /// last such call, once for each requested type. Types above 4 are never announced. Does
    /// nothing if there is no service object.
    static void notifyContentChanged(int type);

Q_SIGNALS:
    /// Content of a MoodsetContent::Type may have changed, and clients should read it again. The
    /// changes are stored.
    void contentChanged(int type);

public Q_SLOTS:
    /// Registers the file at a file URL; any other URL is ignored.
    void indexFile(const QString& url);
    /// Makes the moodset or picture at a URL the active moodset.
    void setMoodset(const QString& url);
    /// Makes a moodset from the picture at a URL without applying it.
    void createMoodset(const QString& url);
    /// Removes the content with this MoodsetContent::Type and `file.id`.
    void remove(int contentType, qlonglong contentId);
    /// Changes attributes of a content. Its type decides which attributes there are.
    void saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args);
    /// Registers an installed package. `path` is the path of its directory.
    void installPackage(const QString& path);
    /// Looks for changes in the install directories.
    void refreshMoodsets();

private Q_SLOTS:
    /// The store client has installed a package. `dorselId` is not empty if it is for a back cover.
    void moodsetInstalled(const QString& path, const QString& dorselId);

private:
    AlbumGalleryPrivate* d = nullptr;
};
