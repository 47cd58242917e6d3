// SPDX-License-Identifier: BSD-3-Clause
#include "content/content.h"
#include "content/filedata.h"
#include "content/moodsetdata.h"
#include "content/photodata.h"

#include <QTest>

Q_DECLARE_METATYPE(Content)

namespace {

/// A record that tells of its end.
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
