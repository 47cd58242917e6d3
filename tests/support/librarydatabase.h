// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// Reads the daemon's database from outside: on a connection of its own that cannot write. A
///    running daemon does not notice.
class LibraryDatabase
{
public:
    using Rows = QVector<QVariantList>;

    /// Where a daemon with this process's environment keeps its database.
    static QString standardPath();

    /// Opens the database at path, which must exist. Fails the current test if it cannot.
    explicit LibraryDatabase(const QString& path = standardPath());
    ~LibraryDatabase();
    Q_DISABLE_COPY_MOVE(LibraryDatabase)

    bool isOpen() const;

    /// The rows that statement selects, with values bound in place of its question marks. A
    /// statement that fails gives no rows and fails the current test.
    Rows rows(const QString& statement, const QVariantList& values = {}) const;

    /// The first column of the only row that statement selects; an invalid value, and a failed
    /// test, if it selects any other number of rows.
    QVariant value(const QString& statement, const QVariantList& values = {}) const;

    /// The id of a file's row; 0 if it has none.
    qint64 fileId(const QString& path) const;

    /// Columns of the moodset of a file, as texts; empty if it has none.
    QStringList moodset(const QString& path, const QString& columns) const;

private:
    QString m_connectionName;
    QSqlDatabase m_database;
};
