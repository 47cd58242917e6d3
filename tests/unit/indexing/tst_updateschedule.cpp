// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/updateschedule.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTest>

namespace {

/// Counts the steps that were requested, and requests another one in the middle of each.
class Worker : public QObject
{
public:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::UpdateRequest) {
            return QObject::event(event);
        }
        ++steps;
        schedule.request();
        schedule.finishStep(remaining-- > 0);
        return true;
    }

    /// Runs the posted steps. Returns their number.
    int deliver()
    {
        const int before = steps;
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        return steps - before;
    }

    UpdateSchedule schedule{this};
    int steps = 0;
    int remaining = 0;
};

} // namespace

class UpdateScheduleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void restsUntilAsked()
    {
        Worker worker;

        QCOMPARE(worker.deliver(), 0);
    }

    void requestsBeforeTheStepAreOne()
    {
        Worker worker;

        worker.schedule.request();
        worker.schedule.request();

        QCOMPARE(worker.deliver(), 1);
        QCOMPARE(worker.deliver(), 0);
    }

    void requestInsideTheLastStepIsLost()
    {
        Worker worker;
        worker.schedule.request();

        QCOMPARE(worker.deliver(), 1);

        QCOMPARE(worker.deliver(), 0);
    }

    void stepsFollowOneByOneWhileThereIsMore()
    {
        Worker worker;
        worker.remaining = 2;
        worker.schedule.request();

        QCOMPARE(worker.deliver(), 1);
        QCOMPARE(worker.deliver(), 1);
        QCOMPARE(worker.deliver(), 1);
        QCOMPARE(worker.deliver(), 0);
    }

    void requestDuringAStepWithMoreAddsNoSecondEvent()
    {
        Worker worker;
        worker.remaining = 1;
        worker.schedule.request();
        worker.deliver();

        worker.schedule.request();

        QCOMPARE(worker.deliver(), 1);
        QCOMPARE(worker.deliver(), 0);
    }

    void requestAtRestStartsAgain()
    {
        Worker worker;
        worker.schedule.request();
        worker.deliver();

        worker.schedule.request();

        QCOMPARE(worker.deliver(), 1);
    }
};

QTEST_GUILESS_MAIN(UpdateScheduleTest)

#include "tst_updateschedule.moc"
