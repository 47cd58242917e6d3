// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "installedbundles.h"
#include "playedphone.h"
#include "userstore.h"

#include <QDir>
#include <QtTest>

namespace {

const QString Id = QStringLiteral("cover-7");
const QString Bundle = InstalledBundles::folder() + QStringLiteral("coast-light");
const QString MoodsetFile = Bundle + QStringLiteral("/coast-light.moodset");

/// What other processes read at a key of the theme.
QString stored(const QString& key)
{
    return UserStore::value(QStringLiteral("/desktop/zavro/theme/") + key);
}

/// The services of a phone; those that a daemon looks for must be there before it is made.
struct Phone
{
    Phone() { isThere = cover.appear() && lock.appear() && store.appear() && feedback.appear(); }

    PlayedBackCover cover;
    PlayedDeviceLock lock;
    PlayedStoreClient store;
    PlayedFeedback feedback;
    bool isThere;
};

/// A daemon on a phone whose user has finished the first-run wizard.
class PhoneSession : public Phone, public DaemonSession
{
public:
    PhoneSession()
    {
        QFile marker(markerPath());
        m_isReady = isThere && m_bundles.isValid() && m_store.isValid()
            && marker.open(QIODevice::WriteOnly);
    }
    ~PhoneSession()
    {
        daemon.terminate();
        QFile::remove(markerPath());
    }
    Q_DISABLE_COPY_MOVE(PhoneSession)

    bool startOnPhone()
    {
        return m_isReady && startOnBus() && lock.waitForCalls(1)
            && daemon.waitForLine(QStringLiteral("InstallManager idle in "));
    }

    /// The store installs the bundle of the cover, which becomes a favourite or not.
    bool installBundle(bool isFavorite)
    {
        if (!InstalledBundles::installSample(QStringLiteral("coast-light"))) {
            return false;
        }
        store.send(
            QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
            QStringLiteral("installedMoodset"), {Bundle, Id});
        if (!QTest::qWaitFor([this] { return isMoodset(); }, DaemonProcess::deadlineMs)) {
            return false;
        }
        BusClient::call(
            QStringLiteral("saveAttributes"),
            {1, fileId(MoodsetFile), QVariantMap{{QStringLiteral("favorite"), isFavorite}}});
        return true;
    }

    void attach()
    {
        cover.announce({{QStringLiteral("DORSELID"), Id}, {QStringLiteral("Ready"), 1}});
    }

    int sounds()
    {
        m_sounds += feedback.takeCalls().filter(QStringLiteral("\"dorsel_attach\"")).count();
        return m_sounds;
    }

private:
    static QString markerPath()
    {
        return QDir::home().filePath(QStringLiteral(".zavro-startupwizard-usersession-done"));
    }

    bool isMoodset()
    {
        return !library()
                    .rows(
                        QStringLiteral("SELECT 1 FROM moodset JOIN dorselId USING (fileId) "
                                       "WHERE fileId = ?"),
                        {fileId(MoodsetFile)})
                    .isEmpty();
    }

    const InstalledBundles m_bundles{folders};
    const UserStore m_store;
    bool m_isReady;
    int m_sounds = 0;
};

} // namespace

/// What a back cover does to the phone.
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
        QCOMPARE(stored(QStringLiteral("dorselid")), QStringLiteral("'cover-7'"));
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
        session.cover.setProperties(Id, 1);

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
                .arg(MoodsetFile)));
        QTRY_COMPARE_WITH_TIMEOUT(
            stored(QStringLiteral("active_moodset")),
            QLatin1Char('\'') + MoodsetFile + QLatin1Char('\''), DaemonProcess::deadlineMs);
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

        QTRY_COMPARE(stored(QStringLiteral("dorselid")), QStringLiteral("'cover-7'"));
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.daemon.lines().filter(QStringLiteral("setMoodset")), QStringList());
        QCOMPARE(stored(QStringLiteral("active_moodset")), QString());
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
