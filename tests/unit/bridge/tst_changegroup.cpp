// SPDX-License-Identifier: BSD-3-Clause
#include "changegroup.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int RestMs = 8;

} // namespace

/// How many changes are told, and when.
class ChangeGroupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOnceOfChangesThatComeTogether()
    {
        ChangeGroup group({}, RestMs);
        QSignalSpy told(&group, &ChangeGroup::changed);

        for (int i = 0; i < 3; ++i) {
            group.touch();
        }

        QVERIFY(told.wait());
        QTest::qWait(4 * RestMs);
        QCOMPARE(told.count(), 1);
    }

    void tellsOfABurstAtItsBeginningAndAtItsEnd()
    {
        ChangeGroup group({}, RestMs);
        QSignalSpy told(&group, &ChangeGroup::changed);
        QElapsedTimer sinceTouched;
        sinceTouched.start();
        group.touch();
        QVERIFY(told.wait());

        // On a busy machine a burst may have rests, of which each is an end.
        int rests = 0;
        for (int i = 0; i < 20; ++i) {
            QTest::qWait(2 * RestMs);
            rests += sinceTouched.elapsed() >= ChangeGroup::BurstRestMs - 1 ? 1 : 0;
            sinceTouched.start();
            group.touch();
        }
        QVERIFY2(told.count() <= 1 + rests, qPrintable(QString::number(told.count())));

        const int before = told.count();
        QVERIFY(told.wait());
        QVERIFY(sinceTouched.elapsed() >= ChangeGroup::BurstRestMs - 1);
        QCOMPARE(told.count(), before + 1);
    }

    void tellsSoonAgainAfterARest()
    {
        ChangeGroup group({}, RestMs);
        QSignalSpy told(&group, &ChangeGroup::changed);
        group.touch();
        QVERIFY(told.wait());
        QTest::qWait(ChangeGroup::BurstRestMs + RestMs);

        // Of several tries, the quickest one counts: the machine may be busy.
        qint64 quickest = ChangeGroup::BurstRestMs;
        for (int i = 0; i < 5 && quickest >= ChangeGroup::BurstRestMs; ++i) {
            QTest::qWait(ChangeGroup::BurstRestMs + RestMs);
            QElapsedTimer timer;
            timer.start();
            group.touch();
            QVERIFY(told.wait());
            quickest = timer.elapsed();
        }
        QVERIFY2(quickest < ChangeGroup::BurstRestMs, qPrintable(QString::number(quickest)));
    }
};

QTEST_GUILESS_MAIN(ChangeGroupTest)

#include "tst_changegroup.moc"
