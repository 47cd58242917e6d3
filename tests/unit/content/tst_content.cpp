// SPDX-License-Identifier: BSD-3-Clause
#include "content/content.h"
#include "content/filedata.h"
#include "content/moodsetdata.h"
#include "content/photodata.h"

#include <QTest>

Q_DECLARE_METATYPE(Content)

// This counts the copies in a QVector of handles when rows are inserted and removed.
static_assert(!QTypeInfo<Content>::isStatic);

namespace {

/// A record that notes its destruction.
class MortalRecord : public FileData
{
public:
    explicit MortalRecord(int* deaths)
        : FileData(5, QUrl())
        , m_deaths(deaths)
    {
    }
    ~MortalRecord() override { ++*m_deaths; }
    Q_DISABLE_COPY_MOVE(MortalRecord)

private:
    int* m_deaths;
};

/// A change of one field, by its name.
template <typename T>
struct FieldChange
{
    const char* field;
    void (*change)(T* record);
};

const FieldChange<FileData> FileChanges[] = {
    {"id", [](FileData* file) { file->id = 6; }},
    {"url", [](FileData* file) { file->url = QUrl(QStringLiteral("file:///b")); }},
    {"mimeType", [](FileData* file) { file->mimeType = QStringLiteral("x"); }},
    {"fileName", [](FileData* file) { file->fileName = QStringLiteral("x"); }},
    {"displayName", [](FileData* file) { file->displayName = QStringLiteral("x"); }},
    {"permissions", [](FileData* file) { file->permissions = 1; }},
    {"modified", [](FileData* file) { file->modified = 1; }}};

const FieldChange<PhotoData> PhotoChanges[] = {
    {"dateTaken", [](PhotoData* photo) { photo->dateTaken = QDate(2020, 1, 1).startOfDay(); }},
    {"width", [](PhotoData* photo) { photo->width = 1; }},
    {"height", [](PhotoData* photo) { photo->height = 1; }},
    {"orientation", [](PhotoData* photo) { photo->orientation = 1; }}};

const FieldChange<MoodsetData> MoodsetChanges[] = {
    {"displayName", [](MoodsetData* moodset) { moodset->displayName = QStringLiteral("x"); }},
    {"homeWallpaper", [](MoodsetData* moodset) { moodset->homeWallpaper = QStringLiteral("x"); }},
    {"applicationWallpaper",
     [](MoodsetData* moodset) { moodset->applicationWallpaper = QStringLiteral("x"); }},
    {"partnerSpace", [](MoodsetData* moodset) { moodset->partnerSpace = QStringLiteral("x"); }},
    {"dorselId", [](MoodsetData* moodset) { moodset->dorselId = QStringLiteral("x"); }},
    {"highlightColor", [](MoodsetData* moodset) { moodset->highlightColor = Qt::red; }},
    {"secondaryHighlightColor",
     [](MoodsetData* moodset) { moodset->secondaryHighlightColor = Qt::red; }},
    {"primaryColor", [](MoodsetData* moodset) { moodset->primaryColor = Qt::red; }},
    {"secondaryColor", [](MoodsetData* moodset) { moodset->secondaryColor = Qt::red; }},
    {"timestamp",
     [](MoodsetData* moodset) { moodset->timestamp = QDate(2020, 1, 1).startOfDay(); }},
    {"resources", [](MoodsetData* moodset) { moodset->resources.insert(QStringLiteral("x"), 1); }},
    {"ringerVolume", [](MoodsetData* moodset) { moodset->ringerVolume = 1; }},
    {"enabledSounds", [](MoodsetData* moodset) { moodset->enabledSounds = 1; }},
    {"version", [](MoodsetData* moodset) { moodset->version = 1; }},
    {"favorite", [](MoodsetData* moodset) { moodset->favorite = true; }}};

/// Adds a row for each pair of records of class T that differ in one field.
template <typename T, typename Changes>
void addChangedRecords(const char* kind, const Changes& changes)
{
    for (const auto& change : changes) {
        auto* const record = new T(5, QUrl(QStringLiteral("file:///a")));
        change.change(record);
        QTest::addRow("%s, %s", kind, change.field)
            << Content(new T(5, QUrl(QStringLiteral("file:///a")))) << Content(record) << false;
    }
}

} // namespace

class ContentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nullHandleHasNoTypeAndNoRecord()
    {
        const Content content;

        QVERIFY(!content.isValid());
        QCOMPARE(content.type(), -1);
        QVERIFY(!content.data());
        QVERIFY(!Content(nullptr).isValid());
    }

    void handleGivesItsRecord()
    {
        auto* const photo = new PhotoData(5, QUrl());

        const Content content(photo);

        QVERIFY(content.isValid());
        QCOMPARE(content.type(), 2);
        QCOMPARE(content.data(), photo);
    }

    void copiesShareTheRecordUntilTheLastIsGone()
    {
        int deaths = 0;
        Content second;
        {
            const Content first(new MortalRecord(&deaths));
            second = first;
            const Content third(second);
            QCOMPARE(third.data(), first.data());
        }
        QCOMPARE(deaths, 0);

        second = Content();

        QCOMPARE(deaths, 1);
    }

    void handlesAreEqualByTypeAndId_data()
    {
        QTest::addColumn<Content>("left");
        QTest::addColumn<Content>("right");
        QTest::addColumn<bool>("equal");
        const QUrl url(QStringLiteral("file:///a"));
        const Content file(new FileData(5, url));
        QTest::newRow("null and null") << Content() << Content() << true;
        QTest::newRow("null and record") << Content() << file << false;
        QTest::newRow("record and null") << file << Content() << false;
        QTest::newRow("one record") << file << file << true;
        QTest::newRow("another id") << file << Content(new FileData(6, url)) << false;
        QTest::newRow("another type") << file << Content(new PhotoData(5, url)) << false;
        auto* const renamed = new FileData(5, QUrl(QStringLiteral("file:///b")));
        renamed->fileName = QStringLiteral("b");
        QTest::newRow("other fields") << file << Content(renamed) << true;
    }

    void handlesAreEqualByTypeAndId()
    {
        QFETCH(Content, left);
        QFETCH(Content, right);
        QFETCH(bool, equal);

        QCOMPARE(left == right, equal);
        QCOMPARE(left != right, !equal);
    }

    void typedHandlesAreEqualByTypeAndId()
    {
        const Moodset moodset(new MoodsetData(5, QUrl()));
        Moodset changed = moodset;
        changed->displayName = QStringLiteral("changed");

        QVERIFY(moodset.constData() != changed.constData());
        QVERIFY(moodset == changed);
        QVERIFY(!(moodset != changed));
        QVERIFY(moodset == Moodset(new MoodsetData(5, QUrl())));
        QVERIFY(moodset != Moodset(new MoodsetData(6, QUrl())));
        QVERIFY(moodset != Moodset());
        QVERIFY(Moodset() == Moodset());
    }

    void testForNullCopiesNothing()
    {
        const Moodset first(new MoodsetData(5, QUrl()));
        Moodset second = first;
        Moodset null;

        QCOMPARE(second ? 1 : 0, 1);
        QVERIFY(second != nullptr && nullptr != second);
        QVERIFY(!(second == nullptr) && !(nullptr == second));
        QVERIFY(!null && null == nullptr && nullptr == null);

        QCOMPARE(second.constData(), first.constData());
    }

    void allFieldsAreCompared_data()
    {
        QTest::addColumn<Content>("left");
        QTest::addColumn<Content>("right");
        QTest::addColumn<bool>("same");
        const QUrl url(QStringLiteral("file:///a"));
        const Content file(new FileData(5, url));
        QTest::newRow("null and null") << Content() << Content() << true;
        QTest::newRow("null and record") << Content() << file << false;
        QTest::newRow("record and null") << file << Content() << false;
        QTest::newRow("one record") << file << file << true;
        QTest::newRow("files") << file << Content(new FileData(5, url)) << true;
        QTest::newRow("photos") << Content(new PhotoData(5, url)) << Content(new PhotoData(5, url))
                                << true;
        QTest::newRow("moodsets") << Content(new MoodsetData(5, url))
                                  << Content(new MoodsetData(5, url)) << true;
        QTest::newRow("another type") << file << Content(new PhotoData(5, url)) << false;
        addChangedRecords<FileData>("file", FileChanges);
        addChangedRecords<PhotoData>("photo as a file", FileChanges);
        addChangedRecords<MoodsetData>("moodset as a file", FileChanges);
        addChangedRecords<PhotoData>("photo", PhotoChanges);
        addChangedRecords<MoodsetData>("moodset", MoodsetChanges);
    }

    void allFieldsAreCompared()
    {
        QFETCH(Content, left);
        QFETCH(Content, right);
        QFETCH(bool, same);

        QCOMPARE(hasSameFields(left, right), same);
    }

    void typedHandleTakesOnlyItsOwnKind()
    {
        const Content photo(new PhotoData(5, QUrl()));

        const ContentSpecialization<PhotoData> same(photo);
        const Moodset other(photo);
        // A photo is a file by class, but not by kind.
        const ContentSpecialization<FileData> base(photo);

        QCOMPARE(same.constData(), photo.data());
        QVERIFY(!other);
        QVERIFY(!base);
        QVERIFY(!Moodset(Content()));
    }

    void typedHandleConvertsBackToTheSameRecord()
    {
        const Moodset moodset(new MoodsetData(5, QUrl()));

        const Content content = moodset;

        QCOMPARE(content.data(), moodset.constData());
        QVERIFY(!Content(Moodset()).isValid());
    }

    void writingLeavesOtherHandlesUnchanged()
    {
        Moodset written(new MoodsetData(5, QUrl()));
        written->displayName = QStringLiteral("before");
        const Moodset typed = written;
        const Content untyped = written;

        written->displayName = QStringLiteral("after");

        QCOMPARE(written->displayName, QStringLiteral("after"));
        QCOMPARE(typed->displayName, QStringLiteral("before"));
        QCOMPARE(untyped.data()->data(5), QVariant(QStringLiteral("before")));
    }

    void writingThroughTheOnlyHandleCopiesNothing()
    {
        Moodset moodset(new MoodsetData(5, QUrl()));
        const MoodsetData* const record = moodset.constData();

        moodset->displayName = QStringLiteral("after");

        QCOMPARE(moodset.constData(), record);
    }

    void constAccessShares()
    {
        const Moodset first(new MoodsetData(5, QUrl()));
        const Moodset second = first;

        QCOMPARE(second->id, 5);

        QCOMPARE(second.constData(), first.constData());
    }
};

QTEST_GUILESS_MAIN(ContentTest)

#include "tst_content.moc"
