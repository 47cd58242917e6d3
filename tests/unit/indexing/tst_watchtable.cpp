// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/watchtable.h"

#include "indexing/inotifyrecord.h"
#include "testfolder.h"

#include <QTest>

#include <sys/inotify.h>
#include <unistd.h>

/// Tests the table with real watches of the kernel.
class WatchTableTest : public QObject
{
    Q_OBJECT

private:
    int m_descriptor = -1;

    /// The number of watches of the kernel that report a new file in the directory.
    int reports(TestFolder& folder)
    {
        folder.write(QStringLiteral("new"), QByteArray());
        folder.remove(QStringLiteral("new"));
        return readInotifyRecords(m_descriptor).size();
    }

private Q_SLOTS:
    void init() { m_descriptor = inotify_init(); }
    void cleanup() { close(m_descriptor); }

    void watchedDirectoryIsFoundByItsWatchAndItsPath()
    {
        TestFolder folder;
        WatchTable table(m_descriptor);

        const int watch = table.add(folder.path(), 7, IN_CREATE);

        QVERIFY(watch >= 0);
        QVERIFY(table.contains(folder.path()));
        QCOMPARE(table.directory(watch).path, folder.path() + QLatin1Char('/'));
        QCOMPARE(table.directory(watch).id, qint64(7));
        QCOMPARE(reports(folder), 1);
    }

    void unknownWatchHasNoPath()
    {
        const WatchTable table(m_descriptor);

        QVERIFY(table.directory(-1).path.isEmpty());
        QCOMPARE(table.directory(-1).id, qint64(0));
    }

    void directoryThatCannotBeWatchedIsNotInTheTable()
    {
        TestFolder folder;
        WatchTable table(m_descriptor);
        WatchTable without(-1);

        QVERIFY(table.add(folder.path(QStringLiteral("missing")), 7, IN_CREATE) < 0);
        QVERIFY(!table.contains(folder.path(QStringLiteral("missing"))));
        QVERIFY(without.add(folder.path(), 7, IN_CREATE) < 0);
        QVERIFY(!without.contains(folder.path()));
    }

    void laterPathTakesTheWatchOfTheDirectory()
    {
        TestFolder folder;
        folder.makeDirectory(QStringLiteral("sub"));
        const QString other = folder.path(QStringLiteral("sub/.."));
        WatchTable table(m_descriptor);
        const int watch = table.add(folder.path(), 7, IN_CREATE);

        QCOMPARE(table.add(other, 8, IN_CREATE), watch);

        QVERIFY(!table.contains(folder.path()));
        QVERIFY(table.contains(other));
        QCOMPARE(table.directory(watch).id, qint64(8));
    }

    void removedWatchIsGone_data()
    {
        QTest::addColumn<bool>("byPath");
        QTest::newRow("by its number") << false;
        QTest::newRow("by its path") << true;
    }

    void removedWatchIsGone()
    {
        QFETCH(bool, byPath);
        TestFolder folder;
        TestFolder other;
        WatchTable table(m_descriptor);
        const int watch = table.add(folder.path(), 7, IN_CREATE);
        table.add(other.path(), 8, IN_CREATE);

        if (byPath) {
            table.remove(folder.path());
        } else {
            table.remove(watch);
        }

        QVERIFY(!table.contains(folder.path()));
        QVERIFY(table.directory(watch).path.isEmpty());
        QVERIFY(table.contains(other.path()));
        // The kernel reports the end of the watch.
        QCOMPARE(readInotifyRecords(m_descriptor).size(), 1);
        QCOMPARE(reports(folder), 0);
        QCOMPARE(reports(other), 1);
    }

    void removingWhatIsNotWatchedChangesNothing()
    {
        TestFolder folder;
        WatchTable table(m_descriptor);
        table.add(folder.path(), 7, IN_CREATE);

        table.remove(folder.path(QStringLiteral("missing")));

        QCOMPARE(reports(folder), 1);
    }

    void clearingRemovesAllWatches()
    {
        TestFolder folder;
        TestFolder other;
        WatchTable table(m_descriptor);
        table.add(folder.path(), 7, IN_CREATE);
        table.add(other.path(), 8, IN_CREATE);

        table.clear();

        QVERIFY(!table.contains(folder.path()));
        QVERIFY(!table.contains(other.path()));
        QCOMPARE(readInotifyRecords(m_descriptor).size(), 2);
        QCOMPARE(reports(folder), 0);
        QCOMPARE(reports(other), 0);
    }
};

QTEST_GUILESS_MAIN(WatchTableTest)

#include "tst_watchtable.moc"
