// SPDX-License-Identifier: BSD-3-Clause
#include "service/albumgallery.h"

#include "content/dbmanager.h"
#include "daemonprocess.h"
#include "leftoutnames.h"
#include "librarydatabase.h"
#include "messagelog.h"
#include "recordingmanager.h"
#include "service/albumgallery_p.h"
#include "service/moodsetadaptor.h"

#include <QAbstractEventDispatcher>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimerEvent>

#include <csignal>
#include <memory>

namespace {

const QLatin1String Service("com.zavro.moodsetd");
const QLatin1String Path("/com/zavro/moodsetd");

QBasicTimer& changeTimer()
{
    return AlbumGalleryPrivate::instance->changeTimer;
}

QVector<int> types(const QSignalSpy& announcements)
{
    QVector<int> types;
    for (const QVariantList& arguments : announcements) {
        types.append(arguments.first().toInt());
    }
    return types;
}

} // namespace

/// A manager with changes to announce.
class AnnouncingManager : public ContentManager
{
public:
    using ContentManager::notifyContentChanged;
};

/// The announcements that a client on the bus receives.
class Listener : public QObject
{
    Q_OBJECT

public:
    QVector<int> types;

public Q_SLOTS:
    void contentChanged(int type) { types.append(type); }
};

class AlbumGalleryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_client.isConnected());
        QVERIFY(DaemonProcess::setPicturesFolder(m_folder.filePath(QStringLiteral("none"))));
    }

    void cleanupTestCase() { QDBusConnection::disconnectFromBus(m_client.name()); }

    /// Each test has a service object of its own, which is idle.
    void init()
    {
        m_gallery = std::make_unique<AlbumGallery>();
        settle();
    }

    void cleanup() { m_gallery.reset(); }

    void startsWithoutAStoreClient()
    {
        m_gallery.reset();
        MessageLog log;

        m_gallery = std::make_unique<AlbumGallery>();

        QCOMPARE(log.takeWarnings(), QStringList());
        QCOMPARE(
            m_client.interface()->serviceOwner(Service).value(),
            QDBusConnection::sessionBus().baseService());
        QVERIFY(AlbumGalleryPrivate::instance);
    }

    void followsThePicturesFolder()
    {
        MessageLog log;
        const QTemporaryDir pictures;
        m_gallery.reset();
        QVERIFY(DaemonProcess::setPicturesFolder(pictures.path()));

        m_gallery = std::make_unique<AlbumGallery>();

        const LibraryDatabase::Rows expected{{0, 1}};
        QCOMPARE(
            LibraryDatabase().rows(
                QStringLiteral("SELECT scope, parentId IS NULL FROM directory WHERE path = ?"),
                {pictures.path()}),
            expected);
        QVERIFY(DaemonProcess::setPicturesFolder(m_folder.filePath(QStringLiteral("none"))));
        settle();
    }

    void burstOfChangesIsAnnouncedOncePerTypeInOrder()
    {
        MessageLog log;
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);

        AlbumGallery::notifyContentChanged(0);
        AlbumGallery::notifyContentChanged(2);
        AlbumGallery::notifyContentChanged(0);
        QTRY_VERIFY(!changeTimer().isActive());

        QCOMPARE(types(announcements), QVector<int>({0, 2}));
    }

    void changesThatManagersTellOfAreAnnounced()
    {
        MessageLog log;
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);

        AnnouncingManager::notifyContentChanged(2);
        QTRY_VERIFY(!changeTimer().isActive());

        QCOMPARE(types(announcements), QVector<int>({2}));
    }

    void typesAreAnnouncedInAscendingOrder()
    {
        MessageLog log;
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);

        for (const int type : {4, 2, 3, 0, 1}) {
            AlbumGallery::notifyContentChanged(type);
        }
        QTRY_VERIFY(!changeTimer().isActive());

        QCOMPARE(types(announcements), QVector<int>({0, 1, 2, 3, 4}));
    }

    void typesAboveFourAreNeverAnnounced()
    {
        MessageLog log;
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);

        for (const int type : {5, 6, 7}) {
            AlbumGallery::notifyContentChanged(type);
        }
        QVERIFY(changeTimer().isActive());
        QTRY_VERIFY(!changeTimer().isActive());
        AlbumGallery::notifyContentChanged(4);
        QTRY_VERIFY(!changeTimer().isActive());

        QCOMPARE(types(announcements), QVector<int>({4}));
    }

    void everyChangeRestartsTheWait()
    {
        MessageLog log;
        constexpr int longWait = 600000;
        changeTimer().start(longWait, AlbumGalleryPrivate::instance);

        AlbumGallery::notifyContentChanged(1);

        const auto timers =
            QAbstractEventDispatcher::instance()->registeredTimers(AlbumGalleryPrivate::instance);
        QCOMPARE(timers.size(), 1);
        QCOMPARE(timers.first().interval, 10);
    }

    void anotherTimerAnnouncesNothing()
    {
        MessageLog log;
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);
        AlbumGallery::notifyContentChanged(1);
        QTimerEvent foreign(changeTimer().timerId() + 1);

        QCoreApplication::sendEvent(AlbumGalleryPrivate::instance, &foreign);

        QCOMPARE(announcements.count(), 0);
        QVERIFY(changeTimer().isActive());
    }

    void changeWithoutAServiceObjectIsIgnored()
    {
        MessageLog log;
        m_gallery.reset();

        AlbumGallery::notifyContentChanged(1);

        QVERIFY(!AlbumGalleryPrivate::instance);
        m_gallery = std::make_unique<AlbumGallery>();
        QCOMPARE(AlbumGalleryPrivate::instance->changedTypes, 0);
    }

    void announcementGoesOutOnTheBusOnce()
    {
        MessageLog log;
        Listener listener;
        listenWith(&listener);

        AlbumGallery::notifyContentChanged(2);
        AlbumGallery::notifyContentChanged(6);
        QTRY_COMPARE(listener.types, QVector<int>({2}));
        // A second signal for the first announcement would come before this one.
        AlbumGallery::notifyContentChanged(4);

        QTRY_COMPARE(listener.types.last(), 4);
        QCOMPARE(listener.types, QVector<int>({2, 4}));
    }

    void managedType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVector<int>>("announced");
        QTest::newRow("files") << 0 << QVector<int>({0});
        QTest::newRow("moodsets") << 1 << QVector<int>({1});
        QTest::newRow("images") << 2 << QVector<int>({2});
        QTest::newRow("downloads") << 4 << QVector<int>({4});
        QTest::newRow("installs") << 6 << QVector<int>();
        QTest::newRow("indexes") << 7 << QVector<int>();
    }

    void failedRemovalIsAnnounced_data() { managedType_data(); }
    void failedRemovalIsAnnounced()
    {
        QFETCH(int, type);
        QFETCH(QVector<int>, announced);
        MessageLog log;
        const RecordingManager manager(static_cast<MoodsetContent::Type>(type));
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);
        constexpr auto id = Q_INT64_C(0x100000005);

        m_gallery->remove(type, id);

        QCOMPARE(manager.removals(), QVector<qint64>({id}));
        QVERIFY(changeTimer().isActive());
        QTRY_VERIFY(!changeTimer().isActive());
        QCOMPARE(types(announcements), announced);
    }

    void failedSaveIsAnnounced_data() { managedType_data(); }
    void failedSaveIsAnnounced()
    {
        QFETCH(int, type);
        QFETCH(QVector<int>, announced);
        MessageLog log;
        const RecordingManager manager(static_cast<MoodsetContent::Type>(type));
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);
        const QVariantMap values{{QStringLiteral("favorite"), true}};

        m_gallery->saveAttributes(type, 5, values);

        QCOMPARE(manager.saves().size(), 1);
        QCOMPARE(manager.saves().first().id, 5);
        QCOMPARE(manager.saves().first().values, values);
        QVERIFY(changeTimer().isActive());
        QTRY_VERIFY(!changeTimer().isActive());
        QCOMPARE(types(announcements), announced);
    }

    void unknownTypeIsIgnored_data()
    {
        QTest::addColumn<int>("type");
        for (const int type : {3, 5, 8, 99, -1}) {
            QTest::newRow(qPrintable(QString::number(type))) << type;
        }
    }

    void unknownTypeIsIgnored()
    {
        QFETCH(int, type);
        MessageLog log;

        m_gallery->remove(type, 5);
        m_gallery->saveAttributes(type, 5, {});

        QVERIFY(!changeTimer().isActive());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void attributesOfAClientReachTheManagerPlain()
    {
        MessageLog log;
        const RecordingManager manager(MoodsetContent::Moodset);
        const QVariantMap tone{{QStringLiteral("url"), QStringLiteral("file:///a.ogg")}};
        const QVariantMap values{
            {QStringLiteral("displayName"), QStringLiteral("Sea")},
            {QStringLiteral("favorite"), true},
            {QStringLiteral("ringerVolume"), 40},
            {QStringLiteral("resources"), QVariantMap({{QStringLiteral("ringerToneFile"), tone}})}};

        const QDBusMessage reply =
            call(QStringLiteral("saveAttributes"), {1, QVariant(qlonglong(5)), values});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments(), QVariantList());
        QCOMPARE(manager.saves().size(), 1);
        QCOMPARE(manager.saves().first().values, values);
        const QVariant resources =
            manager.saves().first().values.value(QStringLiteral("resources"));
        QCOMPARE(resources.userType(), int(QMetaType::QVariantMap));
        QCOMPARE(
            resources.toMap().value(QStringLiteral("ringerToneFile")).userType(),
            int(QMetaType::QVariantMap));
    }

    void noAttributesAtAllStillReachTheManager()
    {
        MessageLog log;
        const RecordingManager manager(MoodsetContent::Moodset);
        QSignalSpy announcements(m_gallery.get(), &AlbumGallery::contentChanged);

        call(QStringLiteral("saveAttributes"), {1, QVariant(qlonglong(5)), QVariantMap()});
        QTRY_VERIFY(!changeTimer().isActive());

        QCOMPARE(manager.saves().size(), 1);
        QCOMPARE(manager.saves().first().values, QVariantMap());
        QCOMPARE(types(announcements), QVector<int>({1}));
    }

    void removalByAClientReachesTheManager()
    {
        MessageLog log;
        const RecordingManager manager(MoodsetContent::Moodset);

        const QDBusMessage reply = call(QStringLiteral("remove"), {1, QVariant(qlonglong(5))});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(manager.removals(), QVector<qint64>({5}));
    }

    void refreshStartsTheParsersOver()
    {
        MessageLog log;
        const RecordingManager moodsets(MoodsetContent::Moodset);
        const RecordingManager indexes(MoodsetContent::Index);

        m_gallery->refreshMoodsets();
        settle();

        QVERIFY(moodsets.turns() > 0);
        QVERIFY(indexes.turns() > 0);
    }

    void localFileIsRegisteredAndNothingAnnounced()
    {
        MessageLog log;
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("a b.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));

        m_gallery->indexFile(
            QStringLiteral("file://") + folder.path() + QStringLiteral("/a%20b.txt"));

        QVERIFY(!changeTimer().isActive());
        QCOMPARE(
            LibraryDatabase().value(
                QStringLiteral("SELECT count(*) FROM file JOIN directory "
                               "ON directory.id = directoryId WHERE path = ? AND fileName = ?"),
                {folder.path(), QStringLiteral("a b.txt")}),
            QVariant(1));
        settle();
    }

    void urlOfANameThatIsNotUtf8IsReported()
    {
        MessageLog log;
        const QTemporaryDir folder;
        // This is the name after the conversion to a text.
        QFile file(folder.filePath(QStringLiteral("\ufffd.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));

        m_gallery->indexFile(
            QStringLiteral("file://") + folder.path() + QStringLiteral("/%FF.txt"));

        QCOMPARE(
            log.takeWarnings(),
            QStringList(undecodableWarning(
                QStringLiteral("void AlbumGallery::indexFile(const QString&)"),
                QFile::encodeName(folder.path()) + "/\xff.txt")));
        QCOMPARE(
            LibraryDatabase().value(
                QStringLiteral("SELECT count(*) FROM directory WHERE path = ?"), {folder.path()}),
            QVariant(0));
    }

    void otherUrlIsNotRegistered_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::newRow("network") << QStringLiteral("http://localhost");
        QTest::newRow("no scheme") << QString();
        QTest::newRow("resource") << QStringLiteral("qrc:");
        QTest::newRow("invalid") << QStringLiteral("http://[");
        QTest::newRow("too long") << QStringLiteral("file://")
                + QStringLiteral("/.").repeated(32 * 1024);
    }

    void otherUrlIsNotRegistered()
    {
        QFETCH(QString, prefix);
        MessageLog log;
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("a.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));

        m_gallery->indexFile(prefix + file.fileName());

        QCOMPARE(log.takeMessages(), QStringList());
        QVERIFY(!changeTimer().isActive());
        QCOMPARE(
            LibraryDatabase().value(
                QStringLiteral("SELECT count(*) FROM directory WHERE path = ?"), {folder.path()}),
            QVariant(0));
    }

    void invalidUrlIsWarnedOf_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("url");
        for (const char* const method : {"setMoodset", "createMoodset"}) {
            const QString name = QString::fromLatin1(method);
            QTest::addRow("%s, empty", method) << name << QString();
            QTest::addRow("%s, broken host", method) << name << QStringLiteral("http://[");
        }
    }

    void invalidUrlIsWarnedOf()
    {
        QFETCH(QString, method);
        QFETCH(QString, url);
        MessageLog log;

        const QDBusMessage reply = call(method, {url});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments(), QVariantList());
        const QString beginning =
            QStringLiteral("void AlbumGallery::%1(const QString&) ").arg(method);
        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {beginning + QStringLiteral("\"%1\"").arg(url),
                 beginning + QStringLiteral("Invalid URL:  \"%1\"").arg(url)}));
    }

    void tooLongUrlIsWarnedOfByItsLength_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("setMoodset") << QStringLiteral("setMoodset");
        QTest::newRow("createMoodset") << QStringLiteral("createMoodset");
    }

    void tooLongUrlIsWarnedOfByItsLength()
    {
        QFETCH(QString, method);
        MessageLog log;
        const QString prefix = QStringLiteral("file:///missing/");
        const QString url = prefix + QString(64 * 1024 + 1 - prefix.size(), QLatin1Char('a'));

        const QDBusMessage reply = call(method, {url});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(
            log.takeMessages(),
            QStringList(QStringLiteral("void AlbumGallery::%1(const QString&) Invalid URL:  65537")
                            .arg(method)));
        // A text that is one character shorter is a URL.
        call(method, {url.chopped(1)});
        QCOMPARE(log.takeWarnings(), QStringList());
    }

    void nothingOfTheServiceObjectItselfIsOnTheBus()
    {
        MessageLog log;

        const QDBusMessage reply = call(
            QStringLiteral("Introspect"), {},
            QStringLiteral("org.freedesktop.DBus.Introspectable"));

        const QString description = reply.arguments().value(0).toString();
        QStringList interfaces;
        auto match = QRegularExpression(QStringLiteral("<interface name=\"([^\"]*)\""))
                         .globalMatch(description);
        while (match.hasNext()) {
            interfaces.append(match.next().captured(1));
        }
        QCOMPARE(
            interfaces,
            QStringList(
                {QStringLiteral("com.zavro.moodsetd"),
                 QStringLiteral("org.freedesktop.DBus.Properties"),
                 QStringLiteral("org.freedesktop.DBus.Introspectable"),
                 QStringLiteral("org.freedesktop.DBus.Peer")}));
        const QMetaObject& adaptor = MoodsetAdaptor::staticMetaObject;
        QVERIFY2(
            description.contains(QString::fromUtf8(
                adaptor.classInfo(adaptor.indexOfClassInfo("D-Bus Introspection")).value())),
            qPrintable(description));
    }

    void storeSignalIsNoMethod()
    {
        MessageLog log;

        const QDBusMessage reply = call(
            QStringLiteral("moodsetInstalled"), {QStringLiteral("/a"), QStringLiteral("0123")});

        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
    }

    void leavesTheBusAtItsEnd()
    {
        MessageLog log;

        m_gallery.reset();

        QVERIFY(!m_client.interface()->isServiceRegistered(Service).value());
        QVERIFY(!QDBusConnection::sessionBus().objectRegisteredAt(Path));
        QVERIFY(!AlbumGalleryPrivate::instance);
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void nameThatIsGoneAlreadyIsWarnedOfAtTheEnd()
    {
        MessageLog log;
        QVERIFY(QDBusConnection::sessionBus().unregisterService(Service));

        m_gallery.reset();

        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral("Failed to unregister org.pelmo.fastindexer service")}));
    }

    void secondDaemonEndsAfterItHasOpenedTheDatabase()
    {
        DaemonProcess second;

        QVERIFY(second.start());
        QVERIFY(second.waitForEnd());

        QCOMPARE(second.exitStatus(), QProcess::CrashExit);
        QCOMPARE(second.exitCode(), SIGABRT);
        QCOMPARE(
            second.takeWarnings(),
            QStringList(
                {QStringLiteral("QDBusError(\"\", \"\")"),
                 QStringLiteral("DBUS service already taken. Kill the other instance first.")}));
        const int fine = second.lines().indexOf(
            QStringLiteral("debug: DbManager::DbManager() Moodset DB Fine..."));
        const int registering = second.lines().indexOf(
            QStringLiteral("debug: AlbumGallery::AlbumGallery(QObject*) Registering dbus..."));
        QVERIFY(fine >= 0);
        QVERIFY(registering > fine);
        QVERIFY(
            registering
            < second.lines().indexOf(QStringLiteral("warning: QDBusError(\"\", \"\")")));
    }

private:
    /// Runs the scans that are pending, and waits for their announcements.
    static void settle()
    {
        // Each step of a scan posts the next one.
        while (QAbstractEventDispatcher::instance()->hasPendingEvents()) {
            QCoreApplication::processEvents();
        }
        QTRY_VERIFY(!changeTimer().isActive());
    }

    /// Calls the service object as a client does, and waits for the reply.
    QDBusMessage call(
        const QString& method, const QVariantList& arguments, const QString& interface = Service)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(Service, Path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCallWatcher call(m_client.asyncCall(message));
        QSignalSpy finished(&call, &QDBusPendingCallWatcher::finished);
        finished.wait();
        return call.reply();
    }

    void listenWith(Listener* listener)
    {
        QVERIFY(m_client.connect(
            Service, Path, Service, QStringLiteral("contentChanged"), listener,
            SLOT(contentChanged(int))));
        // The bus replies in order, so after this it knows the listener.
        QVERIFY(m_client.interface()->isServiceRegistered(Service).value());
    }

    QTemporaryDir m_folder;
    QDBusConnection m_client =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("client"));
    std::unique_ptr<AlbumGallery> m_gallery;
};

QTEST_GUILESS_MAIN(AlbumGalleryTest)

#include "tst_albumgallery.moc"
