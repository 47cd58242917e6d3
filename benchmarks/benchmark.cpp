// SPDX-License-Identifier: BSD-3-Clause
// Compares the daemon with the minimum that its work takes, and prints the table.
//
// Runs on a private bus, beside the programs that it measures; run-benchmarks starts them. All runs
// of a round follow each other, so if the machine becomes slower, both sides of each ratio become
// slower.
#include "arguments.h"
#include "libraryrows.h"
#include "measureddaemon.h"
#include "measuredprocess.h"
#include "pagecache.h"
#include "report.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <thread>
#include <utility>

namespace {

const QString DaemonName = QStringLiteral("com.zavro.moodsetd");
const QString BareName = QStringLiteral("com.zavro.moodsetd.barestart");

/// Starts are short and cheap, so there are more of them in a round.
constexpr int StartsPerRound = 5;

/// When this time has passed after its last announcement, a daemon is at rest.
constexpr std::chrono::seconds SettleTime(1);

constexpr double KibPerMib = 1024;

struct Settings
{
    /// The directory for the corpora, the database and all other files.
    QDir folder;
    int pictures = 0;
    int smallPictures = 0;
    int largePictures = 0;
    int movedPictures = 0;
    int rounds = 0;
    std::chrono::seconds restTime{0};
    /// The program of another daemon to measure besides; none if empty.
    QByteArray otherDaemon;
};

/// The results of a round. Times are in ms, memory is in MiB.
struct Results
{
    Series daemonProcessor, floorProcessor;
    Series daemonWall, floorWall;
    Series otherProcessor, otherWall, otherPeak, otherStart;
    Series coldWall, coldRead, otherColdWall, otherColdRead;
    Series smallProcessor, largeProcessor, largePeak;
    Series daemonPeak, floorPeak, daemonResident, daemonProportional;
    Series restartWall, restartProcessor, findWall, findProcessor;
    Series moved, movedFloor;
    Series daemonStart, bareStart;
    Activity rest;
};

double inMib(int kib)
{
    return kib / KibPerMib;
}

class Benchmark
{
public:
    explicit Benchmark(Settings settings)
        : m_settings(std::move(settings))
    {
    }

    Results run()
    {
        makeCorpus("pictures", m_settings.pictures, 0);
        makeCorpus("small", m_settings.smallPictures, 0);
        makeCorpus("large", m_settings.largePictures, 0);
        // Their names differ from the names in the directory that they are moved to.
        makeCorpus("incoming", m_settings.movedPictures, m_settings.pictures);
        // This reads the first pages of the files into memory, for all measurements that follow.
        measureFloor(nullptr);
        for (int round = 1; round <= m_settings.rounds; ++round) {
            std::cerr << "round " << round << " of " << m_settings.rounds << '\n';
            runRound();
        }
        measureRest();
        return m_results;
    }

private:
    QString path(const char* name) const { return m_settings.folder.filePath(QLatin1String(name)); }

    /// 50 pictures in a folder, as in a library of 10,000 in 200.
    void makeCorpus(const char* name, int pictures, int first) const
    {
        constexpr int picturesPerFolder = 50;
        const bool isNested = first == 0;
        const int folders = isNested ? qMax(1, pictures / picturesPerFolder) : 0;
        std::cerr << "making " << pictures << " pictures in " << folders << " folders\n";
        runToEnd(
            {program("makecorpus"), QFile::encodeName(path(name)), "--pictures",
             QByteArray::number(pictures), "--folders", QByteArray::number(folders), "--first",
             QByteArray::number(first)});
    }

    void runRound()
    {
        measureFloor(&m_results);
        measureIndexing();
        compareRows();
        measureOther();
        measureCold(program("moodsetd"), &m_results.coldWall, &m_results.coldRead);
        measureRestartAndMove();
        for (int i = 0; i < StartsPerRound; ++i) {
            measureStart();
        }
        m_results.smallProcessor.push_back(indexFresh("small").processorTime().count());
        const MeasuredProcess large = indexFresh("large");
        m_results.largeProcessor.push_back(large.processorTime().count());
        m_results.largePeak.push_back(inMib(large.memory().peak));
    }

    /// Measures the floor's time for the library, from its start, and its time for the pictures
    /// that are moved, which does not include the start.
    void measureFloor(Results* results)
    {
        removeDatabase(path("floor.sqlite"));
        MeasuredProcess floor(
            {program("floor"), QFile::encodeName(path("floor.sqlite"))},
            QFile::encodeName(path("pictures")) + '\n');
        floor.waitForLine(DoneLine);
        const Milliseconds wall = timeSinceStart(floor);
        const Milliseconds processor = floor.processorTime();
        const MemoryUse memory = floor.memory();
        m_floorRows = libraryRows(path("floor.sqlite"));
        floor.write(QFile::encodeName(path("incoming")) + '\n');
        const double incoming = floor.waitForLine(DoneLine).split(' ').first().toDouble();
        if (results) {
            results->floorWall.push_back(wall.count());
            results->floorProcessor.push_back(processor.count());
            results->floorPeak.push_back(inMib(memory.peak));
            results->movedFloor.push_back(incoming);
        }
    }

    /// Starts a daemon that indexes a corpus into a new database, and waits until it is done.
    MeasuredProcess indexFresh(
        const char* corpus, const QByteArray& daemon = program("moodsetd")) const
    {
        removeDatabase(daemonDatabase());
        setPicturesFolder(path(corpus));
        return startDaemon(FileIdleLine, daemon);
    }

    /// What there is to set against the daemon's figures where another daemon is given.
    void measureOther()
    {
        if (m_settings.otherDaemon.isEmpty()) {
            return;
        }
        {
            const MeasuredProcess other = indexFresh("pictures", m_settings.otherDaemon);
            m_results.otherWall.push_back(timeSinceStart(other).count());
            m_results.otherProcessor.push_back(other.processorTime().count());
            m_results.otherPeak.push_back(inMib(other.memory().peak));
        }
        measureCold(m_settings.otherDaemon, &m_results.otherColdWall, &m_results.otherColdRead);
    }

    /// Indexes the library while none of its files is in memory. The time, and the MB that are read
    /// from the disk where they are counted.
    void measureCold(const QByteArray& daemon, Series* wall, Series* read) const
    {
        constexpr double bytesPerMegabyte = 1e6;
        dropPages(path("pictures"));
        const std::optional<double> before = bytesRead(path("pictures"));
        const MeasuredProcess process = indexFresh("pictures", daemon);
        wall->push_back(timeSinceStart(process).count());
        const std::optional<double> after = bytesRead(path("pictures"));
        if (before && after) {
            read->push_back((*after - *before) / bytesPerMegabyte);
        }
    }

    void measureIndexing()
    {
        MeasuredProcess daemon = indexFresh("pictures");
        const Milliseconds wall = timeSinceStart(daemon);
        m_results.daemonWall.push_back(wall.count());
        m_results.daemonProcessor.push_back(daemon.processorTime().count());
        m_results.daemonPeak.push_back(inMib(daemon.memory().peak));
        std::this_thread::sleep_for(SettleTime);
        const MemoryUse memory = daemon.memory();
        m_results.daemonResident.push_back(inMib(memory.resident));
        m_results.daemonProportional.push_back(inMib(memory.proportional));
        daemon.stop(SIGTERM);
    }

    void compareRows() const
    {
        const QStringList rows = libraryRows(daemonDatabase());
        if (rows.size() < m_settings.pictures || rows != m_floorRows) {
            giveUp(
                "the floor's rows are not the daemon's: " + QByteArray::number(m_floorRows.size())
                + " against " + QByteArray::number(rows.size()));
        }
    }

    void measureRestartAndMove()
    {
        MeasuredProcess daemon = startDaemon(FileIdleLine);
        const Milliseconds wall = timeSinceStart(daemon);
        m_results.restartWall.push_back(wall.count());
        m_results.restartProcessor.push_back(daemon.processorTime().count());
        const FinishedRun find =
            runToEnd({"find", QFile::encodeName(path("pictures")), "-printf", R"(%T@ %p\n)"});
        m_results.findWall.push_back(find.wall.count());
        m_results.findProcessor.push_back(find.processor.count());
        measureMove(&daemon);
    }

    void measureMove(MeasuredProcess* daemon)
    {
        const QString target = path("pictures/album-00000");
        const QStringList names = QDir(path("incoming")).entryList(QDir::Files);
        const int expected = names.size() + indexedPictures(daemonDatabase(), target);
        const auto start = std::chrono::steady_clock::now();
        move(names, path("incoming"), target);
        SteadyTime end;
        // The daemon may also be at rest between two moves.
        do {
            daemon->waitForLine(FileIdleLine);
            end = std::chrono::steady_clock::now();
        } while (indexedPictures(daemonDatabase(), target) < expected);
        m_results.moved.push_back(Milliseconds(end - start).count());
        daemon->stop(SIGTERM);

        // This measures the moves alone, without a daemon.
        const auto backStart = std::chrono::steady_clock::now();
        move(names, target, path("incoming"));
        m_results.movedFloor.back() +=
            Milliseconds(std::chrono::steady_clock::now() - backStart).count();
    }

    static void move(const QStringList& names, const QString& from, const QString& to)
    {
        const QByteArray source = QFile::encodeName(from) + '/';
        const QByteArray target = QFile::encodeName(to) + '/';
        for (const QString& name : names) {
            const QByteArray file = QFile::encodeName(name);
            if (std::rename((source + file).constData(), (target + file).constData()) != 0) {
                giveUp("cannot move " + file);
            }
        }
    }

    void measureStart()
    {
        m_results.bareStart.push_back(startTime(
            {program("barestart"), QFile::encodeName(daemonDatabase()), BareName.toUtf8()},
            BareName));
        m_results.daemonStart.push_back(startTime({program("moodsetd")}, DaemonName));
        if (!m_settings.otherDaemon.isEmpty()) {
            m_results.otherStart.push_back(startTime({m_settings.otherDaemon}, DaemonName));
        }
    }

    /// The time from a program's start to its name on the bus.
    static double startTime(const QByteArrayList& command, const QString& name)
    {
        constexpr std::chrono::seconds timeout(60);
        QDBusServiceWatcher watcher(
            name, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange);
        QEventLoop loop;
        SteadyTime appeared;
        QObject::connect(
            &watcher, &QDBusServiceWatcher::serviceRegistered, &loop, [&loop, &appeared] {
                appeared = std::chrono::steady_clock::now();
                loop.quit();
            });
        QTimer::singleShot(timeout, &loop, [&name] { giveUp("nobody takes " + name.toUtf8()); });
        MeasuredProcess process(command);
        loop.exec();
        // The name must be free again for the next one.
        QObject::connect(
            &watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
        process.stop(SIGTERM);
        loop.exec();
        return Milliseconds(appeared - process.startTime()).count();
    }

    void measureRest()
    {
        const MeasuredProcess daemon = indexFresh("pictures");
        std::this_thread::sleep_for(SettleTime);
        const Activity before = daemon.activity();
        std::this_thread::sleep_for(m_settings.restTime);
        const Activity after = daemon.activity();
        m_results.rest = {after.ticks - before.ticks, after.wakeUps - before.wakeUps};
    }

    const Settings m_settings;
    Results m_results;
    QStringList m_floorRows;
};

void addCold(Report* report, const Results& results, const QString& library)
{
    report->add(Comparison{
        library + QStringLiteral("none in memory, time to idle"), QStringLiteral("ms"),
        results.coldWall, QStringLiteral("all in memory"), results.daemonWall, 1.5});
    if (!results.coldRead.empty()) {
        report->add(Quantity{
            library + QStringLiteral("none in memory, read from the disk"), QStringLiteral("MB"),
            results.coldRead, 180});
    }
}

/// The lines of another daemon, by its side.
void addOther(Report* report, const Results& results, const QString& library)
{
    const QString other = QStringLiteral("other daemon");
    report->add(Comparison{
        library + QStringLiteral("processor time to idle"), QStringLiteral("ms"),
        results.daemonProcessor, other, results.otherProcessor});
    report->add(Comparison{
        library + QStringLiteral("time to idle"), QStringLiteral("ms"), results.daemonWall, other,
        results.otherWall});
    report->add(Comparison{
        library + QStringLiteral("none in memory, time to idle"), QStringLiteral("ms"),
        results.coldWall, other, results.otherColdWall});
    if (!results.coldRead.empty()) {
        report->add(Comparison{
            library + QStringLiteral("none in memory, read from the disk"), QStringLiteral("MB"),
            results.coldRead, other, results.otherColdRead});
    }
    report->add(Comparison{
        library + QStringLiteral("peak memory"), QStringLiteral("MiB"), results.daemonPeak, other,
        results.otherPeak});
    report->add(Comparison{
        QStringLiteral("Start to bus name"), QStringLiteral("ms"), results.daemonStart, other,
        results.otherStart});
}

Report makeReport(const Results& results, const Settings& settings)
{
    const QString ms = QStringLiteral("ms");
    const QString mib = QStringLiteral("MiB");
    const QString floor = QStringLiteral("floor");
    const QString find = QStringLiteral("find");
    const QString library = QStringLiteral("%1 pictures, ").arg(settings.pictures);
    Report report;
    report.add(Comparison{
        library + QStringLiteral("processor time to idle"), ms, results.daemonProcessor, floor,
        results.floorProcessor});
    report.add(Comparison{
        library + QStringLiteral("time to idle"), ms, results.daemonWall, floor,
        results.floorWall});
    addCold(&report, results, library);
    if (!settings.otherDaemon.isEmpty()) {
        addOther(&report, results, library);
    }
    report.add(Comparison{
        library + QStringLiteral("processor time to idle"), ms, results.daemonProcessor,
        QStringLiteral("%1 pictures").arg(settings.smallPictures), results.smallProcessor});
    report.add(Comparison{
        QStringLiteral("%1 pictures, processor time to idle").arg(settings.largePictures), ms,
        results.largeProcessor, QStringLiteral("%1 pictures").arg(settings.pictures),
        results.daemonProcessor, 1.05 * settings.largePictures / settings.pictures});
    report.add(Comparison{
        QStringLiteral("Peak memory"), mib, results.daemonPeak, floor, results.floorPeak, 1.35});
    report.add(Quantity{QStringLiteral("Peak memory"), mib, results.daemonPeak, 35, true});
    report.add(Quantity{
        QStringLiteral("Peak memory, %1 pictures").arg(settings.largePictures), mib,
        results.largePeak, 35, true});
    report.add(Quantity{QStringLiteral("Memory when idle, resident"), mib, results.daemonResident});
    report.add(
        Quantity{QStringLiteral("Memory when idle, its share"), mib, results.daemonProportional});
    report.add(Comparison{
        QStringLiteral("Restart with nothing changed, time to idle"), ms, results.restartWall, find,
        results.findWall});
    report.add(Comparison{
        QStringLiteral("Restart with nothing changed, processor time"), ms,
        results.restartProcessor, find, results.findProcessor});
    report.add(Comparison{
        QStringLiteral("%1 pictures moved in, to the last row").arg(settings.movedPictures), ms,
        results.moved, QStringLiteral("mover and floor"), results.movedFloor, 1.6});
    report.add(Comparison{
        QStringLiteral("Start to bus name"), ms, results.daemonStart,
        QStringLiteral("bare program"), results.bareStart, 4});
    const QString rest = QStringLiteral(" in %1 s at rest").arg(settings.restTime.count());
    report.add(
        Quantity{QStringLiteral("Processor ticks") + rest, {}, {double(results.rest.ticks)}, 0});
    report.add(Quantity{QStringLiteral("Wake-ups") + rest, {}, {double(results.rest.wakeUps)}, 0});
    return report;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the daemon at indexing pictures."));
    arguments.addNumber("pictures", "Pictures in the library.", "10000");
    arguments.addNumber("small", "Pictures in the small library.", "1000");
    arguments.addNumber("large", "Pictures in the large library.", "100000");
    arguments.addNumber("moved", "Pictures that are moved in.", "1000");
    arguments.addRounds("5");
    arguments.addNumber("rest", "Seconds at rest.", "60");
    arguments.addFile("other", "Another daemon's program, to be measured in turns with this one.");
    arguments.read();
    const Settings settings{
        arguments.folder(),
        arguments.number("pictures"),
        arguments.number("small"),
        arguments.number("large"),
        arguments.number("moved"),
        arguments.number("rounds"),
        std::chrono::seconds(arguments.number("rest")),
        QFile::encodeName(arguments.file("other"))};
    return arguments.finish(makeReport(Benchmark(settings).run(), settings));
}
