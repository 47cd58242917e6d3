// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "decompressionbomb.h"
#include "librarydatabase.h"
#include "librarylock.h"
#include "picturefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/stat.h>
#include <vector>

namespace {

using Result = ClientSession::Result;

Result run(const QStringList& arguments)
{
    return ClientSession::runJson(arguments);
}

/// Runs moodsetctl from a shell, as "$0".
int runInShell(const char* script, const QStringList& arguments = {})
{
    QProcess shell;
    shell.start(
        QStringLiteral("bash"),
        QStringList(
            {QStringLiteral("-c"), QString::fromLatin1(script),
             QStringLiteral(MOODSETCTL_EXECUTABLE)})
            + arguments);
    return shell.waitForFinished() ? shell.exitCode() : -1;
}

/// The error as the tool prints it, without the subject that it begins with.
QString reason(const Result& result)
{
    return result.errors.trimmed().section(QStringLiteral(": "), 2);
}

/// Makes an entry that is not a file, and that a reader could read forever or could not begin to
/// read.
bool makeOdd(const QString& path, const QString& kind)
{
    if (kind == QLatin1String("FIFO")) {
        return mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
    }
    if (kind == QLatin1String("folder")) {
        return QDir().mkpath(path);
    }
    if (kind == QLatin1String("device")) {
        return QFile::link(QStringLiteral("/dev/zero"), path);
    }
    if (kind == QLatin1String("loop")) {
        return QFile::link(path, path);
    }
    if (kind == QLatin1String("huge")) {
        constexpr qint64 size = 9LL * 1024 * 1024 * 1024;
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.resize(size);
    }
    if (kind == QLatin1String("bomb")) {
        return InstalledBundles::write(path, pngBomb(QSize(30000, 30000)));
    }
    return InstalledBundles::write(path, "words\n");
}

bool createMoodset(const ClientSession& session, const QString& name)
{
    const QString path = session.folders.elsewhere(name + QStringLiteral(".png"));
    return writePicture(path, QSize(30, 20)) && run({QStringLiteral("create"), path}).exitCode == 0;
}

} // namespace

/// Tests the client with hostile files, names, streams and other programs.
class ClientHostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noFileKeepsItWaiting_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("bundle");
        const auto row = [](const char* kind, const char* picture, const char* bundle) {
            QTest::newRow(kind) << QString::fromLatin1(picture) << QString::fromLatin1(bundle);
        };
        row("FIFO", "not a file", "not a file");
        row("folder", "not a file", "");
        row("device", "not a file", "not a file");
        row("loop", "no such file", "not a file");
        row("huge", "it is no picture of a format that the daemon decodes",
            "the file is larger than 16 MiB, and the daemon does not read it");
        row("words", "it is no picture of a format that the daemon decodes",
            "no JSON: illegal value");
        row("bomb",
            "the picture is too large for the memory that the daemon may have: 30000 x 30000",
            "no JSON: illegal value");
    }

    void noFileKeepsItWaiting()
    {
        QFETCH(QString, picture);
        QFETCH(QString, bundle);
        const ClientSession session;
        const QString kind = QString::fromLatin1(QTest::currentDataTag());
        const QString path = session.folders.elsewhere(QStringLiteral("odd"));
        QVERIFY(makeOdd(path, kind));
        // When a picture is registered, only its size is read.
        QCOMPARE(
            run({QStringLiteral("index"), path}).exitCode, kind == QLatin1String("bomb") ? 0 : 1);
        for (const char* const command : {"colors", "preview", "create", "set"}) {
            const Result result = run({QLatin1String(command), path});
            QCOMPARE(result.exitCode, 1);
            QVERIFY2(result.errors.contains(picture), qPrintable(result.errors));
        }
        const Result restored = run({QStringLiteral("restore"), path});
        QCOMPARE(restored.exitCode, 1);
        QVERIFY2(!restored.errors.isEmpty(), qPrintable(restored.errors));

        const QString folder = session.folders.elsewhere(QStringLiteral("bundle"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(makeOdd(folder + QStringLiteral("/a.moodset"), kind));
        QVERIFY(QFile::link(folder, folder + QStringLiteral("/self")));
        const Result checked = run({QStringLiteral("validate"), folder});
        QCOMPARE(checked.exitCode, 1);
        const QJsonArray findings = checked.result().value(QLatin1String("findings")).toArray();
        if (!bundle.isEmpty()) {
            QCOMPARE(findings.at(0).toObject().value(QLatin1String("text")).toString(), bundle);
        }
    }

    void nothingThatIsNoFileIsReplaced_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* const kind : {"FIFO", "folder", "device"}) {
            QTest::newRow(kind) << QString::fromLatin1(kind);
        }
    }

    void nothingThatIsNoFileIsReplaced()
    {
        QFETCH(QString, kind);
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        const QString path = session.folders.elsewhere(QStringLiteral("odd"));
        QVERIFY(makeOdd(path, kind));
        struct stat before = {};
        QCOMPARE(lstat(QFile::encodeName(path).constData(), &before), 0);
        const auto backUp = [](const QString& target) {
            return run({QStringLiteral("backup"), target}).exitCode;
        };
        const auto preview = [](const QString& target) {
            return run({QStringLiteral("preview"), QStringLiteral("a"), QStringLiteral("-o"),
                        target})
                .exitCode;
        };
        QCOMPARE(backUp(session.folders.elsewhere(QStringLiteral("good.json"))), 0);
        QCOMPARE(preview(session.folders.elsewhere(QStringLiteral("good.png"))), 0);

        QCOMPARE(backUp(path), 1);
        QCOMPARE(preview(path), 1);

        struct stat after = {};
        QCOMPARE(lstat(QFile::encodeName(path).constData(), &after), 0);
        QCOMPARE(after.st_ino, before.st_ino);
    }

    void aFullDiskCostsNoBackup()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        const QString disk = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
        const QString backup = disk + QStringLiteral("/client-backup.json");
        QCOMPARE(run({QStringLiteral("backup"), backup}).exitCode, 0);
        QFile kept(backup);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        const QByteArray content = kept.readAll();
        QVERIFY(content.contains("moodsetctl-backup"));
        QFile filler(disk + QStringLiteral("/client-filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray block(1024, 'x');
        while (filler.write(block) == block.size()) { }

        const Result result = run({QStringLiteral("backup"), backup});

        QVERIFY(filler.remove());
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(reason(result), QStringLiteral("No space left on device"));
        kept.close();
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), content);
        QVERIFY(kept.remove());
    }

    void aChangeThatCannotBeUndoneLaterIsMadeAndSaid()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        qputenv("XDG_STATE_HOME", "/proc/none");

        const Result result =
            run({QStringLiteral("edit"), QStringLiteral("a"), QStringLiteral("volume=3")});
        qputenv(
            "XDG_STATE_HOME", QFile::encodeName(session.folders.data() + QStringLiteral("/state")));

        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.errors.contains(QStringLiteral("cannot be stored for undo")));
        QCOMPARE(run({QStringLiteral("undo")}).exitCode, 1);
    }

    void saysWhenTheOutputCannotBeWritten()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        QFile library(LibraryDatabase::standardPath());
        QVERIFY(library.open(QIODevice::ReadOnly));
        const QByteArray before = library.readAll();

        QCOMPARE(runInShell("exec \"$0\" moodsets > /dev/full"), 1);
        QCOMPARE(runInShell("exec \"$0\" --json moodsets >&-"), 1);
        QCOMPARE(runInShell("exec \"$0\" status <&- >&- 2>&-"), 1);
        QCOMPARE(runInShell("exec \"$0\" moodsets 2>&-"), 0);
        QCOMPARE(
            runInShell("set -o pipefail; { \"$0\" help --man; echo $? >&2; } 2>/dev/null | true"),
            0);

        library.close();
        QVERIFY(library.open(QIODevice::ReadOnly));
        QCOMPARE(library.readAll(), before);
    }

    /// These are not dates in the form of the locale.
    void jsonIsUtf8InEveryLocale()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        const QString name = QString::fromUtf8("Gr\u00fcn \u65e5\u672c");
        QCOMPARE(
            run({QStringLiteral("edit"), QStringLiteral("a"), QStringLiteral("name=") + name})
                .exitCode,
            0);
        for (const char* const locale : {"C", "de_DE.UTF-8", "fi_FI.UTF-8", "tr_TR.UTF-8"}) {
            const Result result = ClientSession::runJson(
                {QStringLiteral("show"), QStringLiteral("1")},
                {QStringLiteral("LC_ALL=") + QLatin1String(locale)});
            QCOMPARE(
                result.result()
                    .value(QLatin1String("moodset"))
                    .toObject()
                    .value(QLatin1String("name"))
                    .toString(),
                name);
        }
    }

    void oddNamesAreFoundAndShownAsOneLine_data()
    {
        QTest::addColumn<QString>("name");
        const auto row = [](const char* tag, const QString& name) { QTest::newRow(tag) << name; };
        row("line break", QStringLiteral("a\nb"));
        row("escape", QStringLiteral("\033[31mred\033[0m"));
        row("quotes", QStringLiteral("it's \"so\" $HOME `x`"));
        row("option", QStringLiteral("--help"));
        row("right to left", QString::fromUtf8("\u202egnp.a"));
        row("beyond 16 bits", QString::fromUtf8("\U0001f4f7"));
        row("blanks", QStringLiteral("  a  "));
        row("long", QString(2000, QLatin1Char('x')));
    }

    void oddNamesAreFoundAndShownAsOneLine()
    {
        QFETCH(QString, name);
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        QCOMPARE(
            run({QStringLiteral("edit"), QStringLiteral("a"), QStringLiteral("name=") + name})
                .exitCode,
            0);

        QCOMPARE(
            run({QStringLiteral("show"), QStringLiteral("--"), name})
                .result()
                .value(QLatin1String("moodset"))
                .toObject()
                .value(QLatin1String("name"))
                .toString(),
            name);
        for (const char* const command : {"moodsets", "show", "set", "undo"}) {
            QStringList words{QLatin1String(command)};
            if (QLatin1String(command) == QLatin1String("show")
                || QLatin1String(command) == QLatin1String("set")) {
                words << QStringLiteral("1");
            }
            const Result result = ClientSession::run(words);
            QVERIFY(!result.output.contains(QLatin1Char('\033')));
            QVERIFY(!result.output.contains(QChar(0x202e)));
            QVERIFY(!result.output.contains(QStringLiteral("a\nb")));
        }
        QCOMPARE(run({QStringLiteral("set"), QStringLiteral("--"), name}).exitCode, 0);
    }

    void eightClientsAtOnceAllTellTheTruth()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        QVERIFY(createMoodset(session, QStringLiteral("b")));
        const std::vector<QStringList> lines{
            {QStringLiteral("set"), QStringLiteral("a")},
            {QStringLiteral("set"), QStringLiteral("b")},
            {QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("highlight=red")},
            {QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("volume=9")},
            {QStringLiteral("favorite"), QStringLiteral("2"), QStringLiteral("on")},
            {QStringLiteral("moodsets")},
            {QStringLiteral("status")},
            {QStringLiteral("undo")}};
        constexpr int rounds = 5;
        for (int round = 0; round < rounds; ++round) {
            std::vector<std::unique_ptr<QProcess>> clients;
            for (const QStringList& line : lines) {
                clients.push_back(std::make_unique<QProcess>());
                clients.back()->start(
                    QStringLiteral(MOODSETCTL_EXECUTABLE),
                    QStringList(QStringLiteral("--json")) + line);
            }
            for (const auto& client : clients) {
                QVERIFY(client->state() == QProcess::NotRunning || client->waitForFinished(60000));
                QCOMPARE(client->exitStatus(), QProcess::NormalExit);
                const QJsonObject outcome =
                    QJsonDocument::fromJson(client->readAllStandardOutput()).object();
                const bool isDone = outcome.value(QLatin1String("status")) == QLatin1String("done");
                QCOMPARE(client->exitCode(), isDone ? 0 : 1);
                const bool isSaid = !client->readAllStandardError().isEmpty();
                QVERIFY(isDone || isSaid);
            }
        }
        QCOMPARE(
            run({QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("volume=9")}).exitCode,
            0);
    }

    void aDaemonThatIsKilledMeanwhileIsSaidToHaveFailed()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        constexpr int firstMs = 2;
        bool isDone = false;
        int failures = 0;
        for (int delayMs = firstMs; !isDone; delayMs = delayMs * 5 / 4 + 1) {
            // It starts the daemon.
            QCOMPARE(
                ClientSession::run({QStringLiteral("refresh"), QStringLiteral("--no-wait")})
                    .exitCode,
                0);
            QProcess client;
            client.start(
                QStringLiteral(MOODSETCTL_EXECUTABLE),
                {QStringLiteral("set"), QStringLiteral("a")});
            isDone = client.waitForFinished(delayMs);
            QVERIFY(ClientSession::endDaemon(SIGKILL));
            // It may have ended at the same time as the daemon.
            QVERIFY(client.state() == QProcess::NotRunning || client.waitForFinished());
            QCOMPARE(client.exitStatus(), QProcess::NormalExit);
            failures += client.exitCode() == 0 ? 0 : 1;
            if (client.exitCode() == 0) {
                QVERIFY(run({QStringLiteral("theme")}).output.contains(QStringLiteral("a.png")));
            } else {
                QVERIFY(!client.readAllStandardError().isEmpty());
            }
        }
        QVERIFY(failures > 0);
        QCOMPARE(run({QStringLiteral("show"), QStringLiteral("a")}).exitCode, 0);
    }

    void aDatabaseThatIsLockedOrGoneIsSaidToBe()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        {
            const LibraryLock lock;
            QVERIFY(lock.isHeld());
            QCOMPARE(run({QStringLiteral("moodsets")}).exitCode, 0);
            const Result edited =
                run({QStringLiteral("edit"), QStringLiteral("a"), QStringLiteral("volume=3")});
            QCOMPARE(edited.exitCode, 1);
            QVERIFY2(
                edited.errors.contains(QStringLiteral("the daemon has not changed ringerVolume")),
                qPrintable(edited.errors));
        }
        QDir folder = QFileInfo(LibraryDatabase::standardPath()).dir();
        QVERIFY(folder.removeRecursively());

        for (const char* const command : {"moodsets", "photos", "backup"}) {
            QStringList words{QLatin1String(command)};
            if (QLatin1String(command) == QLatin1String("backup")) {
                words << session.folders.elsewhere(QStringLiteral("backup.json"));
            }
            const Result result = run(words);
            QCOMPARE(result.exitCode, 1);
            QCOMPARE(
                result.errors,
                QStringLiteral("moodsetctl: there is no database at %1; to have the daemon "
                               "make it: moodsetctl wait\n")
                    .arg(LibraryDatabase::standardPath()));
        }
        QVERIFY(!QFileInfo::exists(session.folders.elsewhere(QStringLiteral("backup.json"))));
    }

    void aNarrowTerminalHidesNoName()
    {
        const ClientSession session;
        QVERIFY(createMoodset(session, QStringLiteral("a")));
        constexpr int narrow = 20;
        for (const char* const command :
             {"moodsets", "photos", "theme", "status", "doctor", "help"}) {
            const TerminalRun shown =
                ClientSession::runInTerminal({QLatin1String(command)}, narrow);
            QVERIFY2(
                shown.exitCode == 0 || QLatin1String(command) == QLatin1String("doctor"), command);
            QVERIFY2(!shown.output.isEmpty(), command);
        }
        QVERIFY(ClientSession::runInTerminal({QStringLiteral("moodsets")}, narrow)
                    .output.contains(QStringLiteral("a.png")));
    }
};

QTEST_GUILESS_MAIN(ClientHostileTest)

#include "tst_clienthostile.moc"
