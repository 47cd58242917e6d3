// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "librarydatabase.h"
#include "moodset/moodsetmanager.h"
#include "testfolder.h"

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

/// The daemon's own database, which is emptied, with a moodset manager and with a directory for a
/// bundle. The directory has the wallpaper "images/w.jpg" and the sounds "sounds/s.ogg" and
/// "sounds/t.ogg". The registry makes the managers of the daemon.
///
/// rows() and value() use another connection, so they see only what is committed.
class MoodsetLibrary
{
public:
    MoodsetLibrary();

    /// Replaces the manager by a new one.
    void makeManager();
    MoodsetManager& manager() { return *m_manager; }
    TestFolder& folder() { return m_folder; }

    /// Writes a moodset file, which the next updateMetaData() parses. Returns its id.
    qint64 addMoodsetFile(const QByteArray& content, const QString& name = fileName());
    /// Writes a moodset file again, and marks it to be parsed.
    void rewrite(qint64 id, const QByteArray& content, const QString& name = fileName());
    /// Adds the row of a file in the bundle's directory. The file need not exist. Returns its id.
    qint64 addFile(const QString& name, bool isCurrent = true);
    /// Adds a moodset with a different value in every column. Its file is up to date. Returns its
    /// id.
    qint64 addStoredMoodset(const QString& name = fileName());
    /// Makes the file of `fileId` a tone of a moodset.
    void addResource(qint64 moodset, const QString& type, qint64 fileId);

    /// Runs a statement on the daemon's connection. A statement that fails makes the current test
    /// fail.
    static void exec(const QString& statement, const QVariantList& values = {});
    /// Whether a transaction is open on that connection.
    static bool isInTransaction();

    LibraryDatabase::Rows rows(const QString& statement, const QVariantList& values = {}) const;
    QVariant value(const QString& statement, const QVariantList& values = {}) const;
    /// A column of a moodset's only row.
    QVariant column(qint64 id, const QString& name) const;
    /// All columns of a moodset's row as text, then its file's display name; empty without a row.
    QStringList moodset(qint64 id) const;
    /// A moodset's tones, "ringerToneFile=s.ogg", sorted.
    QStringList resources(qint64 id) const;
    /// The number of files that wait to be parsed.
    int pendingFiles() const;

    static QString fileName() { return QStringLiteral("a.moodset"); }

private:
    TestFolder m_folder;
    std::unique_ptr<LibraryDatabase> m_reader;
    std::unique_ptr<MoodsetManager> m_manager;
};

/// Records what a manager announces about the active moodset.
class ActiveMoodsetRecord
{
public:
    explicit ActiveMoodsetRecord(const MoodsetManager& manager);
    Q_DISABLE_COPY_MOVE(ActiveMoodsetRecord)

    /// The records, oldest first.
    QVector<Moodset> moodsets;

private:
    /// The connection ends when this object is destroyed.
    QObject m_context;
};

/// Writes a file as the active picture to the store, as another process would.
void writeSource(const QString& path);

/// A trigger that makes a kind of change fail in the database: `operation` is "INSERT", "UPDATE" or
/// "DELETE". The error text of the database is "refused".
QString refuse(const QString& operation, const QString& table);
/// The four warnings of such a failure.
QStringList refusedWarnings(
    const QString& function, const QString& message, const QString& statement);
/// The error of a statement whose table has been dropped, as the log shows it.
QString noSuchTable(const QString& table);
