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

/// Names the MIME type of files just as the MIME database does, but remembers the answer for
/// suffixes that decide it, alone or with the type of the content: matching a name against all of
/// the database's globs is a third of what indexing a picture costs, and most of what a tone does.
///
/// A suffix decides alone if the installed globs hold it in one plain "*.suffix" and in no other
/// glob, whatever the case. If they hold it in several plain ones, of several types, the content is
/// looked at as well. Names that match any further glob, and files that are not regular, go to the
/// database every time. The memory starts afresh when the installed globs change.
class MimeTypeMemory
{
public:
    /// The name of the type that QMimeDatabase::mimeTypeForFile() gives with the default match.
    QString typeName(const QFileInfo& file);
    /// The same for a file of which it is known whether it is a regular one, which mostly saves a
    /// look at the disk.
    QString typeName(const QFileInfo& file, bool isRegular);

    /// The suffixes that have been remembered as deciding alone, in the case in which they were
    /// met.
    QStringList rememberedSuffixes() const;

private:
    void followInstalledGlobs();
    void readGlobs(const QStringList& paths);
    void addGlob(const QString& glob, const QString& type, QStringList* otherGlobs);
    QSet<QString> typesOfSuffix(const QString& fileName, const QString& suffix) const;
    QString typeBySuffix(const QFileInfo& file, const QString& suffix, const QString& type);
    QString typeBySuffixAndContent(
        const QFileInfo& file, const QString& suffix, const QSet<QString>& types);

    QMimeDatabase m_mimeDatabase;
    QHash<QString, QString> m_remembered;
    /// By the suffix and the name of the content's type.
    QHash<QPair<QString, QString>, QString> m_rememberedContents;

    /// The types of the plain globs of each lower-case suffix; none if another glob has it, too.
    QHash<QString, QSet<QString>> m_suffixTypes;
    /// Lower-case names that are globs without wildcards.
    QSet<QString> m_literalNames;
    /// All globs that end in no plain suffix, as alternatives.
    QRegularExpression m_otherGlobs;

    /// The files of the installed globs with their times, as last read.
    QString m_globState;
    QElapsedTimer m_lastCheck;
    /// Whether the MIME database has had the time to see what is in m_globState.
    bool m_settled = false;
};
