// SPDX-License-Identifier: BSD-3-Clause
#include "printabletext.h"

#include <QTest>

class PrintableTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void escapesWhatATerminalWouldObey_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printable");
        QTest::newRow("plain") << QStringLiteral("a b") << QStringLiteral("a b");
        QTest::newRow("line break") << QStringLiteral("a\nb") << QStringLiteral("a\\nb");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a\\tb");
        QTest::newRow("escape") << QStringLiteral("\x1b[2J") << QStringLiteral("\\u001b[2J");
        QTest::newRow("direction") << QStringLiteral("a\u202eb") << QStringLiteral("a\\u202eb");
        QTest::newRow("umlaut") << QStringLiteral("\u00fc") << QStringLiteral("\u00fc");
        QTest::newRow("beyond 16 bits")
            << QStringLiteral("\U0001f600") << QStringLiteral("\U0001f600");
    }

    void escapesWhatATerminalWouldObey()
    {
        QFETCH(QString, text);
        QFETCH(QString, printable);

        QCOMPARE(printableText(text), printable);
    }

    void countsColumns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("columns");
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("narrow") << QStringLiteral("ab\u00fc") << 3;
        QTest::newRow("wide") << QStringLiteral("\u65e5\u672c") << 4;
        QTest::newRow("combining") << QStringLiteral("u\u0308") << 1;
    }

    void countsColumns()
    {
        QFETCH(QString, text);
        QFETCH(int, columns);

        QCOMPARE(columnCount(text), columns);
    }
};

QTEST_GUILESS_MAIN(PrintableTextTest)

#include "tst_printabletext.moc"
