// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentdata.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedDataPointer>

/// A read handle on a shared record of any kind, or on none.
///
/// Copies share the record, which dies with its last handle. Handles may cross threads.
class MOODSET_CONTENT_EXPORT Content
{
public:
    Content() = default;
    /// Takes a reference to `data`, which may be null.
    explicit Content(ContentData* data);

    /// The record's MoodsetContent::Type, or -1 on a null handle.
    int type() const;
    /// Whether there is a record.
    bool isValid() const;
    /// The record, or null; it stays owned by the handles.
    const ContentData* data() const;

private:
    template <typename T>
    friend class ContentSpecialization;

    QExplicitlySharedDataPointer<ContentData> m_data;
};

/// Whether both are null, or both are records of one type and id. No other field counts.
MOODSET_CONTENT_EXPORT bool operator==(const Content& left, const Content& right);
MOODSET_CONTENT_EXPORT bool operator!=(const Content& left, const Content& right);

/// A typed copy-on-write handle on a record of class T, or on none.
///
/// Const access shares; non-const access copies the record first when another handle shares it. T
/// names the kind of its records in the constant T::contentType.
template <typename T>
class ContentSpecialization : public QSharedDataPointer<T>
{
public:
    ContentSpecialization() = default;
    /// Takes a reference to `data`, which may be null.
    explicit ContentSpecialization(T* data)
        : QSharedDataPointer<T>(data)
    {
    }
    /// Shares the record of `content` if it is a T's, and is null otherwise.
    explicit ContentSpecialization(const Content& content)
        : QSharedDataPointer<T>(
            content.type() == T::contentType ? static_cast<T*>(content.m_data.data()) : nullptr)
    {
    }

    /// An untyped handle on the same record.
    operator Content() const { return Content(const_cast<T*>(this->constData())); }
};
