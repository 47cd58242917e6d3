// SPDX-License-Identifier: BSD-3-Clause
#include "librarylock.h"

#include "librarydatabase.h"

#include <QSqlQuery>
#include <QUuid>

LibraryLock::LibraryLock()
    : m_connectionName(QUuid::createUuid().toString())
    , m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName))
{
    m_database.setDatabaseName(LibraryDatabase::standardPath());
    m_held = m_database.open()
        && QSqlQuery(m_database).exec(QStringLiteral("BEGIN IMMEDIATE TRANSACTION"));
}

LibraryLock::~LibraryLock()
{
    m_database.rollback();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connectionName);
}
