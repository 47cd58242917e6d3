// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"
#include "filewait.h"
#include "moodsetservice.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTest>

#include <libraryreader.h>

#include <memory>
#include <thread>

class FileWaitTest : public QObject
{
    Q_OBJECT

private:
    /// Plays the daemon, as far as its name on the bus is concerned.
    static bool appear()
    {
        return QDBusConnection::sessionBus().registerService(QStringLiteral("com.zavro.moodsetd"));
    }

    QString libraryPath() const { return m_folder->filePath(QStringLiteral("moodsetd.sqlite")); }

    Outcome wait(int timeoutMs) const
    {
        LibraryReader library(libraryPath());
        return library.open() ? waitForFile(m_service, library, m_path, timeoutMs)
                              : Outcome::failed(library.error());
    }

    const QString m_path = QStringLiteral("/a/1.jpg");
    const QString m_markAsRead = QStringLiteral("UPDATE file SET metadataCurrent = 1");
    const MoodsetService m_service;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ContentWriter> m_writer;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_writer = std::make_unique<ContentWriter>(libraryPath());
        m_writer->addPhoto(m_path);
        m_writer->exec(QStringLiteral("UPDATE file SET metadataCurrent = 0"));
    }

    void cleanup()
    {
        m_writer.reset();
        QDBusConnection::sessionBus().unregisterService(QStringLiteral("com.zavro.moodsetd"));
    }

    void endsWhenTheFileIsRead()
    {
        constexpr int timeoutMs = 60000;
        QVERIFY(appear());
        std::thread reading([this] { ContentWriter(libraryPath()).exec(m_markAsRead); });

        const Outcome outcome = wait(timeoutMs);

        reading.join();
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.status, ExitStatus::Done);
    }

    void needsNoDaemonForAFileThatIsRead()
    {
        m_writer->exec(m_markAsRead);

        QCOMPARE(wait(0).error, QString());
    }

    void givesUpAfterItsTime()
    {
        QVERIFY(appear());

        const Outcome outcome = wait(1);

        QCOMPARE(outcome.error, QStringLiteral("the daemon has not read it in time"));
        QCOMPARE(outcome.status, ExitStatus::TimedOut);
    }

    void givesUpWithoutADaemon()
    {
        constexpr int timeoutMs = 60000;

        QCOMPARE(wait(timeoutMs).error, QStringLiteral("the daemon has ended"));
    }

    void givesUpAFileThatIsNotInTheLibrary()
    {
        m_writer->exec(QStringLiteral("DELETE FROM file"));
        QVERIFY(appear());

        QCOMPARE(wait(0).error, QStringLiteral("the daemon has not taken it in"));
    }
};

QTEST_GUILESS_MAIN(FileWaitTest)

#include "tst_filewait.moc"
