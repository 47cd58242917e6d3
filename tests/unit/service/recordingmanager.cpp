// SPDX-License-Identifier: BSD-3-Clause
#include "recordingmanager.h"

#include "content/dbmanager.h"

class RecordingManager::Manager : public ContentManager
{
public:
    using ContentManager::ContentManager;

    bool save(qint64 id, const QVariantMap& values) override
    {
        saves.append({id, values});
        return false;
    }

    bool remove(qint64 id) override
    {
        removals.append(id);
        return false;
    }

    bool updateMetaData() override
    {
        ++turns;
        return false;
    }

    QVector<Save> saves;
    QVector<qint64> removals;
    int turns = 0;
};

RecordingManager::RecordingManager(MoodsetContent::Type type)
    : m_type(type)
    , m_replaced(DbManager::instance()->manager(type))
    , m_manager(std::make_unique<Manager>(*DbManager::instance()))
{
    DbManager::instance()->manager(m_type) = m_manager.get();
}

RecordingManager::~RecordingManager()
{
    DbManager::instance()->manager(m_type) = m_replaced;
}

QVector<qint64> RecordingManager::removals() const
{
    return m_manager->removals;
}

QVector<RecordingManager::Save> RecordingManager::saves() const
{
    return m_manager->saves;
}

int RecordingManager::turns() const
{
    return m_manager->turns;
}
