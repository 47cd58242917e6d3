// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "librarydatabase.h"
#include "picturefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTest>
#include <QTransform>

#include <cstdlib>

/// Tests every command of the real moodsetctl with the real daemon, which the bus starts.
class ClientTest : public QObject
{
    Q_OBJECT

private:
    using Result = ClientSession::Result;

    static Result run(std::initializer_list<const char*> words, const QString& last = {})
    {
        QStringList arguments;
        for (const char* const word : words) {
            arguments.append(QString::fromUtf8(word));
        }
        if (!last.isEmpty()) {
            arguments.append(last);
        }
        return ClientSession::runJson(arguments);
    }

    static QJsonObject highlightOf(const QString& name)
    {
        return run({"show"}, name)
            .result()
            .value(QLatin1String("moodset"))
            .toObject()
            .value(QLatin1String("colors"))
            .toObject();
    }

    /// Changes the daemon's database; false if this fails.
    static bool writeToLibrary(const QString& statement)
    {
        const QString name = QStringLiteral("writer");
        bool isDone = false;
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            database.setDatabaseName(LibraryDatabase::standardPath());
            isDone = database.open() && QSqlQuery(database).exec(statement);
        }
        QSqlDatabase::removeDatabase(name);
        return isDone;
    }

    /// The state of one of the things that doctor checks.
    static QJsonObject checkup(const char* id)
    {
        const QJsonArray checkups =
            run({"doctor"}).result().value(QLatin1String("checkups")).toArray();
        for (const QJsonValue& value : checkups) {
            if (value.toObject().value(QLatin1String("id")) == QLatin1String(id)) {
                return value.toObject();
            }
        }
        return {};
    }

    /// Whether two colours are the same, except for what JPEG changes.
    static bool isClose(const QColor& one, const QColor& other)
    {
        constexpr int most = 4;
        return std::abs(one.red() - other.red()) <= most
            && std::abs(one.green() - other.green()) <= most
            && std::abs(one.blue() - other.blue()) <= most;
    }

    static QString stateOf(const char* id)
    {
        return checkup(id).value(QLatin1String("state")).toString();
    }

private Q_SLOTS:
    void findsPreviewsAppliesEditsAndUndoes()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("autumn-walk")));
        QCOMPARE(run({"status"}).result().value(QLatin1String("active")), QJsonValue());
        QCOMPARE(run({"wait"}).exitCode, 0);

        const QJsonArray moodsets =
            run({"moodsets"}).result().value(QLatin1String("moodsets")).toArray();
        QCOMPARE(moodsets.size(), 2);
        const QString file = session.folders.elsewhere(QStringLiteral("p.png"));
        QCOMPARE(run({"preview", "Coast light", "-o"}, file).exitCode, 0);
        QCOMPARE(QImage(file).size(), QSize(1344, 1216));
        QCOMPARE(run({"set", "Autumn walk"}).exitCode, 0);
        QCOMPARE(run({"set", "Coast light"}).exitCode, 0);
        QVERIFY(run({"theme"}).output.contains(QLatin1String("coast-light.moodset\"")));

        const QJsonValue before =
            highlightOf(QStringLiteral("Coast light")).value(QLatin1String("highlight"));
        QCOMPARE(run({"edit", "Coast light", "highlight=tomato", "chatTone=on"}).exitCode, 0);
        QCOMPARE(
            highlightOf(QStringLiteral("Coast light")).value(QLatin1String("highlight")),
            QJsonValue(QStringLiteral("#ffff6347")));
        QCOMPARE(
            UserStore::value(QStringLiteral("/desktop/zavro/theme/color/highlight")),
            QStringLiteral("'#ffff6347'"));
        QCOMPARE(run({"undo"}).exitCode, 0);
        QCOMPARE(
            highlightOf(QStringLiteral("Coast light")).value(QLatin1String("highlight")), before);
        QCOMPARE(run({"set", "Autumn walk"}).exitCode, 0);
        QCOMPARE(
            ClientSession::run({QStringLiteral("undo")}).output,
            QStringLiteral("Undone: Coast light is active.\n"));
        QVERIFY(run({"theme"}).output.contains(QLatin1String("coast-light.moodset\"")));
        const QJsonObject status = run({"status"}).result();
        QCOMPARE(
            status.value(QLatin1String("active")).toObject().value(QLatin1String("name")),
            QJsonValue(QStringLiteral("Coast light")));
        QCOMPARE(
            status.value(QLatin1String("daemon")).toObject().value(QLatin1String("version")),
            QJsonValue(QStringLiteral(MOODSETD_VERSION)));
    }

    void previewTurnsAWallpaperThatIsOnItsSide()
    {
        ClientSession session;
        QImage upright(60, 80, QImage::Format_RGB32);
        upright.fill(Qt::blue);
        QPainter(&upright).fillRect(0, 0, 60, 40, Qt::red);
        constexpr int turnedRight = 6;
        const QByteArray exif = "Exif" + QByteArray(2, '\0')
            + ExifBuilder().number(ExifBuilder::Orientation, turnedRight).block();
        QByteArray content = encodedPicture(upright.transformed(QTransform().rotate(-90)), "jpeg");
        const int length = exif.size() + 2;
        content.insert(2, QByteArray("\xff\xe1") + char(length / 256) + char(length % 256) + exif);
        const QString wallpaper = session.folders.elsewhere(QStringLiteral("home.jpg"));
        QVERIFY(InstalledBundles::write(wallpaper, content));
        for (const char* const key :
             {"background/portrait/home_picture_filename",
              "background/portrait/app_picture_filename", "theme/active_moodset"}) {
            UserStore::write(
                QStringLiteral("/desktop/zavro/") + QLatin1String(key),
                QStringLiteral("'%1'").arg(wallpaper));
        }
        const QString file = session.folders.elsewhere(QStringLiteral("p.png"));

        QCOMPARE(run({"preview", "-o"}, file).exitCode, 0);

        // This is at the left edge of the phone that shows the home screen.
        const QImage preview(file);
        QVERIFY(preview.pixelColor(90, 300).red() > preview.pixelColor(90, 300).blue() + 50);
        QVERIFY(preview.pixelColor(90, 900).blue() > preview.pixelColor(90, 900).red() + 50);
    }

    void previewShowsWhatSettingGives_data()
    {
        QTest::addColumn<QByteArray>("bundle");
        QTest::newRow("picture") << QByteArray();
        QTest::newRow("bundle") << QByteArray(R"({"version": 2, "wallpaper": "a.png"})");
        QTest::newRow("bundle in the older layout") << QByteArray(R"({"wallpaper": "a.png"})");
    }

    void previewShowsWhatSettingGives()
    {
        QFETCH(QByteArray, bundle);
        ClientSession session;
        const QString folder = session.folders.elsewhere(QStringLiteral("sea"));
        const QString moodset = folder + QStringLiteral("/sea.moodset");
        const QString picture = folder + QStringLiteral("/images/a.png");
        QVERIFY(QDir().mkpath(QFileInfo(picture).path()));
        QImage image(400, 900, QImage::Format_RGB32);
        QLinearGradient gradient(0, 0, 400, 900);
        gradient.setColorAt(0, QColor(250, 220, 90));
        gradient.setColorAt(1, QColor(110, 160, 250));
        QPainter(&image).fillRect(image.rect(), gradient);
        QVERIFY(image.save(picture));
        if (!bundle.isEmpty()) {
            QVERIFY(InstalledBundles::write(moodset, bundle));
            QCOMPARE(run({"install"}, folder).exitCode, 0);
        }
        const QString source = bundle.isEmpty() ? picture : moodset;
        const QString foretold = session.folders.elsewhere(QStringLiteral("foretold.png"));
        const QString made = session.folders.elsewhere(QStringLiteral("made.png"));

        QCOMPARE(run({"preview", "-o", qPrintable(foretold)}, source).exitCode, 0);
        QCOMPARE(run({"set"}, source).exitCode, 0);
        QCOMPARE(run({"preview", "-o"}, made).exitCode, 0);

        // At the edges of the two phones, only the wallpapers are seen.
        for (const QPoint& place : {QPoint(90, 300), QPoint(90, 900), QPoint(732, 480)}) {
            const QColor before = QImage(foretold).pixelColor(place);
            const QColor after = QImage(made).pixelColor(place);
            QVERIFY2(
                isClose(before, after),
                qPrintable(before.name() + QLatin1Char(' ') + after.name()));
        }
    }

    void previewShowsOtherColours()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QCOMPARE(run({"wait"}).exitCode, 0);
        const QString file = session.folders.elsewhere(QStringLiteral("p.png"));
        QJsonObject expected = highlightOf(QStringLiteral("Coast light"));
        expected.insert(QStringLiteral("highlight"), QStringLiteral("#ffff6347"));
        expected.insert(QStringLiteral("secondaryHighlight"), QStringLiteral("#ffcc4f39"));
        const auto colors = [](const Result& result) {
            return result.result().value(QLatin1String("colors")).toObject();
        };

        // The second highlight colour is made from the first unless it is given.
        QCOMPARE(
            colors(run({"preview", "Coast light", "--highlight=tomato", "-o"}, file)), expected);
        expected.insert(QStringLiteral("secondaryHighlight"), QStringLiteral("#ff0000ff"));
        QCOMPARE(
            colors(run(
                {"preview", "Coast light", "--highlight=tomato", "--secondaryHighlight=blue", "-o"},
                file)),
            expected);
    }

    void startsTheDaemonOrSaysHowTo()
    {
        ClientSession session;
        QVERIFY(ClientSession::letDaemonBeStarted(false));
        const Result without = run({"refresh"});
        QCOMPARE(without.exitCode, 3);
        QVERIFY(without.errors.contains(QLatin1String("systemctl --user start moodsetd")));
        QCOMPARE(
            without.json().value(QLatin1String("status")), QJsonValue(QStringLiteral("no-daemon")));
        QVERIFY(ClientSession::letDaemonBeStarted());

        QCOMPARE(run({"refresh"}).exitCode, 0);

        QVERIFY(run({"status"})
                    .result()
                    .value(QLatin1String("daemon"))
                    .toObject()
                    .value(QLatin1String("running"))
                    .toBool());
    }

    void aRefusedEditSendsNothing_data()
    {
        QTest::addColumn<QByteArray>("edit");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* edit, const char* reason) {
            QTest::newRow(edit) << QByteArray(edit) << QString::fromUtf8(reason);
        };
        row("highlight=tomatto",
            "highlight: tomatto is no colour: write #rrggbb, #aarrggbb or an SVG name");
        row("hihglight=red", "a moodset has no hihglight; did you mean \"highlight\"?");
        row("volume=101", "volume: 101 is no volume from 0 to 100");
        row("volume=loud", "volume: loud is no volume from 0 to 100");
        row("name= ", "name: a name cannot be empty");
        row("favorite=yes", "favorite: yes is neither on nor off");
        row("ringerTone=/none.ogg",
            "ringerTone: /none.ogg: no such file; write on, off, none or a file");
        row("ringerTone=/etc/passwd", "ringerTone: /etc/passwd is no sound, but text/plain");
    }

    void aRefusedEditSendsNothing()
    {
        QFETCH(QByteArray, edit);
        QFETCH(QString, reason);

        const Result result = run({"edit", "1", "volume=3", edit.constData()});

        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.errors, QStringLiteral("moodsetctl: ") + reason + QLatin1Char('\n'));
    }

    void saysWhyAPictureCannotBeSet_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("the file is empty");
        QTest::newRow("words") << QByteArray(
            "words\n") << QStringLiteral("it is no picture of a format that the daemon decodes");
        QTest::newRow("cut") << QByteArray(
            "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\3\0\0\0\2\x8\2\0\0\0",
            29) << QStringLiteral("the picture is damaged or cut off; its format is PNG");
    }

    void saysWhyAPictureCannotBeSet()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        ClientSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
        file.close();

        for (const char* const command : {"set", "create", "colors"}) {
            const Result result = run({command}, path);

            QCOMPARE(result.exitCode, 1);
            QVERIFY2(
                result.errors.endsWith(QStringLiteral(": ") + reason + QLatin1Char('\n')),
                qPrintable(result.errors));
        }
    }

    void aPictureThatIsActiveAndCannotBeReadAnyMoreIsNotSetAgain()
    {
        ClientSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writePicture(path, QSize(30, 20)));
        QCOMPARE(run({"set"}, path).exitCode, 0);
        QCOMPARE(run({"set"}, path).exitCode, 0);
        QVERIFY(QFile::resize(path, 40));

        const Result result = run({"set"}, path);

        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.errors.contains(path), qPrintable(result.errors));
    }

    void coloursAreThoseThatTheDaemonGives()
    {
        ClientSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writePicture(path, QSize(300, 200)));
        const QJsonObject foretold =
            run({"colors"}, path).result().value(QLatin1String("colors")).toObject();
        QVERIFY(!QFileInfo::exists(LibraryDatabase::standardPath()));

        const QJsonObject made = run({"create"}, path)
                                     .result()
                                     .value(QLatin1String("moodset"))
                                     .toObject()
                                     .value(QLatin1String("colors"))
                                     .toObject();

        QCOMPARE(made, foretold);
        QCOMPARE(foretold.size(), 4);
    }

    void picturesAreIndexedAndListed()
    {
        ClientSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a b.png"));
        QVERIFY(writePicture(path, QSize(30, 20)));

        QCOMPARE(run({"index"}, path).exitCode, 0);

        const QJsonArray pictures =
            run({"photos"}).result().value(QLatin1String("pictures")).toArray();
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.at(0).toObject().value(QLatin1String("file")), QJsonValue(path));
        QCOMPARE(pictures.at(0).toObject().value(QLatin1String("width")), QJsonValue(30));
        QCOMPARE(run({"index"}, QStringLiteral("/etc/passwd")).exitCode, 1);
    }

    void editsComeBackFromABackup()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        const QString picture = session.folders.elsewhere(QStringLiteral("sea.png"));
        const QString backup = session.folders.elsewhere(QStringLiteral("backup.json"));
        QVERIFY(writePicture(picture, QSize(30, 20)));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(run({"create"}, picture).exitCode, 0);
        QCOMPARE(run({"edit", "sea", "name=Sea", "highlight=#102030", "volume=7"}).exitCode, 0);
        QCOMPARE(run({"edit", "Coast light", "favorite=off", "messageTone=none"}).exitCode, 0);
        const QJsonObject coast = run({"show", "Coast light"}).result();
        QCOMPARE(run({"backup"}, backup).exitCode, 0);
        QCOMPARE(run({"remove", "Sea"}).exitCode, 0);
        QCOMPARE(run({"edit", "Coast light", "favorite=on", "primary=red", "name=X"}).exitCode, 0);

        const Result restored = run({"restore"}, backup);

        QCOMPARE(restored.errors, QString());
        QCOMPARE(restored.exitCode, 0);
        QCOMPARE(run({"show", "Coast light"}).result(), coast);
        const QJsonObject sea =
            run({"show", "Sea"}).result().value(QLatin1String("moodset")).toObject();
        QCOMPARE(sea.value(QLatin1String("ringerVolume")), QJsonValue(7));
        QVERIFY(QFile::remove(picture));
        QTRY_COMPARE(run({"show", "Sea"}).exitCode, 1);
        const Result partly = run({"restore"}, backup);
        QCOMPARE(partly.exitCode, 1);
        QVERIFY(partly.errors.contains(picture));
        QCOMPARE(run({"restore"}, QStringLiteral("/etc/passwd")).exitCode, 1);
        QVERIFY(InstalledBundles::write(backup, R"({"kind": "moodsetctl-backup", "version": 2})"));
        const Result newer = run({"restore"}, backup);
        QCOMPARE(newer.exitCode, 1);
        QVERIFY2(newer.errors.contains(QLatin1String("version")), qPrintable(newer.errors));
    }

    void doctorFindsAndMendsAFolderThatStopsTheScan()
    {
        ClientSession session;
        const QString picture = session.folders.elsewhere(QStringLiteral("set/a.png"));
        QVERIFY(QDir().mkpath(session.folders.elsewhere(QStringLiteral("set"))));
        QVERIFY(writePicture(picture, QSize(30, 20)));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("b.png")), QSize(3, 2)));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(stateOf("folders"), QStringLiteral("good"));
        const QString moved = session.folders.picture(QStringLiteral("set"));
        QVERIFY(QFile::rename(session.folders.elsewhere(QStringLiteral("set")), moved));
        QCOMPARE(run({"create"}, moved + QStringLiteral("/a.png")).exitCode, 0);
        QCOMPARE(run({"edit", "a", "name=Kept"}).exitCode, 0);
        QVERIFY(ClientSession::endDaemon());
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("c.png")), QSize(3, 2)));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(stateOf("folders"), QStringLiteral("problem"));
        QCOMPARE(
            checkup("folders").value(QLatin1String("mend")),
            QJsonValue(QStringLiteral("moodsetctl doctor --rebuild")));

        const Result rebuilt = run({"doctor", "--rebuild"});

        QCOMPARE(rebuilt.errors, QString());
        QCOMPARE(rebuilt.exitCode, 0);
        QCOMPARE(stateOf("folders"), QStringLiteral("good"));
        QCOMPARE(run({"photos"}).result().value(QLatin1String("pictures")).toArray().size(), 3);
        QCOMPARE(run({"show", "Kept"}).exitCode, 0);
    }

    void doctorFindsAndMendsATreeThatWentAndCameBack()
    {
        ClientSession session;
        const QString tree = session.folders.picture(QStringLiteral("card"));
        const QString away = session.folders.elsewhere(QStringLiteral("card"));
        QVERIFY(QDir().mkpath(tree + QStringLiteral("/a/b/c")));
        QVERIFY(writePicture(tree + QStringLiteral("/a/b/c/1.png"), QSize(3, 2)));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QVERIFY(ClientSession::endDaemon());
        QVERIFY(QFile::rename(tree, away));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(stateOf("folders"), QStringLiteral("problem"));
        QVERIFY(ClientSession::endDaemon());
        QVERIFY(QFile::rename(away, tree));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(stateOf("folders"), QStringLiteral("problem"));

        QCOMPARE(run({"doctor", "--rebuild"}).exitCode, 0);

        QCOMPARE(stateOf("folders"), QStringLiteral("good"));
        QVERIFY(writePicture(tree + QStringLiteral("/a/b/c/2.png"), QSize(3, 2)));
        QTRY_COMPARE(run({"photos"}).result().value(QLatin1String("pictures")).toArray().size(), 2);
    }

    void cleansWallpapersThatNothingUses()
    {
        ClientSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writePicture(path, QSize(30, 20)));
        QCOMPARE(run({"set"}, path).exitCode, 0);
        QStringList used;
        QString folder;
        for (const char* const name : {"home", "app"}) {
            const QString key =
                QStringLiteral("/desktop/zavro/background/portrait/%1_picture_filename")
                    .arg(QLatin1String(name));
            const QString ofMoodset = UserStore::value(key).remove(QLatin1Char('\''));
            QVERIFY(QFileInfo::exists(ofMoodset));
            folder = QFileInfo(ofMoodset).path();
            const QString ofTheme = QStringLiteral("%1/%2.jpg").arg(folder, QLatin1String(name));
            QVERIFY(QFile::copy(ofMoodset, ofTheme));
            UserStore::write(key, QStringLiteral("'%1'").arg(ofTheme));
            used << ofMoodset << ofTheme;
        }
        const QString unused = folder + QStringLiteral("/1234hp.jpg");
        const QString fresh = folder + QStringLiteral("/5678hp.jpg");
        for (const QString& copy : {unused, fresh}) {
            QVERIFY(QFile::copy(used.first(), copy));
        }
        const QStringList allOld = used + QStringList(unused);
        for (const QString& old : allOld) {
            QFile file(old);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(
                QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
        }

        const QJsonObject trial = run({"clean", "--dry-run"}).result();
        QCOMPARE(
            trial.value(QLatin1String("files")).toArray(), QJsonArray::fromStringList({unused}));
        QVERIFY(QFileInfo::exists(unused));
        QCOMPARE(stateOf("wallpapers"), QStringLiteral("advice"));
        QCOMPARE(run({"clean"}).exitCode, 0);

        QVERIFY(!QFileInfo::exists(unused));
        QVERIFY(QFileInfo::exists(fresh));
        for (const QString& wallpaper : used) {
            QVERIFY2(QFileInfo::exists(wallpaper), qPrintable(wallpaper));
        }
    }

    void validatesAndInstallsBundles()
    {
        ClientSession session;
        const QString folder = session.folders.elsewhere(QStringLiteral("sea"));
        QVERIFY(
            InstalledBundles::write(folder + QStringLiteral("/sea.moodset"), "{\"version\": 2}"));
        const Result bad = run({"validate"}, folder);
        QCOMPARE(bad.exitCode, 1);
        QCOMPARE(bad.result().value(QLatin1String("findings")).toArray().size(), 2);
        QCOMPARE(run({"install"}, folder).exitCode, 1);
        QVERIFY(InstalledBundles::write(
            folder + QStringLiteral("/sea.moodset"),
            "{\"version\": 2, \"displayName\": \"Sea\", \"wallpaper\": \"a.png\"}"));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/images")));
        QVERIFY(writePicture(folder + QStringLiteral("/images/a.png"), QSize(3, 2)));

        QCOMPARE(run({"validate"}, folder).exitCode, 0);
        const QString relative = QDir().relativeFilePath(folder) + QLatin1Char('/');
        QCOMPARE(run({"install"}, relative).exitCode, 0);
        QCOMPARE(run({"favorite", "Sea", "off"}).exitCode, 0);
        QVERIFY(InstalledBundles::write(folder + QStringLiteral("/x.MOODSET"), "{}"));
        QCOMPARE(run({"install"}, folder).exitCode, 0);
        QCOMPARE(run({"moodsets"}).result().value(QLatin1String("moodsets")).toArray().size(), 1);
    }

    void tablesFitTheTerminalAndHaveSwatches()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QCOMPARE(ClientSession::runInTerminal({QStringLiteral("wait")}).exitCode, 0);

        const QString wide = ClientSession::runInTerminal({QStringLiteral("moodsets")}, 200).output;
        const QString narrow =
            ClientSession::runInTerminal({QStringLiteral("moodsets")}, 80).output;

        QVERIFY2(wide.contains(QStringLiteral("\033[48;2;111;195;247m")), qPrintable(wide));
        QVERIFY(
            wide.contains(QStringLiteral("/usr/share/moodset/coast-light/coast-light.moodset")));
        QVERIFY2(
            narrow.contains(QString::fromUtf8("\u2026"))
                && narrow.contains(QStringLiteral("Coast light")),
            qPrintable(narrow));
        qputenv("NO_COLOR", "1");
        const QString plain =
            ClientSession::runInTerminal({QStringLiteral("moodsets")}, 200).output;
        qunsetenv("NO_COLOR");
        QVERIFY(!plain.contains(QLatin1Char('\033')));
        const Result piped = ClientSession::run({QStringLiteral("moodsets")});
        QVERIFY(piped.output.contains(QStringLiteral("#ff6fc3f7")));
        QVERIFY(!piped.output.contains(QLatin1Char('\033')));
        QCOMPARE(piped.errors, QString());
    }

    void aListIsTheSameWithColoursInAnotherForm()
    {
        const ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("autumn-walk")));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QCOMPARE(run({"set", "Coast light"}).exitCode, 0);
        QCOMPARE(run({"favorite", "Autumn walk", "on"}).exitCode, 0);
        const std::vector<QStringList> lines{
            {QStringLiteral("moodsets")},
            {QStringLiteral("moodsets"), QStringLiteral("--favorites")},
            {QStringLiteral("moodsets"), QStringLiteral("--names")}};
        QStringList usual;
        for (const QStringList& line : lines) {
            usual << ClientSession::run(line).output << ClientSession::runInTerminal(line).output;
        }
        QVERIFY2(usual.first().contains(QStringLiteral("#ff6fc3f7")), qPrintable(usual.first()));

        // The program leaves this form to its module; the colour is the same.
        QVERIFY(writeToLibrary(QStringLiteral("UPDATE moodset SET highlightColor = '#6FC3F7'"
                                              " WHERE highlightColor = '#ff6fc3f7'")));

        QStringList unusual;
        for (const QStringList& line : lines) {
            const Result piped = ClientSession::run(line);
            QCOMPARE(piped.errors, QString());
            unusual << piped.output << ClientSession::runInTerminal(line).output;
        }
        QCOMPARE(unusual, usual);
        QVERIFY(writeToLibrary(QStringLiteral("UPDATE moodset SET highlightColor = 'none'")));
        QVERIFY(!ClientSession::run(lines.at(0)).output.contains(QStringLiteral("none")));
    }

    void progressIsShownOnTerminalsAlone()
    {
        ClientSession session;
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("b.png")), QSize(3, 2)));

        const TerminalRun shown = ClientSession::runInTerminal({QStringLiteral("wait")});
        const Result piped = ClientSession::run({QStringLiteral("wait")});
        const TerminalRun quiet =
            ClientSession::runInTerminal({QStringLiteral("wait"), QStringLiteral("-q")});

        QVERIFY2(
            shown.output.contains(QStringLiteral("1 of 1 pictures")), qPrintable(shown.output));
        QVERIFY(shown.output.endsWith(QStringLiteral("\r\033[K")));
        QCOMPARE(piped.output + piped.errors, QString());
        QCOMPARE(quiet.output, QString());
    }

    void quietPrintsErrorsAlone()
    {
        ClientSession session;
        const Result good = ClientSession::run({QStringLiteral("theme"), QStringLiteral("-q")});
        const Result bad = ClientSession::run(
            {QStringLiteral("set"), QStringLiteral("-q"), QStringLiteral("/none")});

        QCOMPARE(good.output + good.errors, QString());
        QCOMPARE(bad.output, QString());
        QVERIFY(bad.errors.startsWith(QStringLiteral("moodsetctl: /none: no such file")));
    }

    void speaksGermanAndFinnish()
    {
        ClientSession session;
        const Result german =
            ClientSession::run({QStringLiteral("moodset")}, {QStringLiteral("LC_ALL=de_DE.UTF-8")});
        const Result finnish =
            ClientSession::run({QStringLiteral("status")}, {QStringLiteral("LANGUAGE=fi")});
        const Result json = ClientSession::run(
            {QStringLiteral("--json"), QStringLiteral("status")},
            {QStringLiteral("LC_ALL=de_DE.UTF-8")});

        QCOMPARE(german.exitCode, 2);
        QCOMPARE(
            german.errors,
            QString::fromUtf8(
                "moodsetctl: kein solcher Befehl: moodset; meinten Sie \u201Emoodsets\u201C?\n"));
        QVERIFY2(
            finnish.output.startsWith(QString::fromUtf8("K\u00E4yt\u00F6ss\u00E4")),
            qPrintable(finnish.output));
        QCOMPARE(
            json.result().value(QLatin1String("daemon")).toObject().value(QLatin1String("running")),
            QJsonValue(false));
    }

    void completesCommandsAndNames()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QCOMPARE(run({"wait"}).exitCode, 0);
        const auto offered = [](const QStringList& words) {
            QStringList lines = ClientSession::run(
                                    QStringList(
                                        {QStringLiteral("completion"), QStringLiteral("--words"),
                                         QStringLiteral("--")})
                                    + words)
                                    .output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            for (QString& line : lines) {
                line = line.section(QLatin1Char('\t'), 0, 0);
            }
            return lines.join(QLatin1Char('|'));
        };

        QCOMPARE(offered({QStringLiteral("mood")}), QStringLiteral("words|moodsets"));
        QCOMPARE(offered({QStringLiteral("show"), QString()}), QStringLiteral("words|Coast light"));
        QCOMPARE(
            offered({QStringLiteral("set"), QStringLiteral("Co")}),
            QStringLiteral("files|Coast light"));
        QCOMPARE(
            offered({QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("high")}),
            QStringLiteral("words|highlight="));
        QCOMPARE(
            offered({QStringLiteral("wait"), QStringLiteral("--ti")}),
            QStringLiteral("words|--timeout"));
        QCOMPARE(
            offered({QStringLiteral("photos"), QStringLiteral("--folder"), QString()}),
            QStringLiteral("folders"));
        QCOMPARE(
            offered({QStringLiteral("favorite"), QStringLiteral("1"), QStringLiteral("o")}),
            QStringLiteral("words|on|off"));
    }

    /// Quotes words with blanks, as bash does.
    void bashCompletesNames()
    {
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QCOMPARE(run({"wait"}).exitCode, 0);
        QProcess bash;
        bash.start(
            QStringLiteral("bash"),
            {QStringLiteral("-c"),
             QStringLiteral("PATH=${0%/*}:$PATH; source <(moodsetctl completion bash); "
                            "COMP_WORDS=(moodsetctl show Coa); COMP_CWORD=2; _moodsetctl; "
                            "printf '%s\\n' \"${COMPREPLY[@]}\""),
             QStringLiteral(MOODSETCTL_EXECUTABLE)});
        QVERIFY(bash.waitForFinished());

        QCOMPARE(bash.readAllStandardError(), QByteArray());
        QCOMPARE(bash.readAllStandardOutput(), QByteArray("Coast\\ light\n"));
    }

    void theManPageIsThatOfTheCommands()
    {
        QFile page(QStringLiteral(MAN_PAGE));
        QVERIFY(page.open(QIODevice::ReadOnly));

        const Result result = ClientSession::run({QStringLiteral("help"), QStringLiteral("--man")});

        QCOMPARE(result.output, QString::fromUtf8(page.readAll()));
    }

    void everyCommandHasAHelp()
    {
        const QString overview = ClientSession::run({QStringLiteral("--help")}).output;
        int commands = 0;
        for (const QString& line : overview.split(QLatin1Char('\n'))) {
            if (!line.startsWith(QStringLiteral("  ")) || line.at(2) < QLatin1Char('a')
                || line.startsWith(QStringLiteral("  moodsetctl"))
                || !line.contains(QRegularExpression(QStringLiteral("^  [a-z]+  +")))) {
                continue;
            }
            const QString name = line.trimmed().section(QLatin1Char(' '), 0, 0);
            const Result help = ClientSession::run({QStringLiteral("help"), name});
            QCOMPARE(help.exitCode, 0);
            QVERIFY2(
                help.output.startsWith(QStringLiteral("Usage: moodsetctl ") + name),
                qPrintable(help.output));
            ++commands;
        }
        QCOMPARE(commands, 25);
    }
};

QTEST_GUILESS_MAIN(ClientTest)

#include "tst_client.moc"
