// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QSqlDatabase>
#include <QString>
#include <QVariantMap>

/// Writes a content database as the daemon would, so that readers can be tested without a daemon.
///
/// The constructor opens the file, or makes the directory and the file, in WAL mode and with the
/// schema. Every failure fails the current test. Use it on the thread that made it.
class ContentWriter
{
public:
    explicit ContentWriter(const QString& path);
    ~ContentWriter();
    Q_DISABLE_COPY_MOVE(ContentWriter)

    /// Adds a file, and its directory if that is missing. Returns the file's id.
    qint64 addFile(const QString& path, const QString& mimeType = QStringLiteral("text/plain"));
    /// Adds a picture of 4 x 3 pixels. Returns its id.
    qint64 addPhoto(const QString& path, const QDateTime& dateTaken = {});
    /// Adds a moodset with the given columns of its row; all others are NULL. Returns its id.
    qint64 addMoodset(const QString& path, const QVariantMap& columns = {});
    /// Adds a file and makes it a resource of a moodset. Returns the file's id.
    qint64 addResource(qint64 moodset, const QString& type, const QString& path);
    /// Stores the URL that a file was downloaded from.
    void setSource(qint64 file, const QString& source);

    /// Adds `count` files "/many/00000.jpg" and so on, with the function `add`.
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
    /// Runs any statement, with values in place of its question marks. Returns the last row id.
    qint64 exec(const QString& statement, const QVariantList& values = {});

private:
    qint64 directoryId(const QString& path);

    QString m_connectionName;
    QSqlDatabase m_database;
};
