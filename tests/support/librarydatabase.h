// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// Reads the daemon's database from outside, on its own read-only connection. A running daemon does
/// not notice this.
class LibraryDatabase
{
public:
    using Rows = QVector<QVariantList>;

    /// The path of the database of a daemon with this process's environment.
    static QString standardPath();

    /// Opens the database at `path`, which must exist. Fails the current test if this is not
    /// possible.
    explicit LibraryDatabase(const QString& path = standardPath());
    ~LibraryDatabase();
    Q_DISABLE_COPY_MOVE(LibraryDatabase)

    bool isOpen() const;

    /// The rows that `statement` selects, with `values` bound to its question marks. A statement
    /// that fails gives no rows and fails the current test.
    Rows rows(const QString& statement, const QVariantList& values = {}) const;

    /// The first column of the rows that `statement` selects, as texts, sorted.
    QStringList texts(const QString& statement) const;

    /// The first column of the only row that `statement` selects. If it selects any other number of
    /// rows, the value is invalid and the current test fails.
    QVariant value(const QString& statement, const QVariantList& values = {}) const;

    /// The id of a file's row, or 0 if it has none.
    qint64 fileId(const QString& path) const;

    /// Columns of the moodset of a file, as texts. Empty if the file has no moodset.
    QStringList moodset(const QString& path, const QString& columns) const;

private:
    QString m_connectionName;
    QSqlDatabase m_database;
};
