// SPDX-License-Identifier: BSD-3-Clause
// Compares the daemon's work on installed bundles with the minimum, and prints the table.
//
// Runs in a private machine, in which it can install bundles, beside the programs that it measures;
// run-benchmarks starts them. All runs of a round follow each other, so if the machine becomes
// slower, both sides of each ratio become slower.
#include "arguments.h"
#include "bundles.h"
#include "daemoncalls.h"
#include "floordatabase.h"
#include "libraryrows.h"
#include "measureddaemon.h"
#include "measuredprocess.h"
#include "openedfiles.h"
#include "report.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QFile>
#include <QUrl>

#include <csignal>
#include <iostream>
#include <utility>

namespace {

struct Settings
{
    /// Holds the databases.
    QDir folder;
    int bundles = 0;
    int edits = 0;
    int rounds = 0;
};

/// The time that a process needs for a task.
struct Costs
{
    Series wall, processor; // ms
};

struct Results
{
    Costs daemon, floor;
    Costs restart, change, refresh;
    Series restartOpens;
    Series edit, emptyCallAndCommit;
};

/// The values of an edit of a moodset: a colour, the volume and the file of a tone.
struct Edit
{
    explicit Edit(int number)
        : color(QStringLiteral("#ff%1").arg(number, 6, 16, QLatin1Char('0')))
        , volume(number % 100)
        , tone(number % 2 == 0 ? QStringLiteral("gull.ogg") : QStringLiteral("buoy.ogg"))
    {
    }

    QString color;
    int volume;
    QString tone;
};

const QString ToneType = QStringLiteral("ringerToneFile");

QDBusMessage saveCall(qint64 id, const QString& bundle, const Edit& edit)
{
    constexpr int moodsetType = 1;
    const QString path = bundle + QStringLiteral("/sounds/") + edit.tone;
    const QVariantMap tone{{QStringLiteral("url"), QUrl::fromLocalFile(path).toString()}};
    const QVariantMap values{
        {QStringLiteral("highlightColor"), edit.color},
        {QStringLiteral("ringerVolume"), edit.volume},
        {QStringLiteral("resources"), QVariantMap{{ToneType, tone}}}};
    return daemonCall(QStringLiteral("saveAttributes"), {moodsetType, id, values});
}

/// Writes edits with the daemon's statements, and measures the time of each commit.
class BareEditor
{
public:
    BareEditor(const QString& path, const QString& bundle)
        : m_connection(path)
        , m_database(openLikeDaemon(path))
        , m_id(moodsetId(path, bundle))
        , m_sounds(bundle + QStringLiteral("/sounds"))
        , m_fileUpdate(prepared(
              m_database,
              QStringLiteral("UPDATE file SET displayName = displayName WHERE id = ?;")))
        , m_moodsetUpdate(prepared(
              m_database,
              QStringLiteral(
                  "UPDATE moodset SET highlightColor = ?, ringerVolume = ? WHERE fileId = ?;")))
        , m_resourceInsert(prepared(
              m_database,
              QStringLiteral("INSERT OR REPLACE INTO resource (fileId, resourceType, resourceId) "
                             "SELECT ?, ?, file.id FROM file "
                             "JOIN directory ON directory.id = directoryId "
                             "WHERE path = ? AND fileName = ?;")))
    {
    }

    Milliseconds commit(const Edit& edit)
    {
        m_database.transaction();
        run(m_fileUpdate, {m_id});
        run(m_moodsetUpdate, {edit.color, edit.volume, m_id});
        run(m_resourceInsert, {m_id, ToneType, m_sounds, edit.tone});
        const auto start = std::chrono::steady_clock::now();
        m_database.commit();
        return std::chrono::steady_clock::now() - start;
    }

private:
    /// This is the first member, so the connection is removed after everything that uses it.
    const DatabaseConnection m_connection;
    QSqlDatabase m_database;
    qint64 m_id;
    QString m_sounds;
    QSqlQuery m_fileUpdate;
    QSqlQuery m_moodsetUpdate;
    QSqlQuery m_resourceInsert;
};

class Benchmark
{
public:
    explicit Benchmark(Settings settings)
        : m_settings(std::move(settings))
    {
    }

    Results run()
    {
        std::cerr << "installing " << m_settings.bundles << " bundles\n";
        installBundles(m_settings.bundles);
        // There are no pictures, and no directory for them.
        setPicturesFolder(m_settings.folder.filePath(QStringLiteral("none")));
        // This reads all files into memory for the first time.
        measureFloor();
        m_results = Results();
        for (int round = 1; round <= m_settings.rounds; ++round) {
            std::cerr << "round " << round << " of " << m_settings.rounds << '\n';
            runRound();
        }
        return m_results;
    }

private:
    QString floorDatabase() const
    {
        return m_settings.folder.filePath(QStringLiteral("floor.sqlite"));
    }

    void runRound()
    {
        measureFloor();
        removeDatabase(daemonDatabase());
        MeasuredProcess daemon = measureStart(&m_results.daemon);
        compareRows("scan");
        measureEdits(&daemon);
        compareRows("edits");
        measureChange(
            &daemon, &m_results.change,
            daemonCall(QStringLiteral("installPackage"), {bundlePath(0)}));
        measureChange(&daemon, &m_results.refresh, daemonCall(QStringLiteral("refreshMoodsets")));
        daemon.stop(SIGTERM);
        measureRestart();
    }

    void measureFloor()
    {
        removeDatabase(floorDatabase());
        MeasuredProcess floor(
            {program("bundlefloor"), QFile::encodeName(floorDatabase())},
            QFile::encodeName(installPath()) + '\n');
        floor.waitForLine(DoneLine);
        m_results.floor.wall.push_back(timeSinceStart(floor).count());
        m_results.floor.processor.push_back(floor.processorTime().count());
    }

    /// Measures a daemon from its start until it is at rest.
    static MeasuredProcess measureStart(Costs* costs)
    {
        MeasuredProcess daemon = startDaemon(InstallIdleLine);
        costs->wall.push_back(timeSinceStart(daemon).count());
        costs->processor.push_back(settledProcessorTime(daemon).count());
        return daemon;
    }

    void compareRows(const QByteArray& after) const
    {
        const QStringList moodsets = moodsetRows(daemonDatabase());
        constexpr int tonesPerBundle = 3;
        if (moodsets.size() != tonesPerBundle * m_settings.bundles
            || moodsets != moodsetRows(floorDatabase())
            || libraryRows(daemonDatabase()) != libraryRows(floorDatabase())) {
            giveUp("the floor's rows are not the daemon's after the " + after);
        }
    }

    /// Measures calls and commits in turns. The daemon is at rest before each call.
    void measureEdits(MeasuredProcess* daemon)
    {
        const QString bundle = bundlePath(m_settings.bundles / 2);
        const qint64 id = moodsetId(daemonDatabase(), bundle);
        BareEditor editor(floorDatabase(), bundle);
        const QDBusMessage empty = emptyCall();
        Series edits;
        Series base;
        for (int i = 0; i < m_settings.edits; ++i) {
            const Edit edit(i);
            base.push_back((call(empty) + editor.commit(edit)).count());
            edits.push_back(call(saveCall(id, bundle, edit)).count());
            daemon->waitForLine(FileIdleLine);
        }
        m_results.edit.push_back(median(edits));
        m_results.emptyCallAndCommit.push_back(median(base));
    }

    /// Changes one bundle and tells the daemon.
    static void measureChange(MeasuredProcess* daemon, Costs* costs, const QDBusMessage& message)
    {
        changeBundle(0);
        const Milliseconds before = settledProcessorTime(*daemon);
        const auto start = std::chrono::steady_clock::now();
        call(message);
        daemon->waitForLine(InstallIdleLine);
        costs->wall.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        costs->processor.push_back((settledProcessorTime(*daemon) - before).count());
    }

    void measureRestart()
    {
        OpenedFiles opened(installPath());
        measureStart(&m_results.restart);
        m_results.restartOpens.push_back(opened.paths().size());
        if (!opened.isValid()) {
            giveUp("the openings of files cannot be counted");
        }
    }

    const Settings m_settings;
    Results m_results;
};

Report makeReport(const Results& results, const Settings& settings)
{
    const QString ms = QStringLiteral("ms");
    const QString floor = QStringLiteral("floor");
    const QString firstScan = QStringLiteral("start to last row");
    const QString bundles = QStringLiteral("%1 bundles, ").arg(settings.bundles);
    constexpr double scanBudget = 2;
    constexpr double changeBudget = 1.0 / 50;
    Report report;
    report.add(Comparison{
        bundles + QStringLiteral("start to last row"), ms, results.daemon.wall, floor,
        results.floor.wall, scanBudget});
    report.add(Comparison{
        bundles + QStringLiteral("processor time to rest"), ms, results.daemon.processor, floor,
        results.floor.processor});
    report.add(Quantity{
        QStringLiteral("Bundle files opened at a restart with nothing changed"),
        {},
        results.restartOpens,
        0});
    report.add(Quantity{
        QStringLiteral("Restart with nothing changed, to rest"), ms, results.restart.wall});
    report.add(Comparison{
        QStringLiteral("One bundle changed and installed, to its row"), ms, results.change.wall,
        firstScan, results.daemon.wall, changeBudget});
    report.add(Comparison{
        QStringLiteral("One bundle changed and installed, processor time"), ms,
        results.change.processor, QStringLiteral("first scan"), results.daemon.processor,
        changeBudget});
    report.add(Comparison{
        QStringLiteral("One bundle changed and all refreshed, to its row"), ms,
        results.refresh.wall, firstScan, results.daemon.wall});
    report.add(Comparison{
        QStringLiteral("One bundle changed and all refreshed, processor time"), ms,
        results.refresh.processor, QStringLiteral("first scan"), results.daemon.processor});
    report.add(Comparison{
        QStringLiteral("saveAttributes, call to reply"), ms, results.edit,
        QStringLiteral("empty call and commit"), results.emptyCallAndCommit, 3});
    return report;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the daemon with installed bundles."));
    arguments.addNumber("bundles", "Bundles that are installed.", "1000");
    arguments.addNumber("edits", "Edits of which medians are taken in a round.", "1000");
    arguments.addRounds("5");
    arguments.read();
    const Settings settings{
        arguments.folder(), arguments.number("bundles"), arguments.number("edits"),
        arguments.number("rounds")};
    return arguments.finish(makeReport(Benchmark(settings).run(), settings));
}
