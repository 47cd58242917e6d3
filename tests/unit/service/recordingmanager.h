// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "content/moodsetcontent.h"

#include <QVariantMap>
#include <QVector>

#include <memory>

/// Replaces a type's manager in the registry while it lives, and records its calls. Every call
/// fails.
class RecordingManager
{
public:
    struct Save
    {
        qint64 id;
        QVariantMap values;
    };

    explicit RecordingManager(MoodsetContent::Type type);
    ~RecordingManager();
    Q_DISABLE_COPY_MOVE(RecordingManager)

    /// The ids of the calls of remove().
    QVector<qint64> removals() const;
    QVector<Save> saves() const;
    /// The number of calls of updateMetaData().
    int turns() const;

private:
    class Manager;

    const MoodsetContent::Type m_type;
    ContentManager* const m_replaced;
    const std::unique_ptr<Manager> m_manager;
};
