// SPDX-License-Identifier: BSD-3-Clause
#include "content/displaynamecatalog.h"

#include "catalogbuilder.h"
#include "messagelog.h"
#include "testfolder.h"
#include "toolargewarning.h"
#include "translationcatalog.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString Directory = QStringLiteral("/usr/share/translations/");

/// Sets the locale of the process while it lives.
class ProcessLocale
{
public:
    explicit ProcessLocale(const QString& name) { QLocale::setDefault(QLocale(name)); }
    ~ProcessLocale() { QLocale::setDefault(QLocale::system()); }
    Q_DISABLE_COPY_MOVE(ProcessLocale)
};

/// A catalogue that translates "a" to `translation`.
bool writeCatalog(const QString& fileName, const QString& translation)
{
    QFile file(Directory + fileName);
    return file.open(QIODevice::WriteOnly)
        && file.write(CatalogBuilder::catalog({CatalogBuilder::message(translation)})) > 0;
}

QString translatedByQt(const QTranslator& translator)
{
    return translator.translate(nullptr, "a", nullptr, -1);
}

/// The translation of "a" by QTranslator, with the catalogues that it finds.
QString translatedByQt(const QString& catalog)
{
    QTranslator locale;
    QTranslator engineering;
    const bool hasLocale =
        locale.load(QLocale(), catalog, QStringLiteral("-"), Directory, QString());
    const bool hasEngineering =
        engineering.load(catalog + QStringLiteral("_eng_en"), Directory, QString(), QString());
    const QString translation = hasLocale ? translatedByQt(locale) : QString();
    return translation.isEmpty() && hasEngineering ? translatedByQt(engineering) : translation;
}

} // namespace

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

    void nameThatIsNoFileNameEndsTranslation_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("NUL") << QString(QStringLiteral("seasons-de.qm") + QChar(QChar::Null));
        QTest::newRow("half a surrogate pair") << QString(QChar(0xd800));
    }

    void nameThatIsNoFileNameEndsTranslation()
    {
        QFETCH(QString, name);
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        DisplayNameCatalog catalog;
        catalog.load(QStringLiteral("seasons"));
        QVERIFY(QFile::copy(
            Directory + QStringLiteral("seasons-de.qm"), Directory + QStringLiteral("?-de.qm")));

        catalog.load(name);
        QVERIFY(QFile::remove(Directory + QStringLiteral("?-de.qm")));

        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Autumn"));
    }

    void sameFilesAreFoundAsByQt_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("catalog");
        for (const auto& catalog :
             {QStringLiteral("c"), QStringLiteral("c.d_e"), QStringLiteral("sub_folder/c")}) {
            for (const auto& locale :
                 {QStringLiteral("de_AT"), QStringLiteral("zh_TW"), QStringLiteral("sr_Latn_RS"),
                  QStringLiteral("C")}) {
                QTest::addRow("%s, %s", qPrintable(catalog), qPrintable(locale))
                    << locale << catalog;
            }
        }
    }

    void sameFilesAreFoundAsByQt()
    {
        QFETCH(QString, locale);
        QFETCH(QString, catalog);
        MessageLog log;
        const ProcessLocale processLocale(locale);
        QVERIFY(QDir().mkpath(Directory + QStringLiteral("sub_folder")));
        // These are all files that QTranslator may look for, and some others.
        QStringList names;
        for (const auto& language :
             {QStringLiteral("de_AT"),
              QStringLiteral("de_at"),
              QStringLiteral("de"),
              QStringLiteral("de_Latn_AT"),
              QStringLiteral("de-AT"),
              QStringLiteral("zh_Hant_TW"),
              QStringLiteral("zh_hant_tw"),
              QStringLiteral("zh_TW"),
              QStringLiteral("zh_tw"),
              QStringLiteral("zh_Hant"),
              QStringLiteral("zh_hant"),
              QStringLiteral("zh"),
              QStringLiteral("sr_Latn_RS"),
              QStringLiteral("sr_latn_rs"),
              QStringLiteral("sr_Latn"),
              QStringLiteral("sr_latn"),
              QStringLiteral("sr_RS"),
              QStringLiteral("sr"),
              QStringLiteral("C"),
              QStringLiteral("c"),
              QStringLiteral("en_US"),
              QStringLiteral("en"),
              QString()}) {
            names.append(catalog + QLatin1Char('-') + language);
        }
        names << catalog << catalog + QStringLiteral("_eng_en") << catalog + QStringLiteral("_eng")
              << QStringLiteral("c.d") << QStringLiteral("c") << QStringLiteral("sub_folder/d")
              << QStringLiteral("sub");
        names.removeDuplicates();
        for (const QString& name : qAsConst(names)) {
            QVERIFY(writeCatalog(name + QStringLiteral(".qm"), name + QStringLiteral(".qm")));
            QVERIFY(writeCatalog(name, name));
        }

        // The file that was found is removed each time, until none is found.
        int found = 0;
        QString translation;
        do {
            DisplayNameCatalog loaded;
            loaded.load(catalog);
            translation = loaded.translated(QStringLiteral("a"));
            const QString expected = translatedByQt(catalog);
            QCOMPARE(translation, expected.isEmpty() ? QStringLiteral("a") : expected);
        } while (QFile::remove(Directory + translation) && ++found < 100);

        QVERIFY2(found >= 8 && found < 100, QByteArray::number(found).constData());
        for (const QString& name : qAsConst(names)) {
            QFile::remove(Directory + name);
            QFile::remove(Directory + name + QStringLiteral(".qm"));
        }
        QVERIFY(QDir(Directory).rmdir(QStringLiteral("sub_folder")));
    }

    void catalogElsewhereIsFound()
    {
        MessageLog log;
        const GermanLocale german;
        TestFolder folder;
        folder.write(
            QStringLiteral("c-de.qm"),
            CatalogBuilder::catalog({CatalogBuilder::message(QStringLiteral("A"))}));
        DisplayNameCatalog catalog;

        catalog.load(folder.path(QStringLiteral("c")));

        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("A"));
    }

    void catalogBehindALinkIsRead()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        QVERIFY(QFile::link(
            QStringLiteral("seasons-de.qm"), Directory + QStringLiteral("linked-de.qm")));
        DisplayNameCatalog catalog;

        catalog.load(QStringLiteral("linked"));

        QVERIFY(QFile::remove(Directory + QStringLiteral("linked-de.qm")));
        QCOMPARE(catalog.translated(QStringLiteral("Autumn")), QStringLiteral("Herbst"));
    }

    void whatIsNoRegularFileIsPassedOver()
    {
        MessageLog log;
        const GermanLocale german;
        TestFolder folder;
        folder.makeFifo(QStringLiteral("c-de.qm"));
        folder.makeLink(QStringLiteral("c-de"), QStringLiteral("/dev/zero"));
        folder.write(
            QStringLiteral("c-"),
            CatalogBuilder::catalog({CatalogBuilder::message(QStringLiteral("A"))}));
        DisplayNameCatalog catalog;

        catalog.load(folder.path(QStringLiteral("c")));

        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("A"));
    }

    void catalogThatIsTooLargeIsWarnedOf()
    {
        MessageLog log;
        const GermanLocale german;
        TestFolder folder;
        const QByteArray content =
            CatalogBuilder::catalog({CatalogBuilder::message(QStringLiteral("A"))});
        folder.write(QStringLiteral("c-de.qm"), content);
        folder.write(QStringLiteral("c-de"), content);
        const QString path = folder.path(QStringLiteral("c-de.qm"));
        QVERIFY(QFile::resize(path, 16 * 1024 * 1024 + 1));
        DisplayNameCatalog catalog;

        catalog.load(folder.path(QStringLiteral("c")));

        // The next one does not replace it.
        QCOMPARE(log.takeWarnings(), QStringList(tooLargeWarning(path)));
        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("a"));
    }

    void damagedCatalogLeavesNames()
    {
        MessageLog log;
        const GermanLocale german;
        TestFolder folder;
        // QTranslator divides by the first number of the contexts.
        folder.write(
            QStringLiteral("c-de.qm"),
            CatalogBuilder::catalog(
                {CatalogBuilder::message(QStringLiteral("A"))},
                CatalogBuilder::part(CatalogBuilder::Contexts, QByteArray("\0\0", 2))));
        DisplayNameCatalog catalog;

        catalog.load(folder.path(QStringLiteral("c")));

        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("a"));
    }

    void nameThatIsTooLongForAFileIsNotLookedFor()
    {
        MessageLog log;
        DisplayNameCatalog catalog;

        // If a part of the name could be left out, there would be a further name.
        catalog.load(QStringLiteral("_").repeated(8 * 1024 * 1024));

        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("a"));
    }

    void loadedCatalogOutlivesItsFile()
    {
        MessageLog log;
        const GermanLocale german;
        TestFolder folder;
        folder.write(
            QStringLiteral("c-de.qm"),
            CatalogBuilder::catalog({CatalogBuilder::message(QStringLiteral("A"))}));
        DisplayNameCatalog catalog;
        catalog.load(folder.path(QStringLiteral("c")));

        folder.write(QStringLiteral("c-de.qm"), QByteArray());

        QCOMPARE(catalog.translated(QStringLiteral("a")), QStringLiteral("A"));
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
