// SPDX-License-Identifier: BSD-3-Clause
#include "daemonprocess.h"
#include "librarydatabase.h"
#include "picturefile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

class MoodsetctlTest : public QObject
{
    Q_OBJECT

private:
    struct Result
    {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    static Result run(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(MOODSETCTL_EXECUTABLE), arguments);
        Result result;
        if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit) {
            result.exitCode = process.exitCode();
        }
        result.output = QString::fromUtf8(process.readAllStandardOutput());
        result.errors = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

private Q_SLOTS:
    void init()
    {
        QDir database = QFileInfo(LibraryDatabase::standardPath()).dir();
        QVERIFY(database.removeRecursively());
    }

    void saysThatTheDaemonIsNotRunning_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("watch") << QStringList(QStringLiteral("watch"));
        QTest::newRow("wait") << QStringList(QStringLiteral("wait"));
        QTest::newRow("photos, watched")
            << QStringList({QStringLiteral("photos"), QStringLiteral("--watch")});
        QTest::newRow("index") << QStringList(
            {QStringLiteral("index"), QStringLiteral(MOODSETCTL_EXECUTABLE)});
    }

    void saysThatTheDaemonIsNotRunning()
    {
        QFETCH(QStringList, arguments);

        const Result result = run(arguments);

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.output, QString());
        QCOMPARE(result.errors, QStringLiteral("moodsetctl: the daemon is not running\n"));
    }

    void waitsForPicturesAndShowsThemWithoutTheDaemon()
    {
        const QTemporaryDir folder;
        const int pictures = 250;
        for (int number = 0; number < pictures; ++number) {
            QVERIFY(writePicture(
                folder.filePath(QStringLiteral("%1.png").arg(number)), QSize(number + 1, 1)));
        }
        QVERIFY(DaemonProcess::setPicturesFolder(folder.path()));
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const Result result = run({QStringLiteral("wait"), QStringLiteral("--progress")});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const LibraryDatabase database;
        QCOMPARE(
            database.value(QStringLiteral("SELECT COUNT(*) FROM image WHERE height = 1")),
            QVariant(pictures));
        QVERIFY(daemon.terminate());

        const Result photos = run({QStringLiteral("photos")});

        QCOMPARE(photos.exitCode, 0);
        QVERIFY2(
            photos.output.endsWith(QStringLiteral("\n250 files, 250 pictures, 1 folder\n")),
            qPrintable(photos.output));
    }

    void indexTakesPathsAndUrls_data()
    {
        QTest::addColumn<bool>("asUrl");
        QTest::newRow("path") << false;
        QTest::newRow("url") << true;
    }

    void indexTakesPathsAndUrls()
    {
        QFETCH(bool, asUrl);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("100% #1?.png"));
        QVERIFY(writePicture(path, QSize(12, 34)));
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const QString argument =
            asUrl ? QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()) : path;
        const Result result = run({QStringLiteral("index"), argument});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const LibraryDatabase database;
        QCOMPARE(
            database.rows(
                QStringLiteral("SELECT width, height FROM image"
                               " JOIN file ON file.id = image.fileId"
                               " JOIN directory ON directory.id = file.directoryId"
                               " WHERE path = ? AND fileName = '100% #1?.png'"),
                {QVariant(folder.path())}),
            LibraryDatabase::Rows({{QVariant(12), QVariant(34)}}));
    }
};

QTEST_GUILESS_MAIN(MoodsetctlTest)

#include "tst_moodsetctl.moc"
