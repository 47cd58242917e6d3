// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/dbmanager.h"
#include "content/moodsetcontent.h"

/// Replaces the manager of a type in the registry by one of the test, while it lives.
class RegistryEntry
{
public:
    RegistryEntry(MoodsetContent::Type type, ContentManager* manager)
        : m_type(type)
        , m_replaced(DbManager::instance()->manager(type))
    {
        DbManager::instance()->manager(type) = manager;
    }
    ~RegistryEntry() { DbManager::instance()->manager(m_type) = m_replaced; }
    Q_DISABLE_COPY_MOVE(RegistryEntry)

private:
    const MoodsetContent::Type m_type;
    ContentManager* const m_replaced;
};
