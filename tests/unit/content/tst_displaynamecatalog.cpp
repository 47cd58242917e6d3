// SPDX-License-Identifier: BSD-3-Clause
#include "content/displaynamecatalog.h"

#include "messagelog.h"
#include "translationcatalog.h"

#include <QtTest>

class DisplayNameCatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesStayWithoutACatalog()
    {
        MessageLog log;
        const DisplayNameCatalog catalog;

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void missingCatalogLeavesNames()
    {
        MessageLog log;
        const GermanLocale german;
        DisplayNameCatalog catalog;

        catalog.load(QStringLiteral("seasons"));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void localeComesBeforeEngineeringEnglish_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("translation");
        QTest::newRow("in both") << QStringLiteral("Autumn") << QStringLiteral("Herbst");
        QTest::newRow("not in the locale's")
            << QStringLiteral("Winter") << QStringLiteral("Winter (engineering)");
        QTest::newRow("empty in both") << QStringLiteral("Spring") << QStringLiteral("Spring");
        QTest::newRow("in neither") << QStringLiteral("Summer") << QStringLiteral("Summer");
        QTest::newRow("not ASCII") << QStringLiteral("Grün") << QStringLiteral("Grünland");
        QTest::newRow("empty") << QString() << QStringLiteral("Namenlos");
    }

    void localeComesBeforeEngineeringEnglish()
    {
        QFETCH(QString, source);
        QFETCH(QString, translation);
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        DisplayNameCatalog catalog;

        catalog.load(QStringLiteral("seasons"));

        QCOMPARE(catalog.translated(source), translation);
    }

    void engineeringEnglishServesOtherLocales()
    {
        MessageLog log;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        DisplayNameCatalog catalog;

        catalog.load(QStringLiteral("seasons"));

        QCOMPARE(
            catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn (engineering)"));
    }

    void localeServesWithoutEngineeringEnglish()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;

        catalog.load(QStringLiteral("seasons"));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Herbst"));
        QCOMPARE(catalog.translated(QStringLiteral("Winter")), QStringLiteral("Winter"));
    }

    void anotherCatalogReplacesTheOldOne()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        const TranslationCatalog other(QStringLiteral("weather-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));

        catalog.load(QStringLiteral("weather"));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Herbstwetter"));
        QCOMPARE(catalog.translated(QStringLiteral("Winter")), QStringLiteral("Winter"));
    }

    void emptyNameEndsTranslation()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));

        catalog.load(QString());

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void missingCatalogEndsTranslation()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));

        catalog.load(QStringLiteral("missing"));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void nameThatIsNoFileNameEndsTranslation()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));

        catalog.load(QStringLiteral("seasons") + QChar(QChar::Null));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void loadedCatalogIsNotReadAgain()
    {
        MessageLog log;
        const GermanLocale german;
        TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));
        locale.remove();

        catalog.load(QStringLiteral("seasons"));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Herbst"));
    }
};

QTEST_GUILESS_MAIN(DisplayNameCatalogTest)
#include "tst_displaynamecatalog.moc"
