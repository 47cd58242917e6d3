// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentmodel.h"

/// Lists the moodsets, favourites first. Each group is sorted by time stamp.
class MoodsetModel : public ContentModel
{
    Q_OBJECT
    Q_PROPERTY(Filter filter READ filter WRITE setFilter NOTIFY filterChanged)

public:
    enum Filter : int {
        AllMoodsets = QueryAgent::Parameters::AllMoodsets,
        Favorites = QueryAgent::Parameters::Favorites,
        NonFavorites = QueryAgent::Parameters::NonFavorites
    };
    Q_ENUM(Filter)

    explicit MoodsetModel(QObject* parent = nullptr);

    Filter filter() const { return m_filter; }
    void setFilter(Filter filter);

Q_SIGNALS:
    void filterChanged();

protected:
    Query query() const override;

private:
    Filter m_filter = AllMoodsets;
};
