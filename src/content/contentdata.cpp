// SPDX-License-Identifier: BSD-3-Clause
#include "contentdata.h"

ContentData::ContentData(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type contentType)
    : id(fileId)
    , url(fileUrl)
    , type(contentType)
{
}

ContentData::~ContentData() = default;

bool ContentData::setData(int role, const QVariant& value)
{
    Q_UNUSED(role)
    Q_UNUSED(value)
    return false;
}
