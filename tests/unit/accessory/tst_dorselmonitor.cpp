// SPDX-License-Identifier: BSD-3-Clause
#include "phone.h"
#include "storetrace.h"

#include <QTest>

namespace {

const QString Id = QStringLiteral("cover-1");
const QString OtherId = QStringLiteral("cover-2");

QString urlOf(const QString& path)
{
    return QUrl::fromLocalFile(path).toString();
}

} // namespace

/// Tests how the monitor handles what the services send while it runs.
class DorselMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coverOfAFavouriteSwitchesTheMoodsetWithASound()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
        QCOMPARE(phone.takeSounds(), 1);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        QCOMPARE(Phone::storedId(), Id);
        QCOMPARE(phone.takeWarnings(), QStringList());
    }

    void idAndReadinessMayComeInOneChange()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.cover.announce({{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void idIsOnTheDiskAsSoonAsItIsReported()
    {
        Phone phone;
        QVERIFY(phone.start());
        StoreTrace::take();

        phone.cover.announce({{QStringLiteral("DORSELID"), Id}});

        QVERIFY(phone.settle());
        QCOMPARE(
            StoreTrace::take(),
            QStringList(
                {QStringLiteral("/desktop/zavro/theme/dorselid='cover-1'"),
                 QStringLiteral("sync")}));
    }

    void readinessBelowZeroCountsAsReady()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.cover.announce({{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), -1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void coverOfNoMoodsetSoundsAndTellsTheStoreAtEachCheck()
    {
        Phone phone;
        QVERIFY(phone.start());

        phone.attach(Id);
        phone.cover.announce({{QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 2);
        QCOMPARE(phone.takeStoreCalls(), QStringList({Id, Id}));
        QCOMPARE(phone.takeSwitches(), QStringList());
    }

    void moodsetThatIsInstalledForTheCoverIsSwitchedTo()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());

        const QString path = phone.addMoodset(Id);
        phone.cover.announce({{QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void repeatedReadinessDoesNothingMore()
    {
        Phone phone;
        phone.addMoodset(Id);
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches().count(), 1);
        QCOMPARE(phone.takeSounds(), 1);

        phone.cover.announce({{QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void anotherCoverSwitchesAgain()
    {
        Phone phone;
        phone.addMoodset(Id);
        const QString other = phone.addMoodset(OtherId);
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeSwitches();

        phone.attach(OtherId);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(other)));
        QCOMPARE(Phone::storedId(), OtherId);
    }

    void idAloneIsStoredAndStartsNoCheck()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.cover.announce({{QStringLiteral("DORSELID"), Id}});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), Id);
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        // The change counts for the next check.
        phone.cover.announce({{QStringLiteral("Ready"), 1}});
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void coverThatGoesLeavesTheId()
    {
        Phone phone;
        phone.addMoodset(Id);
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeSwitches();
        phone.takeSounds();

        phone.cover.announce({{QStringLiteral("Ready"), 0}});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), Id);
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void sameCoverThatComesBackDoesNothing()
    {
        Phone phone;
        phone.addMoodset(Id);
        QVERIFY(phone.start());
        phone.attach(Id);
        phone.cover.announce({{QStringLiteral("Ready"), 0}});
        QVERIFY(phone.settle());
        phone.takeSwitches();
        phone.takeSounds();

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
    }

    void coverThatGoesClearsTheIdIfItIsFollowed_data()
    {
        QTest::addColumn<QVariantMap>("changes");
        QTest::newRow("not ready") << QVariantMap{{QStringLiteral("Ready"), 0}};
        QTest::newRow("no id") << QVariantMap{
            {QStringLiteral("DORSELID"), QString()}, {QStringLiteral("Ready"), 1}};
    }

    void coverThatGoesClearsTheIdIfItIsFollowed()
    {
        QFETCH(QVariantMap, changes);
        Phone phone;
        const QString path = phone.addMoodset(Id);
        Phone::store(QStringLiteral("follow_dorselid_changes"), 1);
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeSwitches();
        phone.takeSounds();

        phone.cover.announce(changes);

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QString());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        // The same cover now counts as a new one.
        phone.attach(Id);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void emptyIdIsStoredAsItIsReported()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeSounds();
        phone.takeStoreCalls();

        phone.cover.announce(
            {{QStringLiteral("DORSELID"), QString()}, {QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QString());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void flagHoldsAtTheIntegerOneAlone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("holds");
        QTest::newRow("one") << QVariant(1) << true;
        QTest::newRow("zero") << QVariant(0) << false;
        QTest::newRow("two") << QVariant(2) << false;
        QTest::newRow("minus one") << QVariant(-1) << false;
        QTest::newRow("a word") << QVariant(QStringLiteral("yes")) << false;
    }

    void flagHoldsAtTheIntegerOneAlone()
    {
        QFETCH(QVariant, value);
        QFETCH(bool, holds);
        Phone phone;
        QVERIFY(phone.start());

        Phone::store(QStringLiteral("follow_dorselid_changes"), value);
        Phone::store(QStringLiteral("enable_dorsel_install"), value);

        QCOMPARE(phone.monitor->followDORSELIDchanges(), holds);
        QCOMPARE(phone.monitor->dorselInstallEnabled(), holds);
    }

    void unsetFlagsAllowTheStoreAndDoNotFollow()
    {
        Phone phone;
        QVERIFY(phone.start());

        QVERIFY(phone.monitor->dorselInstallEnabled());
        QVERIFY(!phone.monitor->followDORSELIDchanges());
    }

    void coverOfAMoodsetThatIsNoFavouriteIsUsedUp()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id, false);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        // If it becomes a favourite later, it is not applied.
        phone.setFavorite(path, true);
        phone.cover.announce({{QStringLiteral("Ready"), 1}});
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
    }

    void changeFromAnotherInterfaceIsLoggedAndIgnored_data()
    {
        QTest::addColumn<QVariantList>("arguments");
        const QVariantMap changes{{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), 1}};
        QTest::newRow("another name")
            << QVariantList{QStringLiteral("com.zavro.other"), changes, QStringList()};
        QTest::newRow("a number") << QVariantList{5, changes, QStringList()};
        QTest::newRow("nothing") << QVariantList();
    }

    void changeFromAnotherInterfaceIsLoggedAndIgnored()
    {
        QFETCH(QVariantList, arguments);
        Phone phone;
        QVERIFY(phone.start());

        phone.cover.sendChange(arguments);

        QStringList warnings;
        QTRY_COMPARE(
            warnings += phone.takeWarnings(),
            QStringList(QStringLiteral(
                "void DorselMonitor::propertiesChanged(const QDBusMessage&) PropertiesChanged from "
                "a wrong service \"org.freedesktop.DBus.Properties\"")));
        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QString());
        QCOMPARE(phone.takeSounds(), 0);
    }

    void changeOfOtherPropertiesChangesNothing()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeSounds();

        phone.cover.announce({{QStringLiteral("Colour"), QStringLiteral("red")}});
        phone.cover.announce({});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), Id);
        QCOMPARE(phone.takeSounds(), 0);
    }

    void changeOfAnotherFormChangesNothing_data()
    {
        const QString service = QStringLiteral("com.zavro.dorseld");
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("no changes") << QVariantList{service};
        QTest::newRow("a text") << QVariantList{service, Id};
        QTest::newRow("a list of texts") << QVariantList{service, QStringList{Id}};
        QTest::newRow("a list of variants") << QVariantList{service, QVariantList{1, Id}};
    }

    void changeOfAnotherFormChangesNothing()
    {
        QFETCH(QVariantList, arguments);
        Phone phone;
        QVERIFY(phone.start());

        phone.cover.sendChange(arguments);

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QString());
        QCOMPARE(phone.takeSounds(), 0);
        QCOMPARE(phone.takeWarnings(), QStringList());
    }

    void propertiesOfOtherTypesAreConverted()
    {
        Phone phone;
        QVERIFY(phone.start());

        phone.cover.announce(
            {{QStringLiteral("DORSELID"), 815}, {QStringLiteral("Ready"), QStringLiteral("1")}});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QStringLiteral("815"));
        QCOMPARE(phone.takeStoreCalls(), QStringList(QStringLiteral("815")));
    }

    void readinessThatIsNoNumberIsNone()
    {
        Phone phone;
        QVERIFY(phone.start());

        phone.cover.announce(
            {{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), QStringLiteral("yes")}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 0);
    }

    void signalOfAnotherSenderIsNotHeard()
    {
        Phone phone;
        QVERIFY(phone.start());

        phone.lock.send(
            QStringLiteral("/com/zavro/dorseld"), QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("PropertiesChanged"),
            {QStringLiteral("com.zavro.dorseld"),
             QVariantMap{{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), 1}},
             QStringList()});

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), QString());
    }

    void storeIsToldWhenTheLockOpens()
    {
        Phone phone;
        phone.lock.setState(1);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 1);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        phone.lock.announce(0);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
        QCOMPARE(phone.takeSounds(), 0);
    }

    void twoChecksBehindTheLockLeaveOneCall()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.lock.announce(2);

        phone.attach(Id);
        phone.cover.announce({{QStringLiteral("Ready"), 1}});
        phone.lock.announce(0);
        phone.lock.announce(0);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
        QCOMPARE(phone.takeSounds(), 2);
    }

    void lockThatStaysShutKeepsTheCallWaiting()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.lock.announce(1);
        phone.attach(Id);

        phone.lock.announce(3);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        phone.lock.announce(-1);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void lockThatOpensWithNothingWaitingDoesNothing()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.settle());
        phone.takeStoreCalls();
        phone.lock.announce(1);

        phone.lock.announce(0);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void storeIsNotToldOfACoverThatHasGoneBehindTheLock_data()
    {
        QTest::addColumn<QVariantMap>("changes");
        QTest::newRow("no id") << QVariantMap{{QStringLiteral("DORSELID"), QString()}};
        QTest::newRow("not ready") << QVariantMap{{QStringLiteral("Ready"), 0}};
    }

    void storeIsNotToldOfACoverThatHasGoneBehindTheLock()
    {
        QFETCH(QVariantMap, changes);
        Phone phone;
        phone.lock.setState(1);
        QVERIFY(phone.start());
        phone.attach(Id);

        phone.cover.announce(changes);
        phone.lock.announce(0);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
        QCOMPARE(phone.takeSounds(), 1);
    }

    void storeThatMayNotBeToldIsNotToldLaterEither()
    {
        Phone phone;
        Phone::store(QStringLiteral("enable_dorsel_install"), 0);
        phone.lock.setState(1);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 1);
        Phone::store(QStringLiteral("enable_dorsel_install"), 1);
        phone.lock.announce(0);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void soundIsPlayedAlsoWhenTheStoreMayNotBeTold()
    {
        Phone phone;
        Phone::store(QStringLiteral("enable_dorsel_install"), 0);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 1);
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void storeClientThatIsNotThereIsNotMissed()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.storeClient.vanish();

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 1);
        QCOMPARE(phone.takeWarnings(), QStringList());
        QVERIFY(phone.storeClient.appear());
        phone.cover.announce({{QStringLiteral("Ready"), 1}});
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
    }

    void errorOfTheStoreClientIsNotNoticed()
    {
        Phone phone;
        phone.storeClient.answerWithError(
            QStringLiteral("dorselConnected"), QStringLiteral("com.example.No"), QString());
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList(Id));
        QCOMPARE(phone.takeWarnings(), QStringList());
    }

    void storeClientIsCalledWithoutBeingAskedToDescribeItself()
    {
        Phone phone;
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(
            phone.storeClient.takeCalls(),
            QStringList(QStringLiteral("dorselConnected(\"cover-1\")")));
    }

    void missingSoundIsLoggedAndChangesNothingElse()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.cover.appear());
        phone.makeMonitor();

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(
            phone.takeWarnings(),
            QStringList(
                {QStringLiteral("void DorselMonitor::playSound()"),
                 QStringLiteral("NgfClient not connected!")}));
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void failedSoundIsLogged()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.attach(Id);
        QVERIFY(phone.feedback.waitForCalls(1));

        phone.feedback.end(7, PlayedFeedback::NotFound);

        QVERIFY(phone.settle());
        QStringList warnings;
        QTRY_COMPARE(
            warnings += phone.takeWarnings(),
            QStringList(QStringLiteral(
                "void DorselMonitor::statusFail(const quint32&) NGF Client failure:  1")));
    }

    void nothingIsCheckedBeforeTheWizardHasFinished()
    {
        Phone phone;
        phone.undoWizard();
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(Phone::storedId(), Id);
        QCOMPARE(phone.takeSwitches(), QStringList());
        QCOMPARE(phone.takeSounds(), 0);
        // A cover that was attached while the monitor ran is checked at the next message of its
        // daemon.
        phone.finishWizard();
        phone.cover.announce({{QStringLiteral("Ready"), 1}});
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void backCoverDaemonThatComesBackIsFollowed()
    {
        Phone phone;
        const QString path = phone.addMoodset(Id);
        QVERIFY(phone.start());

        phone.cover.vanish();
        QVERIFY(phone.cover.appear());

        phone.attach(Id);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSwitches(), QStringList(urlOf(path)));
    }

    void lockThatComesBackIsFollowed()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.lock.vanish();
        QVERIFY(phone.lock.appear());
        phone.lock.announce(1);

        phone.attach(Id);

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeStoreCalls(), QStringList());
    }

    void feedbackServiceThatComesBackIsHeardAgain()
    {
        Phone phone;
        QVERIFY(phone.start());
        phone.feedback.vanish();
        QTRY_VERIFY(!phone.hasFeedback());
        phone.attach(Id);
        QVERIFY(phone.settle());
        QCOMPARE(phone.takeWarnings().count(), 2);
        QVERIFY(phone.feedback.appear());
        QTRY_VERIFY(phone.hasFeedback());

        phone.cover.announce({{QStringLiteral("Ready"), 1}});

        QVERIFY(phone.settle());
        QCOMPARE(phone.takeSounds(), 1);
    }
};

QTEST_GUILESS_MAIN(DorselMonitorTest)

#include "tst_dorselmonitor.moc"
