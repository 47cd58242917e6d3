// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"
#include "daemonprocess.h"
#include "dconfcommand.h"
#include "librarydatabase.h"
#include "picturefile.h"

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

void setKey(const char* key, const QString& value)
{
    runDconf(
        {QStringLiteral("write"), QLatin1String(key),
         QLatin1Char('\'') + value + QLatin1Char('\'')});
}

/// A theme in the store whose wallpapers are in a folder.
class StoredTheme
{
public:
    StoredTheme()
    {
        isReady = writePicture(path("home.png"), QSize(20, 20))
            && writePicture(path("app.png"), QSize(20, 20));
        setKey("/desktop/zavro/theme/active_moodset", path("coast.jpg"));
        setKey("/desktop/zavro/background/portrait/home_picture_filename", path("home.png"));
        setKey("/desktop/zavro/background/portrait/app_picture_filename", path("app.png"));
        for (const char* const name : {"highlight", "secondaryHighlight", "primary", "secondary"}) {
            setKey(
                qPrintable(QStringLiteral("/desktop/zavro/theme/color/") + QLatin1String(name)),
                QStringLiteral("#ff102030"));
        }
    }
    ~StoredTheme()
    {
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
    }
    Q_DISABLE_COPY_MOVE(StoredTheme)

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    bool isReady;

private:
    QTemporaryDir m_folder;
};

} // namespace

class MoodsetPreviewTest : public QObject
{
    Q_OBJECT

private:
    struct Result
    {
        int exitCode = -1;
        QString errors;
    };

    static Result run(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(MOODSET_PREVIEW_EXECUTABLE), arguments);
        Result result;
        if (process.waitForFinished(DaemonProcess::deadlineMs)
            && process.exitStatus() == QProcess::NormalExit) {
            result.exitCode = process.exitCode();
        }
        result.errors = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

private Q_SLOTS:
    void writesAPictureOfTheTheme()
    {
        const StoredTheme theme;
        QVERIFY(theme.isReady);

        const Result result = run({theme.path("preview")});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(QImage(theme.path("preview"), "PNG").size(), QSize(1344, 1216));
    }

    void showsTheMoodsetsName()
    {
        const StoredTheme theme;
        QVERIFY(theme.isReady);
        QCOMPARE(run({theme.path("file-name")}).exitCode, 0);
        ContentWriter writer(LibraryDatabase::standardPath());
        writer.addMoodset(theme.path("coast.jpg"));
        QCOMPARE(run({theme.path("no-name")}).exitCode, 0);
        writer.exec(QStringLiteral("UPDATE file SET displayName = 'Coast light'"));

        QCOMPARE(run({theme.path("name")}).exitCode, 0);

        QCOMPARE(QImage(theme.path("no-name")), QImage(theme.path("file-name")));
        QVERIFY(QImage(theme.path("name")) != QImage(theme.path("file-name")));
    }

    void saysThatNoMoodsetIsActive()
    {
        const QTemporaryDir folder;

        const Result result = run({folder.filePath(QStringLiteral("preview"))});

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errors, QStringLiteral("moodset-preview: no moodset is active\n"));
        QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("preview"))));
    }

    void saysThatAWallpaperCannotBeRead_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("home") << QByteArray("home.png");
        QTest::newRow("application") << QByteArray("app.png");
    }

    void saysThatAWallpaperCannotBeRead()
    {
        QFETCH(QByteArray, name);
        const StoredTheme theme;
        QVERIFY(theme.isReady);
        QVERIFY(QFile::remove(theme.path(name)));

        const Result result = run({theme.path("preview")});

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodset-preview: %1: cannot be read\n").arg(theme.path(name)));
    }

    void saysThatThePreviewCannotBeWritten()
    {
        const StoredTheme theme;
        QVERIFY(theme.isReady);

        const Result result = run({theme.path("none/preview")});

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodset-preview: %1: cannot be written\n")
                .arg(theme.path("none/preview")));
    }

    void needsOneFileName()
    {
        const Result result = run({});

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodset-preview: needs the name of one file to write\n"));
    }
};

QTEST_GUILESS_MAIN(MoodsetPreviewTest)

#include "tst_moodsetpreview.moc"
