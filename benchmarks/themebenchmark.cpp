// SPDX-License-Identifier: BSD-3-Clause
// Compares applying moodsets with the minimum of work, and prints the table.
//
// Runs in a private machine, in which it can install bundles, beside the daemon; run-benchmarks
// starts it. The measurements that are compared follow each other, so if the machine becomes
// slower, both sides of each ratio become slower. Everything runs on one processor, so that no side
// gains from threads.
#include "arguments.h"
#include "bundles.h"
#include "daemoncalls.h"
#include "floordatabase.h"
#include "libraryrows.h"
#include "measureddaemon.h"
#include "measuredprocess.h"
#include "openedfiles.h"
#include "photo.h"
#include "report.h"
#include "squarefloor.h"

#include <mgconfitem.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QImageReader>
#include <QRgb>
#include <QTimer>
#include <QUrl>

#include <array>
#include <csignal>
#include <iostream>
#include <optional>
#include <sched.h>
#include <thread>
#include <utility>

namespace {

/// Bundles by their numbers.
constexpr int PlainBundle = 0;
constexpr int LegacyBundle = 1;

constexpr QSize PhotoSize(4000, 3000);

struct Screen
{
    QSize size;
    /// Against the bytes of its square; none where the code that a picture brings into memory is as
    /// large as that.
    std::optional<double> peakBudget;
};

constexpr std::array<Screen, 2> Screens{{{QSize(1080, 2520), 4}, {QSize(540, 960), {}}}};

struct Settings
{
    /// Holds the pictures, the databases and the wallpapers.
    QDir folder;
    int rounds = 0;
    int activations = 0;
    int edits = 0;
    /// The sides of pictures and screens are divided by this.
    int divisor = 1;
};

/// Times in ms.
struct Costs
{
    Series wall, processor;

    void add(const Cost& cost)
    {
        wall.push_back(cost.wall.count());
        processor.push_back(cost.processor.count());
    }
};

struct Activations
{
    Costs picture, bundle, legacy, floor, pictureLessEncode;
};

struct ScreenResults
{
    /// The medians of each round.
    Activations activations;
    Series first; // ms
    Series peak, kept; // MiB, over the idle daemon
    Series legacyOpens;
};

/// Times in ms: of an edit of the active moodset until the reply and until the store has told of
/// the last key, and of an edit of another moodset.
struct EditCosts
{
    Series reply, lastKey, other;
};

/// The same for the bare rows and keys.
struct BareEditCosts
{
    Series stored, row;
};

struct Results
{
    std::array<ScreenResults, Screens.size()> screens;
    EditCosts edit;
    BareEditCosts bareEdit;
};

int longerSide(const QSize& screen)
{
    return qMax(screen.width(), screen.height());
}

/// Leaves one of the processors to this process and to those that it starts.
void keepToOneProcessor()
{
    cpu_set_t processors;
    CPU_ZERO(&processors);
    CPU_SET(sched_getcpu(), &processors);
    if (sched_setaffinity(0, sizeof processors, &processors) != 0) {
        giveUp("cannot keep to one processor");
    }
}

void setScreen(const QSize& screen)
{
    MGConfItem(QStringLiteral("/vantile/screen/primary/width")).set(screen.width());
    MGConfItem(QStringLiteral("/vantile/screen/primary/height")).set(screen.height());
    MGConfItem::sync();
}

QString storedText(const char* key)
{
    return MGConfItem(QLatin1String(key)).value().toString();
}

/// Makes a moodset active and makes sure that it is; the time from the call to the reply.
Milliseconds activate(const QString& file)
{
    const QString url = QUrl::fromLocalFile(file).toString();
    const Milliseconds time = call(daemonCall(QStringLiteral("setMoodset"), {url}));
    if (storedText("/desktop/zavro/theme/active_moodset") != file) {
        giveUp("does not become active: " + QFile::encodeName(file));
    }
    return time;
}

/// The processor time includes the daemon's work after the reply.
Cost measureActivation(const MeasuredProcess& daemon, const QString& file)
{
    const Milliseconds before = settledProcessorTime(daemon);
    const Milliseconds wall = activate(file);
    return {wall, settledProcessorTime(daemon) - before};
}

/// Checks that both present wallpapers are squares with this side.
void checkWallpapers(int side)
{
    for (const char* key :
         {"/desktop/zavro/background/portrait/home_picture_filename",
          "/desktop/zavro/background/portrait/app_picture_filename"}) {
        if (QImageReader(storedText(key)).size() != QSize(side, side)) {
            giveUp(QByteArray("not as large as the screen: ") + key);
        }
    }
}

/// The four colours of a moodset, all different from those of the number before.
struct Colors
{
    explicit Colors(int number)
        : text(QStringLiteral("#ff%1").arg(number, 6, 16, QLatin1Char('0')))
    {
    }

    QVariantMap attributes() const
    {
        return {
            {QStringLiteral("highlightColor"), text},
            {QStringLiteral("secondaryHighlightColor"), text},
            {QStringLiteral("primaryColor"), text},
            {QStringLiteral("secondaryColor"), text}};
    }

    QString text;
};

const QString LastColorKey = QStringLiteral("/desktop/zavro/theme/color/secondary");
const std::array<QString, 4> ColorKeys{
    QStringLiteral("/desktop/zavro/theme/color/highlight"),
    QStringLiteral("/desktop/zavro/theme/color/secondaryHighlight"),
    QStringLiteral("/desktop/zavro/theme/color/primary"), LastColorKey};

QDBusMessage saveCall(qint64 id, const Colors& colors)
{
    constexpr int moodsetType = 1;
    return daemonCall(QStringLiteral("saveAttributes"), {moodsetType, id, colors.attributes()});
}

double timeSince(SteadyTime start)
{
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

/// Waits until the daemon and the store have surely done all that follows an edit. The calls keep
/// the machine awake: how long processors take to wake up is not to be measured.
void settle()
{
    constexpr std::chrono::milliseconds pause(30);
    const SteadyTime end = std::chrono::steady_clock::now() + pause;
    while (std::chrono::steady_clock::now() < end) {
        call(emptyCall());
    }
}

/// Reports when any process has changed a key.
class KeyWatch
{
public:
    explicit KeyWatch(const QString& key)
        : m_item(key)
    {
        constexpr std::chrono::seconds timeout(10);
        m_timer.setInterval(timeout);
        QObject::connect(&m_timer, &QTimer::timeout, [] { giveUp("a key does not change"); });
        QObject::connect(&m_item, &MGConfItem::valueChanged, &m_loop, &QEventLoop::quit);
    }

    /// Waits for the next change. A change since the last call counts, too.
    void waitForChange()
    {
        m_timer.start();
        m_loop.exec();
        m_timer.stop();
    }

private:
    MGConfItem m_item;
    QTimer m_timer;
    QEventLoop m_loop;
};

/// Edits colours with what that takes at least: the keys, and the row in a database of its own.
class BareColors
{
public:
    BareColors(const QString& path, qint64 id)
        : m_connection(path)
        , m_database(openLikeDaemon(path))
        , m_id(id)
        , m_fileUpdate(prepared(
              m_database,
              QStringLiteral("UPDATE file SET displayName = displayName WHERE id = ?;")))
        , m_moodsetUpdate(prepared(
              m_database,
              QStringLiteral("UPDATE moodset SET highlightColor = ?, secondaryHighlightColor = ?, "
                             "primaryColor = ?, secondaryColor = ? WHERE fileId = ?;")))
    {
    }

    void write(const Colors& colors)
    {
        writeRow(colors);
        for (const QString& key : ColorKeys) {
            MGConfItem(key).set(colors.text);
        }
        MGConfItem::sync();
    }

    void writeRow(const Colors& colors)
    {
        m_database.transaction();
        run(m_fileUpdate, {m_id});
        run(m_moodsetUpdate, {colors.text, colors.text, colors.text, colors.text, m_id});
        m_database.commit();
    }

private:
    /// This is the first member, so the connection is removed after everything that uses it.
    const DatabaseConnection m_connection;
    QSqlDatabase m_database;
    qint64 m_id;
    QSqlQuery m_fileUpdate;
    QSqlQuery m_moodsetUpdate;
};

class Benchmark
{
public:
    explicit Benchmark(Settings settings)
        : m_settings(std::move(settings))
        , m_photo(m_settings.folder.filePath(QStringLiteral("photo.jpg")))
    {
    }

    Results run()
    {
        std::cerr << "making a picture\n";
        writePhoto(m_photo, PhotoSize / m_settings.divisor);
        installBundles(2);
        changeWallpaper(PlainBundle, m_photo, 2);
        changeWallpaper(LegacyBundle, m_photo, 1);
        // There are no pictures, and no directory for them.
        setPicturesFolder(m_settings.folder.filePath(QStringLiteral("none")));
        for (int round = 1; round <= m_settings.rounds; ++round) {
            std::cerr << "round " << round << " of " << m_settings.rounds << '\n';
            for (size_t i = 0; i < Screens.size(); ++i) {
                measureScreen(Screens.at(i).size / m_settings.divisor, &m_results.screens.at(i));
            }
            measureEdits();
        }
        return m_results;
    }

private:
    void measureScreen(const QSize& screen, ScreenResults* results)
    {
        setScreen(screen);
        removeDatabase(daemonDatabase());
        MeasuredProcess daemon = startDaemon(InstallIdleLine);
        settledProcessorTime(daemon);
        const int idle = daemon.memory().resident;
        results->first.push_back(activate(m_photo).count());
        checkWallpapers(longerSide(screen));
        activate(bundleFile(PlainBundle));
        if (legacyPictureOpens() == 0) {
            giveUp("the conversion of a legacy bundle goes unnoticed");
        }
        measureAgain(daemon, longerSide(screen), results);
        addMemory(daemon, idle, results);
        results->legacyOpens.push_back(legacyPictureOpens());
        daemon.stop(SIGTERM);
    }

    static void addMemory(const MeasuredProcess& daemon, int idle, ScreenResults* results)
    {
        constexpr double kibPerMib = 1024;
        const MemoryUse memory = daemon.memory();
        results->peak.push_back((memory.peak - idle) / kibPerMib);
        results->kept.push_back((memory.resident - idle) / kibPerMib);
    }

    void measureAgain(const MeasuredProcess& daemon, int side, ScreenResults* results) const
    {
        Activations round;
        for (int i = 0; i < m_settings.activations; ++i) {
            const SquareFloor floor = measureSquare(m_photo, side);
            const Cost picture = measureActivation(daemon, m_photo);
            round.floor.add(floor.read + floor.encode + floor.encode);
            round.picture.add(picture);
            round.pictureLessEncode.add(picture - floor.encodeDarkened);
            // The file of the bundle is then in the processor's cache, as that of the picture is.
            measureSquare(wallpaperPath(PlainBundle), side);
            round.bundle.add(measureActivation(daemon, bundleFile(PlainBundle)));
            round.legacy.add(measureActivation(daemon, bundleFile(LegacyBundle)));
        }
        for (Costs Activations::*costs :
             {&Activations::picture, &Activations::bundle, &Activations::legacy,
              &Activations::floor, &Activations::pictureLessEncode}) {
            addMedians(round.*costs, &(results->activations.*costs));
        }
    }

    static void addMedians(const Costs& round, Costs* results)
    {
        results->wall.push_back(median(round.wall));
        results->processor.push_back(median(round.processor));
    }

    static void addMedians(const EditCosts& round, EditCosts* results)
    {
        results->reply.push_back(median(round.reply));
        results->lastKey.push_back(median(round.lastKey));
        results->other.push_back(median(round.other));
    }

    static void addMedians(const BareEditCosts& round, BareEditCosts* results)
    {
        results->stored.push_back(median(round.stored));
        results->row.push_back(median(round.row));
    }

    /// How often the original picture of the legacy bundle is opened when the bundle is applied.
    static int legacyPictureOpens()
    {
        OpenedFiles opened(bundlePath(LegacyBundle));
        activate(bundleFile(LegacyBundle));
        const int count = opened.paths().count(wallpaperPath(LegacyBundle));
        if (!opened.isValid()) {
            giveUp("the openings of files cannot be counted");
        }
        return count;
    }

    void measureEdits()
    {
        const MeasuredProcess daemon = startDaemon(InstallIdleLine);
        activate(bundleFile(PlainBundle));
        const QString copy = m_settings.folder.filePath(QStringLiteral("floor.sqlite"));
        removeDatabase(copy);
        copyDatabase(daemonDatabase(), copy);
        const qint64 id = moodsetId(copy, bundlePath(PlainBundle));
        const qint64 otherId = moodsetId(copy, bundlePath(LegacyBundle));
        BareColors bare(copy, id);
        KeyWatch lastKey(LastColorKey);
        EditCosts edit;
        BareEditCosts bareEdit;
        for (int i = 0; i < m_settings.edits; ++i) {
            bareEdit.stored.push_back(duration([&] { bare.write(Colors(2 * i)); }));
            lastKey.waitForChange();
            measureEdit(id, Colors(2 * i + 1), &lastKey, &edit);
            bareEdit.row.push_back(duration([&] { bare.writeRow(Colors(2 * i + 1)); }));
            edit.other.push_back(duration([&] { call(saveCall(otherId, Colors(2 * i))); }));
        }
        addMedians(edit, &m_results.edit);
        addMedians(bareEdit, &m_results.bareEdit);
    }

    template <typename Work>
    static double duration(const Work& work)
    {
        settle();
        const SteadyTime start = std::chrono::steady_clock::now();
        work();
        return timeSince(start);
    }

    static void measureEdit(qint64 id, const Colors& colors, KeyWatch* lastKey, EditCosts* costs)
    {
        settle();
        const SteadyTime start = std::chrono::steady_clock::now();
        call(saveCall(id, colors));
        costs->reply.push_back(timeSince(start));
        lastKey->waitForChange();
        costs->lastKey.push_back(timeSince(start));
    }

    const Settings m_settings;
    const QString m_photo;
    Results m_results;
};

void addActivations(Report* report, const QSize& screen, const Activations& costs)
{
    const QString ms = QStringLiteral("ms");
    const QString at = QStringLiteral(" at %1 x %2").arg(screen.width()).arg(screen.height());
    const QString floor = QStringLiteral("read and two encodes");
    const QString lessEncode = QStringLiteral("picture less its home wallpaper's encode");
    const QString wall = QStringLiteral(", call to reply");
    const QString processor = QStringLiteral(", processor time");
    constexpr double pictureBudget = 1.5;
    const QString picture = QStringLiteral("Picture") + at;
    report->add(
        Comparison{picture + wall, ms, costs.picture.wall, floor, costs.floor.wall, pictureBudget});
    report->add(
        Comparison{picture + processor, ms, costs.picture.processor, floor, costs.floor.processor});
    const QString bundle = QStringLiteral("Bundle again") + at;
    report->add(Comparison{
        bundle + wall, ms, costs.bundle.wall, lessEncode, costs.pictureLessEncode.wall, 1});
    report->add(Comparison{
        bundle + processor, ms, costs.bundle.processor, lessEncode,
        costs.pictureLessEncode.processor});
    report->add(Comparison{
        QStringLiteral("Legacy bundle again") + at + wall, ms, costs.legacy.wall, floor,
        costs.floor.wall});
}

void addScreen(
    Report* report, const QSize& screen, std::optional<double> peakBudget,
    const ScreenResults& results)
{
    // This is the code of plugins, and the connection to the store with its threads; it contains no
    // part of a picture.
    constexpr double keptBudget = 5; // MiB
    const QString mib = QStringLiteral("MiB");
    const QString at = QStringLiteral(" at %1 x %2").arg(screen.width()).arg(screen.height());
    const QString square = QStringLiteral("the square");
    constexpr double bytesPerMib = 1024 * 1024;
    const int side = longerSide(screen);
    const Series squareSize(results.peak.size(), side * side * double(sizeof(QRgb)) / bytesPerMib);
    addActivations(report, screen, results.activations);
    report->add(Quantity{
        QStringLiteral("First picture of a daemon") + at + QStringLiteral(", call to reply"),
        QStringLiteral("ms"), results.first});
    report->add(Quantity{
        QStringLiteral("Original of a legacy bundle opened again") + at,
        {},
        results.legacyOpens,
        0});
    report->add(Comparison{
        QStringLiteral("Peak memory over idle") + at, mib, results.peak, square, squareSize,
        peakBudget});
    report->add(
        Quantity{QStringLiteral("Memory kept over idle") + at, mib, results.kept, keptBudget});
}

Report makeReport(const Results& results, int divisor)
{
    const QString ms = QStringLiteral("ms");
    const QString stored = QStringLiteral("row and keys stored");
    constexpr double editBudget = 2;
    Report report;
    for (size_t i = 0; i < Screens.size(); ++i) {
        const Screen& screen = Screens.at(i);
        addScreen(&report, screen.size / divisor, screen.peakBudget, results.screens.at(i));
    }
    report.add(Comparison{
        QStringLiteral("Colours edited, call to the last key's change"), ms, results.edit.lastKey,
        stored, results.bareEdit.stored, editBudget});
    report.add(Comparison{
        QStringLiteral("Colours edited, call to reply"), ms, results.edit.reply, stored,
        results.bareEdit.stored, editBudget});
    report.add(Comparison{
        QStringLiteral("Colours of another moodset edited, call to reply"), ms, results.edit.other,
        QStringLiteral("row stored"), results.bareEdit.row});
    return report;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the daemon at making moodsets active."));
    arguments.addNumber("activations", "Activations of which medians are taken in a round.", "3");
    arguments.addNumber("edits", "Edits of which medians are taken in a round.", "50");
    arguments.addNumber("divisor", "Make all pictures' sides this many times shorter.", "1");
    arguments.addRounds("5");
    arguments.read();
    keepToOneProcessor();
    const Settings settings{
        arguments.folder(), arguments.number("rounds"), arguments.number("activations"),
        arguments.number("edits"), arguments.number("divisor")};
    return arguments.finish(makeReport(Benchmark(settings).run(), settings.divisor));
}
