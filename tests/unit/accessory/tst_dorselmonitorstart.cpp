// SPDX-License-Identifier: BSD-3-Clause
#include "phone.h"

#include "dconfcommand.h"
#include "mgconfitem.h"

#include <QDBusVariant>
#include <QDir>
#include <QFileSystemWatcher>
#include <QTest>

namespace {

const QString Id = QStringLiteral("cover-1");

QString urlOf(const QString& path)
{
    return QUrl::fromLocalFile(path).toString();
}

QString partnerSpace()
{
    return QString::fromUtf8(runDconf(
        {QStringLiteral("read"),
         QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset")}));
}

QStringList twice(const QStringList& warnings)
{
    return warnings + warnings;
}

/// The test uses this delay of the first check, in milliseconds.
constexpr int ShortDelay = 200;

} // namespace

/// Tests how the monitor handles the state that it finds at its start.
class DorselMonitorStartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void phoneWithoutACoverStartsWithoutAWord()
    {
        Phone phone;

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), QString());
        QCOMPARE(phone.takeWarnings(), QStringList());
    }

    void propertiesAreReadOneByOneAndNothingElseIsAsked()
    {
        Phone phone;

        QVERIFY(phone.start());

        QCOMPARE(
            phone.cover.takeCalls(),
            QStringList(
                {QStringLiteral("Get(\"com.zavro.dorseld\", \"DORSELID\")"),
                 QStringLiteral("Get(\"com.zavro.dorseld\", \"Ready\")")}));
        QCOMPARE(phone.lock.takeCalls(), QStringList(QStringLiteral("state()")));
        QCOMPARE(phone.storeClient.takeCalls(), QStringList());
    }

    void newIdAtStartIsCheckedOnceAfterADelay()
    {
        QCOMPARE(DorselMonitor::FirstCheckDelay, 5000);
        Phone phone;
        // This is longer than the start of the services takes.
        phone.firstCheckDelay = 1000;
        phone.cover.setProperties(Id, 1);
        QElapsedTimer clock;
        clock.start();

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), Id);
        int sounds = 0;
        QTRY_COMPARE(sounds += phone.takeSounds(), 1);
        // Qt may fire a timer earlier by up to a twentieth.
        QVERIFY(clock.elapsed() >= phone.firstCheckDelay * 19 / 20);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void favouriteOfANewIdAtStartIsSwitchedTo()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        phone.cover.setProperties(Id, 1);
        phone.firstCheckDelay = ShortDelay;

        QVERIFY(phone.start());

        QStringList switches;
        QTRY_COMPARE(switches += phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void unchangedIdAtStartIsNotChecked()
    {
        Phone phone;
        Phone::storeId(Id);
        phone.addMoodset(Id);
        phone.cover.setProperties(Id, 1);
        phone.firstCheckDelay = ShortDelay;
        QVERIFY(phone.start());
        // A check that another monitor has scheduled later comes first.
        Phone::storeId(QString());
        DorselMonitor other(nullptr, ShortDelay);
        QSignalSpy later(&other, &DorselMonitor::activeMoodset);

        QTRY_COMPARE(later.count(), 1);

        QCOMPARE(phone.takeSwitches(), QStringList());
    }

    void unchangedIdIsNotActedUponByALaterWordEither()
    {
        Phone phone;
        Phone::storeId(Id);
        phone.addMoodset(Id);
        phone.cover.setProperties(Id, 1);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
    }

    void storedIdOutlivesAStartWithoutACover()
    {
        Phone phone;
        Phone::storeId(Id);
        Phone::store(QStringLiteral("follow_dorselid_changes"), 1);

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), Id);
    }

    void readinessAtStartIsKept()
    {
        Phone phone;
        phone.cover.setProperties(Id, 0);
        QVERIFY(phone.start());
        QCOMPARE(Phone::storedId(), Id);

        phone.monitor->checkDorselStatus();

        QCOMPARE(phone.takeSounds(), 0);
    }

    void newIdAtStartWaitsForTheWizard()
    {
        Phone phone;
        phone.undoWizard();
        const QString path = phone.addMoodset(Id);
        phone.cover.setProperties(Id, 1);
        QVERIFY(phone.start());
        QCOMPARE(Phone::storedId(), Id);
        QVERIFY(phone.monitor->findChild<QFileSystemWatcher*>() != nullptr);

        // Any other change in the home folder does nothing.
        QVERIFY(QDir::home().mkdir(QStringLiteral("folder")));
        QVERIFY(QDir::home().rmdir(QStringLiteral("folder")));
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QVERIFY(phone.monitor->findChild<QFileSystemWatcher*>() != nullptr);

        phone.finishWizard();

        QStringList switches;
        QTRY_COMPARE(switches += phone.takeSwitches(), QStringList(urlOf(path)));
        QTRY_VERIFY(phone.monitor->findChild<QFileSystemWatcher*>() == nullptr);
        QCOMPARE(phone.takeSounds(), 1);
    }

    void homeFolderIsNotWatchedWithoutANewId_data()
    {
        QTest::addColumn<bool>("wizardHasFinished");
        QTest::addColumn<QString>("id");
        QTest::newRow("no cover, wizard at work") << false << QString();
        QTest::newRow("the same cover, wizard at work") << false << Id;
        QTest::newRow("another cover, wizard finished") << true << QStringLiteral("cover-2");
    }

    void homeFolderIsNotWatchedWithoutANewId()
    {
        QFETCH(bool, wizardHasFinished);
        QFETCH(QString, id);
        Phone phone;
        Phone::storeId(Id);
        phone.cover.setProperties(id, 1);
        if (!wizardHasFinished) {
            phone.undoWizard();
        }

        QVERIFY(phone.start());

        QVERIFY(phone.monitor->findChild<QFileSystemWatcher*>() == nullptr);
    }

    void backCoverDaemonThatIsNotThereIsLoggedForEachProperty()
    {
        Phone phone;

        phone.makeMonitor();

        QCOMPARE(
            phone.takeWarnings(),
            twice(propertyWarnings(
                QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
                QStringLiteral("The name com.zavro.dorseld was not provided by any .service "
                               "files"))));
        QCOMPARE(Phone::storedId(), QString());
    }

    void servicesThatComeLaterAreFollowed()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        phone.makeMonitor();
        QCOMPARE(phone.takeWarnings().count(), 4);
        QVERIFY(phone.cover.appear() && phone.lock.appear() && phone.feedback.appear());
        QVERIFY(phone.storeClient.appear());
        QTRY_VERIFY(phone.hasFeedback());
        phone.lock.announce(1);

        phone.attach(QStringLiteral("unknown"));
        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
        QCOMPARE(phone.takeSounds(), 2);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void errorOfTheBackCoverDaemonIsNoId()
    {
        Phone phone;
        phone.cover.answerWithError(
            QStringLiteral("Get"), QStringLiteral("com.zavro.Error.Tag"),
            QStringLiteral("tag \"lost\""));

        QVERIFY(phone.start());

        QCOMPARE(
            phone.takeWarnings(),
            twice(propertyWarnings(
                QStringLiteral("com.zavro.Error.Tag"), QStringLiteral("tag \\\"lost\\\""))));
        QCOMPARE(Phone::storedId(), QString());
    }

    void valueThatIsNoVariantIsNoId()
    {
        Phone phone;
        phone.cover.answer(QStringLiteral("Get"), QVariantList{Id});

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), QString());
    }

    void answerWithoutAValueIsNoId()
    {
        Phone phone;
        phone.cover.answer(QStringLiteral("Get"), QVariantList());

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), QString());
    }

    void valuesOfOtherTypesAreConverted()
    {
        Phone phone;
        phone.cover.setProperties(815, QStringLiteral("1"));
        QVERIFY(phone.start());
        QCOMPARE(Phone::storedId(), QStringLiteral("815"));

        phone.monitor->checkDorselStatus();

        QCOMPARE(phone.takeSounds(), 1);
        QCOMPARE(phone.takeStoreCalls(), QStringList(QStringLiteral("815")));
    }

    void answerThatComesLateIsWaitedFor()
    {
        Phone phone;
        phone.cover.answer(QStringLiteral("Get"), [](const QDBusMessage& call) {
            QThread::msleep(300);
            const bool isId = call.arguments().value(1).toString() == QLatin1String("DORSELID");
            return call.createReply(QVariant::fromValue(
                QDBusVariant(isId ? QVariant(QStringLiteral("late")) : QVariant(0))));
        });

        QVERIFY(phone.start());

        QCOMPARE(Phone::storedId(), QStringLiteral("late"));
    }

    void lockThatDoesNotAnswerHoldsUpNothingAndIsOpen()
    {
        Phone phone;
        phone.lock.answerLater(QStringLiteral("state"));
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void lockThatAnswersLateIsShutFromThenOn()
    {
        Phone phone;
        phone.lock.answerLater(QStringLiteral("state"));
        QVERIFY(phone.start());

        phone.lock.answerOpenCalls({1});
        // The bus has passed on the answer before the next message of the lock.
        phone.lock.send(
            QStringLiteral("/"), QStringLiteral("com.example"), QStringLiteral("nothing"), {});
        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void lockWithAnErrorIsOpen()
    {
        Phone phone;
        phone.lock.answerWithError(
            QStringLiteral("state"), QStringLiteral("com.example.No"), QStringLiteral("1"));
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void stateOfTheLockThatIsNoNumberIsOpen_data()
    {
        QTest::addColumn<QVariant>("state");
        QTest::newRow("a word") << QVariant(QStringLiteral("locked"));
        QTest::newRow("a list") << QVariant(QStringList{QStringLiteral("1")});
    }

    void stateOfTheLockThatIsNoNumberIsOpen()
    {
        QFETCH(QVariant, state);
        Phone phone;
        phone.lock.setState(state);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void partnerSpaceOfTheActiveMoodsetIsRestored()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        phone.setPartnerSpace(path, QStringLiteral("music"));
        Phone::store(QStringLiteral("active_moodset"), path);
        QFile entry(QStringLiteral("/usr/share/applications/music.desktop"));
        QVERIFY(entry.open(QIODevice::WriteOnly));

        QVERIFY(phone.start());

        QCOMPARE(partnerSpace(), QStringLiteral("'/usr/share/applications/music.desktop'"));
        QVERIFY(entry.remove());
    }

    void moodsetWithoutAPartnerSpaceClearsIt()
    {
        Phone phone;
        Phone::store(QStringLiteral("active_moodset"), phone.addMoodset(Id));
        MGConfItem(QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset"))
            .set(QStringLiteral("/old"));

        QVERIFY(phone.start());

        QCOMPARE(partnerSpace(), QStringLiteral("''"));
    }

    void partnerSpaceIsLeftAlone_data()
    {
        QTest::addColumn<bool>("wizardHasFinished");
        QTest::addColumn<QString>("active");
        QTest::newRow("no active moodset") << true << QString();
        QTest::newRow("an unknown moodset") << true << QStringLiteral("/gone.moodset");
        QTest::newRow("wizard at work") << false << QStringLiteral("/bundles/cover-1 #1.moodset");
    }

    void partnerSpaceIsLeftAlone()
    {
        QFETCH(bool, wizardHasFinished);
        QFETCH(QString, active);
        Phone phone;
        phone.addMoodset(Id);
        Phone::store(QStringLiteral("active_moodset"), active);
        MGConfItem(QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset"))
            .set(QStringLiteral("/old"));
        MGConfItem::sync();
        if (!wizardHasFinished) {
            phone.undoWizard();
        }

        QVERIFY(phone.start());

        QCOMPARE(partnerSpace(), QStringLiteral("'/old'"));
    }
};

QTEST_GUILESS_MAIN(DorselMonitorStartTest)

#include "tst_dorselmonitorstart.moc"
