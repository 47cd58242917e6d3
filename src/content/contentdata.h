// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"
#include "moodsetcontent.h"

#include <QSharedData>
#include <QUrl>
#include <QVariant>

/// One row of the content database as a record: a detached snapshot that does not follow the
/// database.
///
/// A record gives its fields numbered roles, as a list model does; each class documents its own
/// numbers. Records are on the heap and are shared by Content and ContentSpecialization handles,
/// which may be passed between threads. A shared record is never changed.
class MOODSET_CONTENT_EXPORT ContentData : public QSharedData
{
public:
    virtual ~ContentData();

    ContentData& operator=(const ContentData&) = delete;

    /// A new record of the same class with the same values, owned by the caller.
    virtual ContentData* clone() const = 0;

    /// The value of a role, or an invalid variant if the class does not know the number.
    virtual QVariant data(int role) const = 0;

    /// Sets the value of a role. False if the role is unknown or read-only.
    virtual bool setData(int role, const QVariant& value);

    /// The row's `file.id`. No row has the id 0.
    qint64 id;
    /// The full path as a file URL.
    QUrl url;
    /// The MoodsetContent::Type of the record's class.
    int type;

protected:
    ContentData(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type contentType);
    ContentData(const ContentData&) = default;
};
