// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"

#include <QTest>

class ColorTextTest : public QObject
{
    Q_OBJECT

private:
    const QString m_color = QStringLiteral("#b001020f");
    const QString m_field = QStringLiteral("\033[48;2;1;2;15m    \033[0m");

private Q_SLOTS:
    void textHasAllOfAColor() { QCOMPARE(displayColor(m_color, ColorStyle::Text), m_color); }

    void swatchIsAFieldWithoutTransparency()
    {
        QCOMPARE(displayColor(m_color, ColorStyle::Swatches), m_field);
    }

    void textFollowsTheSwatch()
    {
        QCOMPARE(displayColorWithText(m_color, ColorStyle::Text), m_color);
        QCOMPARE(
            displayColorWithText(m_color, ColorStyle::Swatches),
            QString(m_field + QLatin1Char(' ') + m_color));
    }

    void missingColorIsAMinusSign()
    {
        for (const ColorStyle style : {ColorStyle::Text, ColorStyle::Swatches}) {
            QCOMPARE(displayColor(QString(), style), QStringLiteral("-"));
            QCOMPARE(displayColorWithText(QString(), style), QStringLiteral("-"));
        }
    }

    void otherFormsAreNoColorTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isColor");
        QTest::newRow("none") << QString() << true;
        QTest::newRow("digits") << QStringLiteral("#0123456a") << true;
        QTest::newRow("letters") << QStringLiteral("#abcdef09") << true;
        QTest::newRow("capital letters") << QStringLiteral("#ABCDEF09") << false;
        QTest::newRow("no alpha") << QStringLiteral("#010203") << false;
        QTest::newRow("too long") << QStringLiteral("#0102030405") << false;
        QTest::newRow("no sign") << QStringLiteral("001020304") << false;
        QTest::newRow("no digit") << QStringLiteral("#0102030g") << false;
        QTest::newRow("beyond ASCII") << QStringLiteral("#010203\u06610") << false;
        QTest::newRow("a name") << QStringLiteral("palegreen") << false;
    }
    void otherFormsAreNoColorTexts()
    {
        QFETCH(const QString, text);

        QTEST(isColorText(text), "isColor");
    }
};

QTEST_GUILESS_MAIN(ColorTextTest)

#include "tst_colortext.moc"
