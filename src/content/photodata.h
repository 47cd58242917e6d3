// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "filedata.h"

#include <QDateTime>

/// A picture of the library. Roles 0 to 6 are those of FileData.
class MOODSET_CONTENT_EXPORT PhotoData : public FileData
{
public:
    enum Role : int {
        DateTakenRole = 7, ///< QDateTime, null if the picture does not contain it
        WidthRole = 8, ///< int, pixels as stored, before rotation; -1 for an unreadable picture
        HeightRole = 9, ///< int, likewise
        OrientationRole = 10 ///< int, Exif orientation from 1 to 8, 0 if the picture has none
    };

    static constexpr MoodsetContent::Type contentType = MoodsetContent::Image;

    PhotoData(qint64 fileId, const QUrl& fileUrl);

    PhotoData* clone() const override;
    QVariant data(int role) const override;

    static QHash<int, QByteArray> roleNames();

    /// Whether all fields are the same.
    bool hasSameFields(const PhotoData& other) const;

    QDateTime dateTaken;
    int width = 0;
    int height = 0;
    int orientation = 0;

protected:
    PhotoData(const PhotoData&) = default;

    template <typename T>
    friend class QSharedDataPointer;
};
