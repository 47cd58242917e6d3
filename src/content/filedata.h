// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentdata.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>

/// A file of the library.
class MOODSET_CONTENT_EXPORT FileData : public ContentData
{
public:
    enum Role : int {
        ContentIdRole = 0, ///< qlonglong, the id
        UrlRole = 1, ///< QUrl
        MimeTypeRole = 2, ///< QString
        FileNameRole = 3, ///< QString
        FilePathRole = 4, ///< QString, the local path of the URL
        DisplayNameRole = 5, ///< QString
        ReadOnlyRole = 6 ///< bool, whether `permissions` lacks WritePermission
    };

    /// Roles that mean the same for files, pictures and moodsets. roleNames() does not have them,
    /// modelRoleNames() does.
    enum CommonRole : int {
        ModificationTimeRole = 0x1000, ///< QDateTime, see modificationTime()
        WritableRole = 0x1001 ///< bool, whether permissions have WritePermission
    };

    /// The bit of `permissions` that allows a user to change or remove the file.
    static constexpr int WritePermission = 2;

    static constexpr MoodsetContent::Type contentType = MoodsetContent::File;

    FileData(qint64 fileId, const QUrl& fileUrl);

    FileData* clone() const override;
    QVariant data(int role) const override;

    /// The names of the roles, for models.
    static QHash<int, QByteArray> roleNames();

    /// `names` with the common roles.
    static QHash<int, QByteArray> modelRoleNames(QHash<int, QByteArray> names);

    /// Whether all fields are the same.
    bool hasSameFields(const FileData& other) const;

    /// When the file was last changed, as the daemon last saw it: a local time; null where the
    /// listing was not to tell, or the database does not.
    QDateTime modificationTime() const;

    QString mimeType;
    QString fileName;
    QString displayName;
    int permissions = 0;
    /// The same as milliseconds since the beginning of 1970 on a clock that shows the local time:
    /// to find out how far that is from UTC takes longer than to read all other fields. 0 where it
    /// is not known.
    qint64 modified = 0;

protected:
    FileData(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type recordType);
    FileData(const FileData&) = default;

    template <typename T>
    friend class QSharedDataPointer;
};
