// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QObject;

/// Lets an object do its work in steps on the event loop. Each step is the handling of one
/// QEvent::UpdateRequest that is posted to the object. Never more than one such event is posted.
class UpdateSchedule
{
public:
    /// The steps are those of `receiver`, which must outlive the schedule.
    explicit UpdateSchedule(QObject* receiver);

    /// Requests a step, unless one is posted or running.
    void request();
    /// Call this at the end of each step. It requests the next step if `hasMore` is set.
    void finishStep(bool hasMore);

private:
    void post();

    QObject* m_receiver;
    /// Whether an event is posted or being handled.
    bool m_isScheduled = false;
};
