// SPDX-License-Identifier: BSD-3-Clause
#include "content/storedtime.h"

#include <QTest>
#include <QVariant>

class StoredTimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatAVariantReads_data()
    {
        QTest::addColumn<QVariant>("value");

        const auto add = [](const char* text) {
            QTest::newRow(text) << QVariant(QString::fromLatin1(text));
        };
        add("2021-03-04T05:06:07.089");
        add("0001-01-01T00:00:00.000");
        add("1969-12-31T23:59:59.999");
        add("9999-12-31T23:59:59.999");
        // In many places, summer time skips or repeats these times.
        add("2021-03-28T02:30:00.000");
        add("2021-10-31T02:30:00.000");
        add("2021-03-04T05:06:07");
        add("2021-03-04T05:06:07.089Z");
        add("2021-03-04T05:06:07.089+02:00");
        add("2021-03-04T05:06:07,089");
        add("2021-03-04 05:06:07.089");
        add("2021-03-04T05:06:07.0");
        add("2021-03-04T24:00:00.000");
        add("2021-02-30T05:06:07.089");
        add("0000-01-01T05:06:07.089");
        add("2021-13-04T05:06:07.089");
        add("2021-03-04T05:60:07.089");
        add("2021-03-04T05:06:60.089");
        add("20a1-03-04T05:06:07.089");
        add("-021-03-04T05:06:07.089");
        add("2021-03-04T05:06:07.+89");
        add("2021-03-04T05:06:07.08 ");
        add("2021-03-04");
        add("yesterday");
        add("");
        QTest::newRow("other digits") << QVariant(QStringLiteral("\u0662021-03-04T05:06:07.089"));
        QTest::newRow("null") << QVariant(QVariant::String);
        QTest::newRow("invalid") << QVariant();
        QTest::newRow("number") << QVariant(20210304);
    }

    void readsWhatAVariantReads()
    {
        QFETCH(QVariant, value);

        const QDateTime time = storedTime(value);

        const QDateTime expected = value.toDateTime();
        QCOMPARE(time, expected);
        QCOMPARE(time.isNull(), expected.isNull());
        QCOMPARE(time.timeSpec(), expected.timeSpec());
        QCOMPARE(time.toString(Qt::ISODateWithMs), expected.toString(Qt::ISODateWithMs));
    }

    void millisecondsAreThoseOfALocalClock_data() { readsWhatAVariantReads_data(); }

    void millisecondsAreThoseOfALocalClock()
    {
        QFETCH(QVariant, value);

        const qint64 milliseconds = storedMilliseconds(value);

        const QDateTime expected = storedTime(value).toLocalTime();
        if (!expected.isValid()) {
            // The database has the times of the user's clock, which may have been wrong.
            QVERIFY(milliseconds == 0 || value.toString().startsWith(QLatin1String("2021-03-28")));
            return;
        }
        const QDateTime clock = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
        QCOMPARE(clock.date(), expected.date());
        QCOMPARE(clock.time(), expected.time());
    }
};

QTEST_GUILESS_MAIN(StoredTimeTest)

#include "tst_storedtime.moc"
