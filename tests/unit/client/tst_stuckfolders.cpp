// SPDX-License-Identifier: BSD-3-Clause
#include "doctor/stuckfolders.h"

#include <QTest>

class StuckFoldersTest : public QObject
{
    Q_OBJECT

private:
    using Directory = LibraryReader::Directory;

    static Directory directory(qint64 id, qint64 parent, const char* path, int scope)
    {
        return {id, parent, QString::fromUtf8(path), scope};
    }

private Q_SLOTS:
    void aTreeAsTheDaemonKeepsItIsNotStuck()
    {
        const StuckFolders stuck = findStuckFolders(
            {directory(1, 0, "/p", Directory::AllEntries),
             directory(2, 1, "/p/a", Directory::AllEntries),
             directory(3, 2, "/p/a/b", Directory::AllEntries),
             directory(4, 0, "/usr/share/moodset", Directory::KnownEntries),
             directory(5, 0, "/usr/share/moodset/sea", Directory::RemovalsOnly),
             directory(6, 0, "/elsewhere", Directory::KnownEntries)});

        QVERIFY(stuck.unscanned.isEmpty());
        QCOMPARE(stuck.leftOver, QStringList());
    }

    void findsAFolderThatIsKnownOnItsOwn()
    {
        const StuckFolders stuck = findStuckFolders(
            {directory(1, 0, "/p", Directory::AllEntries),
             directory(2, 0, "/p/moved", Directory::KnownEntries)});

        QCOMPARE(stuck.unscanned.size(), 1);
        QCOMPARE(stuck.unscanned.at(0).parent, QStringLiteral("/p"));
        QCOMPARE(stuck.unscanned.at(0).folder, QStringLiteral("/p/moved"));
        QCOMPARE(stuck.leftOver, QStringList());
    }

    void findsWhatIsLeftOverOfATreeThatWent()
    {
        const StuckFolders stuck = findStuckFolders(
            {directory(1, 0, "/p", Directory::AllEntries),
             directory(4, 3, "/p/a/b/c", Directory::AllEntries)});

        QVERIFY(stuck.unscanned.isEmpty());
        QCOMPARE(stuck.leftOver, QStringList(QStringLiteral("/p/a/b/c")));
    }

    void findsThatWhatIsLeftOverStopsTheScanOfATreeThatCameBack()
    {
        const StuckFolders stuck = findStuckFolders(
            {directory(1, 0, "/p", Directory::AllEntries),
             directory(7, 1, "/p/a", Directory::AllEntries),
             directory(8, 7, "/p/a/b", Directory::AllEntries),
             directory(4, 3, "/p/a/b/c", Directory::AllEntries)});

        QCOMPARE(stuck.unscanned.size(), 1);
        QCOMPARE(stuck.unscanned.at(0).parent, QStringLiteral("/p/a/b"));
    }
};

QTEST_GUILESS_MAIN(StuckFoldersTest)

#include "tst_stuckfolders.moc"
