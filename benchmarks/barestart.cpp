// SPDX-License-Identifier: BSD-3-Clause
// The minimum for the start of a program that opens a database and takes a name on the bus. The
// daemon's start is compared with it.
//
// barestart DATABASE NAME
#include <QCoreApplication>
#include <QDBusConnection>
#include <QSqlDatabase>
#include <QSqlQuery>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        return EXIT_FAILURE;
    }
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(arguments.at(1));
    if (!database.open()) {
        return EXIT_FAILURE;
    }
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("SELECT path FROM directory WHERE parentId IS NULL;"))
        || !query.next()) {
        return EXIT_FAILURE;
    }
    query.finish();
    if (!QDBusConnection::sessionBus().registerService(arguments.at(2))) {
        return EXIT_FAILURE;
    }
    return QCoreApplication::exec();
}
