// SPDX-License-Identifier: BSD-3-Clause
#include "filedata.h"

FileData::FileData(qint64 fileId, const QUrl& fileUrl)
    : FileData(fileId, fileUrl, contentType)
{
}

FileData::FileData(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type recordType)
    : ContentData(fileId, fileUrl, recordType)
{
}

FileData* FileData::clone() const
{
    return new FileData(*this);
}

QVariant FileData::data(int role) const
{
    switch (role) {
    case ModificationTimeRole:
        return modificationTime();
    case WritableRole:
        return (permissions & WritePermission) != 0;
    case ContentIdRole:
        return id;
    case UrlRole:
        return url;
    case MimeTypeRole:
        return mimeType;
    case FileNameRole:
        return fileName;
    case FilePathRole:
        return url.toLocalFile();
    case DisplayNameRole:
        return displayName;
    case ReadOnlyRole:
        return (permissions & WritePermission) == 0;
    }
    return QVariant();
}

QHash<int, QByteArray> FileData::roleNames()
{
    return {{ContentIdRole, "contentId"}, {UrlRole, "url"},
            {MimeTypeRole, "mimeType"},   {FileNameRole, "fileName"},
            {FilePathRole, "filePath"},   {DisplayNameRole, "displayName"},
            {ReadOnlyRole, "readOnly"}};
}

QHash<int, QByteArray> FileData::modelRoleNames(QHash<int, QByteArray> names)
{
    names.insert(ModificationTimeRole, "modificationTime");
    names.insert(WritableRole, "writable");
    return names;
}

bool FileData::hasSameFields(const FileData& other) const
{
    return id == other.id && type == other.type && modified == other.modified
        && permissions == other.permissions && url == other.url && mimeType == other.mimeType
        && fileName == other.fileName && displayName == other.displayName;
}

QDateTime FileData::modificationTime() const
{
    if (modified == 0) {
        return {};
    }
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(modified, Qt::UTC);
    return {time.date(), time.time()};
}
