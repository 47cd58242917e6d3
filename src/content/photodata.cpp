// SPDX-License-Identifier: BSD-3-Clause
#include "photodata.h"

PhotoData::PhotoData(qint64 fileId, const QUrl& fileUrl)
    : FileData(fileId, fileUrl, contentType)
{
}

PhotoData* PhotoData::clone() const
{
    return new PhotoData(*this);
}

QVariant PhotoData::data(int role) const
{
    switch (role) {
    case DateTakenRole:
        return dateTaken;
    case WidthRole:
        return width;
    case HeightRole:
        return height;
    case OrientationRole:
        return orientation;
    }
    return FileData::data(role);
}

QHash<int, QByteArray> PhotoData::roleNames()
{
    QHash<int, QByteArray> names = FileData::roleNames();
    names.insert(DateTakenRole, "dateTaken");
    names.insert(WidthRole, "width");
    names.insert(HeightRole, "height");
    names.insert(OrientationRole, "orientation");
    return names;
}

bool PhotoData::hasSameFields(const PhotoData& other) const
{
    return FileData::hasSameFields(other) && width == other.width && height == other.height
        && orientation == other.orientation && dateTaken == other.dateTaken;
}
