// SPDX-License-Identifier: BSD-3-Clause
#include "content/barename.h"

#include <QTest>

class BareNameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nameIsBareIfItCanBeAFileBesideOthers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isBare");
        const auto row = [](const char* tag, const QString& name, bool isBare) {
            QTest::newRow(tag) << name << isBare;
        };
        row("plain", QStringLiteral("a.jpg"), true);
        row("hidden", QStringLiteral(".a"), true);
        row("not ASCII", QStringLiteral("ä.jpg"), true);
        row("beyond 16 bits", QString::fromUtf8("\xf0\x9f\x98\x80.jpg"), true);
        row("byte order mark", QString(QChar(0xfeff)) + QLatin1Char('a'), true);
        row("no character", QString(QChar(0xffff)), true);
        row("backslash", QStringLiteral("a\\b"), true);
        row("two dots", QStringLiteral(".."), true);
        row("empty", QString(), false);
        row("slash", QStringLiteral("a/b"), false);
        row("slash at the end", QStringLiteral("a/"), false);
        row("NUL", QStringLiteral("a") + QChar(QChar::Null), false);
        row("first half of a pair", QStringLiteral("a") + QChar(0xd800), false);
        row("second half of a pair", QChar(0xdc00) + QStringLiteral("a"), false);
        row("halves the wrong way round", QString(QChar(0xdc00)) + QChar(0xd800), false);
    }

    void nameIsBareIfItCanBeAFileBesideOthers()
    {
        QFETCH(QString, name);
        QFETCH(bool, isBare);

        QCOMPARE(isBareName(name), isBare);
    }
};

QTEST_APPLESS_MAIN(BareNameTest)
#include "tst_barename.moc"
