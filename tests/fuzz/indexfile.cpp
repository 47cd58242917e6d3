// SPDX-License-Identifier: BSD-3-Clause
// An index file for a directory in which some files have rows.
#include "content/contentmanager.h"
#include "content/moodsetcontent.h"
#include "fuzztarget.h"
#include "scratchlibrary.h"

#include <QFileInfo>
#include <QSet>

namespace {

const QString IndexName = QStringLiteral("tones.index");
const QStringList FormerNames{
    QStringLiteral("b.ogg"), QStringLiteral("gone.ogg"), QStringLiteral("z z.ogg")};

/// A package with an index and the directory that it describes.
struct Package
{
    Package()
    {
        for (const auto& name :
             {QStringLiteral("a.ogg"), QStringLiteral("b.ogg"), QStringLiteral("c.ogg"),
              QStringLiteral("z z.ogg"), QStringLiteral("?.ogg"), QString::fromUtf8("\xc3\xa4.ogg"),
              QStringLiteral("sub/d.ogg")}) {
            library.write(QStringLiteral("tones/") + name);
        }
        ScratchLibrary::exec(
            QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (2, ?, 1);"),
            {library.path(QStringLiteral("tones"))});
        ScratchLibrary::addFile(IndexName, QStringLiteral("application/x-zavro-index"));
    }

    ScratchLibrary library;
};

/// Puts the rows back that every input meets.
void restoreRows()
{
    ScratchLibrary::exec(QStringLiteral("DELETE FROM file WHERE directoryId = 2;"));
    for (const QString& name : FormerNames) {
        ScratchLibrary::exec(
            QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, displayName, "
                           "permissions, metadataCurrent) VALUES (2, 'a/b', ?, 'Name', 1, 1);"),
            {name});
    }
    ScratchLibrary::exec(
        QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE fileName = ?;"), {IndexName});
}

} // namespace

void runTarget(const QByteArray& input)
{
    allowNoWarningsBut(
        {"virtual bool IndexManager::updateMetaData()", "Duplicate fileName in .index file "});
    static const Package package;
    restoreRows();
    package.library.write(IndexName, input);
    ContentManager* const manager = ContentManager::managerFromType(MoodsetContent::Index);

    require(manager->updateMetaData(), "the next index file gets its turn");
    require(!manager->updateMetaData(), "an index file is looked at once");

    require(!ScratchLibrary::isInTransaction(), "no transaction is left open");
    QSet<QString> names;
    const QVector<QVariantList> rows =
        ScratchLibrary::exec(QStringLiteral("SELECT fileName FROM file WHERE directoryId = 2;"));
    for (const QVariantList& row : rows) {
        const QString name = row.constFirst().toString();
        require(!name.isEmpty() && !name.contains(QLatin1Char('/')), "rows have bare names");
        require(!names.contains(name), "no name has two rows");
        require(
            FormerNames.contains(name)
                || QFileInfo::exists(package.library.path(QStringLiteral("tones/") + name)),
            "a new row has a file");
        names.insert(name);
    }
}
