// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QObject;

/// Has an object do its work in steps on the event loop, one for each QEvent::UpdateRequest that is
/// posted to it. There is never more than one such event on the way.
class UpdateSchedule
{
public:
    /// For steps of `receiver`, which must outlive the schedule.
    explicit UpdateSchedule(QObject* receiver);

    /// Asks for a step, unless one is on the way or being done.
    void request();
    /// To be called at the end of each step: has the next one follow, or comes to rest.
    void finishStep(bool hasMore);

private:
    void post();

    QObject* m_receiver;
    /// Whether an event is posted or being handled.
    bool m_isScheduled = false;
};
