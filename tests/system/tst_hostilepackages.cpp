// SPDX-License-Identifier: BSD-3-Clause
#include "catalogbuilder.h"
#include "themesession.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

namespace {

const QString Package = InstalledBundles::folder() + QStringLiteral("hostile/");

bool makeFifo(const QString& path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

/// A daemon with the directory of a package, which is still empty, and with a good bundle.
struct PackageSession : ThemeSession
{
    bool install()
    {
        return QDir().mkpath(Package)
            && writeBundle(QStringLiteral("z"), R"({"wallpaper": "w.png", "displayName": "z"})");
    }

    /// The display names of all moodsets, sorted.
    QStringList moodsets()
    {
        return column(QStringLiteral("SELECT displayName FROM file JOIN moodset ON id = fileId "
                                     "ORDER BY displayName"));
    }

    /// The names of the files of a directory of the package that have rows, sorted.
    QStringList files(const QString& folder)
    {
        return column(
            QStringLiteral("SELECT fileName FROM file JOIN directory ON directory.id = directoryId "
                           "WHERE path = '%1' ORDER BY fileName")
                .arg(Package + folder));
    }

private:
    QStringList column(const QString& statement)
    {
        QStringList values;
        const LibraryDatabase::Rows rows = library().rows(statement);
        for (const QVariantList& row : rows) {
            values.append(row.constFirst().toString());
        }
        return values;
    }
};

} // namespace

/// Tests packages with files that are difficult for a daemon. The daemon reads what is there at its
/// start again at each start.
class HostilePackagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linkToAFifoIsNotWaitedFor_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("moodset file") << QStringLiteral("a.moodset");
        QTest::newRow("index") << QStringLiteral("a.index");
    }

    void linkToAFifoIsNotWaitedFor()
    {
        QFETCH(QString, name);
        PackageSession session;
        QVERIFY(session.install());
        QVERIFY(QDir().mkdir(Package + QLatin1Char('a')));
        QVERIFY(makeFifo(Package + QStringLiteral("fifo")));
        QVERIFY(QFile::link(QStringLiteral("fifo"), Package + name));

        QVERIFY(session.startAtRest());

        QCOMPARE(session.moodsets(), QStringList(QStringLiteral("z")));
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void linkToAFileIsRead()
    {
        PackageSession session;
        QVERIFY(session.install());
        QVERIFY(ThemeSession::writePicture(Package + QStringLiteral("w.png")));
        QVERIFY(QFile::link(QStringLiteral("."), Package + QStringLiteral("images")));
        QVERIFY(InstalledBundles::write(
            Package + QStringLiteral("moodset"),
            R"({"wallpaper": "w.png", "displayName": "linked"})"));
        QVERIFY(QFile::link(QStringLiteral("moodset"), Package + QStringLiteral("a.moodset")));
        QVERIFY(InstalledBundles::write(Package + QStringLiteral("a/tone.ogg"), "tone"));
        QVERIFY(InstalledBundles::write(
            Package + QStringLiteral("index"), R"({"files": [{"fileName": "tone.ogg"}]})"));
        QVERIFY(QFile::link(QStringLiteral("index"), Package + QStringLiteral("a.index")));

        QVERIFY(session.startAtRest());

        QCOMPARE(session.moodsets(), QStringList({QStringLiteral("linked"), QStringLiteral("z")}));
        QCOMPARE(session.files(QStringLiteral("a")), QStringList(QStringLiteral("tone.ogg")));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void fifoThatAClientNamesIsNotWaitedFor()
    {
        ThemeSession session;
        const QString fifo = session.folders.elsewhere(QStringLiteral("x.moodset"));
        QVERIFY(makeFifo(fifo));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(fifo));
        QVERIFY(ThemeSession::create(fifo));

        QCOMPARE(ThemeSession::theme(), QStringList());
        const QString picture = session.folders.elsewhere(QStringLiteral("good.png"));
        QVERIFY(ThemeSession::writePicture(picture));
        QVERIFY(ThemeSession::set(picture));
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(picture));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void damagedCatalogLeavesTheName_data()
    {
        QTest::addColumn<QByteArray>("damage");
        // QTranslator divides by the number at their beginning.
        QTest::newRow("contexts") << CatalogBuilder::part(
            CatalogBuilder::Contexts, QByteArray("\0\0", 2));
        // QTranslator also loads the catalogues on which a catalogue depends, and so on.
        const QByteArray itself = CatalogBuilder::utf16(QStringLiteral("hostile-en"));
        QTest::newRow("itself") << CatalogBuilder::part(
            CatalogBuilder::Dependencies, QByteArray("\0\0\0\x14", 4) + itself);
    }

    void damagedCatalogLeavesTheName()
    {
        QFETCH(QByteArray, damage);
        PackageSession session;
        QVERIFY(session.install());
        QVERIFY(ThemeSession::writePicture(Package + QStringLiteral("w.png")));
        QVERIFY(QFile::link(QStringLiteral("."), Package + QStringLiteral("images")));
        QVERIFY(InstalledBundles::write(
            Package + QStringLiteral("a.moodset"),
            R"({"wallpaper": "w.png", "displayName": "b", "translationCatalog": "hostile"})"));
        QVERIFY(InstalledBundles::write(
            QStringLiteral("/usr/share/translations/hostile-en.qm"),
            CatalogBuilder::catalog({CatalogBuilder::message(QStringLiteral("A"))}, damage)));
        session.daemon.setEnvironment(QStringLiteral("LC_ALL"), QStringLiteral("en_US.UTF-8"));

        QVERIFY(session.startAtRest());

        QCOMPARE(session.moodsets(), QStringList({QStringLiteral("b"), QStringLiteral("z")}));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void nameThatTheDatabaseWouldChangeCostsItsRowAlone()
    {
        PackageSession session;
        QVERIFY(session.install());
        const QString marked = QString(QChar(0xfeff)) + QStringLiteral("a.ogg");
        QVERIFY(InstalledBundles::write(Package + QStringLiteral("a/") + marked, "tone"));
        QVERIFY(InstalledBundles::write(Package + QStringLiteral("a/a.ogg"), "tone"));
        QVERIFY(InstalledBundles::write(Package + QStringLiteral("a/b.ogg"), "tone"));
        QVERIFY(InstalledBundles::write(
            Package + QStringLiteral("a.index"),
            "{\"files\": [{\"fileName\": \"\xef\xbb\xbf"
            "a.ogg\"}, {\"fileName\": \"b.ogg\"}]}"));

        QVERIFY(session.startAtRest());

        QCOMPARE(session.files(QStringLiteral("a")), QStringList(QStringLiteral("b.ogg")));
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(QStringLiteral("virtual bool IndexManager::updateMetaData() "
                                       "Name cannot be stored \"\\uFEFFa.ogg\"")));
    }

    void halfASurrogatePairNamesNoFile()
    {
        PackageSession session;
        QVERIFY(session.install());
        QVERIFY(
            ThemeSession::writePicture(Package + QStringLiteral("images/?.png"))
            || (QDir().mkdir(Package + QStringLiteral("images"))
                && ThemeSession::writePicture(Package + QStringLiteral("images/?.png"))));
        const QString path = Package + QStringLiteral("a.moodset");
        QVERIFY(
            InstalledBundles::write(path, R"({"wallpaper": "\ud800.png", "displayName": "a"})"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QCOMPARE(session.moodsets(), QStringList(QStringLiteral("z")));
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }
};

QTEST_GUILESS_MAIN(HostilePackagesTest)

#include "tst_hostilepackages.moc"
