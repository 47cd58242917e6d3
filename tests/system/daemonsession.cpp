// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"

#include "picturefile.h"

#include <QFile>
#include <QTest>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

// A name that begins with a byte order mark is not either, because Qt removes the mark.
bool isUtf8(const std::string& name)
{
    return QString::fromStdString(name).toStdString() == name;
}

// SQLite returns the last two code points of the basic plane as other characters.
bool hasNoncharacter(const std::string& name)
{
    return name.find("\xef\xbf\xbe") != std::string::npos
        || name.find("\xef\xbf\xbf") != std::string::npos;
}

// This does not use the daemon's listing, but follows the same rules: no hidden entries, only files
// and directories, links only to files, and only names in UTF-8 that the database can store.
void listFiles(const fs::path& folder, QStringList* files)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        std::error_code unreachable;
        if (name.front() == '.' || !isUtf8(name) || hasNoncharacter(name)) {
            continue;
        }
        if (entry.is_directory(unreachable)) {
            if (!entry.is_symlink()) {
                listFiles(entry.path(), files);
            }
        } else if (entry.is_regular_file(unreachable)) {
            files->append(QString::fromStdString(entry.path().string()));
        }
    }
}

} // namespace

DaemonSession::DaemonSession(const QString& executable)
    : daemon(executable)
{
}

DaemonSession::~DaemonSession()
{
    if (QTest::currentTestFailed()) {
        qInfo().noquote() << daemon.lines().join(QLatin1Char('\n'));
    }
}

bool DaemonSession::start()
{
    m_library.reset();
    return folders.isValid() && daemon.start() && daemon.waitForIdle() && waitUntilComplete();
}

bool DaemonSession::startOnBus()
{
    m_library.reset();
    return folders.isValid() && daemon.start() && daemon.waitForName() && BusClient::ping();
}

bool DaemonSession::startAtRest()
{
    const QString idle = QStringLiteral("InstallManager idle in");
    const int before = daemon.lines().filter(idle).size();
    return startOnBus()
        && QTest::qWaitFor(
               [&] { return daemon.lines().filter(idle).size() > before; },
               DaemonProcess::deadlineMs)
        && waitUntilFollowed();
}

bool DaemonSession::restart()
{
    return daemon.terminate() && start();
}

bool DaemonSession::waitUntilFollowed()
{
    const QString name = QStringLiteral("fence %1.png").arg(++m_fences);
    return writePicture(folders.elsewhere(name), QSize(1, 1))
        && QFile::rename(folders.elsewhere(name), folders.picture(name))
        && QTest::qWaitFor(
               [&] { return pictureSize(folders.picture(name)).isValid(); },
               DaemonProcess::deadlineMs);
}

bool DaemonSession::waitUntilComplete()
{
    const QStringList expected = diskFiles();
    const QString unread =
        QStringLiteral("SELECT count(*) FROM file WHERE mimeType GLOB 'image/*' AND "
                       "(metadataCurrent = 0 OR id NOT IN (SELECT fileId FROM image))");
    return QTest::qWaitFor(
        [&] { return libraryFiles() == expected && library().value(unread).toInt() == 0; },
        DaemonProcess::deadlineMs);
}

bool DaemonSession::forgetAnnouncements()
{
    const bool areAll = waitUntilAnnounced();
    client.forgetAnnouncements();
    return areAll;
}

bool DaemonSession::waitUntilAnnounced()
{
    // The types of a burst are announced in ascending order, so this one comes last.
    BusClient::send(QStringLiteral("saveAttributes"), {LastAnnouncedType, 0LL, QVariantMap()});
    return QTest::qWaitFor(
        [&] { return client.announcements().contains(LastAnnouncedType); },
        DaemonProcess::deadlineMs);
}

const LibraryDatabase& DaemonSession::library()
{
    if (!m_library) {
        m_library = std::make_unique<LibraryDatabase>();
    }
    return *m_library;
}

QStringList DaemonSession::libraryFiles()
{
    return library().texts(
        QStringLiteral("SELECT COALESCE(directory.path, '?') || '/' || fileName FROM file "
                       "LEFT JOIN directory ON directory.id = directoryId"));
}

QStringList DaemonSession::libraryDirectories()
{
    QStringList directories = library().texts(QStringLiteral("SELECT path FROM directory"));
    const QStringList installed = installDirectories();
    for (const QString& path : installed) {
        directories.removeOne(path);
    }
    return directories;
}

QStringList DaemonSession::installDirectories()
{
    return {QStringLiteral("/usr/share/moodset"), QStringLiteral("/usr/share/sounds")};
}

QStringList DaemonSession::diskFiles() const
{
    QStringList files;
    listFiles(QFile::encodeName(folders.pictures()).toStdString(), &files);
    files.sort();
    return files;
}

qint64 DaemonSession::fileId(const QString& path)
{
    return library().fileId(path);
}

QSize DaemonSession::pictureSize(const QString& path)
{
    const LibraryDatabase::Rows rows = library().rows(
        QStringLiteral("SELECT width, height FROM image WHERE fileId = ?"), {fileId(path)});
    return rows.isEmpty() ? QSize()
                          : QSize(rows.constFirst().at(0).toInt(), rows.constFirst().at(1).toInt());
}

QStringList DaemonSession::rowExistsWarnings()
{
    return {
        QStringLiteral("bool FileManager::readEvent()"),
        QStringLiteral("Failed to execute m_fileInsert."),
        QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", \"UNIQUE constraint failed: "
                       "file.directoryId, file.fileName\")"),
        QStringLiteral("\"INSERT INTO file (directoryId, mimeType, fileName, modificationTime, "
                       "permissions, metadataCurrent) VALUES (?, ?, ?, ?, 3, 0);\"")};
}
