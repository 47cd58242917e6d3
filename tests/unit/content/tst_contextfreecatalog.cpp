// SPDX-License-Identifier: BSD-3-Clause
#include "content/contextfreecatalog.h"

#include "byteorder.h"
#include "catalogbuilder.h"
#include "translationcatalog.h"

#include <QFile>
#include <QTest>
#include <QTranslator>

using namespace CatalogBuilder;

namespace {

const QString NotLoaded = QStringLiteral("not loaded");

QString translated(const QByteArray& file, const char* source = "a")
{
    const QByteArray bytes = contextFreeCatalog(file);
    QTranslator translator;
    return translator.load(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size())
        ? translator.translate(nullptr, source, nullptr, -1)
        : NotLoaded;
}

QString translatedAsItIs(const QByteArray& file)
{
    QTranslator translator;
    return translator.load(reinterpret_cast<const uchar*>(file.constData()), file.size())
        ? translator.translate(nullptr, "a", nullptr, -1)
        : NotLoaded;
}

QByteArray installedCatalog(const QString& name)
{
    const TranslationCatalog installed(name);
    QFile file(QStringLiteral("/usr/share/translations/%1.qm").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Compares the translations with those of QTranslator, if QTranslator can read the catalogue
/// without danger.
class ContextFreeCatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesStay_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("translation");
        QTest::newRow("translated") << QByteArray("Autumn") << QStringLiteral("Herbst");
        QTest::newRow("not ASCII") << QByteArray("Grün") << QStringLiteral("Grünland");
        QTest::newRow("empty") << QByteArray("") << QStringLiteral("Namenlos");
        QTest::newRow("not in it") << QByteArray("Summer") << QString();
    }

    void messagesStay()
    {
        QFETCH(QByteArray, source);
        QFETCH(QString, translation);

        QCOMPARE(
            translated(installedCatalog(QStringLiteral("seasons-de")), source.constData()),
            translation);
    }

    void catalogIsReadAsQTranslatorReadsIt_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("translation");
        const auto row = [](const char* tag, const QByteArray& file, const char* translation) {
            QTest::newRow(tag) << file << QString::fromLatin1(translation);
        };
        const QByteArray good = message(QStringLiteral("A"));
        row("plain", catalog({good}), "A");
        row("first of several", catalog({good, message(QStringLiteral("B"))}), "A");
        row("empty translation first", catalog({message(QString()), good}), "");
        row("text of a comment", catalog({message(QStringLiteral("B"), part(Comment, "c")), good}),
            "A");
        row("empty comment", catalog({message(QStringLiteral("A"), part(Comment, ""))}), "A");
        row("comment of a NUL",
            catalog({message(QStringLiteral("A"), part(Comment, QByteArray("\0", 1)))}), "A");
        row("text of a context", catalog({message(QStringLiteral("B"), part(Context, "c")), good}),
            "A");
        row("empty context", catalog({message(QStringLiteral("A"), part(Context, ""))}), "A");
        row("context of a NUL",
            catalog({message(QStringLiteral("A"), part(Context, QByteArray("\0", 1)))}), "A");
        row("without a source text",
            catalog({part(Translation, utf16(QStringLiteral("A"))) + char(EndOfMessage)}), "A");
        row("several forms",
            catalog(
                {part(Translation, utf16(QStringLiteral("A")))
                 + part(Translation, utf16(QStringLiteral("B"))) + char(EndOfMessage)}),
            "A");
        row("other source text",
            catalog(
                {part(Translation, utf16(QStringLiteral("B"))) + part(SourceText, "q")
                     + char(EndOfMessage),
                 good}),
            "A");
        row("list of contexts",
            catalog({good}, part(Contexts, QByteArray("\0\2\0\0\0\1\1c\0\0", 10))), "");
        row("language", catalog({good}, part(Language, "de")), "A");
        row("rules", catalog({good}, part(NumerusRules, "\1\1")), "A");
        row("end", catalog({good}, QByteArray(6, '\0')), "A");
        row("end and more",
            catalog({good}, QByteArray(5, '\0') + part(Messages, QByteArray(30, '\1'))), "A");
        row("part without content ends it",
            catalog({good}, part(NumerusRules, "") + part(Messages, QByteArray(30, '\1'))), "A");
        row("less than a part at the end", catalog({good}, "x"), "A");
        row("magic alone", magic(), "");
        row("nothing", QByteArray(), "not loaded");
        row("no magic", "{}", "not loaded");
        row("magic cut off", magic().left(15), "not loaded");
        row("part cut off", catalog({good}).chopped(1), "not loaded");
    }

    void catalogIsReadAsQTranslatorReadsIt()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, translation);

        QCOMPARE(translatedAsItIs(file), translation);
        QCOMPARE(translated(file), translation);
    }

    void damagedMessageIsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("damaged");
        const QByteArray text = utf16(QStringLiteral("B"));
        QTest::newRow("translation beyond the end")
            << QByteArray(char(Translation) + bigEndian(0x7fffff00) + text);
        QTest::newRow("translation of a negative length")
            << QByteArray(char(Translation) + bigEndian(0xffffffff) + text);
        QTest::newRow("source text beyond the end")
            << QByteArray(part(Translation, text) + char(SourceText) + bigEndian(0x10000000));
        QTest::newRow("unknown part") << QByteArray(part(Translation, text) + part(5, "1"));
        QTest::newRow("parts without end") << QByteArray(part(Translation, text).repeated(17));
    }

    void damagedMessageIsLeftOut()
    {
        QFETCH(QByteArray, damaged);

        QCOMPARE(
            translated(catalog({damaged + char(EndOfMessage), message(QStringLiteral("A"))})),
            QStringLiteral("A"));
    }

    void messageThatIsNowhereIsLeftOut()
    {
        const QByteArray hashes =
            bigEndian(HashOfA) + bigEndian(0x7fffffff) + bigEndian(HashOfA) + bigEndian(0) + "cut";
        const QByteArray file =
            magic() + part(Hashes, hashes) + part(Messages, message(QStringLiteral("A")));

        QCOMPARE(translated(file), QStringLiteral("A"));
    }

    void messageCutOffAtTheEndIsLeftOut()
    {
        const QByteArray whole = message(QStringLiteral("A"));
        for (int size = 0; size < whole.size(); ++size) {
            QCOMPARE(translated(catalog({whole.left(size)})), QString());
        }
    }

    // These cause a division by zero, and a list without an end.
    void listOfContextsIsNotSearched_data()
    {
        QTest::addColumn<QByteArray>("contexts");
        QTest::newRow("no slots") << QByteArray("\0\0", 2);
        QTest::newRow("slot beyond the end") << QByteArray("\xff\xff", 2);
        QTest::newRow("names without end") << QByteArray("\0\1\0\0\5c", 6);
    }

    void listOfContextsIsNotSearched()
    {
        QFETCH(QByteArray, contexts);

        QCOMPARE(
            translated(catalog({message(QStringLiteral("A"))}, part(Contexts, contexts))),
            QString());
    }

    void otherCatalogsAreNotLoaded()
    {
        // This is the name of an existing catalogue, and it could be the same one.
        const TranslationCatalog other(QStringLiteral("seasons-de"));
        const QString name = QStringLiteral("/usr/share/translations/seasons-de");
        const QByteArray encoded = utf16(name);
        const QByteArray dependencies = part(Dependencies, bigEndian(encoded.size()) + encoded);

        const QByteArray file = catalog({message(QStringLiteral("A"))}, dependencies);

        QCOMPARE(translated(file), QStringLiteral("A"));
        QCOMPARE(translated(file, "Autumn"), QString());
    }

    void messagesOfContextsHideNone()
    {
        QList<QByteArray> messages =
            QVector<QByteArray>(100, message(QStringLiteral("B"), part(Context, "c"))).toList();
        messages.append(message(QStringLiteral("A")));

        QCOMPARE(translated(catalog(messages)), QStringLiteral("A"));
    }

    void moreMessagesThanShareAHashAreLeftOut()
    {
        const QByteArray file = catalog(QVector<QByteArray>(100000, message(QString())).toList());

        QVERIFY(contextFreeCatalog(file).size() < file.size() - 99000 * 8);
    }

    void damageNeverLeadsAstray_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("German") << installedCatalog(QStringLiteral("seasons-de"));
        QTest::newRow("engineering English") << installedCatalog(QStringLiteral("seasons_eng_en"));
        QTest::newRow("all parts") << catalog(
            {message(QStringLiteral("A"), part(Comment, "c")), message(QStringLiteral("B"))},
            part(Contexts, QByteArray("\0\2\0\0\0\1\1c\0\0", 10)) + part(NumerusRules, "\1\1")
                + part(Dependencies, bigEndian(2) + utf16(QStringLiteral("x"))));
    }

    void damageNeverLeadsAstray()
    {
        QFETCH(QByteArray, file);
        QVERIFY(!file.isEmpty());

        for (int i = 0; i < file.size(); ++i) {
            translateAll(file.left(i));
            for (const int damage : {0, 1, 0x7f, 0x80, 0xff}) {
                QByteArray damaged = file;
                damaged[i] = char(damage);
                translateAll(damaged);
            }
        }
    }

private:
    /// The sanitizers report what goes wrong.
    static void translateAll(const QByteArray& file)
    {
        for (const char* source : {"", "a", "Autumn", "Winter", "Spring", "Summer"}) {
            const QString translation = translated(file, source);
            QVERIFY(translation == NotLoaded || 2 * translation.size() <= file.size());
        }
    }
};

QTEST_GUILESS_MAIN(ContextFreeCatalogTest)
#include "tst_contextfreecatalog.moc"
