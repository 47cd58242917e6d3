// SPDX-License-Identifier: BSD-3-Clause
#include "adapters/gnomeadapter.h"

#include <QTest>

/// Tests which accent colour of GNOME is chosen for a highlight colour.
class NearestAccentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheNearestByHue_data()
    {
        QTest::addColumn<QString>("color");
        QTest::addColumn<QString>("accent");
        QTest::newRow("blue") << QStringLiteral("#3584e4") << QStringLiteral("blue");
        QTest::newRow("teal") << QStringLiteral("#2190a4") << QStringLiteral("teal");
        QTest::newRow("green") << QStringLiteral("#3a944a") << QStringLiteral("green");
        QTest::newRow("yellow") << QStringLiteral("#c88800") << QStringLiteral("yellow");
        QTest::newRow("orange") << QStringLiteral("#ed5b00") << QStringLiteral("orange");
        QTest::newRow("red") << QStringLiteral("#e62d42") << QStringLiteral("red");
        QTest::newRow("pink") << QStringLiteral("#d56199") << QStringLiteral("pink");
        QTest::newRow("purple") << QStringLiteral("#9141ac") << QStringLiteral("purple");
        QTest::newRow("dark green") << QStringLiteral("#0a500a") << QStringLiteral("green");
        QTest::newRow("across the turn") << QStringLiteral("#ff0008") << QStringLiteral("red");
        QTest::newRow("grey") << QStringLiteral("#808080") << QStringLiteral("slate");
        QTest::newRow("black") << QStringLiteral("#000000") << QStringLiteral("slate");
        QTest::newRow("nearly grey") << QStringLiteral("#707a80") << QStringLiteral("slate");
    }

    void isTheNearestByHue()
    {
        QFETCH(QString, color);
        QFETCH(QString, accent);
        QCOMPARE(nearestAccent(Argb::fromText(color).value_or(Argb())), accent);
    }
};

QTEST_GUILESS_MAIN(NearestAccentTest)

#include "tst_nearestaccent.moc"
