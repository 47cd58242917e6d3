// SPDX-License-Identifier: BSD-3-Clause
#include "changegroup.h"

#include <dconfstore.h>

ChangeGroup::ChangeGroup(const QList<QByteArray>& directories, int restMs, QObject* parent)
    : QObject(parent)
    , m_directories(directories)
    , m_restMs(restMs)
{
    m_rest.setSingleShot(true);
    m_rest.setTimerType(Qt::PreciseTimer);
    connect(&m_rest, &QTimer::timeout, this, &ChangeGroup::tell);
}

void ChangeGroup::follow()
{
    DconfStore& store = DconfStore::instance();
    connect(&store, &DconfStore::changed, this, &ChangeGroup::handleChange);
    for (const QByteArray& directory : m_directories) {
        store.watch(directory);
    }
    touch();
}

void ChangeGroup::touch()
{
    const bool isBurst = m_sinceTold.isValid() && !m_sinceTold.hasExpired(BurstRestMs);
    const bool wasBurst = m_rest.isActive() && m_rest.interval() == BurstRestMs;
    m_rest.start(isBurst || wasBurst ? BurstRestMs : m_restMs);
}

void ChangeGroup::handleChange(const QByteArray& path)
{
    for (const QByteArray& directory : m_directories) {
        if (path.startsWith(directory) || touchesKey(path, directory)) {
            touch();
            return;
        }
    }
}

void ChangeGroup::tell()
{
    m_sinceTold.start();
    Q_EMIT changed();
}
