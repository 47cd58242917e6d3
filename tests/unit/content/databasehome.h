// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantList>

/// A user's home in which a test starts the content database, several times if necessary. Each
/// start is a process of its own, because a process opens the database only once. A failure fails
/// the current test.
class DatabaseHome
{
public:
    using Rows = QList<QVariantList>;

    /// An empty home that has recorded a start in the locale "C", which is the first locale of
    /// start().
    DatabaseHome();
    Q_DISABLE_COPY_MOVE(DatabaseHome)

    /// The value of XDG_DATA_HOME.
    QString dataFolder() const;
    /// The directory of the database file. It need not exist.
    QString databaseFolder() const;
    QString databasePath() const;

    /// Makes the directory of the database.
    void makeFolder() const;
    /// Makes the directory, and the database file with the statements of a file in tests/data.
    void build(const QString& sqlFile) const;
    /// Makes the directory, and the database file with these bytes.
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
    /// Sets LC_ALL for the following starts.
    void setLocale(const QString& locale);

    /// Starts and ends a process with the database. Returns its log lines, "type: text", in order.
    QStringList start(const QStringList& arguments = {}) const;

private:
    QString settingsPath() const;

    QTemporaryDir m_folder;
    QString m_locale = QStringLiteral("C");
};
