// SPDX-License-Identifier: BSD-3-Clause
#include "thumbnailqueue.h"

#include <QDeadlineTimer>
#include <QTest>

#include <chrono>
#include <future>
#include <thread>

/// Tests that work runs on other threads, the newest first.
class ThumbnailQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNewestComesFirst()
    {
        std::promise<void> begun;
        std::promise<void> gate;
        QList<int> order;
        {
            ThumbnailQueue queue(1);
            queue.add([&] {
                begun.set_value();
                gate.get_future().wait();
            });
            begun.get_future().wait();
            std::promise<void> done;
            queue.add([&] {
                order.append(1);
                done.set_value();
            });
            queue.add([&] { order.append(2); });
            queue.add([&] { order.append(3); });
            gate.set_value();
            done.get_future().wait();
        }
        QCOMPARE(order, QList<int>({3, 2, 1}));
    }

    void oneThreadDoesOneWorkAtATime()
    {
        std::promise<void> begun;
        std::promise<void> gate;
        std::promise<void> second;
        std::future<void> secondBegins = second.get_future();
        ThumbnailQueue queue(1);
        queue.add([&] {
            begun.set_value();
            gate.get_future().wait();
        });
        begun.get_future().wait();
        queue.add([&] { second.set_value(); });
        constexpr std::chrono::milliseconds longEnough(200);
        QVERIFY(secondBegins.wait_for(longEnough) == std::future_status::timeout);
        gate.set_value();
        secondBegins.wait();
    }

    void whatIsTakenBackIsNotDone()
    {
        std::promise<void> begun;
        std::promise<void> gate;
        bool isDone = false;
        {
            ThumbnailQueue queue(1);
            const ThumbnailQueue::Ticket first = queue.add([&] {
                begun.set_value();
                gate.get_future().wait();
            });
            begun.get_future().wait();
            const ThumbnailQueue::Ticket second = queue.add([&] { isDone = true; });
            QCOMPARE(int(queue.waiting()), 1);

            QVERIFY(queue.remove(second));
            QVERIFY(!queue.remove(second));
            QVERIFY(!queue.remove(first));
            QVERIFY(!queue.remove(0));

            QCOMPARE(int(queue.waiting()), 0);
            gate.set_value();
        }
        QVERIFY(!isDone);
    }

    void theEndForgetsWhatWaitsAndWaitsForWhatHasBegun()
    {
        std::promise<void> begun;
        std::promise<void> gate;
        bool isDone = false;
        bool isForgotten = true;
        {
            ThumbnailQueue queue(1);
            queue.add([&] {
                begun.set_value();
                gate.get_future().wait();
                // The end has begun when nothing waits any more.
                const QDeadlineTimer deadline(10000);
                while (queue.waiting() > 0 && !deadline.hasExpired()) {
                    std::this_thread::yield();
                }
                isDone = true;
            });
            begun.get_future().wait();
            queue.add([&] { isForgotten = false; });
            gate.set_value();
        }
        QVERIFY(isDone);
        QVERIFY(isForgotten);
    }
};

QTEST_GUILESS_MAIN(ThumbnailQueueTest)

#include "tst_thumbnailqueue.moc"
