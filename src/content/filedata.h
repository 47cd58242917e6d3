// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentdata.h"

#include <QByteArray>
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
        ReadOnlyRole = 6 ///< bool, whether permissions lack WritePermission
    };

    /// The bit of `permissions` that lets a user change or remove the file.
    static constexpr int WritePermission = 2;

    static constexpr MoodsetContent::Type contentType = MoodsetContent::File;

    FileData(qint64 fileId, const QUrl& fileUrl);

    FileData* clone() const override;
    QVariant data(int role) const override;

    /// The names of the roles, for models.
    static QHash<int, QByteArray> roleNames();

    QString mimeType;
    QString fileName;
    QString displayName;
    int permissions = 0;

protected:
    FileData(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type recordType);
    FileData(const FileData&) = default;

    template <typename T>
    friend class QSharedDataPointer;
};
