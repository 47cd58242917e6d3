// SPDX-License-Identifier: BSD-3-Clause
#include "colourhue.h"

#include <QTest>

/// Tests the colour analysis with all possible colours.
class EveryColourTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTheHueThatQColorGives_data()
    {
        QTest::addColumn<int>("firstRed");

        for (int red = 0; red < 256; red += 32) {
            QTest::addRow("red from %d", red) << red;
        }
    }

    void hasTheHueThatQColorGives()
    {
        QFETCH(int, firstRed);

        for (QRgb color = qRgb(firstRed, 0, 0), count = 0; count < (32U << 16); ++color, ++count) {
            if (!hasHueOfQColor(color)) {
                QFAIL(qPrintable(QColor(color).name()));
            }
        }
    }
};

QTEST_GUILESS_MAIN(EveryColourTest)

#include "tst_everycolour.moc"
