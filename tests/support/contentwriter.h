// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QSqlDatabase>
#include <QString>
#include <QVariantMap>

/// Writes a content database as the daemon would, so that readers can be tried without one.
///
/// Opening makes the folder and the file, in WAL mode and with the schema, or opens a file that is
/// there. Whatever fails fails the current test. Use from the thread that made it.
class ContentWriter
{
public:
    explicit ContentWriter(const QString& path);
    ~ContentWriter();
    Q_DISABLE_COPY_MOVE(ContentWriter)

    /// Adds a file, and its directory if that is not there yet; gives the file's id.
    qint64 addFile(const QString& path, const QString& mimeType = QStringLiteral("text/plain"));
    /// Adds a picture of 4 x 3 pixels; gives its id.
    qint64 addPhoto(const QString& path, const QDateTime& dateTaken = {});
    /// Adds a moodset with the given columns of its row, all others NULL; gives its id.
    qint64 addMoodset(const QString& path, const QVariantMap& columns = {});
    /// Adds a file, and makes it a resource of a moodset; gives the file's id.
    qint64 addResource(qint64 moodset, const QString& type, const QString& path);
    /// Says where a file was downloaded from.
    void setSource(qint64 file, const QString& source);

    /// Adds a number of files "/many/00000.jpg", ... of the kind that `add` adds.
    template <typename Add>
    void addMany(int count, Add add)
    {
        transaction();
        for (int i = 0; i < count; ++i) {
            add(QStringLiteral("/many/%1.jpg").arg(i, 5, 10, QLatin1Char('0')));
        }
        commit();
    }

    void transaction();
    void commit();
    /// Runs any statement with values in place of its question marks; gives the last row id.
    qint64 exec(const QString& statement, const QVariantList& values = {});

private:
    qint64 directoryId(const QString& path);

    QString m_connectionName;
    QSqlDatabase m_database;
};
