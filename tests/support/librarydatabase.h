// SPDX-License-Identifier: BSD-3-Clause
#ifndef LIBRARYDATABASE_H
#define LIBRARYDATABASE_H

#include <QSqlDatabase>
#include <QString>
#include <QVariant>
#include <QVector>

/*!
    Reads the daemon's database from outside: on a connection of its own that cannot write. A
   running daemon does not notice.
*/
class LibraryDatabase
{
public:
    using Rows = QVector<QVariantList>;

    /*! Where a daemon with this process's environment keeps its database. */
    static QString standardPath();

    /*! Opens the database at \a path, which must exist. Fails the current test if it cannot. */
    explicit LibraryDatabase(const QString& path = standardPath());
    ~LibraryDatabase();
    Q_DISABLE_COPY_MOVE(LibraryDatabase)

    bool isOpen() const;

    /*! The rows that \a statement selects, with \a values bound in place of its question marks. A
        statement that fails gives no rows and fails the current test. */
    Rows rows(const QString& statement, const QVariantList& values = {}) const;

    /*! The first column of the only row that \a statement selects; an invalid value, and a failed
        test, if it selects any other number of rows. */
    QVariant value(const QString& statement, const QVariantList& values = {}) const;

private:
    QString m_connectionName;
    QSqlDatabase m_database;
};

#endif // LIBRARYDATABASE_H
