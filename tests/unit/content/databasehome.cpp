// SPDX-License-Identifier: BSD-3-Clause
#include "databasehome.h"

#include "scratchdatabase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

#include <functional>

namespace {

void failTest(const QString& reason)
{
    QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
}

/// Runs `use` on a connection to the database at `path`.
void withDatabase(const QString& path, const std::function<void(const QSqlDatabase&)>& use)
{
    const QString name = QStringLiteral("home");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        if (database.open()) {
            use(database);
        } else {
            failTest(QStringLiteral("%1: %2").arg(path, database.lastError().text()));
        }
    }
    QSqlDatabase::removeDatabase(name);
}

void run(const QSqlDatabase& database, const QString& statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement)) {
        failTest(QStringLiteral("%1: %2").arg(statement, query.lastError().text()));
    }
}

} // namespace

DatabaseHome::DatabaseHome()
{
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("locale"), m_locale);
}

QString DatabaseHome::dataFolder() const
{
    return m_folder.filePath(QStringLiteral("data"));
}

QString DatabaseHome::databaseFolder() const
{
    return dataFolder() + QStringLiteral("/system/privileged/Moodsetd/");
}

QString DatabaseHome::databasePath() const
{
    return databaseFolder() + QStringLiteral("moodsetd.sqlite");
}

QString DatabaseHome::settingsPath() const
{
    return m_folder.filePath(QStringLiteral("config/Zavro/moodsetd.conf"));
}

void DatabaseHome::makeFolder() const
{
    if (!QDir().mkpath(databaseFolder())) {
        failTest(databaseFolder());
    }
}

void DatabaseHome::build(const QString& sqlFile) const
{
    QFile file(QStringLiteral(TEST_DATA) + QLatin1Char('/') + sqlFile);
    if (!file.open(QIODevice::ReadOnly)) {
        failTest(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
        return;
    }
    const QStringList statements = QString::fromUtf8(file.readAll()).split(QStringLiteral("\n\n"));
    makeFolder();
    withDatabase(databasePath(), [&statements](const QSqlDatabase& database) {
        for (const QString& statement : statements) {
            run(database, statement);
        }
    });
}

void DatabaseHome::writeFile(const QByteArray& bytes) const
{
    makeFolder();
    QFile file(databasePath());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        failTest(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    }
}

void DatabaseHome::exec(const QString& statement) const
{
    withDatabase(
        databasePath(), [&statement](const QSqlDatabase& database) { run(database, statement); });
}

DatabaseHome::Rows DatabaseHome::rows(const QString& statement) const
{
    Rows rows;
    withDatabase(databasePath(), [&statement, &rows](const QSqlDatabase& database) {
        rows = rowsOf(database, statement);
    });
    return rows;
}

QVariantList DatabaseHome::column(const QString& statement) const
{
    QVariantList values;
    const Rows all = rows(statement);
    for (const QVariantList& row : all) {
        values.append(row.first());
    }
    return values;
}

int DatabaseHome::version() const
{
    return column(QStringLiteral("PRAGMA user_version")).value(0, -1).toInt();
}

QString DatabaseHome::storedLocale() const
{
    return QSettings(settingsPath(), QSettings::IniFormat)
        .value(QStringLiteral("locale"))
        .toString();
}

void DatabaseHome::forgetLocale() const
{
    QSettings(settingsPath(), QSettings::IniFormat).clear();
}

void DatabaseHome::setLocale(const QString& locale)
{
    m_locale = locale;
}

QStringList DatabaseHome::start(const QStringList& arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder());
    environment.insert(
        QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("LC_ALL"), m_locale);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(START_DATABASE), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        failTest(process.errorString());
    }
    const QString log = QString::fromUtf8(process.readAll());
    return log.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
