// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentdata.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedDataPointer>

#include <cstddef>

/// A read handle on a shared record of any kind, or on none.
///
/// Copies share the record, which is deleted with its last handle. Handles may be passed between
/// threads.
class MOODSET_CONTENT_EXPORT Content
{
public:
    Content() = default;
    /// Takes a reference to `data`, which may be null.
    explicit Content(ContentData* data);

    /// The record's MoodsetContent::Type, or -1 on a null handle.
    int type() const;
    /// Whether the handle has a record.
    bool isValid() const;
    /// The record, or null. The handles keep its ownership.
    const ContentData* data() const;

private:
    template <typename T>
    friend class ContentSpecialization;

    QExplicitlySharedDataPointer<ContentData> m_data;
};

// A shared pointer may be moved as bytes, which lets a QVector of 100,000 drop a row in no time.
Q_DECLARE_TYPEINFO(Content, Q_MOVABLE_TYPE);

/// Whether both are null, or both are records of the same type and id. No other field counts.
MOODSET_CONTENT_EXPORT bool operator==(const Content& left, const Content& right);
MOODSET_CONTENT_EXPORT bool operator!=(const Content& left, const Content& right);

/// Whether both are null, or both are records of one type of which all fields are the same. This is
/// what tells whether a record that was read again has changed.
MOODSET_CONTENT_EXPORT bool hasSameFields(const Content& left, const Content& right);

/// A typed copy-on-write handle on a record of class T, or on none.
///
/// Const access shares the record. Non-const access copies it first if another handle shares it. T
/// has a constant T::contentType, the kind of its records.
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
    /// Shares the record of `content` if it is of class T. The handle is null otherwise.
    explicit ContentSpecialization(const Content& content)
        : QSharedDataPointer<T>(
            content.type() == T::contentType ? static_cast<T*>(content.m_data.data()) : nullptr)
    {
    }

    /// An untyped handle on the same record.
    operator Content() const { return Content(const_cast<T*>(this->constData())); }

    /// Whether the handle has a record. The base class would copy the record of a non-const handle,
    /// here and in the comparisons with null.
    /// @{
    explicit operator bool() { return this->constData() != nullptr; }
    explicit operator bool() const { return this->constData() != nullptr; }
    friend bool operator==(const ContentSpecialization& handle, std::nullptr_t) { return !handle; }
    friend bool operator==(std::nullptr_t, const ContentSpecialization& handle) { return !handle; }
    friend bool operator!=(const ContentSpecialization& handle, std::nullptr_t)
    {
        return bool(handle);
    }
    friend bool operator!=(std::nullptr_t, const ContentSpecialization& handle)
    {
        return bool(handle);
    }
    /// @}

    /// Compares as Content does, and not the pointers as the base class does.
    /// @{
    friend bool operator==(const ContentSpecialization& left, const ContentSpecialization& right)
    {
        return Content(left) == Content(right);
    }
    friend bool operator!=(const ContentSpecialization& left, const ContentSpecialization& right)
    {
        return !(left == right);
    }
    /// @}
};
