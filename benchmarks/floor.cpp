// SPDX-License-Identifier: BSD-3-Clause
// The minimum of work that indexing pictures takes, for comparison with the daemon.
//
// floor DATABASE
//
// Reads the paths of folders from the standard input, one in a line. For each it lists the tree,
// reads the size and the two tags of each picture once, writes the rows that the daemon writes, in
// as many transactions, and then says "done in N ms". It makes the database with the first.
//
// It reads headers as the daemon does, and uses system calls and SQLite directly for everything
// else. It leaves out the other work of the daemon: it watches nothing, compares nothing with
// existing rows, sends no announcements, has no queue in the database (it writes each row once, in
// its final form), reads nothing ahead, and remembers a MIME type by the suffix alone.
#include "floordatabase.h"
#include "sqlitefloor.h"

#include <QCoreApplication>
#include <QHash>
#include <QMimeDatabase>
#include <QVector>

#include <picturesize.h>
#include <picturetags.h>
#include <windowedfile.h>

#include <array>
#include <ctime>
#include <dirent.h>
#include <sys/stat.h>

namespace {

/// The number of pictures that the daemon reads in one transaction.
constexpr int BatchSize = 100;

struct Directory
{
    qint64 id;
    QByteArray path;
};

struct PictureFile
{
    qint64 id;
    QByteArray path;
};

/// A time as the daemon's driver writes it.
QByteArray timeText(const timespec& time)
{
    constexpr int firstYear = 1900;
    constexpr long nanosecondsInOne = 1000000;
    std::tm local{};
    localtime_r(&time.tv_sec, &local);
    std::array<char, 64> text{};
    const int length = snprintf(
        text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03d", local.tm_year + firstYear,
        local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
        int(time.tv_nsec / nanosecondsInOne));
    return {text.data(), length};
}

class Floor
{
public:
    explicit Floor(const QByteArray& path)
        : m_database(path)
        , m_directoryInsert(
              m_database, "INSERT INTO directory (parentId, path, scope) VALUES (?, ?, 0);")
        , m_fileInsert(
              m_database,
              "INSERT INTO file (directoryId, mimeType, fileName, modificationTime, permissions, "
              "metadataCurrent) VALUES (?, ?, ?, ?, 3, 1);")
        , m_imageInsert(
              m_database,
              "INSERT INTO image (fileId, dateTaken, width, height, orientation) "
              "VALUES (?, ?, ?, ?, ?);")
    {
    }

    void index(const QByteArray& root)
    {
        m_directories = {{insertDirectory({}, root), root}};
        while (!m_directories.isEmpty()) {
            indexDirectory(m_directories.takeFirst());
        }
        indexPictures(m_pictures.size());
    }

private:
    void indexDirectory(const Directory& directory)
    {
        m_database.exec("BEGIN");
        DIR* const entries = opendir(directory.path.constData());
        while (const dirent* const entry = entries ? readdir(entries) : nullptr) {
            if (entry->d_name[0] == '.') {
                continue;
            }
            const QByteArray path = directory.path + '/' + entry->d_name;
            struct stat status = {};
            if (stat(path.constData(), &status) != 0) {
                continue;
            }
            if (S_ISDIR(status.st_mode)) {
                m_directories.append({insertDirectory(directory.id, path), path});
            } else {
                insertFile(directory.id, path, entry->d_name, status.st_mtim);
            }
        }
        if (entries) {
            closedir(entries);
        }
        m_database.exec("COMMIT");
        while (m_pictures.size() >= BatchSize) {
            indexPictures(BatchSize);
        }
    }

    qint64 insertDirectory(std::optional<qint64> parentId, const QByteArray& path)
    {
        m_directoryInsert.bind(1, parentId);
        m_directoryInsert.bind(2, path);
        return m_directoryInsert.insert();
    }

    void insertFile(
        qint64 directoryId, const QByteArray& path, const QByteArray& name, const timespec& time)
    {
        const QByteArray mimeType = mimeTypeName(path, name);
        const QByteArray modified = timeText(time);
        m_fileInsert.bind(1, directoryId);
        m_fileInsert.bind(2, mimeType);
        m_fileInsert.bind(3, name);
        m_fileInsert.bind(4, modified);
        const qint64 id = m_fileInsert.insert();
        if (mimeType.startsWith("image/")) {
            m_pictures.append({id, path});
        }
    }

    /// The MIME type of a file, remembered by the suffix alone.
    QByteArray mimeTypeName(const QByteArray& path, const QByteArray& name)
    {
        QByteArray& type = m_mimeTypes[name.mid(name.lastIndexOf('.') + 1)];
        if (type.isNull()) {
            type = m_mimeDatabase.mimeTypeForFile(QString::fromUtf8(path)).name().toUtf8();
        }
        return type;
    }

    /// Reads and writes the first `count` pictures that wait.
    void indexPictures(int count)
    {
        if (count == 0) {
            return;
        }
        m_database.exec("BEGIN");
        for (int i = 0; i < count; ++i) {
            insertImage(m_pictures.at(i));
        }
        m_database.exec("COMMIT");
        m_pictures.remove(0, count);
    }

    void insertImage(const PictureFile& picture)
    {
        WindowedFile file(QString::fromUtf8(picture.path));
        const QSize size = pictureSize(file);
        const QuillMetadata metadata = pictureTags(file, QString::fromUtf8(picture.path));
        const QDateTime time = metadata.entry(QuillMetadata::TimestampTag).toDateTime();
        const QVariant orientation = metadata.entry(QuillMetadata::OrientationTag);
        const QByteArray dateTaken = time.toString(Qt::ISODateWithMs).toUtf8();
        m_imageInsert.bind(1, picture.id);
        m_imageInsert.bind(2, time.isValid() ? dateTaken : QByteArray());
        m_imageInsert.bind(3, size.width());
        m_imageInsert.bind(4, size.height());
        m_imageInsert.bind(
            5, orientation.isValid() ? std::make_optional(orientation.toLongLong()) : std::nullopt);
        m_imageInsert.insert();
    }

    SqliteFloor m_database;
    SqliteStatement m_directoryInsert;
    SqliteStatement m_fileInsert;
    SqliteStatement m_imageInsert;
    QMimeDatabase m_mimeDatabase;
    QHash<QByteArray, QByteArray> m_mimeTypes;
    /// Directories that wait to be listed.
    QVector<Directory> m_directories;
    /// Pictures that have a `file` row but no `image` row yet: less than a batch and those of one
    /// directory.
    QVector<PictureFile> m_pictures;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Floor floor(floorDatabasePath().toUtf8());
    indexFolders([&floor](const QString& folder) { floor.index(folder.toUtf8()); });
    return EXIT_SUCCESS;
}
