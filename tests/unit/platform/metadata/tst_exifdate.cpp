// SPDX-License-Identifier: BSD-3-Clause
#include "exifdate.h"

#include <QTest>

#include <ctime>

class ExifDateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void localDatesAreRead_data();
    void localDatesAreRead();
    void offsetsAreRead_data();
    void offsetsAreRead();
    void subSecondsAreRead_data();
    void subSecondsAreRead();
    void impossibleDatesAreInvalid_data();
    void impossibleDatesAreInvalid();
    void everyBeginningOfADateIsInvalidOrThatDay();
    void aSkippedLocalTimeCountsAsLater();
};

void ExifDateTest::initTestCase()
{
    // Sets a time zone with summer time, because the machine may have another one.
    qputenv("TZ", "Europe/Berlin");
    tzset();
}

void ExifDateTest::localDatesAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QDateTime>("expected");

    const QDate day(2020, 1, 2);
    const QDateTime moment(day, QTime(3, 4, 5));
    const QDateTime midnight(day, QTime(0, 0));
    QTest::newRow("Exif") << QByteArray("2020:01:02 03:04:05") << moment;
    QTest::newRow("closing NUL") << QByteArray("2020:01:02 03:04:05\0", 20) << moment;
    QTest::newRow("many NULs") << QByteArray("2020:01:02 03:04:05\0\0\0", 22) << moment;
    QTest::newRow("rubbish after NUL") << QByteArray("2020:01:02 03:04:05\0xyz", 23) << moment;
    QTest::newRow("blanks around") << QByteArray("  2020:01:02 03:04:05  ") << moment;
    QTest::newRow("line end") << QByteArray("2020:01:02 03:04:05\n") << moment;
    QTest::newRow("dashes") << QByteArray("2020-01-02 03:04:05") << moment;
    QTest::newRow("slashes") << QByteArray("2020/01/02 03:04:05") << moment;
    QTest::newRow("full stops") << QByteArray("2020.01.02 03:04:05") << moment;
    QTest::newRow("ISO 8601") << QByteArray("2020-01-02T03:04:05") << moment;
    QTest::newRow("Exif with T") << QByteArray("2020:01:02T03:04:05") << moment;
    QTest::newRow("several blanks") << QByteArray("2020:01:02   03:04:05") << moment;
    QTest::newRow("blanks for zeros") << QByteArray("2020: 1: 2  3: 4: 5") << moment;
    QTest::newRow("single digits") << QByteArray("2020:1:2 3:4:5") << moment;
    QTest::newRow("no seconds") << QByteArray("2020-01-02T03:04") << QDateTime(day, QTime(3, 4));
    QTest::newRow("day only") << QByteArray("2020:01:02") << midnight;
    QTest::newRow("ISO day only") << QByteArray("2020-01-02") << midnight;
    QTest::newRow("blank time") << QByteArray("2020:01:02   :  :  ") << midnight;
    QTest::newRow("fraction") << QByteArray("2020-01-02T03:04:05.67")
                              << QDateTime(day, QTime(3, 4, 5, 670));
    QTest::newRow("fraction with comma")
        << QByteArray("2020-01-02T03:04:05,6789") << QDateTime(day, QTime(3, 4, 5, 678));
    QTest::newRow("last second") << QByteArray("1999:12:31 23:59:59")
                                 << QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59));
    QTest::newRow("leap day") << QByteArray("2020:02:29 00:00:00")
                              << QDateTime(QDate(2020, 2, 29), QTime(0, 0));
    QTest::newRow("before the epoch")
        << QByteArray("1935:06:07 08:09:10") << QDateTime(QDate(1935, 6, 7), QTime(8, 9, 10));
}

void ExifDateTest::localDatesAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QDateTime, expected);

    const QDateTime date = exifDate(text);

    QCOMPARE(date, expected);
    QCOMPARE(date.timeSpec(), Qt::LocalTime);
}

void ExifDateTest::offsetsAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("offset");
    QTest::addColumn<QString>("expected");

    const QByteArray plain("2020:01:02 03:04:05");
    const QString local = QStringLiteral("2020-01-02T03:04:05");
    const QString east = QStringLiteral("2020-01-02T03:04:05+05:45");
    const QString west = QStringLiteral("2020-01-02T03:04:05-08:00");
    const QString utc = QStringLiteral("2020-01-02T03:04:05Z");
    QTest::newRow("none") << plain << QByteArray() << local;
    QTest::newRow("east") << plain << QByteArray("+05:45") << east;
    QTest::newRow("west, closing NUL") << plain << QByteArray("-08:00\0", 7) << west;
    QTest::newRow("zero") << plain << QByteArray("+00:00") << utc;
    QTest::newRow("Z") << plain << QByteArray("Z") << utc;
    QTest::newRow("no colon") << plain << QByteArray("-0800") << west;
    QTest::newRow("hours only") << plain << QByteArray("-08") << west;
    QTest::newRow("in the text") << QByteArray("2020-01-02T03:04:05+05:45") << QByteArray() << east;
    QTest::newRow("Z in the text") << QByteArray("2020-01-02T03:04:05Z") << QByteArray() << utc;
    QTest::newRow("blank before") << QByteArray("2020:01:02 03:04:05 -08:00") << QByteArray()
                                  << west;
    QTest::newRow("text goes first")
        << QByteArray("2020-01-02T03:04:05-08:00") << QByteArray("+01:00") << west;
    QTest::newRow("blank") << plain << QByteArray("   :  ") << local;
    QTest::newRow("no sign") << plain << QByteArray("05:45") << local;
    QTest::newRow("quarters of an hour")
        << plain << QByteArray("+13:45") << QStringLiteral("2020-01-02T03:04:05+13:45");
    QTest::newRow("farthest east")
        << plain << QByteArray("+14:00") << QStringLiteral("2020-01-02T03:04:05+14:00");
    QTest::newRow("no zone has it") << plain << QByteArray("+14:01") << local;
    QTest::newRow("sixty minutes") << plain << QByteArray("+05:60") << local;
    QTest::newRow("rubbish") << plain << QByteArray("+0x:12") << local;
    QTest::newRow("more characters after it") << plain << QByteArray("+05:45:00") << local;
    QTest::newRow("long number") << plain << QByteArray("+99999999999") << local;
}

void ExifDateTest::offsetsAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, offset);
    QFETCH(QString, expected);

    QCOMPARE(exifDate(text, {}, offset).toString(Qt::ISODate), expected);
}

void ExifDateTest::subSecondsAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("subSeconds");
    QTest::addColumn<int>("milliseconds");

    const QByteArray plain("2020:01:02 03:04:05");
    QTest::newRow("none") << plain << QByteArray() << 0;
    QTest::newRow("tenths") << plain << QByteArray("7") << 700;
    QTest::newRow("hundredths") << plain << QByteArray("07") << 70;
    QTest::newRow("thousandths, closing NUL") << plain << QByteArray("007\0", 4) << 7;
    QTest::newRow("microseconds") << plain << QByteArray("123987") << 123;
    QTest::newRow("trailing blanks") << plain << QByteArray("12  ") << 120;
    QTest::newRow("blank") << plain << QByteArray("   ") << 0;
    QTest::newRow("negative") << plain << QByteArray("-12") << 0;
    QTest::newRow("rubbish") << plain << QByteArray("1a") << 0;
    QTest::newRow("fraction goes first")
        << QByteArray("2020-01-02T03:04:05.250") << QByteArray("7") << 250;
}

void ExifDateTest::subSecondsAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, subSeconds);
    QFETCH(int, milliseconds);

    QCOMPARE(
        exifDate(text, subSeconds), QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5, milliseconds)));
}

void ExifDateTest::impossibleDatesAreInvalid_data()
{
    QTest::addColumn<QByteArray>("text");

    const QByteArrayList texts = {
        "",
        " ",
        QByteArray(20, '\0'),
        "                   ",
        "    :  :     :  :  ",
        "::::",
        "0000:00:00 00:00:00",
        "0000-00-00T00:00:00",
        "0000:01:01 00:00:00",
        "2021:00:01 00:00:00",
        "2021:13:01 00:00:00",
        "2021:01:00 00:00:00",
        "2021:01:32 00:00:00",
        "2021:02:29 00:00:00",
        "2021:02:30 00:00:00",
        "2021:01:02 24:00:00",
        "2021:01:02 25:00:00",
        "2021:01:02 12:60:00",
        "2021:01:02 12:00:60",
        "2021:01:02 12:00:",
        "2021:01:02 12",
        "2021:01:02 12:00:00.",
        "2021:01:02 12:00:00 PM",
        "2021:01:02 12:00:00+99:00",
        "2021:01:02x12:00:00",
        "2021:01",
        "2021",
        "21:01:02 03:04:05",
        "12021:01:02 03:04:05",
        "2021:001:02 03:04:05",
        "2021:-1:02 03:04:05",
        "-2021:01:02 03:04:05",
        "2021 01 02 03:04:05",
        "20210102",
        "02/01/2021 03:04:05",
        "Sat Jan  2 03:04:05 2021",
        "4294967296:01:02 03:04:05",
        "2021:01:02 99999999999:00:00",
        "\xff\xff\xff\xff:\xff\xff:\xff\xff",
    };
    for (const QByteArray& text : texts) {
        QTest::newRow(text.isEmpty() ? "empty" : text.toPercentEncoding(" :").constData()) << text;
    }
}

void ExifDateTest::impossibleDatesAreInvalid()
{
    QFETCH(QByteArray, text);

    QVERIFY2(!exifDate(text).isValid(), qPrintable(exifDate(text).toString()));
}

void ExifDateTest::everyBeginningOfADateIsInvalidOrThatDay()
{
    const QByteArray text("2020-11-12T13:14:15.678+05:45");

    for (int length = 0; length < text.size(); ++length) {
        const QDateTime date = exifDate(text.left(length));
        const bool isOfThatMonth = date.date().year() == 2020 && date.date().month() == 11;
        QVERIFY2(!date.isValid() || isOfThatMonth, text.left(length).constData());
    }
}

void ExifDateTest::aSkippedLocalTimeCountsAsLater()
{
    const QDateTime date = exifDate("2021:03:28 02:30:00");

    QCOMPARE(date, QDateTime(QDate(2021, 3, 28), QTime(3, 30)));
    QVERIFY(date.isValid());
}

QTEST_GUILESS_MAIN(ExifDateTest)
#include "tst_exifdate.moc"
