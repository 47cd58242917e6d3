// SPDX-License-Identifier: BSD-3-Clause
#include "content.h"

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
