// SPDX-License-Identifier: BSD-3-Clause
#include "mgconfitem.h"

#include "dconfcommand.h"
#include "messagelog.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray stored(const char* key)
{
    return runDconf({text("read"), text(key)});
}

void sendToService(int signal)
{
    const qint64 pid = dconfServicePid();
    QVERIFY(pid > 0);
    QCOMPARE(kill(pid_t(pid), signal), 0);
}

QByteArrayList threadNames(qint64 pid)
{
    QByteArrayList names;
    const QDir threads(QStringLiteral("/proc/%1/task").arg(pid));
    const QStringList ids = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& id : ids) {
        QFile name(threads.filePath(id + text("/comm")));
        if (name.open(QIODevice::ReadOnly)) {
            names.append(name.readAll().trimmed());
        }
    }
    return names;
}

QByteArrayList withoutTheLibraries(QByteArrayList names)
{
    for (const char* const name : {"QDBusConnection", "dconf worker", "gdbus", "gmain"}) {
        names.removeAll(name);
    }
    return names;
}

// A process that uses an item, on its own bus.
class ItemProcess : public QProcess
{
public:
    explicit ItemProcess(const QString& busAddress = QString())
    {
        if (busAddress.isEmpty()) {
            return;
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("DBUS_SESSION_BUS_ADDRESS"), busAddress);
        setProcessEnvironment(environment);
    }

    ~ItemProcess() override
    {
        kill();
        waitForFinished();
    }

    void run(const QStringList& arguments) { start(text(ITEM_PROCESS), arguments); }

    QList<QByteArray> lines()
    {
        m_output += readAllStandardOutput();
        return m_output.split('\n');
    }

private:
    QByteArray m_output;
};

// A private session bus that the test can end.
class SessionBus
{
public:
    bool start()
    {
        m_process.start(
            text("dbus-daemon"),
            {text("--nofork"), text("--nopidfile"), text("--print-address"),
             text("--config-file=") + machine() + text("/session-bus.conf"),
             text("--address=") + address()});
        return m_process.waitForReadyRead();
    }

    // From now on, it does not answer, but clients can connect.
    bool pause() { return ::kill(pid_t(m_process.processId()), SIGSTOP) == 0; }

    // Sets a key through a service of the store on this bus.
    bool writeOver(const QString& key, const QString& value) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("DBUS_SESSION_BUS_ADDRESS"), address());
        QProcess dconf;
        dconf.setProcessEnvironment(environment);
        dconf.start(text("dconf"), {text("write"), key, value});
        return dconf.waitForFinished() && dconf.exitCode() == 0;
    }

    void end()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    ~SessionBus() { end(); }

    static QString address() { return text("unix:path=") + machine() + text("/runtime/other-bus"); }

private:
    static QString machine() { return qEnvironmentVariable("PRIVATE_MACHINE"); }

    QProcess m_process;
};

} // namespace

class MGConfItemFailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void syncStoresTheValue()
    {
        ItemProcess process;

        process.run({text("sync"), text("/end/synced"), text("kept")});
        QVERIFY(process.waitForFinished());

        QCOMPARE(stored("/end/synced"), QByteArray("'kept'"));
    }

    void endOfTheApplicationStoresTheValue()
    {
        for (int run = 0; run < 20; ++run) {
            const QString value = QString::number(run);
            ItemProcess process;

            process.run({text("set"), text("/end/at-once"), value});
            QVERIFY(process.waitForFinished());

            QCOMPARE(process.exitCode(), 0);
            QCOMPARE(stored("/end/at-once"), QByteArray("'" + value.toUtf8() + "'"));
        }
    }

    void onlyTheLibrariesThreadsRun()
    {
        ItemProcess process;

        process.run({text("follow"), text("/threads/key"), text("x")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", "x", ""}));

        // A new thread has the name of its parent until it sets its own.
        QTRY_VERIFY(threadNames(process.processId()).contains("gdbus"));
        QTRY_COMPARE(
            withoutTheLibraries(threadNames(process.processId())),
            QByteArrayList({"item-process"}));
    }

    void followingTakesNoThreadButQtsForTheBus()
    {
        ItemProcess process;

        process.run({text("follow"), text("/threads/followed")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", ""}));
        runDconf({text("write"), text("/threads/followed"), text("'x'")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", "x", ""}));

        QByteArrayList names = threadNames(process.processId());
        std::sort(names.begin(), names.end());
        QCOMPARE(names, QByteArrayList({"QDBusConnection", "item-process"}));
    }

    void deathOfTheServiceLosesNoLaterWrite()
    {
        const MessageLog log;
        MGConfItem item(text("/death/key"));
        item.set(1);
        MGConfItem::sync();
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        QVERIFY(killDconfService());
        item.set(2);
        MGConfItem::sync();

        QCOMPARE(stored("/death/key"), QByteArray("2"));
        QTRY_COMPARE(changes.count(), 1);
        QCOMPARE(item.value(), QVariant(2));
    }

    void returnOfTheServiceNotifies()
    {
        const MGConfItem item(text("/return/key"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);
        runDconf({text("write"), text("/return/key"), text("1")});
        QTRY_COMPARE(changes.count(), 1);

        QVERIFY(killDconfService());
        QCOMPARE(item.value(), QVariant(1));
        runDconf({text("write"), text("/return/key"), text("2")});

        QTRY_COMPARE(changes.count(), 2);
        QCOMPARE(item.value(), QVariant(2));
    }

    void serviceThatStandsStillHoldsUpNeitherWritesNorNotifications()
    {
        MGConfItem item(text("/still/key"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        sendToService(SIGSTOP);
        item.set(1);

        // If any call had waited for the service, the old value would be back by now.
        QTRY_COMPARE(changes.count(), 1);
        QCOMPARE(item.value(), QVariant(1));
        sendToService(SIGCONT);
        MGConfItem::sync();
        QCOMPARE(stored("/still/key"), QByteArray("1"));
        QCOMPARE(changes.count(), 1);
    }

    void valueThatCannotBeStoredIsTakenBack()
    {
        MGConfItem item(text("/read-only/key"));
        item.set(text("before"));
        MGConfItem::sync();
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);
        QFile folder(qEnvironmentVariable("XDG_CONFIG_HOME") + text("/dconf"));
        const auto makeWritable = [&folder] {
            return folder.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        };
        const auto cleanup = qScopeGuard(makeWritable);
        QVERIFY(folder.setPermissions(QFile::ReadOwner | QFile::ExeOwner));

        sendToService(SIGSTOP);
        item.set(text("after"));
        QCOMPARE(item.value(), QVariant(text("after")));
        QTRY_COMPARE(changes.count(), 1);
        sendToService(SIGCONT);

        QTRY_COMPARE(changes.count(), 2);
        QCOMPARE(item.value(), QVariant(text("before")));
        QVERIFY(makeWritable());
        item.set(text("again"));
        MGConfItem::sync();
        QCOMPARE(stored("/read-only/key"), QByteArray("'again'"));
    }

    void withoutABusValuesAreRead()
    {
        runDconf({text("write"), text("/no-bus/key"), text("'stored'")});
        ItemProcess process(text("unix:path=/nonexistent/bus"));

        process.run({text("follow"), text("/no-bus/key")});

        QTRY_COMPARE(process.lines(), QList<QByteArray>({"stored", ""}));
        QCOMPARE(process.state(), QProcess::Running);
    }

    void writeThatGetsNoBusIsTakenBack()
    {
        runDconf({text("write"), text("/no-bus/key"), text("'stored'")});
        // Without a bus from the beginning, the old value could be back before the test reads it.
        SessionBus bus;
        QVERIFY(bus.start());
        QVERIFY(bus.pause());
        ItemProcess process(SessionBus::address());
        process.run({text("follow"), text("/no-bus/key"), text("new")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"stored", "new", ""}));

        bus.end();

        QTRY_COMPARE(process.lines(), QList<QByteArray>({"stored", "new", "stored", ""}));
        QCOMPARE(process.state(), QProcess::Running);
    }

    void withoutABusTheApplicationEndsAtOnce()
    {
        ItemProcess process(text("unix:path=/nonexistent/bus"));

        process.run({text("set"), text("/no-bus/end"), text("lost")});

        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }

    void fewDescriptorsRefuseAWriteButDoNotEndTheProcess()
    {
        // A process of Qt needs at least the first number of descriptors to reach the write. The
        // undefined-behaviour sanitizer makes a pipe for some of its checks, which fail without it.
#ifdef __SANITIZE_ADDRESS__
        const QVector<int> limits{12, 14, 24};
#else
        const QVector<int> limits{9, 10, 11, 12, 14, 24};
#endif
        int refused = 0;
        for (const int limit : limits) {
            const QString value = QString::number(limit);
            QProcess process;
            process.start(
                text("prlimit"),
                {text("--nofile=") + value, text(ITEM_PROCESS), text("set"),
                 text("/few/descriptors"), value});
            QVERIFY(process.waitForFinished());

            QCOMPARE(process.exitStatus(), QProcess::NormalExit);
            QCOMPARE(process.exitCode(), 0);
            const bool isRefused =
                process.readAllStandardError().contains("Too few file descriptors are left");
            QCOMPARE(stored("/few/descriptors") == "'" + value.toUtf8() + "'", !isRefused);
            refused += isRefused ? 1 : 0;
        }
        QVERIFY(refused > 0 && refused < limits.size());
    }

    void runtimeFolderHoldsTheBusThatTheEnvironmentDoesNotName()
    {
        const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
        QVERIFY(QFile::link(text("session-bus"), folder + text("/bus")));
        const auto cleanup = qScopeGuard([&] { QVERIFY(QFile::remove(folder + text("/bus"))); });
        ItemProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(text("DBUS_SESSION_BUS_ADDRESS"));
        process.setProcessEnvironment(environment);

        process.run({text("follow"), text("/runtime-folder/key")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", ""}));
        runDconf({text("write"), text("/runtime-folder/key"), text("'x'")});

        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", "x", ""}));
    }

    void processThatHasFollowedEndsWithItsBus()
    {
        SessionBus bus;
        QVERIFY(bus.start());
        ItemProcess process(SessionBus::address());
        process.run({text("follow"), text("/bus-death/followed")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", ""}));
        // It receives a message, so it is on the bus.
        QVERIFY(bus.writeOver(text("/bus-death/followed"), text("'x'")));
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", "x", ""}));

        bus.end();

        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), SIGTERM);
    }

    void processThatHasWrittenEndsWithItsBus()
    {
        SessionBus bus;
        QVERIFY(bus.start());
        ItemProcess process(SessionBus::address());
        process.run({text("follow"), text("/bus-death/key"), text("x")});
        QTRY_COMPARE(process.lines(), QList<QByteArray>({"", "x", ""}));
        // It notices the value before it is on the bus.
        QTRY_COMPARE(stored("/bus-death/key"), QByteArray("'x'"));

        bus.end();

        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), SIGTERM);
    }
};

QTEST_GUILESS_MAIN(MGConfItemFailuresTest)

#include "tst_mgconfitemfailures.moc"
