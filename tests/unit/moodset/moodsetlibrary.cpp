// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlibrary.h"

#include "content/databaseschema.h"
#include "content/dbmanager.h"
#include "dconfcommand.h"
#include "mgconfitem.h"
#include "moodset/managerfactory.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

MoodsetLibrary::MoodsetLibrary()
{
    ContentManager::setFactory(::makeManager);
    m_folder.makeDirectory(QStringLiteral("images"));
    m_folder.makeDirectory(QStringLiteral("sounds"));
    m_folder.write(QStringLiteral("images/w.jpg"));
    m_folder.write(QStringLiteral("sounds/s.ogg"));
    m_folder.write(QStringLiteral("sounds/t.ogg"));

    // Views and triggers are removed first, because tables cannot be changed while they exist.
    exec(QStringLiteral("DROP VIEW IF EXISTS temp.modified_moodset;"));
    const QStringList tables{QStringLiteral("file"),     QStringLiteral("directory"),
                             QStringLiteral("image"),    QStringLiteral("moodset"),
                             QStringLiteral("dorselId"), QStringLiteral("download"),
                             QStringLiteral("resource")};
    for (const QString& table : tables) {
        exec(QStringLiteral("DROP TABLE IF EXISTS %1;").arg(table));
    }
    for (const QString& statement : DatabaseSchema::statements()) {
        exec(statement);
    }
    exec(
        QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, ?, 1);"),
        {m_folder.path()});
    m_reader = std::make_unique<LibraryDatabase>();
    makeManager();
}

void MoodsetLibrary::makeManager()
{
    m_manager.reset();
    exec(QStringLiteral("DROP VIEW IF EXISTS temp.modified_moodset;"));
    m_manager = std::make_unique<MoodsetManager>(*DbManager::instance(), nullptr);
}

qint64 MoodsetLibrary::addMoodsetFile(const QByteArray& content, const QString& name)
{
    m_folder.write(name, content);
    return addFile(name, false);
}

void MoodsetLibrary::rewrite(qint64 id, const QByteArray& content, const QString& name)
{
    m_folder.write(name, content);
    exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = ?;"), {id});
}

qint64 MoodsetLibrary::addFile(const QString& name, bool isCurrent)
{
    exec(
        QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, permissions, "
                       "metadataCurrent) VALUES (1, 'application/x-zavro-moodset', ?, 3, ?);"),
        {name, isCurrent});
    return value(
               QStringLiteral("SELECT id FROM file WHERE directoryId = 1 AND fileName = ?;"),
               {name})
        .toLongLong();
}

qint64 MoodsetLibrary::addStoredMoodset(const QString& name)
{
    const qint64 id = addFile(name);
    exec(QStringLiteral("UPDATE file SET displayName = 'stored name' WHERE id = ?;"), {id});
    exec(
        QStringLiteral("INSERT INTO moodset VALUES (?, 1, '/home.jpg', '/application.jpg', "
                       "'#ff000001', '#ff000002', '#ff000003', '#ff000004', "
                       "'2020-01-02T03:04:05Z', 33, -1, 'partner', 5);"),
        {id});
    return id;
}

void MoodsetLibrary::addResource(qint64 moodset, const QString& type, qint64 fileId)
{
    exec(QStringLiteral("INSERT INTO resource VALUES (?, ?, ?);"), {moodset, type, fileId});
}

void MoodsetLibrary::exec(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(*DbManager::instance());
    query.prepare(statement);
    for (int i = 0; i < values.size(); ++i) {
        query.bindValue(i, values.at(i));
    }
    if (!query.exec()) {
        const QString reason = QStringLiteral("%1: %2").arg(statement, query.lastError().text());
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
    }
}

bool MoodsetLibrary::isInTransaction()
{
    // A transaction cannot be opened inside another.
    QSqlQuery query(*DbManager::instance());
    if (!query.exec(QStringLiteral("BEGIN;"))) {
        return true;
    }
    exec(QStringLiteral("ROLLBACK;"));
    return false;
}

LibraryDatabase::Rows MoodsetLibrary::rows(
    const QString& statement, const QVariantList& values) const
{
    return m_reader->rows(statement, values);
}

QVariant MoodsetLibrary::value(const QString& statement, const QVariantList& values) const
{
    return m_reader->value(statement, values);
}

QVariant MoodsetLibrary::column(qint64 id, const QString& name) const
{
    return value(QStringLiteral("SELECT %1 FROM moodset WHERE fileId = ?;").arg(name), {id});
}

QStringList MoodsetLibrary::moodset(qint64 id) const
{
    const LibraryDatabase::Rows found = rows(
        QStringLiteral("SELECT moodset.*, displayName FROM moodset JOIN file ON fileId = id "
                       "WHERE fileId = ?;"),
        {id});
    QStringList texts;
    for (const QVariantList& row : found) {
        for (const QVariant& value : row) {
            texts.append(value.isNull() ? QStringLiteral("NULL") : value.toString());
        }
    }
    return texts;
}

QStringList MoodsetLibrary::resources(qint64 id) const
{
    QStringList texts;
    const LibraryDatabase::Rows found = rows(
        QStringLiteral("SELECT resourceType || '=' || fileName FROM resource "
                       "JOIN file ON resourceId = id WHERE fileId = ? ORDER BY 1;"),
        {id});
    for (const QVariantList& row : found) {
        texts.append(row.constFirst().toString());
    }
    return texts;
}

int MoodsetLibrary::pendingFiles() const
{
    return value(QStringLiteral("SELECT count(*) FROM file WHERE metadataCurrent = 0 "
                                "AND mimeType = 'application/x-zavro-moodset';"))
        .toInt();
}

ActiveMoodsetRecord::ActiveMoodsetRecord(const MoodsetManager& manager)
{
    QObject::connect(
        &manager, &MoodsetManager::activeMoodsetUpdated, &m_context,
        [this](const Moodset& moodset) { moodsets.append(moodset); });
}

void writeSource(const QString& path)
{
    MGConfItem::sync();
    runDconf(
        {QStringLiteral("write"),
         QStringLiteral("/desktop/tuvalo/background/portrait/picture_filename"),
         QStringLiteral("'%1'").arg(path)});
}

QString refuse(const QString& operation, const QString& table)
{
    return QStringLiteral("CREATE TRIGGER refuse_%1_%2 BEFORE %1 ON %2 "
                          "BEGIN SELECT RAISE(ABORT, 'refused'); END;")
        .arg(operation, table);
}

QStringList refusedWarnings(
    const QString& function, const QString& message, const QString& statement)
{
    return {
        function, message,
        QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", \"refused\")"),
        QLatin1Char('"') + statement + QLatin1Char('"')};
}

QString noSuchTable(const QString& table)
{
    return QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", \"no such table: %1\")")
        .arg(table);
}
