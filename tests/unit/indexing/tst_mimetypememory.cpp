// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/mimetypememory.h"

#include "messagelog.h"
#include "monotonicclock.h"
#include "testfolder.h"

#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

/// More than both the memory and Qt let pass before they look for changes of the installed types.
constexpr int PastCheckInterval = 6; // seconds

const QByteArray PngContent("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);

QString databaseName(const QString& path)
{
    return QMimeDatabase().mimeTypeForFile(QFileInfo(path), QMimeDatabase::MatchDefault).name();
}

/// The installed globs.
QStringList installedGlobs()
{
    QStringList globs;
    const QStringList paths = QStandardPaths::locateAll(
        QStandardPaths::GenericDataLocation, QStringLiteral("mime/globs2"));
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            if (!line.startsWith(QLatin1Char('#'))) {
                globs.append(line.section(QLatin1Char(':'), 2, 2));
            }
        }
    }
    globs.removeAll(QString());
    globs.removeDuplicates();
    return globs;
}

bool isPlainSuffix(const QString& glob)
{
    static const QRegularExpression plain(QStringLiteral("^\\*\\.[^*?\\[.]+$"));
    return plain.match(glob).hasMatch();
}

/// A name that the glob matches: a letter for "?" and "*", and the first of "[...]".
QString nameFor(QString glob)
{
    static const QRegularExpression characters(QStringLiteral("\\[(.)[^\\]]*\\]"));
    glob.replace(characters, QStringLiteral("\\1"));
    glob.replace(QLatin1Char('*'), QStringLiteral("w"));
    return glob.replace(QLatin1Char('?'), QLatin1Char('q'));
}

/// "aBcD"
QString mixedCase(const QString& text)
{
    QString result = text.toLower();
    for (int i = 1; i < result.size(); i += 2) {
        result[i] = result.at(i).toUpper();
    }
    return result;
}

QString userTypes()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/mime");
}

/// Makes a package of types of the user's own, not installed yet.
void writeUserPackage(const QByteArray& types)
{
    QVERIFY(QDir().mkpath(userTypes() + QStringLiteral("/packages")));
    QFile file(userTypes() + QStringLiteral("/packages/test.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n");
    file.write(types);
    file.write("</mime-info>\n");
}

void installUserPackages()
{
    QProcess process;
    process.start(QStringLiteral("update-mime-database"), {userTypes()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

/// A second type for names that end in ".jpg".
const QByteArray SecondJpgType = "<mime-type type=\"application/x-second\">"
                                 "<glob pattern=\"*.jpg\"/></mime-type>\n";

} // namespace

class MimeTypeMemoryTest : public QObject
{
    Q_OBJECT

    /// The names of files in the test directory for which the first, second or third answer of the
    /// memory differs from that of the database.
    QStringList disagreements(const QStringList& names);

    QScopedPointer<TestFolder> m_folder;
    QScopedPointer<MimeTypeMemory> m_memory;

private Q_SLOTS:
    void init();
    void cleanup();

    void remembersPictures();
    void remembersEachCaseOfASuffix();
    void doesNotRememberWhatNoSuffixDecides_data();
    void doesNotRememberWhatNoSuffixDecides();
    void agreesForEverySuffix_data();
    void agreesForEverySuffix();
    void nameWithATypeOfItsOwnIsNoExampleOfItsSuffix();
    void agreesForEveryOddGlob_data();
    void agreesForEveryOddGlob();
    void agreesForEachContentOfASharedSuffix();
    void agreesForOddNames_data();
    void agreesForOddNames();
    void agreesForOddFilesOfARememberedSuffix_data();
    void agreesForOddFilesOfARememberedSuffix();

    void secondTypeOfTheUserUndecidesASuffix();
    void secondTypeThatIsInstalledMeanwhileIsSeen();
    void removedUserTypesAreForgotten();
    void remembersAgainOnceAChangeHasSettled();
    void packageThatIsNotInstalledSuspendsTheMemory();
    void deletedGlobsSuspendTheMemory();
};

void MimeTypeMemoryTest::init()
{
    m_folder.reset(new TestFolder);
    m_memory.reset(new MimeTypeMemory);
}

void MimeTypeMemoryTest::cleanup()
{
    QDir types(userTypes());
    if (types.exists()) {
        QVERIFY(types.removeRecursively());
        // Qt's database stays in the process, and forgets the types of the tests now. This comes
        // after the tests with types of their own, because Qt Test's time limit uses this clock,
        // too.
        MonotonicClock::advance(PastCheckInterval);
    }
}

QStringList MimeTypeMemoryTest::disagreements(const QStringList& names)
{
    QStringList result;
    for (const QString& name : names) {
        const QString path = m_folder->path(name);
        const QString expected = databaseName(path);
        for (int i = 0; i < 3; ++i) {
            const QString actual = m_memory->typeName(QFileInfo(path));
            if (actual != expected) {
                result.append(QStringLiteral("%1: %2, not %3").arg(name, actual, expected));
            }
        }
    }
    return result;
}

void MimeTypeMemoryTest::remembersPictures()
{
    MessageLog log;
    const QStringList suffixes{QStringLiteral("gif"),  QStringLiteral("jpeg"),
                               QStringLiteral("jpg"),  QStringLiteral("png"),
                               QStringLiteral("tiff"), QStringLiteral("webp")};
    for (const QString& suffix : suffixes) {
        m_folder->write(QStringLiteral("a.") + suffix);
        m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("a.") + suffix)));
    }

    QStringList remembered = m_memory->rememberedSuffixes();
    remembered.sort();
    QCOMPARE(remembered, suffixes);
}

void MimeTypeMemoryTest::remembersEachCaseOfASuffix()
{
    MessageLog log;
    m_folder->write(QStringLiteral("a.jpg"));
    m_folder->write(QStringLiteral("a.JPG"));
    m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("a.jpg"))));
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("jpg")));

    m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("a.JPG"))));

    QStringList remembered = m_memory->rememberedSuffixes();
    remembered.sort();
    QCOMPARE(remembered, (QStringList{QStringLiteral("JPG"), QStringLiteral("jpg")}));
}

void MimeTypeMemoryTest::doesNotRememberWhatNoSuffixDecides_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no suffix") << QStringLiteral("jpg");
    QTest::newRow("nothing but a suffix") << QStringLiteral(".jpg");
    QTest::newRow("unknown suffix") << QStringLiteral("a.unknown-suffix");
    QTest::newRow("empty suffix") << QStringLiteral("a.");
    QTest::newRow("two types by case") << QStringLiteral("a.c");
    QTest::newRow("part of a longer suffix") << QStringLiteral("a.gz");
    QTest::newRow("name of another glob") << QStringLiteral("readme.jpg");
}

void MimeTypeMemoryTest::doesNotRememberWhatNoSuffixDecides()
{
    QFETCH(QString, name);
    MessageLog log;
    m_folder->write(name);

    m_memory->typeName(QFileInfo(m_folder->path(name)));

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
    m_folder->write(QStringLiteral("b.png"));
    m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("b.png"))));
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("png")));
}

void MimeTypeMemoryTest::agreesForEverySuffix_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("text\n");
    QTest::newRow("PNG") << PngContent;
    QTest::newRow("nothing") << QByteArray();
}

void MimeTypeMemoryTest::agreesForEverySuffix()
{
    QFETCH(QByteArray, content);
    MessageLog log;
    QStringList names;
    const QStringList globs = installedGlobs();
    for (const QString& glob : globs) {
        if (isPlainSuffix(glob)) {
            const QString suffix = glob.mid(2);
            for (const QString& form :
                 {suffix, suffix.toLower(), suffix.toUpper(), mixedCase(suffix)}) {
                names.append(QStringLiteral("file.") + form);
            }
        }
    }
    names.removeDuplicates();
    for (const QString& name : qAsConst(names)) {
        m_folder->write(name, content);
    }

    QVERIFY2(names.size() > 1000, qPrintable(QString::number(names.size())));
    QCOMPARE(disagreements(names), QStringList());
    QVERIFY(m_memory->rememberedSuffixes().size() > 1000);
}

void MimeTypeMemoryTest::nameWithATypeOfItsOwnIsNoExampleOfItsSuffix()
{
    MessageLog log;
    writeUserPackage(
        "<mime-type type=\"text/x-list\"><glob pattern=\"*.mine\"/></mime-type>\n"
        "<mime-type type=\"text/x-main\"><glob pattern=\"mainlist.mine\"/></mime-type>\n");
    installUserPackages();
    MonotonicClock::advance(PastCheckInterval);
    const QStringList names{
        QStringLiteral("a.mine"), QStringLiteral("MainList.mine"), QStringLiteral("mainlist.mine"),
        QStringLiteral("b.mine")};
    for (const QString& name : names) {
        m_folder->write(name, "text\n");
    }

    QCOMPARE(disagreements(names), QStringList());

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("mine")));
    QCOMPARE(
        m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("MainList.mine")))),
        QStringLiteral("text/x-main"));
}

void MimeTypeMemoryTest::agreesForEveryOddGlob_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("as it is") << QString();
    QTest::newRow("remembered suffix") << QStringLiteral(".jpg");
    QTest::newRow("remembered suffix in upper case") << QStringLiteral(".PNG");
    QTest::newRow("backup of a remembered suffix") << QStringLiteral(".jpg~");
}

void MimeTypeMemoryTest::agreesForEveryOddGlob()
{
    QFETCH(QString, ending);
    MessageLog log;
    QStringList names{QStringLiteral("first.jpg"), QStringLiteral("first.PNG")};
    const QStringList globs = installedGlobs();
    for (const QString& glob : globs) {
        if (!isPlainSuffix(glob)) {
            const QString name = nameFor(glob);
            for (const QString& form : {name, name.toLower(), name.toUpper(), mixedCase(name)}) {
                names.append(form + ending);
            }
        }
    }
    names.removeDuplicates();
    for (const QString& name : qAsConst(names)) {
        m_folder->write(name);
    }

    QVERIFY2(names.size() > 50, qPrintable(QString::number(names.size())));
    QCOMPARE(disagreements(names), QStringList());
}

void MimeTypeMemoryTest::agreesForEachContentOfASharedSuffix()
{
    MessageLog log;
    const auto stream = [](const QByteArray& codec) {
        return QByteArray("OggS\0\2", 6) + QByteArray(22, '\0') + codec + QByteArray(100, '\0');
    };
    const QMap<QString, QByteArray> contents{
        {QStringLiteral("vorbis"), stream("\1vorbis")},
        {QStringLiteral("flac"), stream("\177FLAC")},
        {QStringLiteral("speex"), stream("Speex  ")},
        {QStringLiteral("theora"), stream("\200theora")},
        {QStringLiteral("other"), stream("other")},
        {QStringLiteral("png"), PngContent},
        {QStringLiteral("text"), "text\n"},
        {QStringLiteral("empty"), QByteArray()}};
    QStringList names;
    QSet<QString> types;
    for (auto content = contents.cbegin(); content != contents.cend(); ++content) {
        for (const auto& ending :
             {QStringLiteral(".ogg"), QStringLiteral("2.ogg"), QStringLiteral(".OGG"),
              QStringLiteral(".ogv")}) {
            names.append(content.key() + ending);
            m_folder->write(names.constLast(), *content);
        }
        types.insert(databaseName(m_folder->path(content.key() + QStringLiteral(".ogg"))));
    }
    names.append(QStringLiteral("unreadable.ogg"));
    m_folder->write(names.constLast(), contents.value(QStringLiteral("vorbis")));
    m_folder->setMode(names.constLast(), 0);

    QCOMPARE(disagreements(names), QStringList());

    QVERIFY2(types.size() > 4, qPrintable(QStringList(types.values()).join(QLatin1Char(' '))));
}

void MimeTypeMemoryTest::agreesForOddNames_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names{
        QStringLiteral("readme.jpg"),
        QStringLiteral("README.jpg"),
        QStringLiteral("makefile.png"),
        QStringLiteral("Makefile.png"),
        QStringLiteral("a.so.1.jpg"),
        QStringLiteral("x.jpg~"),
        QStringLiteral("123.vdr"),
        QStringLiteral("photo.tar.gz"),
        QStringLiteral(".jpg"),
        QStringLiteral("jpg"),
        QStringLiteral("a."),
        QStringLiteral("a..jpg"),
        QStringLiteral("..jpg"),
        QStringLiteral(".PNG"),
        QStringLiteral("."),
        QStringLiteral("a.jpg.jpg"),
        QStringLiteral("a.png.jpg"),
        QStringLiteral("a.jpg "),
        QStringLiteral("two\nlines.jpg"),
        QStringLiteral("readme\n.jpg"),
        QStringLiteral("[a]*?.jpg"),
        QStringLiteral("it's \"quoted\".jpg"),
        QStringLiteral("\u00e4.jpg"),
        QStringLiteral("a.jp\u0261"),
        QStringLiteral("a.j\u0440g"),
        QStringLiteral("a.\u0130"),
        QStringLiteral("core"),
        QStringLiteral("core.jpg"),
        QStringLiteral("001.vdr.jpg"),
        QStringLiteral("a.moodset"),
        QString(251, QLatin1Char('x')) + QStringLiteral(".jpg")};
    for (const QString& name : names) {
        QTest::newRow(name.toUtf8().constData()) << name;
    }
}

void MimeTypeMemoryTest::agreesForOddNames()
{
    QFETCH(QString, name);
    MessageLog log;
    const QStringList names{QStringLiteral("first.jpg"), QStringLiteral("first.png"), name};
    for (const QString& each : names) {
        if (each != QLatin1String(".")) {
            m_folder->write(each);
        }
    }

    QCOMPARE(disagreements(names), QStringList());
}

void MimeTypeMemoryTest::agreesForOddFilesOfARememberedSuffix_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind :
         {"empty", "of other content", "a directory", "a link to a directory", "a link to a file",
          "a link to a file of another suffix", "a broken link", "a FIFO", "missing",
          "unreadable"}) {
        QTest::newRow(kind) << QString::fromLatin1(kind);
    }
}

void MimeTypeMemoryTest::agreesForOddFilesOfARememberedSuffix()
{
    QFETCH(QString, kind);
    MessageLog log;
    const QString first = QStringLiteral("first.jpg");
    const QString odd = QStringLiteral("odd.jpg");
    m_folder->write(first);
    m_folder->write(QStringLiteral("text.txt"));
    m_folder->makeDirectory(QStringLiteral("directory"));
    if (kind == QLatin1String("empty")) {
        m_folder->write(odd, QByteArray());
    } else if (kind == QLatin1String("of other content")) {
        m_folder->write(odd, PngContent);
    } else if (kind == QLatin1String("a directory")) {
        m_folder->makeDirectory(odd);
    } else if (kind == QLatin1String("a link to a directory")) {
        m_folder->makeLink(odd, QStringLiteral("directory"));
    } else if (kind == QLatin1String("a link to a file")) {
        m_folder->makeLink(odd, first);
    } else if (kind == QLatin1String("a link to a file of another suffix")) {
        m_folder->makeLink(odd, QStringLiteral("text.txt"));
    } else if (kind == QLatin1String("a broken link")) {
        m_folder->makeLink(odd, QStringLiteral("nowhere"));
    } else if (kind == QLatin1String("a FIFO")) {
        m_folder->makeFifo(odd);
    } else if (kind == QLatin1String("unreadable")) {
        m_folder->write(odd, PngContent);
        m_folder->setMode(odd, 0);
    } else {
        QCOMPARE(kind, QStringLiteral("missing"));
    }

    QCOMPARE(disagreements({first, odd}), QStringList());
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("jpg")));
}

void MimeTypeMemoryTest::secondTypeOfTheUserUndecidesASuffix()
{
    MessageLog log;
    writeUserPackage(SecondJpgType);
    installUserPackages();
    // Qt's database has read the types for earlier tests.
    MonotonicClock::advance(PastCheckInterval);
    m_folder->write(QStringLiteral("a.jpg"), PngContent);
    m_folder->write(QStringLiteral("b.png"), PngContent);

    QCOMPARE(disagreements({QStringLiteral("a.jpg"), QStringLiteral("b.png")}), QStringList());

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("png")));
    // Two globs match, so the content decides.
    QVERIFY(databaseName(m_folder->path(QStringLiteral("a.jpg"))) != QLatin1String("image/jpeg"));
}

void MimeTypeMemoryTest::secondTypeThatIsInstalledMeanwhileIsSeen()
{
    MessageLog log;
    m_folder->write(QStringLiteral("a.jpg"), PngContent);
    QCOMPARE(disagreements({QStringLiteral("a.jpg")}), QStringList());
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("jpg")));

    writeUserPackage(SecondJpgType);
    installUserPackages();
    MonotonicClock::advance(PastCheckInterval);

    QCOMPARE(disagreements({QStringLiteral("a.jpg")}), QStringList());
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
    QVERIFY(databaseName(m_folder->path(QStringLiteral("a.jpg"))) != QLatin1String("image/jpeg"));
}

void MimeTypeMemoryTest::removedUserTypesAreForgotten()
{
    MessageLog log;
    writeUserPackage("<mime-type type=\"image/x-mine\"><glob pattern=\"*.mine\"/></mime-type>\n");
    installUserPackages();
    m_folder->write(QStringLiteral("a.mine"));
    QCOMPARE(
        m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("a.mine")))),
        QStringLiteral("image/x-mine"));
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("mine")));

    QVERIFY(QDir(userTypes()).removeRecursively());
    MonotonicClock::advance(PastCheckInterval);

    QCOMPARE(disagreements({QStringLiteral("a.mine")}), QStringList());
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
}

void MimeTypeMemoryTest::remembersAgainOnceAChangeHasSettled()
{
    MessageLog log;
    m_folder->write(QStringLiteral("a.png"));
    const QFileInfo picture(m_folder->path(QStringLiteral("a.png")));
    m_memory->typeName(picture);
    writeUserPackage(SecondJpgType);
    installUserPackages();

    // Qt's database may not have seen the change yet.
    MonotonicClock::advance(PastCheckInterval);
    m_memory->typeName(picture);
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
    MonotonicClock::advance(PastCheckInterval);
    m_memory->typeName(picture);

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("png")));
}

void MimeTypeMemoryTest::packageThatIsNotInstalledSuspendsTheMemory()
{
    MessageLog log;
    m_folder->write(QStringLiteral("a.jpg"), PngContent);
    m_folder->write(QStringLiteral("b.png"));
    m_memory->typeName(QFileInfo(m_folder->path(QStringLiteral("b.png"))));
    QCOMPARE(m_memory->rememberedSuffixes(), QStringList(QStringLiteral("png")));
    writeUserPackage(SecondJpgType);
    MonotonicClock::advance(PastCheckInterval);

    QCOMPARE(disagreements({QStringLiteral("a.jpg"), QStringLiteral("b.png")}), QStringList());

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
}

void MimeTypeMemoryTest::deletedGlobsSuspendTheMemory()
{
    MessageLog log;
    writeUserPackage("<mime-type type=\"image/jpeg\"><glob-deleteall/>"
                     "<glob pattern=\"*.mine\"/></mime-type>\n");
    installUserPackages();
    m_folder->write(QStringLiteral("a.jpg"), PngContent);
    m_folder->write(QStringLiteral("b.png"));
    m_folder->write(QStringLiteral("c.mine"));

    QCOMPARE(
        disagreements({QStringLiteral("a.jpg"), QStringLiteral("b.png"), QStringLiteral("c.mine")}),
        QStringList());

    QCOMPARE(m_memory->rememberedSuffixes(), QStringList());
}

QTEST_GUILESS_MAIN(MimeTypeMemoryTest)

#include "tst_mimetypememory.moc"
