// SPDX-License-Identifier: BSD-3-Clause
#include "announcements.h"

#include "content/contentmanager.h"

#include <utility>

namespace {

QVector<int>& announcedTypes()
{
    static QVector<int> types;
    return types;
}

} // namespace

Announcements::Announcements()
{
    take();
    ContentManager::setAnnouncer([](int type) { announcedTypes().append(type); });
}

Announcements::~Announcements()
{
    ContentManager::setAnnouncer(nullptr);
}

QVector<int> Announcements::take()
{
    return std::exchange(announcedTypes(), {});
}
