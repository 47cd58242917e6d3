// SPDX-License-Identifier: BSD-3-Clause
#include "content.h"

#include "moodsetdata.h"
#include "photodata.h"

namespace {

template <typename T>
bool hasSameFieldsAs(const Content& left, const Content& right)
{
    return static_cast<const T*>(left.data())->hasSameFields(*static_cast<const T*>(right.data()));
}

} // namespace

Content::Content(ContentData* data)
    : m_data(data)
{
}

int Content::type() const
{
    return m_data ? m_data->type : -1;
}

bool Content::isValid() const
{
    return m_data;
}

const ContentData* Content::data() const
{
    return m_data.constData();
}

bool operator==(const Content& left, const Content& right)
{
    if (!left.isValid() || !right.isValid()) {
        return left.isValid() == right.isValid();
    }
    return left.data()->type == right.data()->type && left.data()->id == right.data()->id;
}

bool operator!=(const Content& left, const Content& right)
{
    return !(left == right);
}

bool hasSameFields(const Content& left, const Content& right)
{
    if (left.data() == right.data()) {
        return true;
    }
    if (left.type() != right.type()) {
        return false;
    }
    switch (left.type()) {
    case MoodsetContent::File:
        return hasSameFieldsAs<FileData>(left, right);
    case MoodsetContent::Image:
        return hasSameFieldsAs<PhotoData>(left, right);
    case MoodsetContent::Moodset:
        return hasSameFieldsAs<MoodsetData>(left, right);
    default:
        // No other type has records of a class that is known here.
        return left == right && left.data()->url == right.data()->url;
    }
}
