// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"
#include "idlewait.h"
#include "moodsetservice.h"

#include <QDBusConnection>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

/// Plays the daemon's object on the bus, which is registered a moment after the name.
class PlayedObject : public QObject
{
    Q_OBJECT
};

} // namespace

class IdleWaitTest : public QObject
{
    Q_OBJECT

private:
    static QDBusConnection bus() { return QDBusConnection::sessionBus(); }

    bool showObject()
    {
        return bus().registerObject(
            QStringLiteral("/com/zavro/moodsetd"), &m_object, QDBusConnection::ExportAllSlots);
    }

    static void append(const QString& path, const char* text)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Append));
        file.write(text);
    }

    PlayedObject m_object;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ContentWriter> m_writer;
    std::unique_ptr<LibraryReader> m_library;
    /// How long to wait. After a failure, the time is shorter, so that other tests with the same
    /// fault fail soon.
    int m_deadlineMs = 10000;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        const QString path = m_folder->filePath(QStringLiteral("moodsetd.sqlite"));
        m_writer = std::make_unique<ContentWriter>(path);
        m_writer->addPhoto(QStringLiteral("/a/1.jpg"));
        m_library = std::make_unique<LibraryReader>(path);
        QVERIFY(m_library->open());
        QVERIFY(bus().registerService(QStringLiteral("com.zavro.moodsetd")));
        QVERIFY(showObject());
    }

    void cleanup()
    {
        bus().unregisterObject(QStringLiteral("/com/zavro/moodsetd"));
        bus().unregisterService(QStringLiteral("com.zavro.moodsetd"));
        m_library.reset();
        m_writer.reset();
        if (QTest::currentTestFailed()) {
            m_deadlineMs = 3000;
        }
    }

    void tenQuietLooksAreIdle()
    {
        MoodsetService service;
        IdleWait wait(service, *m_library);
        QSignalSpy looks(&wait, &IdleWait::progress);
        QSignalSpy idle(&wait, &IdleWait::idle);

        wait.start();

        QVERIFY(idle.wait(m_deadlineMs));
        // There is nothing with which the first look can be compared.
        QCOMPARE(looks.count(), 11);
    }

    void aWriteStartsTheCountAnew()
    {
        MoodsetService service;
        IdleWait wait(service, *m_library);
        int looks = 0;
        connect(&wait, &IdleWait::progress, this, [&](const LibraryReader::Counts&) {
            if (++looks == 6) {
                m_writer->addPhoto(QStringLiteral("/a/2.jpg"));
            }
        });
        QSignalSpy idle(&wait, &IdleWait::idle);

        wait.start();

        QVERIFY(idle.wait(m_deadlineMs));
        // At its end, the sixth look sees what was written during its callback.
        QCOMPARE(looks, 16);
    }

    void isNotIdleWhileAPictureWaits()
    {
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 0"));
        MoodsetService service;
        IdleWait wait(service, *m_library);
        int looks = 0;
        connect(&wait, &IdleWait::progress, this, [&](const LibraryReader::Counts& counts) {
            QCOMPARE(counts.waitingPhotos, looks < 15 ? 1 : 0);
            if (++looks == 15) {
                m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 1"));
            }
        });
        QSignalSpy idle(&wait, &IdleWait::idle);

        wait.start();

        QVERIFY(idle.wait(m_deadlineMs));
        QVERIFY2(looks >= 25, qPrintable(QString::number(looks)));
    }

    void asksAgainUntilTheObjectIsThere()
    {
        bus().unregisterObject(QStringLiteral("/com/zavro/moodsetd"));
        MoodsetService service;
        QSignalSpy alive(&service, &MoodsetService::alive);

        service.ask();

        QVERIFY(!alive.wait(300));
        QVERIFY(showObject());
        QVERIFY(alive.wait(m_deadlineMs));
        QCOMPARE(alive.count(), 1);
    }

    void readsLogLinesThatComeInPieces()
    {
        const QString path = m_folder->filePath(QStringLiteral("log"));
        append(path, "debug: InstallManager idle in 3\ndebug: FileMan");
        MoodsetService service;
        IdleWait wait(service, *m_library);
        QVERIFY(wait.setLog(path));
        int looks = 0;
        connect(&wait, &IdleWait::progress, this, [&](const LibraryReader::Counts&) {
            ++looks;
            if (looks == 3) {
                append(path, "ager idle in 4");
            } else if (looks == 5) {
                append(path, "\n");
            }
        });
        QSignalSpy idle(&wait, &IdleWait::idle);

        wait.start();

        QVERIFY(idle.wait(m_deadlineMs));
        QCOMPARE(looks, 5);
    }

    void isNotIdleWhileAPictureWaitsThoughTheLogSaysSo()
    {
        const QString path = m_folder->filePath(QStringLiteral("log"));
        append(path, "debug: InstallManager idle in 3\ndebug: FileManager idle in 4\n");
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 0"));
        MoodsetService service;
        IdleWait wait(service, *m_library);
        QVERIFY(wait.setLog(path));
        int looks = 0;
        connect(&wait, &IdleWait::progress, this, [&](const LibraryReader::Counts&) {
            if (++looks == 3) {
                m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 1"));
            }
        });
        QSignalSpy idle(&wait, &IdleWait::idle);

        wait.start();

        QVERIFY(idle.wait(m_deadlineMs));
        QCOMPARE(looks, 4);
    }

    void aLogThatCannotBeReadIsRefused()
    {
        MoodsetService service;
        IdleWait wait(service, *m_library);

        QVERIFY(!wait.setLog(m_folder->filePath(QStringLiteral("none"))));
    }
};

QTEST_GUILESS_MAIN(IdleWaitTest)

#include "tst_idlewait.moc"
