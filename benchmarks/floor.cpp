// SPDX-License-Identifier: BSD-3-Clause
// The least work that indexing pictures takes, to measure the daemon against.
//
// floor DATABASE
//
// Reads the paths of folders from the standard input, one in a line. For each it lists the tree,
// reads the size and the two tags of each picture once, writes the rows that the daemon writes, in
// as many transactions, and then says "done in N ms". It makes the database with the first.
//
// What the daemon does besides is left out: it watches nothing, compares nothing with rows that are
// there, tells nobody, keeps no queue in the database (a row is written once, in its final form),
// and remembers a MIME type by the suffix alone.
#include "floordatabase.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QImageReader>
#include <QVector>

#include <quillmetadata.h>

namespace {

/// As many pictures as the daemon reads in one transaction.
constexpr int BatchSize = 100;

struct Directory
{
    qint64 id;
    QString path;
};

struct PictureFile
{
    qint64 id;
    QString path;
};

class Floor
{
public:
    explicit Floor(const QSqlDatabase& database)
        : m_database(database)
        , m_rows(database)
        , m_imageInsert(prepared(
              database,
              QStringLiteral("INSERT INTO image (fileId, dateTaken, width, height, orientation) "
                             "VALUES (?, ?, ?, ?, ?);")))
    {
    }

    void index(const QString& root)
    {
        m_directories = {{insertDirectory(QVariant(), root), root}};
        while (!m_directories.isEmpty()) {
            indexDirectory(m_directories.takeFirst());
        }
        indexPictures(m_pictures.size());
    }

private:
    void indexDirectory(const Directory& directory)
    {
        m_database.transaction();
        QDirIterator iterator(
            directory.path, QDir::Dirs | QDir::Files | QDir::NoDot | QDir::NoDotDot);
        while (iterator.hasNext()) {
            const QString path = iterator.next();
            const QFileInfo info = iterator.fileInfo();
            if (info.isDir()) {
                m_directories.append({insertDirectory(directory.id, path), path});
            } else {
                insertFile(directory.id, path, info);
            }
        }
        m_database.commit();
        while (m_pictures.size() >= BatchSize) {
            indexPictures(BatchSize);
        }
    }

    qint64 insertDirectory(const QVariant& parentId, const QString& path)
    {
        constexpr int allEntries = 0;
        return m_rows.insertDirectory(parentId, path, allEntries);
    }

    void insertFile(qint64 directoryId, const QString& path, const QFileInfo& info)
    {
        constexpr int permissions = 3;
        const QString mimeType = m_rows.mimeTypeName(info);
        const qint64 id = m_rows.insertFile(directoryId, info, mimeType, permissions, true);
        if (mimeType.startsWith(QLatin1String("image/"))) {
            m_pictures.append({id, path});
        }
    }

    /// Reads and writes the first `count` pictures that wait.
    void indexPictures(int count)
    {
        if (count == 0) {
            return;
        }
        m_database.transaction();
        for (int i = 0; i < count; ++i) {
            const PictureFile& picture = m_pictures.at(i);
            const QSize size = QImageReader(picture.path).size();
            const QuillMetadata metadata(picture.path);
            run(m_imageInsert,
                {picture.id, metadata.entry(QuillMetadata::TimestampTag), size.width(),
                 size.height(), metadata.entry(QuillMetadata::OrientationTag)});
        }
        m_database.commit();
        m_pictures.remove(0, count);
    }

    QSqlDatabase m_database;
    FloorRows m_rows;
    QSqlQuery m_imageInsert;
    /// Listed in their parents, to be listed themselves.
    QVector<Directory> m_directories;
    /// With a `file` row and no `image` row yet: less than a batch and one directory's.
    QVector<PictureFile> m_pictures;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Floor floor(makeFloorDatabase());
    indexFolders([&floor](const QString& folder) { floor.index(folder); });
    return EXIT_SUCCESS;
}
