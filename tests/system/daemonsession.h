// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "busclient.h"
#include "daemonprocess.h"
#include "librarydatabase.h"
#include "userfolders.h"

#include <QSize>
#include <QStringList>

#include <memory>

/// A user, the user's daemon and a client of it: what nearly every system test needs.
///
///     DaemonSession session;
///     QVERIFY(writePicture(session.folders.picture("a.png"), QSize(3, 2)));
///     QVERIFY(session.start());
///     QCOMPARE(session.libraryFiles(), session.diskFiles());
class DaemonSession
{
public:
    /// executable is what runs in place of moodsetd, if given.
    explicit DaemonSession(const QString& executable = QString());
    /// Prints the daemon's log if the test has failed.
    ~DaemonSession();
    Q_DISABLE_COPY_MOVE(DaemonSession)

    /// Starts the daemon, and waits until it is idle and everything in the pictures folder is in
    /// the library.
    bool start();

    /// Starts the daemon, and waits until it answers on the bus.
    bool startOnBus();

    /// Starts the daemon, and waits until it is done with bundles and with files.
    bool startAtRest();

    /// Ends the daemon with SIGTERM, and starts it again as start() does.
    bool restart();

    /// Moves a picture into the pictures folder, and waits until the library tells its size. All
    /// earlier changes of the folder have been dealt with by then.
    bool waitUntilFollowed();

    /// Waits until the library holds just what diskFiles() lists, with a row in `image` for each
    /// picture.
    bool waitUntilComplete();

    /// Waits until all changes so far have been announced, of which the last type, which is
    /// announced besides, tells. The daemon must be idle, and have no announcement of that type to
    /// make.
    bool waitUntilAnnounced();
    static constexpr int LastAnnouncedType = 4;

    /// The same, and forgets it.
    bool forgetAnnouncements();

    /// The database, which exists once the daemon has been idle or on the bus.
    const LibraryDatabase& library();

    /// The paths of all files that have a row, sorted. A row without a directory gives a path that
    /// begins with "?".
    QStringList libraryFiles();

    /// The paths of all directories that have a row, sorted, except for installDirectories().
    QStringList libraryDirectories();

    /// The directories of installed packages, which are in every library.
    static QStringList installDirectories();

    /// The paths of what a scan of the pictures folder ought to list, sorted.
    QStringList diskFiles() const;

    /// The id of a file's row; 0 if there is none.
    qint64 fileId(const QString& path);

    /// The size of a picture in the library; an invalid size if it has no row in `image`.
    QSize pictureSize(const QString& path);

    /// What the log tells of a change on the disk that brought a row for a name which has one.
    static QStringList rowExistsWarnings();

    UserFolders folders;
    BusClient client;
    DaemonProcess daemon;

private:
    std::unique_ptr<LibraryDatabase> m_library;
    int m_fences = 0;
};
