// SPDX-License-Identifier: BSD-3-Clause
#include "texttable.h"

#include <QtTest>

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

    void longPathsKeepTheirEnd()
    {
        const QString path =
            QLatin1Char('/') + QString(80, QLatin1Char('x')) + QStringLiteral("/end.jpg");

        QCOMPARE(
            displayPath(path, QString()),
            QStringLiteral("...") + QString(49, QLatin1Char('x')) + QStringLiteral("/end.jpg"));
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
        QCOMPARE(numbered(0, "file", "files"), QStringLiteral("0 files"));
        QCOMPARE(numbered(1, "file", "files"), QStringLiteral("1 file"));
        QCOMPARE(numbered(2, "file", "files"), QStringLiteral("2 files"));
    }
};

QTEST_GUILESS_MAIN(TextTableTest)

#include "tst_texttable.moc"
