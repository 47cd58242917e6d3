// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/filequeryagent.h"
#include "content/moodsetqueryagent.h"
#include "content/photoqueryagent.h"
#include "contentlibrary.h"

#include <memory>
#include <numeric>

namespace {

using MoodsetContent::Type;

void add(ContentWriter& writer, Type type, const QString& path)
{
    switch (type) {
    case MoodsetContent::Moodset:
        writer.addMoodset(path);
        break;
    case MoodsetContent::Image:
        writer.addPhoto(path);
        break;
    default:
        writer.addFile(path);
    }
}

std::unique_ptr<QueryAgent> makeAgent(Type type, QueryAgentDatabase& database)
{
    switch (type) {
    case MoodsetContent::Moodset:
        return std::make_unique<MoodsetQueryAgent>(database);
    case MoodsetContent::Image:
        return std::make_unique<PhotoQueryAgent>(database);
    default:
        return std::make_unique<FileQueryAgent>(database);
    }
}

/// Ends a listing after some batches.
class EndingRecipient final : public QueryAgent::Recipient
{
public:
    explicit EndingRecipient(int wanted)
        : m_wanted(wanted)
    {
    }
    void receive(const QVector<Content>& /*batch*/) override { ++batches; }
    bool wantsMore() const override { return batches < m_wanted; }

    int batches = 0;

private:
    const int m_wanted;
};

} // namespace

/// Tests how agents of each kind deliver a listing.
class QueryBatchesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("files") << int(MoodsetContent::File);
        QTest::newRow("pictures") << int(MoodsetContent::Image);
        QTest::newRow("moodsets") << int(MoodsetContent::Moodset);
    }

    void listingComesInBatchesOfFifty_data()
    {
        QTest::addColumn<QList<int>>("sizes");
        QTest::newRow("0") << QList<int>{0};
        QTest::newRow("1") << QList<int>{1};
        QTest::newRow("49") << QList<int>{49};
        QTest::newRow("50") << QList<int>{50, 0};
        QTest::newRow("51") << QList<int>{50, 1};
        QTest::newRow("100") << QList<int>{50, 50, 0};
    }

    void listingComesInBatchesOfFifty()
    {
        QFETCH_GLOBAL(int, type);
        QFETCH(QList<int>, sizes);
        const int count = std::accumulate(sizes.cbegin(), sizes.cend(), 0);
        ContentLibrary library;
        library.writer.addMany(count, [&library, type](const QString& path) {
            add(library.writer, Type(type), path);
        });
        const auto agent = makeAgent(Type(type), library.reader);
        BatchRecorder recorder;

        QVERIFY(agent->query(&recorder, {}));

        QCOMPARE(recorder.batchSizes(), sizes);
    }

    void recipientCanEndAListing()
    {
        QFETCH_GLOBAL(int, type);
        ContentLibrary library;
        library.writer.addMany(
            200, [&library, type](const QString& path) { add(library.writer, Type(type), path); });
        const auto agent = makeAgent(Type(type), library.reader);
        EndingRecipient recipient(2);

        QVERIFY(agent->query(&recipient, {}));

        QCOMPARE(recipient.batches, 2);
        // The next listing is complete, and sees what was written in the meantime.
        add(library.writer, Type(type), QStringLiteral("/later/a.jpg"));
        BatchRecorder recorder;
        QVERIFY(agent->query(&recorder, {}));
        QCOMPARE(recorder.contents().size(), 201);
    }

    void listingNeedsNoRecipient()
    {
        QFETCH_GLOBAL(int, type);
        ContentLibrary library;
        add(library.writer, Type(type), QStringLiteral("/a/b.jpg"));
        const auto agent = makeAgent(Type(type), library.reader);

        QVERIFY(agent->query(nullptr, {}));
    }
};

QTEST_GUILESS_MAIN(QueryBatchesTest)

#include "tst_querybatches.moc"
