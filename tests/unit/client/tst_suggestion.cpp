// SPDX-License-Identifier: BSD-3-Clause
#include "suggestion.h"

#include <QTest>

class SuggestionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatWasMeant_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("meant");
        const auto row = [](const char* word, const char* meant) {
            QTest::newRow(word) << QString::fromUtf8(word) << QString::fromUtf8(meant);
        };
        row("Coast ligth", "Coast light");
        row("coast light", "Coast light");
        row("Coast", "Coast light");
        row("st", "set");
        row("sett", "set");
        row("ste", "set");
        row("sea", "set");
        row("saw", "");
        row("autum walk", "Autumn walk");
        row("something else", "");
        row("x", "");
    }

    void findsWhatWasMeant()
    {
        QFETCH(QString, word);
        QFETCH(QString, meant);
        const QStringList known{
            QStringLiteral("Autumn walk"), QStringLiteral("Coast light"), QStringLiteral("set")};

        QCOMPARE(nearest(word, known), meant);
    }
};

QTEST_GUILESS_MAIN(SuggestionTest)

#include "tst_suggestion.moc"
