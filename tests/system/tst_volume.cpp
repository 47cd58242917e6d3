// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "picturefile.h"

#include <QDir>
#include <QTest>

/// Tests many files and many directories at once.
class VolumeTest : public QObject
{
    Q_OBJECT

private:
    static int count(DaemonSession& session, const QString& table)
    {
        return session.library()
            .value(QStringLiteral("SELECT count(*) FROM %1").arg(table))
            .toInt();
    }

    static QString name(int number) { return QStringLiteral("%1.png").arg(number); }

    /// Pictures of one size, beside the pictures folder.
    static bool writePicturesElsewhere(const UserFolders& folders, int pictureCount)
    {
        bool written = writePicture(folders.elsewhere(name(0)), QSize(3, 2));
        for (int number = 1; number < pictureCount; ++number) {
            written =
                written && QFile::copy(folders.elsewhere(name(0)), folders.elsewhere(name(number)));
        }
        return written;
    }

private Q_SLOTS:
    void enters1000FilesMovedInAtOnce()
    {
        constexpr int pictures = 1000;
        DaemonSession session;
        QVERIFY(writePicturesElsewhere(session.folders, pictures));
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        for (int number = 0; number < pictures; ++number) {
            QVERIFY(QFile::rename(
                session.folders.elsewhere(name(number)), session.folders.picture(name(number))));
        }
        QVERIFY(session.waitUntilComplete());

        QCOMPARE(count(session, QStringLiteral("image WHERE width = 3")), pictures);
        QVERIFY(session.forgetAnnouncements());
    }

    void enters1000FilesThatWaitInOneReading()
    {
        constexpr int pictures = 1000;
        DaemonSession session;
        QVERIFY(writePicturesElsewhere(session.folders, pictures));
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        QVERIFY(session.daemon.pause());
        for (int number = 0; number < pictures; ++number) {
            QVERIFY(QFile::rename(
                session.folders.elsewhere(name(number)), session.folders.picture(name(number))));
        }
        session.daemon.resume();
        QVERIFY(session.waitUntilComplete());

        QCOMPARE(count(session, QStringLiteral("image WHERE width = 3")), pictures);
    }

    void forgets1000FilesMovedOutAtOnce()
    {
        constexpr int pictures = 1000;
        DaemonSession session;
        QVERIFY(writePicturesElsewhere(session.folders, pictures));
        QVERIFY(QDir().rmdir(session.folders.pictures()));
        QVERIFY(QDir().rename(session.folders.elsewhere(), session.folders.pictures()));
        QVERIFY(QDir().mkpath(session.folders.elsewhere()));
        QVERIFY(session.start());
        QCOMPARE(count(session, QStringLiteral("image")), pictures);

        for (int number = 0; number < pictures; ++number) {
            QVERIFY(QFile::rename(
                session.folders.picture(name(number)), session.folders.elsewhere(name(number))));
        }
        QVERIFY(session.waitUntilComplete());

        QCOMPARE(count(session, QStringLiteral("file")), 0);
        QCOMPARE(count(session, QStringLiteral("image")), 0);
    }

    void finds1500Folders()
    {
        constexpr int folders = 1500;
        DaemonSession session;
        QVERIFY(writePicture(session.folders.elsewhere(name(0)), QSize(3, 2)));
        const QDir pictures(session.folders.pictures());
        for (int number = 0; number < folders; ++number) {
            const QString folder =
                QStringLiteral("%1/%2/%3").arg(number % 10).arg(number / 10 % 10).arg(number / 100);
            QVERIFY(pictures.mkpath(folder));
            QVERIFY(QFile::copy(
                session.folders.elsewhere(name(0)),
                pictures.filePath(folder + QLatin1Char('/') + name(number))));
        }

        QVERIFY(session.start());

        QCOMPARE(count(session, QStringLiteral("image WHERE width = 3")), folders);
        QCOMPARE(session.libraryDirectories().count(), 1 + 10 + 100 + folders);
        QVERIFY(QFile::remove(pictures.filePath(QStringLiteral("9/9/14/1499.png"))));
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryFiles(), session.diskFiles());
    }

    void follows1500FoldersMadeWhileItRuns()
    {
        constexpr int folders = 1500;
        DaemonSession session;
        QVERIFY(writePicturesElsewhere(session.folders, folders));
        QVERIFY(session.start());

        const QDir pictures(session.folders.pictures());
        for (int number = 0; number < folders; ++number) {
            QVERIFY(pictures.mkdir(QString::number(number)));
        }
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.libraryDirectories().count(), 1 + folders);
        for (int number = 0; number < folders; ++number) {
            QVERIFY(QFile::rename(
                session.folders.elsewhere(name(number)),
                pictures.filePath(QString::number(number) + QLatin1Char('/') + name(number))));
        }
        QVERIFY(session.waitUntilComplete());

        QCOMPARE(count(session, QStringLiteral("image WHERE width = 3")), folders);
    }

    void findsAFolder200LevelsDeep()
    {
        constexpr int levels = 200;
        DaemonSession session;
        QString folder = session.folders.pictures();
        for (int level = 0; level < levels; ++level) {
            folder += QStringLiteral("/level");
        }
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writePicture(folder + QStringLiteral("/a.png"), QSize(3, 2)));

        QVERIFY(session.start());

        QCOMPARE(session.pictureSize(folder + QStringLiteral("/a.png")), QSize(3, 2));
        QCOMPARE(session.libraryDirectories().count(), 1 + levels);
    }
};

QTEST_GUILESS_MAIN(VolumeTest)

#include "tst_volume.moc"
