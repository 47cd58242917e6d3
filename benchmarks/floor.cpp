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
#include "content/databaseschema.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QHash>
#include <QImageReader>
#include <QMimeDatabase>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <QVector>

#include <quillmetadata.h>

#include <iostream>
#include <string>

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

[[noreturn]] void fail(const QSqlError& error)
{
    std::cerr << "floor: " << qPrintable(error.text()) << '\n';
    std::exit(EXIT_FAILURE);
}

void exec(QSqlQuery& query)
{
    if (!query.exec()) {
        fail(query.lastError());
    }
}

QSqlDatabase makeDatabase(const QString& path)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(path);
    if (!database.open()) {
        fail(database.lastError());
    }
    const QStringList statements = DatabaseSchema::statements()
        + QStringList{
            QStringLiteral("PRAGMA temp_store = MEMORY;"),
            QStringLiteral("PRAGMA journal_mode = WAL;")};
    for (const QString& statement : statements) {
        QSqlQuery query(database);
        if (!query.exec(statement)) {
            fail(query.lastError());
        }
    }
    return database;
}

class Floor
{
public:
    explicit Floor(const QSqlDatabase& database)
        : m_database(database)
        , m_directoryInsert(database)
        , m_fileInsert(database)
        , m_imageInsert(database)
    {
        m_directoryInsert.prepare(
            QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, 0);"));
        m_fileInsert.prepare(QStringLiteral(
            "INSERT INTO file (directoryId, mimeType, fileName, modificationTime, permissions, "
            "metadataCurrent) VALUES (?, ?, ?, ?, 3, 1);"));
        m_imageInsert.prepare(
            QStringLiteral("INSERT INTO image (fileId, dateTaken, width, height, orientation) "
                           "VALUES (?, ?, ?, ?, ?);"));
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
        m_directoryInsert.bindValue(0, parentId);
        m_directoryInsert.bindValue(1, path);
        exec(m_directoryInsert);
        return m_directoryInsert.lastInsertId().toLongLong();
    }

    void insertFile(qint64 directoryId, const QString& path, const QFileInfo& info)
    {
        const QString mimeType = mimeTypeName(info);
        m_fileInsert.bindValue(0, directoryId);
        m_fileInsert.bindValue(1, mimeType);
        m_fileInsert.bindValue(2, info.fileName());
        m_fileInsert.bindValue(3, info.lastModified());
        exec(m_fileInsert);
        if (mimeType.startsWith(QLatin1String("image/"))) {
            m_pictures.append({m_fileInsert.lastInsertId().toLongLong(), path});
        }
    }

    QString mimeTypeName(const QFileInfo& info)
    {
        QString& name = m_mimeTypes[info.suffix()];
        if (name.isNull()) {
            name = m_mimeDatabase.mimeTypeForFile(info).name();
        }
        return name;
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
            m_imageInsert.bindValue(0, picture.id);
            m_imageInsert.bindValue(1, metadata.entry(QuillMetadata::TimestampTag));
            m_imageInsert.bindValue(2, size.width());
            m_imageInsert.bindValue(3, size.height());
            m_imageInsert.bindValue(4, metadata.entry(QuillMetadata::OrientationTag));
            exec(m_imageInsert);
        }
        m_database.commit();
        m_pictures.remove(0, count);
    }

    QSqlDatabase m_database;
    QSqlQuery m_directoryInsert;
    QSqlQuery m_fileInsert;
    QSqlQuery m_imageInsert;
    QMimeDatabase m_mimeDatabase;
    QHash<QString, QString> m_mimeTypes;
    /// Listed in their parents, to be listed themselves.
    QVector<Directory> m_directories;
    /// With a `file` row and no `image` row yet: less than a batch and one directory's.
    QVector<PictureFile> m_pictures;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::cerr << "usage: floor DATABASE\n";
        return EXIT_FAILURE;
    }
    Floor floor(makeDatabase(arguments.at(1)));
    std::string folder;
    while (std::getline(std::cin, folder)) {
        QElapsedTimer timer;
        timer.start();
        floor.index(QString::fromStdString(folder));
        std::cerr << "done in " << static_cast<double>(timer.nsecsElapsed()) / 1e6 << " ms\n";
    }
    return EXIT_SUCCESS;
}
