// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantList>

/// A user's home in which the content database is started, again and again if need be. Each start
/// is a process of its own, as a process brings the database up only once. What fails here fails
/// the current test.
class DatabaseHome
{
public:
    using Rows = QList<QVariantList>;

    /// An empty home that remembers a start in the locale "C", which start() begins with.
    DatabaseHome();
    Q_DISABLE_COPY_MOVE(DatabaseHome)

    /// What stands in XDG_DATA_HOME.
    QString dataFolder() const;
    /// The folder of the database file. It need not exist.
    QString databaseFolder() const;
    QString databasePath() const;

    /// Makes the database's folder.
    void makeFolder() const;
    /// Makes the folder and the database file by the statements of a file in tests/data.
    void build(const QString& sqlFile) const;
    /// Makes the folder and the database file with these bytes.
    void writeFile(const QByteArray& bytes) const;
    /// Runs a statement on the database file.
    void exec(const QString& statement) const;
    Rows rows(const QString& statement) const;
    /// The first column of all rows.
    QVariantList column(const QString& statement) const;
    int version() const;

    /// The locale of the last translation update; empty if there was none.
    QString storedLocale() const;
    void forgetLocale() const;
    /// The value of LC_ALL in starts to come.
    void setLocale(const QString& locale);

    /// Starts and ends a process with the database; its log lines, "type: text", in order.
    QStringList start(const QStringList& arguments = {}) const;

private:
    QString settingsPath() const;

    QTemporaryDir m_folder;
    QString m_locale = QStringLiteral("C");
};
