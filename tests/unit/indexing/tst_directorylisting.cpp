// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/directorylisting.h"

#include "fewdescriptors.h"
#include "testfolder.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#include <algorithm>

namespace {

QStringList fileNames(const QString& path)
{
    QStringList names;
    const DirectoryListing listing = *listDirectory(path);
    for (const FileEntry& entry : listing.files) {
        names.append(entry.fileName);
    }
    return names;
}

QStringList directoryPaths(const QString& path)
{
    QStringList paths;
    const DirectoryListing listing = *listDirectory(path);
    for (const DirectoryEntry& entry : listing.directories) {
        paths.append(entry.path);
    }
    return paths;
}

/// Names in the order of their bytes. In UTF-16, the last two have the opposite order.
QStringList namesInOrder()
{
    return {QStringLiteral("B"),      QStringLiteral("a"),      QStringLiteral("a b"),
            QStringLiteral("a.b"),    QStringLiteral("ab"),     QStringLiteral("z"),
            QStringLiteral("\u00e4"), QStringLiteral("\uff5e"), QStringLiteral("\U0001f600")};
}

} // namespace

class DirectoryListingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfAFile();
    void tellsOfADirectory();
    void doesNotGoBelow();
    void sortsFilesByBytes();
    void sortsDirectoriesByBytes();
    void sortsAsTheDatabaseDoes();
    void leavesOutHiddenEntries();
    void leavesOutLinksToDirectories();
    void leavesOutBrokenLinks();
    void leavesOutFifos();
    void leavesOutNamesThatAreNotUtf8();
    void leavesNothingOpen();
    void namesThatAreNotUtf8AreListedByTheirBytes();
    void nothingIsListedWithoutADirectory();
    void linkToAFileIsAFileWithTheTimeOfItsTarget();
    void keepsOddNames_data();
    void keepsOddNames();
    void nothingIsKnownWithoutADescriptor();
    void missingDirectoryHoldsNothing();
    void fileHoldsNothing();
    void unreadableDirectoryHoldsNothing();
};

void DirectoryListingTest::tellsOfAFile()
{
    TestFolder folder;
    const QString name = QStringLiteral("pict\u00fcre.jpg");
    folder.write(name);

    const DirectoryListing listing = *listDirectory(folder.path());

    QCOMPARE(listing.directories.size(), 0);
    QCOMPARE(listing.files.size(), 1);
    const FileEntry& entry = listing.files.constFirst();
    QCOMPARE(entry.name, QByteArray("pict\xc3\xbcre.jpg"));
    QCOMPARE(entry.fileName, name);
    QCOMPARE(entry.path, folder.path(name));
    QVERIFY(entry.modified.isValid());
    QCOMPARE(entry.modified, QFileInfo(entry.path).lastModified());
}

void DirectoryListingTest::tellsOfADirectory()
{
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub.jpg"));

    const DirectoryListing listing = *listDirectory(folder.path());

    QCOMPARE(listing.files.size(), 0);
    QCOMPARE(listing.directories.size(), 1);
    QCOMPARE(listing.directories.constFirst().name, QByteArray("sub.jpg"));
    QCOMPARE(listing.directories.constFirst().path, folder.path(QStringLiteral("sub.jpg")));
}

void DirectoryListingTest::doesNotGoBelow()
{
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub/deeper"));
    folder.write(QStringLiteral("sub/file"));

    QCOMPARE(fileNames(folder.path()), QStringList());
    QCOMPARE(directoryPaths(folder.path()), QStringList(folder.path(QStringLiteral("sub"))));
}

void DirectoryListingTest::sortsFilesByBytes()
{
    TestFolder folder;
    for (const QString& name : namesInOrder()) {
        folder.write(name);
    }

    QCOMPARE(fileNames(folder.path()), namesInOrder());
}

void DirectoryListingTest::sortsDirectoriesByBytes()
{
    TestFolder folder;
    QStringList expected;
    for (const QString& name : namesInOrder()) {
        folder.makeDirectory(name);
        expected.append(folder.path(name));
    }

    QCOMPARE(directoryPaths(folder.path()), expected);
}

void DirectoryListingTest::sortsAsTheDatabaseDoes()
{
    TestFolder folder;
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(folder.path(QStringLiteral(".sqlite")));
    QVERIFY(database.open());
    QSqlQuery query(database);
    QVERIFY(query.exec(QStringLiteral("CREATE TABLE file (fileName TEXT);")));
    for (const QString& name : namesInOrder()) {
        folder.write(name);
        QVERIFY(query.prepare(QStringLiteral("INSERT INTO file VALUES (?);")));
        query.bindValue(0, name);
        QVERIFY(query.exec());
    }

    QStringList rows;
    QVERIFY(query.exec(QStringLiteral("SELECT fileName FROM file ORDER BY fileName ASC;")));
    while (query.next()) {
        rows.append(query.value(0).toString());
    }

    QCOMPARE(rows.size(), namesInOrder().size());
    QCOMPARE(fileNames(folder.path()), rows);
}

void DirectoryListingTest::leavesOutHiddenEntries()
{
    TestFolder folder;
    folder.write(QStringLiteral(".hidden.jpg"));
    folder.makeDirectory(QStringLiteral(".thumbnails"));
    folder.write(QStringLiteral("shown.jpg"));

    QCOMPARE(fileNames(folder.path()), QStringList(QStringLiteral("shown.jpg")));
    QCOMPARE(directoryPaths(folder.path()), QStringList());
}

void DirectoryListingTest::leavesOutLinksToDirectories()
{
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub"));
    folder.makeLink(QStringLiteral("link"), QStringLiteral("sub"));
    folder.makeLink(QStringLiteral("loop"), QStringLiteral("."));

    QCOMPARE(fileNames(folder.path()), QStringList());
    QCOMPARE(directoryPaths(folder.path()), QStringList(folder.path(QStringLiteral("sub"))));
}

void DirectoryListingTest::leavesOutBrokenLinks()
{
    TestFolder folder;
    folder.makeLink(QStringLiteral("broken.jpg"), QStringLiteral("nowhere.jpg"));
    folder.makeLink(QStringLiteral("self.jpg"), QStringLiteral("self.jpg"));
    folder.write(QStringLiteral("plain.jpg"));

    QCOMPARE(fileNames(folder.path()), QStringList(QStringLiteral("plain.jpg")));
    QCOMPARE(directoryPaths(folder.path()), QStringList());
}

void DirectoryListingTest::leavesOutFifos()
{
    TestFolder folder;
    folder.makeFifo(QStringLiteral("pipe.jpg"));
    folder.write(QStringLiteral("plain.jpg"));

    QCOMPARE(fileNames(folder.path()), QStringList(QStringLiteral("plain.jpg")));
}

void DirectoryListingTest::leavesOutNamesThatAreNotUtf8()
{
    TestFolder folder;
    folder.writeRawName("latin\xe4.jpg");
    folder.write(QStringLiteral("plain.jpg"));

    QCOMPARE(fileNames(folder.path()), QStringList(QStringLiteral("plain.jpg")));
}

void DirectoryListingTest::leavesNothingOpen()
{
    TestFolder folder;
    folder.writeRawName("latin\xe4.jpg");
    const auto descriptors = [] {
        return QDir(QStringLiteral("/proc/self/fd")).entryList().size();
    };
    const int before = descriptors();

    QCOMPARE(listUndecodable(folder.path()).size(), 1);
    listDirectory(folder.path());

    QCOMPARE(descriptors(), before);
}

void DirectoryListingTest::namesThatAreNotUtf8AreListedByTheirBytes()
{
    TestFolder folder;
    folder.writeRawName("latin\xe4.jpg");
    folder.makeRawDirectory("latin\xe4");
    folder.writeRawName(".hidden\xe4.jpg");
    folder.write(QStringLiteral("plain.jpg"));
    folder.write(QStringLiteral("\u00e4.jpg"));
    folder.write(QStringLiteral("\ufffd.jpg"));
    folder.write(QStringLiteral("\ufeffa.jpg"));

    QVector<UndecodableEntry> entries = listUndecodable(folder.path());

    std::sort(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
        return left.path < right.path;
    });
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.at(0).path, folder.rawPath("latin\xe4"));
    QVERIFY(entries.at(0).isDirectory && !entries.at(0).isFile);
    QCOMPARE(entries.at(1).path, folder.rawPath("latin\xe4.jpg"));
    QVERIFY(entries.at(1).isFile && !entries.at(1).isDirectory);
}

void DirectoryListingTest::nothingIsListedWithoutADirectory()
{
    TestFolder folder;

    QVERIFY(listUndecodable(folder.path(QStringLiteral("missing"))).isEmpty());
}

void DirectoryListingTest::linkToAFileIsAFileWithTheTimeOfItsTarget()
{
    TestFolder folder;
    const QDateTime time(QDate(2020, 2, 29), QTime(12, 30, 15, 250));
    folder.makeDirectory(QStringLiteral("elsewhere"));
    folder.write(QStringLiteral("elsewhere/target.jpg"));
    folder.setModified(QStringLiteral("elsewhere/target.jpg"), time);
    folder.makeLink(QStringLiteral("link.jpg"), QStringLiteral("elsewhere/target.jpg"));

    const DirectoryListing listing = *listDirectory(folder.path());

    QCOMPARE(listing.files.size(), 1);
    QCOMPARE(listing.files.constFirst().fileName, QStringLiteral("link.jpg"));
    QCOMPARE(listing.files.constFirst().path, folder.path(QStringLiteral("link.jpg")));
    QCOMPARE(listing.files.constFirst().modified, time);
}

void DirectoryListingTest::keepsOddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("single quote") << QStringLiteral("it's.jpg");
    QTest::newRow("double quotes") << QStringLiteral("\"quoted\".jpg");
    QTest::newRow("line break") << QStringLiteral("two\nlines.jpg");
    QTest::newRow("glob characters") << QStringLiteral("[a]*?{b}.jpg");
    QTest::newRow("percent signs") << QStringLiteral("%1%20%.jpg");
    QTest::newRow("backslash") << QStringLiteral("back\\slash.jpg");
    QTest::newRow("spaces around") << QStringLiteral(" a ");
    QTest::newRow("trailing dot") << QStringLiteral("a.");
    QTest::newRow("control character") << QStringLiteral("bell\a.jpg");
    QTest::newRow("255 bytes") << QString(251, QLatin1Char('x')) + QStringLiteral(".jpg");
    QTest::newRow("255 bytes of two-byte letters")
        << QString(125, QChar(0xe4)) + QStringLiteral("a.jpg");
    QTest::newRow("four-byte letters") << QStringLiteral("\U0001f4f7.jpg");
}

void DirectoryListingTest::keepsOddNames()
{
    QFETCH(QString, name);
    TestFolder folder;
    folder.write(name);

    const DirectoryListing listing = *listDirectory(folder.path());

    QCOMPARE(listing.files.size(), 1);
    QCOMPARE(listing.files.constFirst().name, name.toUtf8());
    QCOMPARE(listing.files.constFirst().fileName, name);
    QCOMPARE(listing.files.constFirst().path, folder.path(name));
}

void DirectoryListingTest::nothingIsKnownWithoutADescriptor()
{
    TestFolder folder;
    folder.write(QStringLiteral("file"));
    {
        const FewDescriptors none(0);

        QVERIFY(!listDirectory(folder.path()).has_value());
    }
    QVERIFY(listDirectory(folder.path()).has_value());
}

void DirectoryListingTest::missingDirectoryHoldsNothing()
{
    TestFolder folder;

    QCOMPARE(fileNames(folder.path(QStringLiteral("missing"))), QStringList());
    QCOMPARE(directoryPaths(folder.path(QStringLiteral("missing"))), QStringList());
}

void DirectoryListingTest::fileHoldsNothing()
{
    TestFolder folder;
    folder.write(QStringLiteral("file"));

    QCOMPARE(fileNames(folder.path(QStringLiteral("file"))), QStringList());
}

void DirectoryListingTest::unreadableDirectoryHoldsNothing()
{
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("locked/sub"));
    folder.write(QStringLiteral("locked/file"));
    folder.setMode(QStringLiteral("locked"), 0300);

    QCOMPARE(fileNames(folder.path(QStringLiteral("locked"))), QStringList());
    QCOMPARE(directoryPaths(folder.path(QStringLiteral("locked"))), QStringList());
    folder.setMode(QStringLiteral("locked"), 0700);
    QCOMPARE(fileNames(folder.path(QStringLiteral("locked"))), QStringList(QStringLiteral("file")));
}

QTEST_GUILESS_MAIN(DirectoryListingTest)

#include "tst_directorylisting.moc"
