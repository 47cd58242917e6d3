// SPDX-License-Identifier: BSD-3-Clause
#include "phonesession.h"

#include <QTest>

/// Tests what the daemon does when a back cover is attached.
class BackCoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unknownCoverIsReportedToTheStore()
    {
        PhoneSession session;
        QVERIFY(session.startOnPhone());

        session.attach();

        QVERIFY(session.store.waitForCalls(1));
        QCOMPARE(
            session.store.takeCalls(), QStringList(QStringLiteral("dorselConnected(\"cover-7\")")));
        QTRY_COMPARE(session.sounds(), 1);
        QCOMPARE(PhoneSession::stored(QStringLiteral("dorselid")), QStringLiteral("'cover-7'"));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void unknownCoverIsReportedWhenThePhoneIsUnlocked()
    {
        PhoneSession session;
        session.lock.setState(1);
        QVERIFY(session.startOnPhone());
        session.attach();
        QTRY_COMPARE(session.sounds(), 1);
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.store.takeCalls(), QStringList());

        session.lock.announce(0);

        QVERIFY(session.store.waitForCalls(1));
    }

    void coverThatIsOnAtTheStartIsReported()
    {
        PhoneSession session;
        session.cover.setProperties(PhoneSession::CoverId, 1);

        QVERIFY(session.startOnPhone());

        QTRY_COMPARE_WITH_TIMEOUT(session.sounds(), 1, DaemonProcess::deadlineMs);
        QVERIFY(session.store.waitForCalls(1));
    }

    void favouriteThatTheStoreInstalledIsSwitchedToByItsCover()
    {
        PhoneSession session;
        QVERIFY(session.startOnPhone());
        QVERIFY(session.installBundle(true));

        session.attach();

        QVERIFY(session.daemon.waitForLine(
            QStringLiteral("debug: void AlbumGallery::setMoodset(const QString&) \"file://%1\"")
                .arg(PhoneSession::MoodsetFile)));
        QTRY_COMPARE_WITH_TIMEOUT(
            PhoneSession::stored(QStringLiteral("active_moodset")),
            QLatin1Char('\'') + PhoneSession::MoodsetFile + QLatin1Char('\''),
            DaemonProcess::deadlineMs);
        QTRY_COMPARE(session.sounds(), 1);
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.store.takeCalls(), QStringList());
    }

    void moodsetThatIsNoFavouriteIsNotSwitchedTo()
    {
        PhoneSession session;
        QVERIFY(session.startOnPhone());
        QVERIFY(session.installBundle(false));

        session.attach();

        QTRY_COMPARE(PhoneSession::stored(QStringLiteral("dorselid")), QStringLiteral("'cover-7'"));
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.daemon.lines().filter(QStringLiteral("setMoodset")), QStringList());
        QCOMPARE(PhoneSession::stored(QStringLiteral("active_moodset")), QString());
        QCOMPARE(session.sounds(), 0);
    }

    void missingBackCoverDaemonIsLoggedAtTheStart()
    {
        PhoneSession session;
        session.cover.vanish();

        QVERIFY(session.startOnPhone());

        const QStringList warnings{
            QStringLiteral("QDBusMessage DorselMonitor::propertyValue(const QString&)"),
            QStringLiteral("Failed to read DORSELD property:  "
                           "\"org.freedesktop.DBus.Error.ServiceUnknown\" :  \"The name "
                           "com.zavro.dorseld was not provided by any .service files\"")};
        QCOMPARE(session.daemon.takeWarnings(), warnings + warnings);
    }
};

QTEST_GUILESS_MAIN(BackCoverTest)

#include "tst_backcover.moc"
