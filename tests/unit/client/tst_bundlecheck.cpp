// SPDX-License-Identifier: BSD-3-Clause
#include "bundle/bundlecheck.h"
#include "picturefile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class BundleCheckTest : public QObject
{
    Q_OBJECT

private:
    void write(const QString& name, const QByteArray& content)
    {
        QFile file(m_folder->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    /// The faults of a file, as "LINE:COLUMN: error: text".
    QStringList findings(const QString& name)
    {
        QStringList found;
        for (const Finding& finding : checkBundleFile(m_folder->filePath(name))) {
            found.append(findingLine(finding).trimmed().mid(finding.file.size() + 1));
        }
        return found;
    }

    std::unique_ptr<QTemporaryDir> m_folder;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        const QDir folder(m_folder->path());
        QVERIFY(folder.mkpath(QStringLiteral("images")));
        QVERIFY(folder.mkpath(QStringLiteral("sounds")));
        QVERIFY(folder.mkpath(QStringLiteral("tones")));
        write(QStringLiteral("sounds/a.ogg"), "OggS");
        write(QStringLiteral("tones/b.ogg"), "OggS");
        QVERIFY(writePicture(m_folder->filePath(QStringLiteral("images/a.png")), QSize(3, 2)));
    }

    void aGoodFileHasNoFindings()
    {
        write(
            QStringLiteral("a.moodset"),
            "{\"wallpaper\": \"a.png\", \"displayName\": \"A \\\"name\\\"\", \"version\": 2,\n"
            " \"favorite\": false, \"highlightColor\": \"tomato\", \"secondaryColor\": \"#fff\",\n"
            " \"secondaryColors\": \"#fff\", \"ringerVolume\": 40,\n"
            " \"timestamp\": \"2026-01-02T03:04:05Z\",\n"
            " \"ringerToneFile\": {\"file\": \"a.ogg\", \"enabled\": 1}}");
        write(
            QStringLiteral("tones.index"),
            "{\"files\": [{\"fileName\": \"b.ogg\", \"displayName\": \"Buoy\"}]}");

        QCOMPARE(findings(QStringLiteral("a.moodset")), QStringList());
        QCOMPARE(findings(QStringLiteral("tones.index")), QStringList());
    }

    void tellsWhatIsWrongAndWhere_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("finding");
        const auto row = [](const char* name, const char* rest, const char* finding) {
            const QByteArray start(
                "{\"wallpaper\": \"a.png\", \"displayName\": \"A\", \"version\": 2,\n  ");
            QTest::newRow(name) << start + rest + '}' << QString::fromUtf8(finding);
        };
        const auto whole = [](const char* name, const char* content, const char* finding) {
            QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(finding);
        };
        whole("no JSON", "{\n  \"a\": words}", "2:8: error: no JSON: illegal number");
        whole("a list", "[1]", "1:1: error: the root has to be an object, in braces");
        whole(
            "no wallpaper", "{\"displayName\": \"A\", \"version\": 2}",
            "1:1: error: \"wallpaper\" has to name a file in images/");
        whole(
            "a path", "{\"displayName\": \"A\", \"version\": 2,\n\"wallpaper\": \"x/a.png\"}",
            "2:14: error: the wallpaper's name must have no \"/\": x/a.png");
        whole(
            "no picture", "{\"displayName\": \"A\", \"version\": 2,\n\"wallpaper\": \"b.png\"}",
            "2:14: error: there is no images/b.png");
        row("favourite", "\"favorite\": 0",
            "2:15: warning: \"favorite\" has to be true or false, and counts as true");
        row("unknown key", "\"favourite\": true",
            "2:16: warning: unknown key favourite, which is ignored; did you mean \"favorite\"?");
        row("enabled", "\"mailToneFile\": {\"enabled\": false}",
            "2:31: warning: \"enabled\" has to be a number, and counts as 1: write 0 to switch the "
            "tone off");
        row("tone's path", "\"mailToneFile\": {\"file\": \"x/a.ogg\"}",
            "2:28: warning: the tone's name must have no \"/\": it has no file now");
        row("no tone", "\"mailToneFile\": {\"file\": \"c.ogg\"}",
            "2:28: warning: there is no sounds/c.ogg");
        row("tone", "\"mailToneFile\": 1",
            "2:19: warning: \"mailToneFile\" has to be an object, and is left out");
        row("colour", "\"primaryColor\": \"tomatto\"",
            "2:19: warning: \"primaryColor\" is no colour, and is made from the wallpaper instead");
        row("one secondary colour", "\"secondaryColor\": \"#fff\"",
            "2:21: warning: \"secondaryColor\" and \"secondaryColors\" have to be the same: each "
            "is "
            "read in one place only");
        row("volume", "\"ringerVolume\": 101",
            "2:19: warning: \"ringerVolume\" is not from 0 to 100, so the volume stays as it is");
        row("half a volume", "\"ringerVolume\": 1.5",
            "2:19: warning: \"ringerVolume\" has to be a whole number, and counts as 80");
        row("time", "\"timestamp\": \"yesterday\"",
            "2:16: warning: \"timestamp\" is no time in the form of ISO 8601");
        row("partner space", "\"partnerSpace\": 1",
            "2:19: warning: \"partnerSpace\" has to be a text, and counts as empty");
        whole(
            "no version", "{\"wallpaper\": \"a.png\", \"displayName\": \"A\"}",
            "1:1: warning: without \"version\": 2 the wallpaper is cut as that of an older bundle");
        whole(
            "a text for a version",
            "{\"wallpaper\": \"a.png\", \"displayName\": \"A\",\n\"version\": \"2\"}",
            "2:12: warning: without \"version\": 2 the wallpaper is cut as that of an older "
            "bundle");
    }

    void tellsWhatIsWrongAndWhere()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, finding);
        write(QStringLiteral("a.moodset"), content);

        QCOMPARE(findings(QStringLiteral("a.moodset")), QStringList(finding));
    }

    void picturesAreDecoded()
    {
        QFile picture(m_folder->filePath(QStringLiteral("images/a.png")));
        QVERIFY(picture.resize(picture.size() * 2 / 3));
        write(
            QStringLiteral("a.moodset"),
            "{\"wallpaper\": \"a.png\", \"displayName\": \"A\", \"version\": 2}");

        QCOMPARE(
            findings(QStringLiteral("a.moodset")),
            QStringList(QStringLiteral("1:15: warning: images/a.png cannot become the wallpaper: "
                                       "the picture is damaged or "
                                       "cut off; its format is PNG")));
    }

    void countsColumnsInCharacters()
    {
        write(
            QStringLiteral("a.moodset"),
            "{\"wallpaper\": \"a.png\", \"version\": 2, \"displayName\": \"\xc3\xa4\xc3\xb6\", "
            "\"favorite\": 1}");

        QCOMPARE(
            findings(QStringLiteral("a.moodset")).value(0).section(QLatin1Char(':'), 0, 1),
            QStringLiteral("1:71"));
    }

    void checksIndexFiles()
    {
        write(
            QStringLiteral("tones.index"),
            "{\"files\": [{\"fileName\": \"b.ogg\"},\n{\"fileName\": \"b.ogg\"},\n"
            "{\"fileName\": \"c.ogg\"}, {}]}");
        write(QStringLiteral("none.index"), "{\"files\": []}");
        write(QStringLiteral("list.index"), "{\"files\": 1}");

        QCOMPARE(
            findings(QStringLiteral("tones.index")),
            QStringList(
                {QStringLiteral("2:14: warning: b.ogg is listed twice"),
                 QStringLiteral("3:14: warning: there is no tones/c.ogg"),
                 QStringLiteral("3:24: warning: the entry names no file")}));
        QCOMPARE(
            findings(QStringLiteral("none.index")),
            QStringList(QStringLiteral("1:1: error: the folder none beside the index is missing")));
        QVERIFY(
            findings(QStringLiteral("list.index"))
                .contains(QStringLiteral("1:11: error: \"files\" has to be a list, in brackets")));
    }

    void namesCount()
    {
        write(QStringLiteral("a.Moodset"), "{}");
        write(QStringLiteral(".a.moodset"), "[]");

        QCOMPARE(
            findings(QStringLiteral("a.Moodset")),
            QStringList(QStringLiteral(
                "1:1: error: the name has to end in .moodset or .index, in small letters")));
        QCOMPARE(
            findings(QStringLiteral(".a.moodset")).value(0),
            QStringLiteral("1:1: error: the daemon overlooks files whose name begins with a dot"));
    }

    void foldersAreWalked()
    {
        write(QStringLiteral("tones/x.MOODSET"), "{}");
        write(QStringLiteral("a.moodset"), "{}");
        write(QStringLiteral("b.index"), "{}");

        const QStringList files = bundleFiles(m_folder->path() + QLatin1Char('/'));

        QCOMPARE(
            files,
            QStringList(
                {m_folder->filePath(QStringLiteral("a.moodset")),
                 m_folder->filePath(QStringLiteral("b.index")),
                 m_folder->filePath(QStringLiteral("tones/x.MOODSET"))}));
    }
};

QTEST_GUILESS_MAIN(BundleCheckTest)

#include "tst_bundlecheck.moc"
