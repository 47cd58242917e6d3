// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "picturefile.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

using Result = ClientSession::Result;

const char* const Languages[] = {"C.UTF-8", "de_DE.UTF-8", "fi_FI.UTF-8"};

/// Makes the child processes of this process use a language while the object lives.
class Language
{
public:
    explicit Language(const char* locale) { qputenv("LC_ALL", locale); }
    ~Language()
    {
        if (m_before.isNull()) {
            qunsetenv("LC_ALL");
        } else {
            qputenv("LC_ALL", m_before);
        }
    }
    Q_DISABLE_COPY_MOVE(Language)

private:
    const QByteArray m_before = qgetenv("LC_ALL");
};

QStringList words(const char* line)
{
    return QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The names of all commands, from the help.
QStringList commandNames()
{
    QStringList names;
    const Language english(Languages[0]);
    static const QRegularExpression entry(
        QStringLiteral("^  ([a-z]+)  +\\S"), QRegularExpression::MultilineOption);
    auto matches = entry.globalMatch(ClientSession::run({QStringLiteral("--help")}).output);
    while (matches.hasNext()) {
        const QString name = matches.next().captured(1);
        if (name != QLatin1String("moodsetctl")) {
            names.append(name);
        }
    }
    return names;
}

void addCommands()
{
    QTest::addColumn<QByteArray>("line");
    for (const QString& name : commandNames()) {
        const QByteArray line = name.toLatin1() + " --nonsense";
        QTest::newRow(line) << line;
    }
}

/// Command lines with wrong arguments, besides an option that no command has.
const char* const BadLines[] = {
    "",
    "nonsense",
    "--nonsense",
    "backup",
    "backup a b",
    "clean a",
    "clean --dry-run=perhaps",
    "colors",
    "colors a b",
    "completion",
    "completion tcsh",
    "create",
    "create a b",
    "create a --timeout",
    "create a --timeout soon",
    "doctor a",
    "edit",
    "edit 1",
    "edit 1 highlight",
    "edit 1 =red",
    "edit 1 highlight=reddish",
    "edit 1 volume=101",
    "edit 1 size=3",
    "favorite",
    "favorite 1",
    "favorite 1 yes",
    "favorite 1 on 2",
    "help nonsense",
    "help help help",
    "index",
    "index a --timeout -1",
    "install",
    "install a b",
    "install a --timeout never",
    "moodsets a",
    "photos a",
    "photos --folder",
    "preview a b",
    "preview a --highlight reddish",
    "preview a --output",
    "refresh a",
    "refresh --timeout x",
    "remove",
    "remove 1 2",
    "restore",
    "restore a b",
    "set",
    "set a b",
    "set a --timeout",
    "show",
    "show 1 2",
    "status a",
    "theme a",
    "undo a",
    "validate",
    "wait a",
    "wait --timeout",
    "wait --timeout 1s",
    "wait --log",
    "watch a",
    "watch --folder",
};

} // namespace

/// Tests all commands as people and programs call them: in a pipe and in a terminal, and in each of
/// the languages.
class ClientArgumentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void senselessArgumentsAreRefusedInOneLine_data()
    {
        addCommands();
        for (const char* const line : BadLines) {
            QTest::newRow(line) << QByteArray(line);
        }
    }

    void senselessArgumentsAreRefusedInOneLine()
    {
        QFETCH(QByteArray, line);
        QSet<QString> texts;
        for (const char* const locale : Languages) {
            const Language language(locale);

            const Result piped = ClientSession::run(words(line));
            const TerminalRun shown = ClientSession::runInTerminal(words(line));

            QCOMPARE(piped.exitCode, 2);
            QCOMPARE(piped.output, QString());
            QVERIFY2(
                piped.errors.startsWith(QStringLiteral("moodsetctl: "))
                    && piped.errors.indexOf(QLatin1Char('\n')) == piped.errors.size() - 1,
                qPrintable(piped.errors));
            QCOMPARE(shown.exitCode, 2);
            QCOMPARE(shown.output, piped.errors);
            texts.insert(piped.errors);
        }
        QVERIFY2(texts.size() == 3, qPrintable(texts.values().join(QLatin1Char(' '))));
        const Result json = ClientSession::runJson(words(line));
        QCOMPARE(json.exitCode, 2);
        QCOMPARE(json.json().value(QLatin1String("status")), QJsonValue(QStringLiteral("usage")));
    }

    void eachCommandHasABadLine()
    {
        QSet<QString> tried;
        for (const char* const line : BadLines) {
            tried.insert(words(line).value(0));
        }
        const QStringList names = commandNames();
        QCOMPARE(names.size(), 25);
        for (const QString& name : names) {
            QVERIFY2(tried.contains(name), qPrintable(name));
        }
    }

    void eachCommandHasAHelpInEachLanguage()
    {
        for (const QString& name : commandNames()) {
            QSet<QString> texts;
            for (const char* const locale : Languages) {
                const Language language(locale);
                const Result help = ClientSession::run({name, QStringLiteral("--help")});
                const TerminalRun shown =
                    ClientSession::runInTerminal({QStringLiteral("help"), name});
                QCOMPARE(help.exitCode, 0);
                QCOMPARE(shown.exitCode, 0);
                QCOMPARE(shown.output, help.output);
                texts.insert(help.output);
            }
            QVERIFY2(texts.size() == 3, qPrintable(name));
        }
    }

    /// The commands, in an order in which each of them can run.
    void commandsWorkInAPipeAndInATerminal_data()
    {
        QTest::addColumn<bool>("isTerminal");
        QTest::addColumn<QByteArray>("locale");
        for (const char* const locale : Languages) {
            QTest::addRow("pipe, %s", locale) << false << QByteArray(locale);
            QTest::addRow("terminal, %s", locale) << true << QByteArray(locale);
        }
    }

    void commandsWorkInAPipeAndInATerminal()
    {
        QFETCH(bool, isTerminal);
        QFETCH(QByteArray, locale);
        ClientSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        const QString picture = session.folders.elsewhere(QStringLiteral("sea.png"));
        const QString preview = session.folders.elsewhere(QStringLiteral("preview.png"));
        const QString backup = session.folders.elsewhere(QStringLiteral("backup.json"));
        QVERIFY(writePicture(picture, QSize(30, 20)));
        const QString bundle = QStringLiteral("/usr/share/moodset/coast-light");
        const Language language(locale);
        const QVector<QStringList> lines{
            words("status"),
            words("refresh"),
            words("wait --timeout 60"),
            words("index") << picture,
            words("create") << picture,
            words("photos"),
            words("moodsets"),
            words("moodsets --favorites --names"),
            words("colors") << picture,
            words("show sea"),
            words("preview sea --highlight red -o") << preview,
            words("set sea"),
            words("theme"),
            words("edit sea highlight=tomato volume=4"),
            words("favorite sea on"),
            words("undo"),
            words("set") << QStringLiteral("Coast light"),
            words("undo"),
            words("validate") << bundle,
            words("install") << bundle,
            words("backup") << backup,
            words("remove sea"),
            words("restore") << backup,
            words("clean --dry-run"),
            words("clean"),
            words("doctor --rebuild"),
            words("completion bash"),
            words("completion --words -- mood"),
            words("help")};
        for (const QStringList& line : lines) {
            if (isTerminal) {
                const TerminalRun shown = ClientSession::runInTerminal(line);
                QVERIFY2(shown.exitCode == 0, qPrintable(shown.output));
                QVERIFY2(
                    !shown.output.contains(QStringLiteral("moodsetctl: ")),
                    qPrintable(shown.output));
                continue;
            }
            const Result piped = ClientSession::run(line);
            QVERIFY2(piped.exitCode == 0, qPrintable(piped.errors));
            QCOMPARE(piped.errors, QString());
            QVERIFY(!piped.output.contains(QLatin1Char('\033')));
        }
    }

    void aFaultOfTheLibraryIsTold()
    {
        const ClientSession session;
        QSet<QString> texts;
        for (const char* const locale : Languages) {
            const Language language(locale);
            const Result result = ClientSession::run({QStringLiteral("moodsets")});
            QCOMPARE(result.exitCode, 1);
            QCOMPARE(ClientSession::run({QStringLiteral("photos")}).errors, result.errors);
            texts.insert(result.errors);
        }
        QCOMPARE(texts.size(), 3);
    }

    /// The tests above cover 0 and 2.
    void exitStatusesAreThoseOfTheManual()
    {
        ClientSession session;
        QCOMPARE(ClientSession::runJson({QStringLiteral("show"), QStringLiteral("x")}).exitCode, 1);
        QVERIFY(ClientSession::letDaemonBeStarted(false));
        const Result without = ClientSession::runJson({QStringLiteral("refresh")});
        QCOMPARE(without.exitCode, 3);
        QCOMPARE(
            without.json().value(QLatin1String("status")), QJsonValue(QStringLiteral("no-daemon")));
        QVERIFY(ClientSession::letDaemonBeStarted());
        QCOMPARE(ClientSession::runJson({QStringLiteral("wait")}).exitCode, 0);
        // The daemon counts as idle after a second without a change.
        const Result late = ClientSession::runJson(
            {QStringLiteral("wait"), QStringLiteral("--timeout"), QStringLiteral("0.1")});
        QCOMPARE(late.exitCode, 4);
        QCOMPARE(
            late.json().value(QLatin1String("status")), QJsonValue(QStringLiteral("timed-out")));
    }
};

QTEST_GUILESS_MAIN(ClientArgumentsTest)

#include "tst_clientarguments.moc"
