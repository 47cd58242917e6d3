// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetmodel.h"

MoodsetModel::MoodsetModel(QObject* parent)
    : ContentModel(MoodsetContent::Moodset, parent)
{
}

void MoodsetModel::setFilter(Filter filter)
{
    if (filter == m_filter) {
        return;
    }
    m_filter = filter;
    Q_EMIT filterChanged();
    requery();
}

ContentModel::Query MoodsetModel::query() const
{
    QueryAgent::Parameters parameters;
    parameters.favoriteFilter = m_filter;
    return wholeListing(MoodsetContent::Moodset, parameters);
}
