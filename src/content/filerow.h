// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

class FileData;

/// The columns that rows of files and of pictures begin with.
namespace FileRow {

enum Column : int { Id, Path, MimeType, FileName, DisplayName, Permissions, Count };

/// Fills the fields of a file from a row.
void fill(FileData* file, const QSqlQuery& query);

/// What follows "SELECT ..., ", or an empty text, where the modification time comes last.
inline QString modificationTimeColumn(bool isWanted)
{
    return isWanted ? QStringLiteral(", file.modificationTime") : QString();
}

/// A new record of class T for a row, with its id and URL set.
template <typename T>
T* newRecord(const QSqlQuery& query)
{
    return new T(query.value(Id).toLongLong(), QUrl::fromLocalFile(query.value(Path).toString()));
}

} // namespace FileRow
