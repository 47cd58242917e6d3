// SPDX-License-Identifier: BSD-3-Clause
#include "argb.h"

#include <QTest>

/// Tests the colours of the keys, and the forms in which the adapters set them.
class ArgbTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsBothForms()
    {
        const std::optional<Argb> color = Argb::fromText(QStringLiteral("#80Ff0a14"));
        QVERIFY(color);
        QCOMPARE(color->argb(), QStringLiteral("#80ff0a14"));
        QCOMPARE(color->hex(), QStringLiteral("#ff0a14"));
        QCOMPARE(color->rgb(), QStringLiteral("255, 10, 20"));
        const std::optional<Argb> opaque = Argb::fromText(QStringLiteral("#ff0a14"));
        QVERIFY(opaque);
        QCOMPARE(opaque->argb(), QStringLiteral("#ffff0a14"));
    }

    void refusesAllElse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << QString();
        QTest::newRow("a name") << QStringLiteral("red");
        QTest::newRow("no number sign") << QStringLiteral("ff102030f");
        QTest::newRow("three digits") << QStringLiteral("#f00");
        QTest::newRow("no digit") << QStringLiteral("#ff10203g");
        QTest::newRow("a space") << QStringLiteral("#ff10 030");
        QTest::newRow("a sign") << QStringLiteral("#+1020304");
        QTest::newRow("too long") << QStringLiteral("#ff1020304");
    }

    void refusesAllElse()
    {
        QFETCH(QString, text);
        QVERIFY(!Argb::fromText(text));
    }
};

QTEST_GUILESS_MAIN(ArgbTest)

#include "tst_argb.moc"
