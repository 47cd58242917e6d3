// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlibrary.h"

#include "contentwriter.h"

#include <QFile>
#include <QTest>
#include <QUrl>

#include <memory>
#include <queryagentdatabase.h>
#include <thread>

/// A database in the daemon's directory. Each reading has a thread of its own, because a connection
/// belongs to a thread.
class MoodsetLibraryTest : public QObject
{
    Q_OBJECT

private:
    template <typename Look>
    static void inThread(Look look)
    {
        std::thread([&look] {
            MoodsetLibrary library;
            look(library);
        }).join();
    }

    static QStringList names(const QVector<Moodset>& moodsets)
    {
        QStringList names;
        for (const Moodset& moodset : moodsets) {
            names.append(moodset->displayName);
        }
        return names;
    }

    qint64 addMoodset(const char* path, const char* name, bool favorite = false)
    {
        const qint64 id = m_writer->addMoodset(
            QString::fromLatin1(path), {{QStringLiteral("favorite"), favorite}});
        m_writer->exec(
            QStringLiteral("UPDATE file SET displayName = ? WHERE id = ?"),
            {QString::fromLatin1(name), id});
        return id;
    }

    std::unique_ptr<ContentWriter> m_writer;

private Q_SLOTS:
    void init() { m_writer = std::make_unique<ContentWriter>(QueryAgentDatabase::filePath()); }

    void cleanup()
    {
        m_writer.reset();
        QVERIFY(QFile::remove(QueryAgentDatabase::filePath()));
    }

    void listsFavoritesFirst()
    {
        addMoodset("/a/plain.moodset", "Plain");
        addMoodset("/a/favorite.moodset", "Favorite", true);

        QStringList listed;
        QString error;
        inThread([&](MoodsetLibrary& library) {
            listed = names(library.moodsets());
            error = library.error();
        });

        QCOMPARE(error, QString());
        QCOMPARE(listed, QStringList({QStringLiteral("Favorite"), QStringLiteral("Plain")}));
    }

    void findsByNameAndId()
    {
        const qint64 first = addMoodset("/a/1.moodset", "Twin");
        addMoodset("/a/2.moodset", "Twin");
        // This name is the id of another moodset.
        addMoodset("/a/3.moodset", QByteArray::number(first).constData());

        int twins = 0;
        QStringList byId;
        int unknown = -1;
        inThread([&](MoodsetLibrary& library) {
            twins = library.find(QStringLiteral("Twin")).size();
            byId = names(library.find(QString::number(first)));
            unknown = library.find(QStringLiteral("twin")).size();
        });

        QCOMPARE(twins, 2);
        QCOMPARE(byId, QStringList(QStringLiteral("Twin")));
        QCOMPARE(unknown, 0);
    }

    void readsOneByUrlAndId()
    {
        const qint64 id = addMoodset("/a/1.moodset", "One");
        const qint64 file = m_writer->addFile(QStringLiteral("/a/words.txt"));

        QStringList found;
        bool isFileFound = true;
        QString error;
        inThread([&](MoodsetLibrary& library) {
            found = names(
                {library.moodset(id),
                 library.moodset(QUrl(QStringLiteral("file:///a/1.moodset")))});
            isFileFound = library.moodset(file);
            error = library.error();
        });

        QCOMPARE(found, QStringList({QStringLiteral("One"), QStringLiteral("One")}));
        QCOMPARE(isFileFound, false);
        QCOMPARE(error, QString());
    }

    void reportsAFailureInOneLine()
    {
        m_writer->exec(QStringLiteral("DROP TABLE moodset"));

        int count = -1;
        QString error;
        inThread([&](MoodsetLibrary& library) {
            count = library.moodsets().size();
            error = library.error();
        });

        QCOMPARE(count, 0);
        QVERIFY2(
            error.startsWith(QStringLiteral("cannot read the moodsets: "))
                && error.contains(QStringLiteral("no such table: moodset")),
            qPrintable(error));
    }

    void reportsAFailureToReadOne()
    {
        m_writer->exec(QStringLiteral("DROP TABLE moodset"));

        QString error;
        inThread([&](MoodsetLibrary& library) {
            library.moodset(1);
            error = library.error();
        });

        QVERIFY2(
            error.startsWith(QStringLiteral("cannot read the moodsets: "))
                && error.contains(QStringLiteral("no such table: moodset")),
            qPrintable(error));
    }

    void reportsAMissingDatabase()
    {
        const QString path = QueryAgentDatabase::filePath();
        QVERIFY(QFile::rename(path, path + QStringLiteral(".away")));

        QString error;
        inThread([&error](MoodsetLibrary& library) {
            library.moodsets();
            error = library.error();
        });

        QVERIFY(QFile::rename(path + QStringLiteral(".away"), path));
        QCOMPARE(
            error,
            QString(
                QStringLiteral("there is no database at ") + path
                + QStringLiteral("; to have the daemon make it: moodsetctl wait")));
    }
};

QTEST_GUILESS_MAIN(MoodsetLibraryTest)

#include "tst_moodsetlibrary.moc"
