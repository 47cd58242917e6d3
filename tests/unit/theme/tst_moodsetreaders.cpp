// SPDX-License-Identifier: BSD-3-Clause
#include "dconfcommand.h"
#include "messagelog.h"
#include "moodset/tones.h"
#include "moodsetlibrary.h"
#include "theme/moodsetfile.h"

#include <QTest>

namespace {

/// A moodset file with a valid wallpaper, and with `members` besides.
QByteArray with(const QByteArray& members)
{
    return R"({"wallpaper": "w.jpg", )" + members + '}';
}

/// A moodset as text: the fields that differ from those of a file that contains only the wallpaper
/// "w.jpg".
class Description
{
public:
    explicit Description(const TestFolder& folder)
        : m_folder(folder.path() + QLatin1Char('/'))
    {
    }

    void add(const char* field, const QString& value, const QString& usual)
    {
        if (value != usual) {
            m_fields.append(QLatin1String(field) + QLatin1Char('=') + relative(value));
        }
    }
    QString text() const { return m_fields.join(QLatin1String(", ")); }
    QString wallpaper() const { return m_folder + QLatin1String("images/w.jpg"); }

private:
    QString relative(const QString& value) const
    {
        return value.startsWith(m_folder) ? value.mid(m_folder.size()) : value;
    }

    QString m_folder;
    QStringList m_fields;
};

QString colorText(const QColor& color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QString();
}

/// The result of readMoodsetFile() for a file.
QString recordText(const TestFolder& folder)
{
    const QString path = folder.path(MoodsetLibrary::fileName());
    Moodset moodset(new MoodsetData(1, QUrl::fromLocalFile(path)));
    if (!readMoodsetFile(moodset, path)) {
        return QStringLiteral("rejected");
    }
    const MoodsetData& record = *moodset.constData();
    Description text(folder);
    text.add("displayName", record.displayName, QString());
    text.add("favorite", QString::number(record.favorite), QStringLiteral("1"));
    text.add("homeWallpaper", record.homeWallpaper, text.wallpaper());
    text.add("highlightColor", colorText(record.highlightColor), QString());
    text.add("secondaryHighlightColor", colorText(record.secondaryHighlightColor), QString());
    text.add("primaryColor", colorText(record.primaryColor), QString());
    text.add("secondaryColor", colorText(record.secondaryColor), QString());
    text.add("ringerVolume", QString::number(record.ringerVolume), QStringLiteral("-1"));
    text.add("enabledSounds", QString::number(record.enabledSounds), QStringLiteral("-1"));
    text.add("version", QString::number(record.version), QStringLiteral("1"));
    for (auto tone = record.resources.cbegin(); tone != record.resources.cend(); ++tone) {
        const QUrl url = tone.value().toMap().value(QStringLiteral("url")).toUrl();
        text.add(qPrintable(tone.key()), url.toLocalFile(), QString());
    }
    return text.text();
}

/// The result of MoodsetManager::updateMetaData() for a file.
QString rowText(MoodsetLibrary* library, qint64 id)
{
    const LibraryDatabase::Rows rows = library->rows(
        QStringLiteral(
            "SELECT displayName, favorite, homeWallpaper, applicationWallpaper, highlightColor, "
            "secondaryHighlightColor, primaryColor, secondaryColor, ringerVolume, enabledSounds, "
            "partnerSpace, version, timestamp FROM moodset JOIN file ON fileId = id "
            "WHERE fileId = ?;"),
        {id});
    if (rows.isEmpty()) {
        return QStringLiteral("rejected");
    }
    const QVariantList& row = rows.constFirst();
    Description text(library->folder());
    text.add("displayName", row.at(0).toString(), QString());
    text.add("favorite", row.at(1).toString(), QStringLiteral("1"));
    text.add("homeWallpaper", row.at(2).toString(), text.wallpaper());
    text.add("applicationWallpaper", row.at(3).toString(), QString());
    text.add("highlightColor", row.at(4).toString(), QString());
    text.add("secondaryHighlightColor", row.at(5).toString(), QString());
    text.add("primaryColor", row.at(6).toString(), QString());
    text.add("secondaryColor", row.at(7).toString(), QString());
    text.add("ringerVolume", row.at(8).toString(), QStringLiteral("80"));
    text.add("enabledSounds", row.at(9).toString(), QStringLiteral("-1"));
    text.add("partnerSpace", row.at(10).toString(), QString());
    text.add("version", row.at(11).toString(), QStringLiteral("1"));
    const QDateTime time = QDateTime::fromString(row.at(12).toString(), Qt::ISODate);
    // A file without a time gets the time of its parsing. The files here have times before the
    // later years of this century.
    if (!time.isValid() || time.date().year() < 2021) {
        text.add("timestamp", row.at(12).toString(), QString());
    }
    const LibraryDatabase::Rows tones = library->rows(
        QStringLiteral("SELECT resourceType, path || '/' || fileName FROM resource "
                       "JOIN file ON resourceId = file.id JOIN directory ON directoryId = "
                       "directory.id WHERE fileId = ? ORDER BY 1;"),
        {id});
    for (const QVariantList& tone : tones) {
        text.add(qPrintable(tone.at(0).toString()), tone.at(1).toString(), QString());
    }
    return text.text();
}

void addFile(
    const char* name, const QByteArray& content, const char* record, const char* row,
    const char* warning = "")
{
    QTest::newRow(name) << content << QString::fromUtf8(record) << QString::fromUtf8(row)
                        << QString::fromUtf8(warning);
}

} // namespace

/// Tests the two readers of moodset files side by side. One fills a record, the other the database,
/// and their rules differ on purpose.
class MoodsetReadersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // This is the tone for tones without a file.
        m_machine.write(QStringLiteral("fallback.ogg"));
        runDconf(
            {QStringLiteral("write"),
             QStringLiteral("/com/zavro/profile/fallback/ringing.alert.tone"),
             QStringLiteral("'%1'").arg(m_machine.path(QStringLiteral("fallback.ogg")))});
    }

    void file_data();
    void file();

private:
    static void addDocuments();
    static void addWallpapers();
    static void addNamesAndFlags();
    static void addColors();
    static void addNumbers();
    static void addTimes();
    static void addTones();

    TestFolder m_machine;
};

void MoodsetReadersTest::file_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("warning");
    addDocuments();
    addWallpapers();
    addNamesAndFlags();
    addColors();
    addNumbers();
    addTimes();
    addTones();
}

void MoodsetReadersTest::addDocuments()
{
    const char* const no = "rejected";
    addFile("only a wallpaper", R"({"wallpaper": "w.jpg"})", "", "");
    addFile("empty file", "", no, no, "Failed to parse moodset 5 0");
    addFile("not JSON", "wallpaper=w.jpg", no, no, "Failed to parse moodset 5 1");
    addFile("cut off", R"({"wallpaper": "w.jpg")", no, no, "Failed to parse moodset 10 21");
    addFile(
        "comma at the end", R"({"wallpaper": "w.jpg",})", no, no, "Failed to parse moodset 11 23");
    addFile(
        "text after the object", R"({"wallpaper": "w.jpg"} x)", no, no,
        "Failed to parse moodset 14 23");
    addFile(
        "comment", "// none\n{\"wallpaper\": \"w.jpg\"}", no, no, "Failed to parse moodset 5 1");
    addFile("single quotes", "{'wallpaper': 'w.jpg'}", no, no, "Failed to parse moodset 1 2");
    addFile("not UTF-8", with("\"displayName\": \"\xff\""), no, no, "Failed to parse moodset 9 39");
    addFile("nested without end", QByteArray(2000, '['), no, no, "Failed to parse moodset 12 1025");
    addFile("array", R"(["wallpaper", "w.jpg"])", no, no, "Failed to parse moodset 0 0");
    addFile("text", R"("w.jpg")", no, no, "Failed to parse moodset 5 1");
    addFile("empty object", "{}", no, no);
    addFile("byte order mark", "\xef\xbb\xbf{\"wallpaper\": \"w.jpg\"}", "", "");
    addFile("unknown keys", with(R"("author": "x", "favourite": false)"), "", "");
    addFile("keys in another case", with(R"("Favorite": false, "DISPLAYNAME": "x")"), "", "");
    addFile(
        "key twice", with(R"("displayName": "first", "displayName": "last")"), "displayName=last",
        "displayName=last");
}

void MoodsetReadersTest::addWallpapers()
{
    const char* const no = "rejected";
    addFile("no wallpaper", R"({"displayName": "x"})", no, no);
    addFile("wallpaper empty", R"({"wallpaper": ""})", no, no);
    addFile("wallpaper a number", R"({"wallpaper": 1})", no, no);
    addFile("wallpaper null", R"({"wallpaper": null})", no, no);
    addFile("wallpaper an array", R"({"wallpaper": ["w.jpg"]})", no, no);
    addFile("wallpaper with a slash", R"({"wallpaper": "../images/w.jpg"})", no, no);
    addFile("wallpaper an escaped slash", R"({"wallpaper": "\/w.jpg"})", no, no);
    addFile("wallpaper under another key", R"({"Wallpaper": "w.jpg"})", no, no);
    addFile(
        "wallpaper missing", R"({"wallpaper": "none.jpg"})", "homeWallpaper=images/none.jpg", no);
    addFile(
        "wallpaper two dots", R"({"wallpaper": ".."})",
        "homeWallpaper=", "homeWallpaper=images/..");
    addFile(
        "wallpaper with a blank", R"({"wallpaper": "a b.jpg"})", "homeWallpaper=images/a b.jpg",
        "homeWallpaper=images/a b.jpg");
    addFile(
        "wallpaper with a number sign", R"({"wallpaper": "a#b.jpg"})", "homeWallpaper=images/a",
        "homeWallpaper=images/a#b.jpg");
    addFile(
        "wallpaper with a question mark", R"({"wallpaper": "a?b.jpg"})", "homeWallpaper=images/a",
        "homeWallpaper=images/a?b.jpg");
    addFile(
        "wallpaper with an encoded blank", R"({"wallpaper": "a%20b.jpg"})",
        "homeWallpaper=images/a b.jpg", "homeWallpaper=images/a%20b.jpg");
    addFile(
        "wallpaper with a percent sign", R"({"wallpaper": "100%.jpg"})",
        "homeWallpaper=images/100%.jpg", "homeWallpaper=images/100%.jpg");
    addFile(
        "wallpaper with a colon", R"({"wallpaper": "a:b.jpg"})", "homeWallpaper=images/a:b.jpg",
        "homeWallpaper=images/a:b.jpg");
    addFile(
        "wallpaper not ASCII", R"({"wallpaper": "ä.jpg"})", "homeWallpaper=images/ä.jpg",
        "homeWallpaper=images/ä.jpg");
    // When these names are converted for the disk, the rest is the name of a file.
    addFile("wallpaper with a NUL", R"({"wallpaper": "w.jpg\u0000"})", no, no);
    addFile("wallpaper with half a surrogate pair", R"({"wallpaper": "\ud800.jpg"})", no, no);
    addFile(
        "wallpaper with a byte order mark", "{\"wallpaper\": \"\xef\xbb\xbfm.jpg\"}",
        "homeWallpaper=images/\xef\xbb\xbfm.jpg", "homeWallpaper=images/\xef\xbb\xbfm.jpg");
    addFile(
        "wallpaper that only lacks a byte order mark", "{\"wallpaper\": \"\xef\xbb\xbfw.jpg\"}",
        "homeWallpaper=images/\xef\xbb\xbfw.jpg", no);
    addFile(
        "wallpaper that the database would change", R"({"wallpaper": "\uffff.jpg"})",
        "homeWallpaper=images/\xef\xbf\xbf.jpg", no,
        "virtual bool MoodsetManager::updateMetaData() Name cannot be stored \"\\uFFFF.jpg\"");
}

void MoodsetReadersTest::addNamesAndFlags()
{
    addFile("name", with(R"("displayName": "Älv")"), "displayName=Älv", "displayName=Älv");
    addFile("name a number", with(R"("displayName": 5)"), "", "");
    addFile(
        "name with a missing catalogue",
        with(R"("displayName": "Autumn", "translationCatalog": "missing")"), "displayName=Autumn",
        "displayName=Autumn");
    addFile("favourite", with(R"("favorite": true)"), "", "");
    addFile("no favourite", with(R"("favorite": false)"), "favorite=0", "favorite=0");
    addFile("favourite 0", with(R"("favorite": 0)"), "", "");
    addFile("favourite a text", with(R"("favorite": "false")"), "", "");
    addFile("favourite null", with(R"("favorite": null)"), "", "");
    addFile("partner space", with(R"("partnerSpace": "acme")"), "", "partnerSpace=acme");
    addFile("partner space a number", with(R"("partnerSpace": 5)"), "", "");
}

void MoodsetReadersTest::addColors()
{
    addFile(
        "colours",
        with(R"("highlightColor": "#010203", "secondaryHighlightColor": "#80040506",)"
             R"("primaryColor": "red")"),
        "highlightColor=#ff010203, secondaryHighlightColor=#80040506, primaryColor=#ffff0000",
        "highlightColor=#010203, secondaryHighlightColor=#80040506, primaryColor=red");
    addFile(
        "secondary colour", with(R"("secondaryColor": "#010203")"), "secondaryColor=#ff010203", "");
    addFile(
        "secondary colours", with(R"("secondaryColors": "#010203")"), "", "secondaryColor=#010203");
    addFile(
        "both secondary keys", with(R"("secondaryColor": "#111", "secondaryColors": "#222")"),
        "secondaryColor=#ff111111", "secondaryColor=#222");
    addFile("colour of no name", with(R"("primaryColor": "none")"), "", "primaryColor=none");
    addFile("colour empty", with(R"("primaryColor": "")"), "", "");
    addFile("colour a number", with(R"("primaryColor": 5)"), "", "primaryColor=5");
    addFile("colour null", with(R"("primaryColor": null)"), "", "");
    addFile("colour an object", with(R"("primaryColor": {"r": 1})"), "", "");
    addFile("colour an array", with(R"("primaryColor": [1, 2, 3])"), "", "");
}

void MoodsetReadersTest::addNumbers()
{
    const auto addVolume = [](const char* name, const QByteArray& value, const char* record,
                              const char* row) {
        addFile(name, with("\"ringerVolume\": " + value), record, row);
    };
    addVolume("volume", "40", "ringerVolume=40", "ringerVolume=40");
    addVolume("volume below the range", "-5", "ringerVolume=-5", "ringerVolume=-5");
    addVolume("volume above the range", "1000", "ringerVolume=1000", "ringerVolume=1000");
    addVolume("volume 1.0", "1.0", "ringerVolume=1", "ringerVolume=1");
    addVolume("volume 1e1", "1e1", "ringerVolume=10", "ringerVolume=10");
    addVolume("volume 1.5", "1.5", "", "");
    addVolume("volume a text", "\"40\"", "", "");
    addVolume("volume true", "true", "", "");
    addVolume("volume beyond 32 bits", "4294967296", "", "");

    const auto addVersion = [](const char* name, const QByteArray& value, const char* expected) {
        addFile(name, with("\"version\": " + value), expected, expected);
    };
    addVersion("version 2", "2", "version=2");
    addVersion("version 1", "1", "");
    addVersion("version a text", "\"2\"", "version=0");
    addVersion("version null", "null", "version=0");
    addVersion("version 2.5", "2.5", "version=0");
    addVersion("version negative", "-1", "version=-1");
}

void MoodsetReadersTest::addTimes()
{
    const auto addTime = [](const char* name, const char* value, const char* row) {
        addFile(name, with(QByteArray("\"timestamp\": ") + value), "", row);
    };
    addTime("time in UTC", R"("2020-02-03T04:05:06Z")", "timestamp=2020-02-03T04:05:06Z");
    addTime("time without a zone", R"("2020-02-03T04:05:06")", "timestamp=2020-02-03T04:05:06");
    addTime(
        "time with an offset", R"("2020-02-03T04:05:06+02:00")",
        "timestamp=2020-02-03T04:05:06+02:00");
    addTime(
        "time with milliseconds", R"("2020-02-03T04:05:06.789Z")",
        "timestamp=2020-02-03T04:05:06Z");
    addTime("date", R"("2020-02-03")", "timestamp=2020-02-03T00:00:00");
    addTime("no time", R"("yesterday")", "");
    addTime("time a number", "1580702706", "");
}

void MoodsetReadersTest::addTones()
{
    const auto addTone = [](const char* name, const QByteArray& tone, const char* record,
                            const char* row) {
        addFile(name, with("\"ringerToneFile\": " + tone), record, row);
    };
    const char* const sound = "ringerToneFile=sounds/s.ogg";
    const char* const silent = "enabledSounds=-2";
    const char* const silentSound = "enabledSounds=-2, ringerToneFile=sounds/s.ogg";
    const char* const fallback = "ringerToneFile=FALLBACK";
    addTone("tone", R"({"file": "s.ogg"})", sound, sound);
    addTone("tone enabled", R"({"file": "s.ogg", "enabled": 1})", sound, sound);
    addTone("tone disabled", R"({"file": "s.ogg", "enabled": 0})", silentSound, silentSound);
    addTone("tone enabled by -1", R"({"file": "s.ogg", "enabled": -1})", sound, sound);
    addTone(
        "tone disabled by 0.0", R"({"file": "s.ogg", "enabled": 0.0})", silentSound, silentSound);
    addTone("tone enabled by 0.5", R"({"file": "s.ogg", "enabled": 0.5})", sound, sound);
    addTone("tone enabled by false", R"({"file": "s.ogg", "enabled": false})", sound, sound);
    addTone("tone enabled by a text", R"({"file": "s.ogg", "enabled": "0"})", sound, sound);
    addTone("tone missing", R"({"file": "none.ogg"})", "ringerToneFile=sounds/none.ogg", "");
    addTone("tone with a slash", R"({"file": "../sounds/s.ogg"})", "", "");
    addTone("tone with a NUL", R"({"file": "s.ogg\u0000"})", "", "");
    addTone("tone with half a surrogate pair", R"({"file": "\udfff.ogg"})", "", "");
    addTone(
        "disabled tone with half a surrogate pair", R"({"file": "\udfff.ogg", "enabled": 0})",
        silent, silent);
    addTone("disabled tone with a slash", R"({"file": "a/s.ogg", "enabled": 0})", silent, silent);
    addTone("tone without a file", R"({"enabled": 1})", "", fallback);
    addTone("tone with an empty file", R"({"file": ""})", "", fallback);
    addTone("tone with a file that is a number", R"({"file": 5})", "", fallback);
    addTone("tone with unknown keys", R"({"volume": 5})", "", fallback);
    addTone("disabled tone without a file", R"({"enabled": 0})", silent, silent);
    addTone("tone empty", "{}", "", "");
    addTone("tone a text", R"("s.ogg")", "", "");
    addTone("tone an array", R"([{"file": "s.ogg"}])", "", "");
    addFile("tone without a fallback", with(R"("messageToneFile": {"enabled": 1})"), "", "");
    addFile(
        "all tones disabled",
        with(R"("ringerToneFile": {"enabled": 0}, "messageToneFile": {"enabled": 0},)"
             R"("mailToneFile": {"enabled": 0}, "internetCallToneFile": {"enabled": 0},)"
             R"("chatToneFile": {"enabled": 0}, "calendarToneFile": {"enabled": 0},)"
             R"("clockAlarmToneFile": {"enabled": 0})"),
        "enabledSounds=-128", "enabledSounds=-128");
    addFile(
        "several tones",
        with(R"("chatToneFile": {"file": "t.ogg"}, "mailToneFile": {"file": "s.ogg"})"),
        "chatToneFile=sounds/t.ogg, mailToneFile=sounds/s.ogg",
        "chatToneFile=sounds/t.ogg, mailToneFile=sounds/s.ogg");
}

void MoodsetReadersTest::file()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, record);
    QFETCH(QString, row);
    QFETCH(QString, warning);
    MessageLog log;
    MoodsetLibrary library;
    for (const char* name :
         {"a b", "a#b", "a?b", "a%20b", "100%", "a:b", "ä", "?", "\xef\xbf\xbf"}) {
        library.folder().write(QStringLiteral("images/%1.jpg").arg(QString::fromUtf8(name)));
    }
    library.folder().write(QStringLiteral("images/%1m.jpg").arg(QChar(0xfeff)));
    library.folder().write(QStringLiteral("sounds/?.ogg"));
    const qint64 id = library.addMoodsetFile(content);
    row.replace(QStringLiteral("FALLBACK"), m_machine.path(QStringLiteral("fallback.ogg")));

    QVERIFY(!library.manager().updateMetaData());

    QCOMPARE(log.takeWarnings(), warning.isEmpty() ? QStringList() : QStringList(warning));
    QCOMPARE(rowText(&library, id), row);
    QCOMPARE(library.pendingFiles(), 0);
    QCOMPARE(recordText(library.folder()), record);
}

QTEST_GUILESS_MAIN(MoodsetReadersTest)
#include "tst_moodsetreaders.moc"
