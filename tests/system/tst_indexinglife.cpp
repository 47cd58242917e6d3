// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "picturefile.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <unistd.h>

/// Tests how the library follows changes in the pictures folder while the daemon runs.
///
/// If two steps must not be in the same reading of events, there is a waitUntilFollowed() between
/// them. If they must be, the daemon is paused meanwhile.
class IndexingLifeTest : public QObject
{
    Q_OBJECT

private:
    const QSize m_size{3, 2};

    static bool rename(const QString& from, const QString& to)
    {
        return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData())
            == 0;
    }

    static bool link(const QString& target, const QString& path)
    {
        return ::symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData())
            == 0;
    }

    /// Sets a modification time that no later file has.
    static bool makeOlder(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadWrite)
            && file.setFileTime(
                QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime);
    }

private Q_SLOTS:
    void entersFilesThatAreWritten()
    {
        DaemonSession session;
        QVERIFY(session.start());

        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        const QString text = session.folders.picture(QStringLiteral("a.txt"));
        QVERIFY(writePicture(picture, m_size, "jpg"));
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("text"), 4);
        file.close();
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(picture), m_size);
        const LibraryDatabase::Rows expected{
            {QStringLiteral("a.jpg"), QStringLiteral("image/jpeg"), 3},
            {QStringLiteral("a.txt"), QStringLiteral("text/plain"), 3}};
        QCOMPARE(
            session.library().rows(
                QStringLiteral("SELECT fileName, mimeType, permissions FROM file "
                               "WHERE fileName LIKE 'a.%' ORDER BY fileName")),
            expected);
    }

    void readsAFileThatIsWrittenAnewAgain()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, m_size));
        QVERIFY(session.start());
        const qint64 id = session.fileId(picture);

        QVERIFY(writePicture(picture, QSize(20, 10)));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.pictureSize(picture), QSize(20, 10));
        QCOMPARE(session.fileId(picture), id);
        const QDateTime modified =
            session.library()
                .value(QStringLiteral("SELECT modificationTime FROM file WHERE id = ?"), {id})
                .toDateTime();
        QCOMPARE(modified, QFileInfo(picture).lastModified());
    }

    void forgetsAFileThatIsDeleted()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, m_size));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("b.png")), m_size));
        QVERIFY(session.start());
        const qint64 id = session.fileId(picture);
        BusClient::call(
            QStringLiteral("saveAttributes"),
            {4, id, QVariantMap{{QStringLiteral("source"), QStringLiteral("http://host/")}}});

        QVERIFY(QFile::remove(picture));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        for (const auto& table : {QStringLiteral("image"), QStringLiteral("download")}) {
            const QString count =
                QStringLiteral("SELECT count(*) FROM %1 WHERE fileId = ?").arg(table);
            QCOMPARE(session.library().value(count, {id}).toInt(), 0);
        }
    }

    void entersARenamedFileAnew()
    {
        DaemonSession session;
        const QString before = session.folders.picture(QStringLiteral("before.png"));
        const QString after = session.folders.picture(QStringLiteral("after.png"));
        QVERIFY(writePicture(before, m_size));
        QVERIFY(session.start());
        const qint64 id = session.fileId(before);

        QVERIFY(rename(before, after));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(after), m_size);
        QVERIFY(session.fileId(after) != id);
    }

    void followsAFileFromFolderToFolder()
    {
        DaemonSession session;
        const QString before = session.folders.picture(QStringLiteral("from/a.png"));
        const QString after = session.folders.picture(QStringLiteral("to/a.png"));
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral("from"))));
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral("to"))));
        QVERIFY(writePicture(before, m_size));
        QVERIFY(session.start());

        QVERIFY(rename(before, after));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(after), m_size);
    }

    void forgetsAFileThatIsMovedAway()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, m_size));
        QVERIFY(session.start());

        QVERIFY(rename(picture, session.folders.elsewhere(QStringLiteral("a.png"))));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void leavesNothingOfAFileThatComesAndGoesAtOnce()
    {
        DaemonSession session;
        QVERIFY(session.start());

        QVERIFY(session.daemon.pause());
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), m_size));
        QVERIFY(QFile::remove(session.folders.picture(QStringLiteral("a.png"))));
        session.daemon.resume();
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void entersANewFolderWithAllThatIsInIt()
    {
        DaemonSession session;
        QVERIFY(session.start());
        const QString deep = session.folders.picture(QStringLiteral("new/deep"));

        QVERIFY(session.daemon.pause());
        QVERIFY(QDir().mkpath(deep));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("new/a.png")), m_size));
        QVERIFY(writePicture(deep + QStringLiteral("/b.png"), m_size));
        session.daemon.resume();
        QVERIFY(session.waitUntilFollowed());
        QVERIFY(session.waitUntilComplete());

        const QStringList directories{
            session.folders.pictures(), session.folders.picture(QStringLiteral("new")), deep};
        QCOMPARE(session.libraryDirectories(), directories);
        QVERIFY(writePicture(deep + QStringLiteral("/c.png"), m_size));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(deep + QStringLiteral("/c.png")), m_size);
    }

    void forgetsAFolderThatIsDeleted()
    {
        DaemonSession session;
        const QString folder = session.folders.picture(QStringLiteral("folder"));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/deep/deeper")));
        QVERIFY(writePicture(folder + QStringLiteral("/a.png"), m_size));
        QVERIFY(writePicture(folder + QStringLiteral("/deep/b.png"), m_size));
        QVERIFY(writePicture(folder + QStringLiteral("/deep/deeper/c.png"), m_size));
        QVERIFY(session.start());

        QVERIFY(QDir(folder).removeRecursively());
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryDirectories(), QStringList{session.folders.pictures()});
        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void entersAFolderOfADeletedOnesNameAgain()
    {
        DaemonSession session;
        const QString folder = session.folders.picture(QStringLiteral("folder"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writePicture(folder + QStringLiteral("/a.png"), m_size));
        QVERIFY(session.start());

        QVERIFY(QDir(folder).removeRecursively());
        QVERIFY(session.waitUntilFollowed());
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(session.waitUntilFollowed());
        QVERIFY(writePicture(folder + QStringLiteral("/b.png"), m_size));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(folder + QStringLiteral("/b.png")), m_size);
    }

    void losesARenamedFolderUntilTheNextStart()
    {
        DaemonSession session;
        const QString before = session.folders.picture(QStringLiteral("before"));
        const QString after = session.folders.picture(QStringLiteral("after"));
        QVERIFY(QDir().mkpath(before));
        QVERIFY(writePicture(before + QStringLiteral("/a.png"), m_size));
        QVERIFY(session.start());

        QVERIFY(rename(before, after));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryDirectories(), QStringList{session.folders.pictures()});
        QCOMPARE(session.libraryFiles().filter(QStringLiteral("a.png")), QStringList());
        QVERIFY(writePicture(after + QStringLiteral("/b.png"), m_size));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryFiles().filter(QStringLiteral("b.png")), QStringList());

        QVERIFY(session.restart());
        QCOMPARE(session.pictureSize(after + QStringLiteral("/a.png")), m_size);
        QCOMPARE(session.pictureSize(after + QStringLiteral("/b.png")), m_size);
    }

    void doesNotSeeAFolderThatIsMovedInUntilTheNextStart()
    {
        DaemonSession session;
        const QString folder = session.folders.picture(QStringLiteral("folder"));
        QVERIFY(QDir().mkpath(session.folders.elsewhere(QStringLiteral("folder"))));
        QVERIFY(writePicture(session.folders.elsewhere(QStringLiteral("folder/a.png")), m_size));
        QVERIFY(session.start());

        QVERIFY(rename(session.folders.elsewhere(QStringLiteral("folder")), folder));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryDirectories(), QStringList{session.folders.pictures()});

        QVERIFY(session.restart());
        QCOMPARE(session.pictureSize(folder + QStringLiteral("/a.png")), m_size);
    }

    void losesThePicturesFolderWhenItGoes()
    {
        DaemonSession session;
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), m_size));
        QVERIFY(session.start());

        QVERIFY(rename(session.folders.pictures(), session.folders.elsewhere(QStringLiteral("p"))));

        QTRY_COMPARE_WITH_TIMEOUT(
            session.libraryDirectories(), QStringList(), DaemonProcess::deadlineMs);
        QCOMPARE(session.libraryFiles(), QStringList());
        QVERIFY(BusClient::isAnswered());
        QVERIFY(rename(session.folders.elsewhere(QStringLiteral("p")), session.folders.pictures()));
        QVERIFY(session.restart());
        QCOMPARE(session.pictureSize(session.folders.picture(QStringLiteral("a.png"))), m_size);
    }

    void losesTheChangesReadWithAFileThatReplacesAnother_data()
    {
        QTest::addColumn<bool>("deletedFirst");
        QTest::newRow("moved onto it") << false;
        QTest::newRow("made after its deletion") << true;
    }

    void losesTheChangesReadWithAFileThatReplacesAnother()
    {
        QFETCH(bool, deletedFirst);
        DaemonSession session;
        const QString replaced = session.folders.picture(QStringLiteral("a.png"));
        const QString lost = session.folders.picture(QStringLiteral("lost.png"));
        QVERIFY(writePicture(replaced, m_size));
        QVERIFY(writePicture(session.folders.elsewhere(QStringLiteral("a.png")), QSize(5, 4)));
        QVERIFY(writePicture(session.folders.elsewhere(QStringLiteral("b.png")), m_size));
        QVERIFY(makeOlder(replaced));
        QVERIFY(session.start());

        QVERIFY(session.daemon.pause());
        if (deletedFirst) {
            QVERIFY(QFile::remove(replaced));
        }
        QVERIFY(rename(session.folders.elsewhere(QStringLiteral("a.png")), replaced));
        QVERIFY(rename(session.folders.elsewhere(QStringLiteral("b.png")), lost));
        session.daemon.resume();
        QVERIFY(session.daemon.waitForLine(DaemonSession::rowExistsWarnings().constLast()));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.daemon.takeWarnings(), DaemonSession::rowExistsWarnings());
        QCOMPARE(session.pictureSize(replaced), m_size);
        QCOMPARE(session.fileId(lost), 0);
        QVERIFY(session.restart());
        QCOMPARE(session.pictureSize(replaced), QSize(5, 4));
        QCOMPARE(session.pictureSize(lost), m_size);
    }

    void keepsAHiddenFileThatArrivesUntilTheNextStart()
    {
        DaemonSession session;
        const QString hidden = session.folders.picture(QStringLiteral(".hidden.png"));
        QVERIFY(session.start());

        QVERIFY(writePicture(hidden, m_size));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.pictureSize(hidden), m_size);

        QVERIFY(session.restart());
        QCOMPARE(session.fileId(hidden), 0);
    }

    void entersALinkThatArrivesUnderItsOwnName()
    {
        DaemonSession session;
        const QString target = session.folders.elsewhere(QStringLiteral("a.png"));
        const QString linked = session.folders.picture(QStringLiteral("link.png"));
        QVERIFY(writePicture(target, m_size));
        QVERIFY(session.start());

        QVERIFY(link(target, linked));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.pictureSize(linked), m_size);
        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void survivesFoldersThatVanishWhileTheyAreScanned()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.daemon.pause());
        const QDir pictures(session.folders.pictures());
        for (int number = 0; number < 50; ++number) {
            QVERIFY(pictures.mkpath(QStringLiteral("folder %1/deep").arg(number)));
        }
        for (int number = 0; number < 50; number += 2) {
            QVERIFY(QDir(pictures.filePath(QStringLiteral("folder %1").arg(number)))
                        .removeRecursively());
        }

        session.daemon.resume();
        QVERIFY(session.waitUntilFollowed());

        QVERIFY(BusClient::isAnswered());
        const QStringList warnings = session.daemon.takeWarnings();
        QCOMPARE(warnings.count(), 25);
        QCOMPARE(warnings.filter(QStringLiteral("Failed to add listener -1 \"")), warnings);
        QVERIFY(session.restart());
        QCOMPARE(session.libraryDirectories().count(), 1 + 2 * 25);
        QCOMPARE(
            session.libraryDirectories().filter(QRegularExpression(QStringLiteral("[02468](/|$)"))),
            QStringList());
    }
};

QTEST_GUILESS_MAIN(IndexingLifeTest)

#include "tst_indexinglife.moc"
