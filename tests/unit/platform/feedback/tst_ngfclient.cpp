// SPDX-License-Identifier: BSD-3-Clause
#include "ngfclient.h"

#include "messagelog.h"
#include "playedphone.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

const QLatin1String ServiceName("org.sigxcpu.Feedback");
const QLatin1String Trigger("TriggerFeedback");

constexpr quint32 NotFound = PlayedFeedback::NotFound;
constexpr quint32 Natural = 0;
constexpr quint32 Expired = 1;
constexpr quint32 Explicit = 2;

QVector<quint32> ids(const QSignalSpy& failures)
{
    QVector<quint32> ids;
    for (const QVariantList& arguments : failures) {
        ids.append(arguments.constFirst().toUInt());
    }
    return ids;
}

/// Waits until everything that the service has sent is handled, by making a further event fail.
bool settle(Ngf::Client* client, PlayedFeedback* service, QSignalSpy* failures)
{
    service->answerWithError(Trigger, QStringLiteral("com.example.Fence"), QString());
    const quint32 fence = client->play(QStringLiteral("fence"));
    const bool failed = QTest::qWaitFor([&] { return ids(*failures).contains(fence); });
    if (failed) {
        failures->removeLast();
    }
    return failed;
}

/// A client that is connected to a played service, and the events that have failed for it.
class ConnectedClient
{
public:
    ConnectedClient()
        : failures(&client, &Ngf::Client::eventFailed)
    {
        if (!service.appear()) {
            QTest::qFail("Cannot play the service", __FILE__, __LINE__);
        }
        client.connect();
        if (!QTest::qWaitFor([this] { return client.isConnected(); })) {
            QTest::qFail("The client does not connect", __FILE__, __LINE__);
        }
    }

    QVector<quint32> failedIds() const { return ids(failures); }
    bool settle() { return ::settle(&client, &service, &failures); }

private:
    MessageLog m_log;

public:
    PlayedFeedback service;
    Ngf::Client client;
    QSignalSpy failures;
};

/// Makes the bus able to start the service, with a program that never takes its name.
class ActivationFile
{
public:
    explicit ActivationFile(const QByteArray& program)
    {
        const QDir folder(
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
            + QStringLiteral("/dbus-1/services"));
        m_file.setFileName(folder.filePath(ServiceName + QStringLiteral(".service")));
        const QByteArray text =
            "[D-BUS Service]\nName=org.sigxcpu.Feedback\nExec=" + program + '\n';
        if (!folder.mkpath(QStringLiteral(".")) || !m_file.open(QIODevice::WriteOnly)
            || m_file.write(text) != text.size() || !m_file.flush()) {
            QTest::qFail("Cannot write the activation file", __FILE__, __LINE__);
        }
        reload();
    }

    ~ActivationFile()
    {
        m_file.remove();
        reload();
    }
    Q_DISABLE_COPY_MOVE(ActivationFile)

private:
    static void reload()
    {
        QDBusConnection::sessionBus().interface()->call(QStringLiteral("ReloadConfig"));
    }

    QFile m_file;
};

} // namespace

class NgfClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void connectDoesNotWaitForTheBus()
    {
        const MessageLog log;
        PlayedFeedback service;
        QVERIFY(service.appear());
        Ngf::Client client;

        client.connect();

        QVERIFY(!client.isConnected());
        QTRY_VERIFY(client.isConnected());
    }

    void connectedAsLongAsTheServiceRuns()
    {
        const MessageLog log;
        PlayedFeedback service;
        Ngf::Client client;
        client.connect();
        QVERIFY(service.appear());
        QTRY_VERIFY(client.isConnected());

        service.vanish();
        QTRY_VERIFY(!client.isConnected());
        QVERIFY(service.appear());

        QTRY_VERIFY(client.isConnected());
    }

    void notConnectedBeforeItIsAskedTo()
    {
        const MessageLog log;
        PlayedFeedback service;
        QVERIFY(service.appear());
        Ngf::Client asked;
        const Ngf::Client other;

        asked.connect();

        QTRY_VERIFY(asked.isConnected());
        QVERIFY(!other.isConnected());
    }

    void secondConnectChangesNothing()
    {
        ConnectedClient test;

        test.client.connect();

        QVERIFY(test.client.isConnected());
        const quint32 id = test.client.play(QStringLiteral("a"));
        test.service.end(7, NotFound);
        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>{id});
    }

    void eventIsTriggeredOnceWithTheNameAsGiven()
    {
        ConnectedClient test;
        QString signature;
        test.service.answer(Trigger, [&signature](const QDBusMessage& call) {
            signature = call.signature();
            return call.createReply(7U);
        });

        test.client.play(QStringLiteral("dorsel_attach"));

        QVERIFY(test.service.waitForCalls(1));
        QVERIFY(test.settle());
        QCOMPARE(
            test.service.takeCalls().constFirst(),
            QStringLiteral("TriggerFeedback(\"com.zavro.moodsetd\", \"dorsel_attach\", , -1)"));
        QCOMPARE(signature, QStringLiteral("ssa{sv}i"));
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void idsAreOurOwnFromOneOn()
    {
        ConnectedClient test;

        QCOMPARE(test.client.play(QStringLiteral("a")), 1U);
        QCOMPARE(test.client.play(QStringLiteral("a")), 2U);
        QCOMPARE(test.client.play(QStringLiteral("b")), 3U);
    }

    void eventFailsFromTheEventLoopWithoutAService()
    {
        const MessageLog log;
        Ngf::Client client;
        const QSignalSpy failures(&client, &Ngf::Client::eventFailed);

        const quint32 id = client.play(QStringLiteral("a"));
        QCOMPARE(failures.count(), 0);

        QTRY_COMPARE(ids(failures), QVector<quint32>{id});
    }

    void endOfAnEvent_data()
    {
        QTest::addColumn<quint32>("reason");
        QTest::addColumn<bool>("fails");
        QTest::newRow("unknown to the theme") << NotFound << true;
        QTest::newRow("natural") << Natural << false;
        QTest::newRow("expired") << Expired << false;
        QTest::newRow("explicit") << Explicit << false;
    }

    void endOfAnEvent()
    {
        QFETCH(quint32, reason);
        QFETCH(bool, fails);
        ConnectedClient test;
        const quint32 id = test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.end(7, reason);

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), fails ? QVector<quint32>{id} : QVector<quint32>());
    }

    void endThatComesBeforeTheAnswer_data() { endOfAnEvent_data(); }

    void endThatComesBeforeTheAnswer()
    {
        QFETCH(quint32, reason);
        QFETCH(bool, fails);
        ConnectedClient test;
        test.service.answerLater(Trigger);
        const quint32 id = test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.end(7, reason);
        test.service.answerOpenCalls({7U});

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), fails ? QVector<quint32>{id} : QVector<quint32>());
    }

    void numberThatIsUsedAgainBelongsToTheLaterEvent()
    {
        ConnectedClient test;
        test.service.answerLater(Trigger);
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));
        // This is the end of an event of another program, which has the same number.
        test.service.end(7, NotFound);
        test.service.answerOpenCalls({8U});
        QVERIFY(test.settle());
        test.service.takeCalls();

        test.service.answer(Trigger, {7U});
        test.client.play(QStringLiteral("b"));
        QVERIFY(test.service.waitForCalls(1));

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void endThatComesWhileNoEventIsUnderWayMeansNothingToTheNextOne()
    {
        ConnectedClient test;
        // It shows that the end has arrived without an event of the client under test.
        Ngf::Client other;
        other.connect();
        QTRY_VERIFY(other.isConnected());
        QSignalSpy otherFailures(&other, &Ngf::Client::eventFailed);
        test.service.end(7, NotFound);
        QVERIFY(settle(&other, &test.service, &otherFailures));
        test.service.takeCalls();

        test.service.answer(Trigger, {7U});
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void oneEndEndsOneOfTwoEventsWithItsNumber()
    {
        ConnectedClient test;
        test.service.answerLater(Trigger);
        const quint32 first = test.client.play(QStringLiteral("a"));
        test.client.play(QStringLiteral("b"));
        QVERIFY(test.service.waitForCalls(2));

        test.service.end(7, NotFound);
        test.service.answerOpenCalls({7U});

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>{first});
    }

    void endOfAnEventIsToldOnce()
    {
        ConnectedClient test;
        const quint32 id = test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.end(7, NotFound);
        test.service.end(7, NotFound);

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>{id});
    }

    void eventsOfOthersDoNotConcernIt()
    {
        ConnectedClient test;
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.end(6, NotFound);
        test.service.end(8, NotFound);

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void endFromAnotherSenderDoesNotCount()
    {
        ConnectedClient test;
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/org/sigxcpu/Feedback"), ServiceName, QStringLiteral("FeedbackEnded"));
        signal << 7U << NotFound;
        QVERIFY(QDBusConnection::sessionBus().send(signal));

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void endOfAnotherFormDoesNotCount_data()
    {
        QTest::addColumn<QVariantList>("values");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("one number") << QVariantList{7U};
        QTest::newRow("texts") << QVariantList{QStringLiteral("7"), QStringLiteral("4294967295")};
        QTest::newRow("signed numbers") << QVariantList{7, -1};
    }

    void endOfAnotherFormDoesNotCount()
    {
        QFETCH(QVariantList, values);
        ConnectedClient test;
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.sendEnd(values);

        QVERIFY(test.settle());
        QCOMPARE(test.failedIds(), QVector<quint32>());
    }

    void answerThatIsNoNumberFailsTheEvent_data()
    {
        QTest::addColumn<QVariantList>("values");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("a text") << QVariantList{QStringLiteral("7")};
        QTest::newRow("a signed number") << QVariantList{7};
    }

    void answerThatIsNoNumberFailsTheEvent()
    {
        QFETCH(QVariantList, values);
        ConnectedClient test;
        test.service.answer(Trigger, values);

        const quint32 id = test.client.play(QStringLiteral("a"));

        QTRY_COMPARE(test.failedIds(), QVector<quint32>{id});
    }

    void errorFailsTheEvent()
    {
        ConnectedClient test;
        test.service.answerWithError(
            Trigger, QStringLiteral("com.example.Refused"), QStringLiteral("no"));

        const quint32 id = test.client.play(QStringLiteral("a"));

        QTRY_COMPARE(test.failedIds(), QVector<quint32>{id});
    }

    void answerThatNeverComesFailsTheEventAndHoldsUpNothing()
    {
        ConnectedClient test;
        test.service.answerLater(Trigger);
        QElapsedTimer clock;
        clock.start();

        const quint32 id = test.client.play(QStringLiteral("a"));
        const qint64 heldUp = clock.elapsed();

        QVERIFY(heldUp < 5000);
        QTRY_COMPARE_WITH_TIMEOUT(test.failedIds(), QVector<quint32>{id}, 12000);
        QVERIFY(clock.elapsed() > 2500);
        QVERIFY(test.client.isConnected());
    }

    void serviceThatVanishesBeforeItsAnswerFailsTheEvent()
    {
        ConnectedClient test;
        test.service.answerLater(Trigger);
        const quint32 id = test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));

        test.service.vanish();

        QTRY_COMPARE_WITH_TIMEOUT(test.failedIds(), QVector<quint32>{id}, 4000);
    }

    void serviceThatVanishesFailsTheEventsThatItHasBegun()
    {
        ConnectedClient test;
        quint32 count = 0;
        test.service.answer(
            Trigger, [&count](const QDBusMessage& call) { return call.createReply(++count); });
        const quint32 first = test.client.play(QStringLiteral("a"));
        test.client.play(QStringLiteral("b"));
        const quint32 third = test.client.play(QStringLiteral("c"));
        QVERIFY(test.service.waitForCalls(3));
        test.service.end(2, Natural);
        QVERIFY(test.settle());

        test.service.vanish();

        QTRY_COMPARE(test.failedIds(), QVector<quint32>({first, third}));
    }

    void numbersOfAFormerServiceMeanNothingToItsSuccessor()
    {
        ConnectedClient test;
        test.client.play(QStringLiteral("a"));
        QVERIFY(test.service.waitForCalls(1));
        test.service.vanish();
        QTRY_COMPARE(test.failures.count(), 1);
        QVERIFY(test.service.appear());
        QTRY_VERIFY(test.client.isConnected());

        test.service.end(7, NotFound);

        QVERIFY(test.settle());
        QCOMPARE(test.failures.count(), 1);
    }

    void serviceThatTheBusCanStartCountsAsConnected()
    {
        const MessageLog log;
        const ActivationFile activation("/bin/false");
        Ngf::Client client;

        client.connect();

        QTRY_VERIFY(client.isConnected());
        QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(ServiceName));
    }

    void eventStartsTheService()
    {
        const MessageLog log;
        // The bus passes the call to any process that takes the name in the meantime.
        const ActivationFile activation("/bin/sleep 600");
        PlayedFeedback service;
        Ngf::Client client;
        QSignalSpy failures(&client, &Ngf::Client::eventFailed);
        client.connect();
        QTRY_VERIFY(client.isConnected());

        const quint32 id = client.play(QStringLiteral("a"));
        QVERIFY(service.appear());

        QVERIFY(service.waitForCalls(1));
        service.end(7, NotFound);
        QVERIFY(settle(&client, &service, &failures));
        QCOMPARE(ids(failures), QVector<quint32>{id});
    }

    void serviceThatCannotBeStartedFailsTheEvent()
    {
        const MessageLog log;
        const ActivationFile activation("/bin/false");
        Ngf::Client client;
        const QSignalSpy failures(&client, &Ngf::Client::eventFailed);
        client.connect();
        QTRY_VERIFY(client.isConnected());

        const quint32 id = client.play(QStringLiteral("a"));
        QCOMPARE(failures.count(), 0);

        QTRY_COMPARE(ids(failures), QVector<quint32>{id});
    }

    void clientMayGoWithEventsOpen()
    {
        const MessageLog log;
        PlayedFeedback service;
        QVERIFY(service.appear());
        service.answerLater(Trigger);
        {
            Ngf::Client client;
            client.connect();
            QTRY_VERIFY(client.isConnected());
            client.play(QStringLiteral("a"));
            QVERIFY(service.waitForCalls(1));
        }
        Ngf::Client other;
        QSignalSpy failures(&other, &Ngf::Client::eventFailed);
        other.connect();
        QTRY_VERIFY(other.isConnected());

        service.answerOpenCalls({7U});

        QVERIFY(settle(&other, &service, &failures));
    }
};

QTEST_GUILESS_MAIN(NgfClientTest)

#include "tst_ngfclient.moc"
