// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "leftoutnames.h"
#include "picturefile.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// Tests names and kinds of directory entries that are difficult for a daemon.
class HostileNamesTest : public QObject
{
    Q_OBJECT

private:
    const QSize m_size{3, 2};

    static void addNames()
    {
        QTest::addColumn<QString>("name");
        const auto row = [](const char* description, const QString& name) {
            QTest::newRow(description) << name;
        };
        const auto textRow = [&](const char* description, const char* name) {
            row(description, QString::fromUtf8(name));
        };
        textRow("quotes", "it's \"quoted\".png");
        textRow("a statement", "'); DROP TABLE file; --.png");
        textRow("a line break", "two\nlines.png");
        textRow("a line break at the end", "a.png\n");
        textRow("control characters", "\x01\t\x1b[31m\r\x7f.png");
        textRow("a star", "*.png");
        textRow("a question mark", "a?.png");
        textRow("brackets", "[a-z].png");
        textRow("percent signs", "%1%20%s%n.png");
        textRow("underscores", "_.png");
        textRow("a backslash", "a\\b\\.png");
        textRow("a hash", "a#b.png");
        textRow("spaces around", "  a.png  ");
        textRow("a space", " ");
        textRow("a dash", "-rf.png");
        textRow("a tilde", "~.png");
        textRow("dots at the end", "a.png..");
        textRow("a dollar", "$HOME`ls`.png");
        textRow("accents composed", "\xc3\xa9.png");
        textRow("accents decomposed", "e\xcc\x81.png");
        textRow("right to left", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d.png");
        textRow("an override of the direction", "\xe2\x80\xaegnp.exe.png");
        textRow("emoji", "\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x9a\x80.png");
        textRow("a byte order mark inside", "a\xef\xbb\xbf.png");
        textRow("a replacement character", "\xef\xbf\xbd.png");
        textRow("the last character", "\xf4\x8f\xbf\xbd.png");
        row("255 bytes", QString(251, QLatin1Char('a')) + QStringLiteral(".png"));
        row("255 bytes of many", QString::fromUtf8("\xe2\x82\xac").repeated(85));
        row("capitals", QStringLiteral("A.PNG"));
    }

    static bool makeLink(const QByteArray& target, const QString& path)
    {
        return ::symlink(target.constData(), QFile::encodeName(path).constData()) == 0;
    }

    static bool makeFifo(const QString& path)
    {
        return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
    }

    /// Makes a file whose name consists of any bytes, which Qt cannot do.
    static bool writeNamedByBytes(const QString& folder, const QByteArray& name, const QSize& size)
    {
        const QString picture = folder + QStringLiteral("/unnamed.png");
        return writePicture(picture, size)
            && ::rename(
                   QFile::encodeName(picture).constData(),
                   (QFile::encodeName(folder) + '/' + name).constData())
            == 0;
    }

private Q_SLOTS:
    void findsAFileOfAnyName_data() { addNames(); }

    void findsAFileOfAnyName()
    {
        QFETCH(QString, name);
        DaemonSession session;
        const QString picture = session.folders.picture(name);
        QVERIFY(writePicture(picture, m_size));

        QVERIFY(session.start());

        QCOMPARE(session.libraryFiles(), QStringList{picture});
        QVERIFY(session.restart());
        QCOMPARE(session.libraryFiles(), QStringList{picture});
    }

    void followsAFileOfAnyName_data() { addNames(); }

    void followsAFileOfAnyName()
    {
        QFETCH(QString, name);
        DaemonSession session;
        const QString picture = session.folders.picture(name);
        QVERIFY(session.start());

        QVERIFY(writePicture(picture, m_size));
        QVERIFY(session.waitUntilFollowed());
        QVERIFY(session.fileId(picture) > 0);
        QVERIFY(QFile::remove(picture));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void findsAndFollowsAFolderOfAnyName_data() { addNames(); }

    void findsAndFollowsAFolderOfAnyName()
    {
        QFETCH(QString, name);
        DaemonSession session;
        const QString folder = session.folders.picture(name);
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(writePicture(folder + QStringLiteral("/a.png"), m_size));
        QVERIFY(session.start());

        QVERIFY(writePicture(folder + QStringLiteral("/b.png"), m_size));
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.pictureSize(folder + QStringLiteral("/a.png")), m_size);
        QCOMPARE(session.pictureSize(folder + QStringLiteral("/b.png")), m_size);
    }

    void readsAPictureOfAnyName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("quotes") << QStringLiteral("it's \"quoted\".png");
        QTest::newRow("a line break") << QStringLiteral("two\nlines.png");
        QTest::newRow("glob characters") << QStringLiteral("[a-z]*?.png");
        QTest::newRow("percent signs") << QStringLiteral("%1%20.png");
        QTest::newRow("255 bytes") << QString(251, QLatin1Char('a')) + QStringLiteral(".png");
        QTest::newRow("capitals") << QStringLiteral("A.PNG");
    }

    void readsAPictureOfAnyName()
    {
        QFETCH(QString, name);
        DaemonSession session;
        const QString picture = session.folders.picture(name);
        QVERIFY(writePicture(picture, m_size));

        QVERIFY(session.start());

        QCOMPARE(session.pictureSize(picture), m_size);
    }

    void sortsNamesByTheirBytes()
    {
        // With any other order, the merge of rows and entries would insert or delete some twice.
        const QStringList names{
            QStringLiteral("A.png"),
            QStringLiteral("a.png"),
            QStringLiteral("a b.png"),
            QStringLiteral("a/b.png"),
            QStringLiteral("a-b.png"),
            QStringLiteral("a.b/c.png"),
            QString::fromUtf8("\xc3\xa9.png"),
            QString::fromUtf8("\xef\xbf\xbd.png"),
            QString::fromUtf8("\xf0\x9f\x98\x80.png"),
            QString::fromUtf8("\xef\xbd\xa1/a.png"),
            QString::fromUtf8("\xf0\x9f\x98\x80/a.png"),
            QStringLiteral("z.png")};
        DaemonSession session;
        for (const QString& name : names) {
            const QString picture = session.folders.picture(name);
            QVERIFY(QDir().mkpath(QFileInfo(picture).path()));
            QVERIFY(writePicture(picture, m_size));
        }
        QVERIFY(session.start());
        const LibraryDatabase::Rows rows =
            session.library().rows(QStringLiteral("SELECT id, fileName FROM file ORDER BY id"));
        QCOMPARE(rows.count(), names.count());

        QVERIFY(session.restart());

        QCOMPARE(
            session.library().rows(QStringLiteral("SELECT id, fileName FROM file ORDER BY id")),
            rows);
    }

    void leavesOutNamesThatAreNotUtf8_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("Latin-1") << QByteArray("\xe9t\xe9.png");
        QTest::newRow("no start of a character") << QByteArray("\x80.png");
        QTest::newRow("a character cut off") << QByteArray("a.png\xe2\x82");
        QTest::newRow("overlong") << QByteArray("\xc0\xaf.png");
        QTest::newRow("a surrogate") << QByteArray("\xed\xa0\x80.png");
        QTest::newRow("bytes never used") << QByteArray("\xff\xfe.png");
    }

    void leavesOutNamesThatAreNotUtf8()
    {
        QFETCH(QByteArray, name);
        DaemonSession session;
        QVERIFY(writeNamedByBytes(session.folders.pictures(), name, m_size));
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, m_size));

        QVERIFY(session.start());

        QCOMPARE(session.libraryFiles(), QStringList{picture});
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(undecodableWarning(
                QStringLiteral("bool FileManager::scanDirectory()"),
                QFile::encodeName(session.folders.pictures()) + '/' + name)));
    }

    void leavesOutArrivalsWhoseNamesAreNotUtf8()
    {
        DaemonSession session;
        QVERIFY(session.start());
        const QString picture = session.folders.picture(QStringLiteral("a.png"));

        // All of them arrive at once. As texts, the first two names would be equal.
        QVERIFY(session.daemon.pause());
        QStringList warnings;
        for (const char* const name : {"\xe9.png", "\xf6.png"}) {
            QVERIFY(writeNamedByBytes(session.folders.elsewhere(), name, m_size));
            const QByteArray arrival = QFile::encodeName(session.folders.pictures()) + '/' + name;
            QCOMPARE(
                ::rename(
                    (QFile::encodeName(session.folders.elsewhere()) + '/' + name).constData(),
                    arrival.constData()),
                0);
            warnings.append(
                undecodableWarning(QStringLiteral("bool FileManager::readEvent()"), arrival));
        }
        QVERIFY(writePicture(picture, m_size));
        session.daemon.resume();
        QVERIFY(session.waitUntilFollowed());

        QCOMPARE(session.pictureSize(picture), m_size);
        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(session.daemon.takeWarnings(), warnings);
    }

    void leavesOutNamesThatTheDatabaseWouldChange_data() { addUnstorableNames(); }

    void leavesOutNamesThatTheDatabaseWouldChange()
    {
        QFETCH(QString, name);
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.jpg"));
        const QString folder = session.folders.picture(QStringLiteral("folder"));
        const QStringList files{picture, folder + QStringLiteral("/a.jpg")};
        QVERIFY(QDir().mkpath(folder));
        for (const QString& file : files) {
            QVERIFY(writePicture(file, m_size));
        }
        const QString marked = session.folders.picture(name);
        QVERIFY(writePicture(marked, m_size));

        QVERIFY(session.start());
        QCOMPARE(session.libraryFiles(), files);
        QCOMPARE(session.pictureSize(picture), m_size);
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(
                unstorableWarning(QStringLiteral("bool FileManager::scanDirectory()"), marked)));

        const qint64 id = session.fileId(picture);
        QVERIFY(QFile::remove(marked));
        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(marked).toString()});
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.fileId(picture), id);

        QVERIFY(writePicture(marked, m_size));
        QVERIFY(session.waitUntilFollowed());
        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(marked).toString()});
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(
                {unstorableWarning(QStringLiteral("bool FileManager::readEvent()"), marked),
                 unstorableWarning(
                     QStringLiteral("qint64 FileManager::insertFile(const QString&)"), marked)}));
        QCOMPARE(session.fileId(picture), id);
        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void leavesOutLinksThatLoopOrLeadNowhere()
    {
        DaemonSession session;
        const QString folder = session.folders.picture(QStringLiteral("folder"));
        const QString picture = folder + QStringLiteral("/a.png");
        const QString linked = session.folders.picture(QStringLiteral("linked.png"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writePicture(picture, m_size));
        QVERIFY(makeLink("folder/a.png", linked));
        QVERIFY(makeLink(".", folder + QStringLiteral("/itself")));
        QVERIFY(makeLink("..", folder + QStringLiteral("/parent")));
        QVERIFY(makeLink("/", folder + QStringLiteral("/root")));
        QVERIFY(makeLink("loop.png", folder + QStringLiteral("/loop.png")));
        QVERIFY(makeLink("pong.png", folder + QStringLiteral("/ping.png")));
        QVERIFY(makeLink("ping.png", folder + QStringLiteral("/pong.png")));
        QVERIFY(makeLink("none.png", folder + QStringLiteral("/broken.png")));

        QVERIFY(session.start());

        const QStringList files{picture, linked};
        QCOMPARE(session.libraryFiles(), files);
        const QStringList directories{session.folders.pictures(), folder};
        QCOMPARE(session.libraryDirectories(), directories);
    }

    void takesArrivingLinksForFilesUntilTheNextStart()
    {
        DaemonSession session;
        QVERIFY(session.start());
        const QString loop = session.folders.picture(QStringLiteral("loop.png"));
        const QString parent = session.folders.picture(QStringLiteral("parent"));
        const QString broken = session.folders.picture(QStringLiteral("broken.png"));

        QVERIFY(makeLink("loop.png", loop));
        QVERIFY(makeLink("..", parent));
        QVERIFY(makeLink("none.png", broken));
        QVERIFY(session.waitUntilFollowed());
        for (const QString& link : {loop, parent, broken}) {
            QVERIFY(session.fileId(link) > 0);
        }
        QCOMPARE(session.libraryDirectories(), QStringList{session.folders.pictures()});

        QVERIFY(session.restart());
        for (const QString& link : {loop, parent, broken}) {
            QCOMPARE(session.fileId(link), 0);
        }
    }

    void leavesOutAFifoWithAPicturesName()
    {
        DaemonSession session;
        QVERIFY(makeFifo(session.folders.picture(QStringLiteral("fifo.jpg"))));

        QVERIFY(session.start());

        QCOMPARE(session.libraryFiles(), QStringList());
    }

    void doesNotOpenAnArrivingFifoWithAPicturesName()
    {
        DaemonSession session;
        const QString fifo = session.folders.picture(QStringLiteral("fifo.jpg"));
        QVERIFY(session.start());

        QVERIFY(makeFifo(fifo));
        QVERIFY(session.waitUntilFollowed());

        QVERIFY(BusClient::isAnswered());
        QCOMPARE(
            session.library().value(
                QStringLiteral("SELECT mimeType FROM file WHERE id = ?"), {session.fileId(fifo)}),
            QVariant(QStringLiteral("inode/fifo")));
    }

    void leavesOutHiddenFilesAndFolders()
    {
        DaemonSession session;
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral(".hidden"))));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral(".hidden/a.png")), m_size));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral(".a.png")), m_size));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), m_size));

        QVERIFY(session.start());

        QCOMPARE(
            session.libraryFiles(), QStringList{session.folders.picture(QStringLiteral("a.png"))});
        QCOMPARE(session.libraryDirectories(), QStringList{session.folders.pictures()});
    }
};

QTEST_GUILESS_MAIN(HostileNamesTest)

#include "tst_hostilenames.moc"
