// SPDX-License-Identifier: BSD-3-Clause
#include "text.h"
#include "texttable.h"

#include <QTest>

class TextTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsAreAsWideAsTheirWidestCell()
    {
        const QString wide = QString::fromUtf8("\u65e5\u672c");

        const QString table = textTable(
            {{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")},
             {wide, QStringLiteral("long"), QStringLiteral("last")},
             {QStringLiteral("x"), QString(), QStringLiteral("y")}});

        QCOMPARE(
            table,
            QStringLiteral("A     B     C\n") + wide
                + QStringLiteral("  long  last\n"
                                 "x           y\n"));
    }

    void noLinesMakeNoText() { QCOMPARE(textTable({}), QString()); }

    void cellsAreCutUntilLinesFitTheTerminal()
    {
        const QString path = QStringLiteral("/xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx/end.jpg");
        const QString name = QStringLiteral("A name of more than forty characters, as some have");

        const QStringList lines = textTable(
                                      {{name, QStringLiteral("whole"), path}},
                                      {Fit::KeepStart, Fit::Whole, Fit::KeepEnd}, 60)
                                      .split(QLatin1Char('\n'));

        QCOMPARE(lines.at(0).size(), 60);
        QVERIFY2(
            lines.at(0).startsWith(QString::fromUtf8("A name of more than fort\u2026  whole  ")),
            qPrintable(lines.at(0)));
        QVERIFY2(
            lines.at(0).endsWith(QString::fromUtf8("  \u2026xxxxxxxxxxxxxxxxx/end.jpg")),
            qPrintable(lines.at(0)));
    }

    void noCharacterIsCutInHalf()
    {
        // Each takes two code units, and one or two columns.
        const QString wide = QString::fromUtf8("\U0001f600").repeated(30);
        const QString narrow = QString::fromUtf8("\U00010348").repeated(60);
        for (const QString& text : {wide, narrow}) {
            for (const int columns : {40, 41}) {
                for (const Fit fit : {Fit::KeepStart, Fit::KeepEnd}) {
                    const QString cut = textTable({{text}}, {fit}, columns).trimmed();

                    QVERIFY2(cut.isValidUtf16(), qPrintable(cut));
                    QVERIFY2(cut.size() < text.size() && cut.size() > columns - 2, qPrintable(cut));
                }
            }
        }
    }

    void columnsKeepAWidthThatTellsSomething()
    {
        const QString text(20, QLatin1Char('x'));

        const QString table = textTable({{text, text}}, {Fit::KeepStart, Fit::KeepEnd}, 10);

        const QString kept(15, QLatin1Char('x'));
        const QString mark = QString::fromUtf8("\u2026");
        QCOMPARE(table, kept + mark + QStringLiteral("  ") + mark + kept + QLatin1Char('\n'));
    }

    void nothingIsCutWithoutATerminal()
    {
        const QString path = QString(200, QLatin1Char('x'));

        QCOMPARE(textTable({{path}}, {Fit::KeepEnd}), path + QLatin1Char('\n'));
    }

    void coloursTakeNoRoom()
    {
        const QString swatch = QStringLiteral("\033[48;2;1;2;3m    \033[0m");

        QCOMPARE(
            textTable(
                {{swatch, QStringLiteral("b")}, {QStringLiteral("abcdef"), QStringLiteral("c")}}),
            swatch + QStringLiteral("    b\nabcdef  c\n"));
    }

    void pathsAreRelativeToTheWholeFolderName()
    {
        const QString folder = QStringLiteral("/pictures");

        QCOMPARE(
            displayPath(QStringLiteral("/pictures2/a.jpg"), folder),
            QStringLiteral("/pictures2/a.jpg"));
        QCOMPARE(displayPath(QStringLiteral("/pictures/a.jpg"), folder), QStringLiteral("a.jpg"));
    }

    void pathsArePrintable()
    {
        QCOMPARE(displayPath(QStringLiteral("/a\nb.jpg"), QString()), QStringLiteral("/a\\nb.jpg"));
    }

    void numbersHaveTheirNoun()
    {
        QCOMPARE(numbered(0, "%1 file", "%1 files"), QStringLiteral("0 files"));
        QCOMPARE(numbered(1, "%1 file", "%1 files"), QStringLiteral("1 file"));
        QCOMPARE(numbered(2, "%1 file", "%1 files"), QStringLiteral("2 files"));
    }
};

QTEST_GUILESS_MAIN(TextTableTest)

#include "tst_texttable.moc"
