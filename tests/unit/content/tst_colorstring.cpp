// SPDX-License-Identifier: BSD-3-Clause
#include "content/colorstring.h"

#include <QTest>

class ColorStringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textHasAlphaFirst_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("text");
        QTest::newRow("opaque") << QColor(0x11, 0x22, 0x33) << QStringLiteral("#ff112233");
        QTest::newRow("translucent")
            << QColor(0xa1, 0xb2, 0xc3, 0x0d) << QStringLiteral("#0da1b2c3");
        QTest::newRow("invalid") << QColor() << QStringLiteral("#ff000000");
    }

    void textHasAlphaFirst()
    {
        QFETCH(QColor, color);
        QFETCH(QString, text);

        QCOMPARE(colorToString(color), text);
    }

    void anyNameIsUnderstood_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QColor>("color");
        QTest::newRow("with alpha") << QStringLiteral("#80112233") << QColor(17, 34, 51, 128);
        QTest::newRow("without alpha") << QStringLiteral("#112233") << QColor(17, 34, 51);
        QTest::newRow("short") << QStringLiteral("#123") << QColor(17, 34, 51);
        QTest::newRow("by name") << QStringLiteral("steelblue") << QColor(70, 130, 180);
        QTest::newRow("transparent") << QStringLiteral("transparent") << QColor(0, 0, 0, 0);
    }

    void anyNameIsUnderstood()
    {
        QFETCH(QString, name);
        QFETCH(QColor, color);

        QCOMPARE(colorFromString(name), color);
    }

    void otherTextGivesAnInvalidColor_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("no name") << QStringLiteral("steelblu");
        QTest::newRow("no digits") << QStringLiteral("#xyzxyz");
    }

    void otherTextGivesAnInvalidColor()
    {
        QFETCH(QString, text);

        QVERIFY(!colorFromString(text).isValid());
    }

    void textReadsBackAsTheSameColor()
    {
        const QColor color(1, 20, 200, 100);

        QCOMPARE(colorFromString(colorToString(color)), color);
    }
};

QTEST_GUILESS_MAIN(ColorStringTest)

#include "tst_colorstring.moc"
