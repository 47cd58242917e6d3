// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QMimeDatabase>
#include <QPair>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

class QFileInfo;

/// Gives the same MIME types as the MIME database, but remembers the answer for a suffix if the
/// suffix decides it, alone or together with the type of the content. Matching a name against all
/// globs of the database is a third of the time for indexing a picture, and most of the time for a
/// tone.
///
/// A suffix decides alone if the installed globs contain it in one plain "*.suffix" and in no other
/// glob, in upper or lower case. If several types have it as a plain glob, the type of the content
/// is needed as well. For names that match any other glob, and for files that are not regular, the
/// database is asked every time. The memory is cleared when the installed globs change.
class MimeTypeMemory
{
public:
    /// The name of the type that QMimeDatabase::mimeTypeForFile() gives with the default match.
    QString typeName(const QFileInfo& file);
    /// The same if it is known whether the file is a regular one. In most cases this needs no look
    /// at the disk.
    QString typeName(const QFileInfo& file, bool isRegular);

    /// The suffixes that are known to decide alone, in the case in which they first appeared.
    QStringList rememberedSuffixes() const;

private:
    void followInstalledGlobs();
    void readGlobs(const QStringList& files);
    bool addGlobsOf(const QString& path, QStringList* otherGlobs);
    void addGlob(const QString& glob, const QString& type, QStringList* otherGlobs);
    void addPlainGlob(const QString& suffix, const QString& type);
    QStringList typesOfSuffix(const QString& fileName, const QString& suffix) const;
    QString typeBySuffix(const QFileInfo& file, const QString& suffix, const QString& type);
    QString typeBySuffixAndContent(
        const QFileInfo& file, const QString& suffix, const QStringList& types);

    QMimeDatabase m_mimeDatabase;
    QHash<QString, QString> m_remembered;
    /// The keys are the suffix and the name of the content's type.
    QHash<QPair<QString, QString>, QString> m_rememberedContents;

    /// For each lower-case suffix, the types that have it as a plain glob. Empty if another glob
    /// has it, too. Nearly all have one type, for which a set would take several times the memory.
    QHash<QString, QStringList> m_suffixTypes;
    /// Lower-case names that are globs without wildcards.
    QSet<QString> m_literalNames;
    /// All globs that do not end in a plain suffix, as alternatives.
    QRegularExpression m_otherGlobs;

    /// The files of the installed globs with their times, as they were when they were read last.
    QString m_globState;
    QElapsedTimer m_lastCheck;
    /// Whether enough time has passed for the MIME database to see the files in m_globState.
    bool m_settled = false;
};
