// SPDX-License-Identifier: BSD-3-Clause
// A moodset file that becomes a row: first without a row, then over the one that it has made.
#include "content/contentmanager.h"
#include "content/moodsetcontent.h"
#include "fuzztarget.h"
#include "scratchlibrary.h"

namespace {

const QString FileName = QStringLiteral("a.moodset");

/// A package with one moodset file, a wallpaper and two tones.
struct Package
{
    Package()
    {
        library.write(QStringLiteral("images/w.jpg"));
        library.write(QStringLiteral("sounds/s.ogg"));
        library.write(QStringLiteral("sounds/t.ogg"));
        id = ScratchLibrary::addFile(FileName, QStringLiteral("application/x-zavro-moodset"));
    }

    /// Has the file parsed. The moodset's row and its tones, nothing if it was rejected.
    QVector<QVariantList> parse() const
    {
        ScratchLibrary::exec(
            QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = ?;"), {id});
        ContentManager* const manager = ContentManager::managerFromType(MoodsetContent::Moodset);
        require(!manager->updateMetaData(), "one file is no full batch");
        require(
            ScratchLibrary::exec(
                QStringLiteral("SELECT id FROM file WHERE metadataCurrent = 0 AND mimeType = "
                               "'application/x-zavro-moodset';"))
                .isEmpty(),
            "every file is done once it was looked at");
        require(!ScratchLibrary::isInTransaction(), "no transaction is left open");
        QVector<QVariantList> rows = ScratchLibrary::exec(
            QStringLiteral("SELECT moodset.*, displayName FROM moodset JOIN file ON fileId = id "
                           "WHERE fileId = ?;"),
            {id});
        const QVector<QVariantList> tones = ScratchLibrary::exec(
            QStringLiteral("SELECT * FROM resource WHERE fileId = ? ORDER BY resourceType;"), {id});
        for (const QVariantList& tone : tones) {
            rows.append(tone);
        }
        return rows;
    }

    ScratchLibrary library;
    qint64 id = 0;
};

} // namespace

void runTarget(const QByteArray& input)
{
    // A name with a NUL is not a file name on this platform.
    allowNoWarningsBut({"Failed to parse moodset ", "Broken filename passed to function"});
    static const Package package;
    ScratchLibrary::exec(QStringLiteral("DELETE FROM moodset;"));
    ScratchLibrary::exec(QStringLiteral("DELETE FROM resource;"));
    ScratchLibrary::exec(QStringLiteral("UPDATE file SET displayName = NULL;"));
    package.library.write(FileName, input);

    const QVector<QVariantList> first = package.parse();
    const QVector<QVariantList> second = package.parse();

    require(first == second, "an unchanged file gives the same row");
}
