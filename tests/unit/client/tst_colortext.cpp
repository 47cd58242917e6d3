// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"

#include <QTest>

class ColorTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textHasAllOfAColor()
    {
        QCOMPARE(
            displayColor(QColor(1, 2, 3, 0xb0), ColorStyle::Text), QStringLiteral("#b0010203"));
    }

    void swatchIsAFieldWithoutTransparency()
    {
        QCOMPARE(
            displayColor(QColor(1, 2, 3, 0xb0), ColorStyle::Swatches),
            QStringLiteral("\033[48;2;1;2;3m    \033[0m"));
    }

    void missingColorIsAMinusSign()
    {
        QCOMPARE(displayColor(QColor(), ColorStyle::Text), QStringLiteral("-"));
        QCOMPARE(displayColor(QColor(), ColorStyle::Swatches), QStringLiteral("-"));
    }
};

QTEST_GUILESS_MAIN(ColorTextTest)

#include "tst_colortext.moc"
