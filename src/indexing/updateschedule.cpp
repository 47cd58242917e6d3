// SPDX-License-Identifier: BSD-3-Clause
#include "updateschedule.h"

#include <QCoreApplication>
#include <QEvent>

UpdateSchedule::UpdateSchedule(QObject* receiver)
    : m_receiver(receiver)
{
}

void UpdateSchedule::request()
{
    if (!m_isScheduled) {
        post();
    }
}

void UpdateSchedule::finishStep(bool hasMore)
{
    m_isScheduled = false;
    if (hasMore) {
        post();
    }
}

void UpdateSchedule::post()
{
    m_isScheduled = true;
    QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::UpdateRequest));
}
