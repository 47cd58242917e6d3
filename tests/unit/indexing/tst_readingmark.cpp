// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/readingmark.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

/// Tests the mark on the picture that is being read. A process that was killed is an object that is
/// destroyed while its mark is set.
class ReadingMarkTest : public QObject
{
    Q_OBJECT

private:
    const QString m_picture = QStringLiteral("/home/u/Pictures/a.avif");
    const QString m_other = QStringLiteral("/home/u/Pictures/b.avif");

    void endProcessWhileReading(const QString& path, int count = 1) const
    {
        for (int i = 0; i < count; ++i) {
            ReadingMark(path).set(m_picture);
        }
    }

    static bool write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

private Q_SLOTS:
    void nothingIsDeadlyAtFirst()
    {
        const QTemporaryDir folder;
        const ReadingMark mark(folder.filePath(QStringLiteral("mark")));

        QVERIFY(!mark.isDeadly(m_picture));
    }

    void anotherKindOfFileIsNoMark()
    {
        const QTemporaryDir folder;
        const QString fifo = folder.filePath(QStringLiteral("fifo"));
        QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        for (const QString& path : {fifo, folder.path(), QStringLiteral("/dev/zero")}) {
            endProcessWhileReading(path, 2);

            QVERIFY(!ReadingMark(path).isDeadly(m_picture));
        }
    }

    void pictureIsDeadlyAfterTwoEnds_data()
    {
        QTest::addColumn<int>("ends");
        QTest::addColumn<bool>("isDeadly");
        QTest::newRow("one") << 1 << false;
        QTest::newRow("two") << 2 << true;
        QTest::newRow("three") << 3 << true;
    }

    void pictureIsDeadlyAfterTwoEnds()
    {
        QFETCH(int, ends);
        QFETCH(bool, isDeadly);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        endProcessWhileReading(path, ends);

        const ReadingMark mark(path);

        QCOMPARE(mark.isDeadly(m_picture), isDeadly);
        QVERIFY(!mark.isDeadly(m_other));
    }

    void picturesBeforeItChangeNothing()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        for (int i = 0; i < 2; ++i) {
            ReadingMark mark(path);
            mark.set(m_other);
            mark.set(m_picture);
        }

        QVERIFY(ReadingMark(path).isDeadly(m_picture));
    }

    void endWhileAnotherPictureIsReadForgetsIt()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        endProcessWhileReading(path);
        ReadingMark(path).set(m_other);
        endProcessWhileReading(path);

        QVERIFY(!ReadingMark(path).isDeadly(m_picture));
        QVERIFY(!ReadingMark(path).isDeadly(m_other));
    }

    void clearLeavesWhatWasKnown()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        endProcessWhileReading(path);
        {
            // The pictures of another batch are read first.
            ReadingMark mark(path);
            mark.set(m_other);
            mark.clear();
            mark.set(m_picture);
        }

        QVERIFY(ReadingMark(path).isDeadly(m_picture));
    }

    void pictureThatWasLeftOutIsForgotten()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        endProcessWhileReading(path, 2);
        ReadingMark mark(path);
        QVERIFY(mark.isDeadly(m_picture));

        mark.forget();
        mark.clear();

        QVERIFY(!mark.isDeadly(m_picture));
        QVERIFY(!ReadingMark(path).isDeadly(m_picture));
    }

    void processThatHasReadEverythingLeavesNothing()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        for (int i = 0; i < 3; ++i) {
            ReadingMark mark(path);
            mark.set(m_picture);
            mark.clear();
        }

        QVERIFY(!ReadingMark(path).isDeadly(m_picture));
    }

    void fileThatIsTooShortIsMadeAnew()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        QVERIFY(write(path, "short"));
        endProcessWhileReading(path, 2);

        QVERIFY(ReadingMark(path).isDeadly(m_picture));
    }

    void withoutAFileNothingIsKnown()
    {
        endProcessWhileReading(QString(), 2);

        QVERIFY(!ReadingMark(QString()).isDeadly(m_picture));
    }

    void fileIsInTheRuntimeDirectory()
    {
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", "/run/user/7");
        QCOMPARE(ReadingMark::userFile(), QStringLiteral("/run/user/7/moodsetd.reading"));
        qunsetenv("XDG_RUNTIME_DIR");
        QCOMPARE(ReadingMark::userFile(), QString());
        qputenv("XDG_RUNTIME_DIR", runtime);
    }

    void fileThatCannotBeMadeIsNoFailure()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("mark"));
        QVERIFY(QDir().mkpath(path));
        endProcessWhileReading(path, 2);

        QVERIFY(!ReadingMark(path).isDeadly(m_picture));
    }
};

QTEST_GUILESS_MAIN(ReadingMarkTest)

#include "tst_readingmark.moc"
