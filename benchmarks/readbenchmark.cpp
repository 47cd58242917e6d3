// SPDX-License-Identifier: BSD-3-Clause
// Measures listings through the query agents, and the same statements stepped with SQLite's own
// interface, in turns. Prints the table.
#include "arguments.h"
#include "clocktime.h"
#include "content/filequeryagent.h"
#include "content/moodsetqueryagent.h"
#include "content/photoqueryagent.h"
#include "content/queryagentdatabase.h"
#include "listedlibrary.h"
#include "measuredprocess.h"
#include "peakmemory.h"
#include "recordcounter.h"
#include "report.h"
#include "sqlitelisting.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <array>
#include <iostream>
#include <memory>

namespace {

/// A kind of listing, and its budgets.
struct Kind
{
    MoodsetContent::Type type;
    const char* name;
    /// The numbers of records to list, the second of them ten times the first.
    int few;
    int many;
    /// The limit for the time of a listing, relative to stepping with SQLite alone.
    std::optional<double> budget;
    /// The value of TZ; null for none. Without one the C library looks at /etc/localtime each time
    /// that it is asked for a local time, and so once for every picture that has one.
    const char* timeZone = nullptr;
};

const std::array<Kind, 4> Kinds{{
    {MoodsetContent::File, "files", 10000, 100000, 2.3},
    {MoodsetContent::Image, "photos", 10000, 100000, 4},
    {MoodsetContent::Image, "photos with TZ set", 10000, 100000, 4, ":/etc/localtime"},
    {MoodsetContent::Moodset, "moodsets", 1000, 10000, {}},
}};

/// The limit for ten times the records. A sort takes a little more than ten times as long.
constexpr double SlopeBudget = 13;
/// The limit for the growth of the memory that a listing takes in addition to SQLite. It must not
/// grow with the records.
constexpr double MemoryBudget = 1.25;

std::unique_ptr<QueryAgent> makeAgent(MoodsetContent::Type type, QueryAgentDatabase& database)
{
    switch (type) {
    case MoodsetContent::File:
        return std::make_unique<FileQueryAgent>(database);
    case MoodsetContent::Image:
        return std::make_unique<PhotoQueryAgent>(database);
    default:
        return std::make_unique<MoodsetQueryAgent>(database);
    }
}

/// A connection to a library with the agent for one kind.
class Reader
{
public:
    Reader(MoodsetContent::Type type, const QString& path)
    {
        m_database.setDatabaseName(path);
        m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!m_database.open()) {
            giveUp("cannot open " + QFile::encodeName(path));
        }
        m_agent = makeAgent(type, m_database);
    }

    /// Lists all records. Returns their number.
    int list()
    {
        RecordCounter counter;
        if (!m_agent->query(&counter, {})) {
            giveUp("a listing failed");
        }
        return counter.count();
    }

    /// The statements that it has run.
    QStringList statements() const { return m_database.cache.keys(); }

private:
    QueryAgentDatabase m_database;
    std::unique_ptr<QueryAgent> m_agent;
};

/// The costs of a listing of one size, through the agent and with SQLite alone.
struct Costs
{
    /// Processor times in ms. Other programs on the machine influence them least.
    Series agentTime, bareTime;
    /// Peak memory in MiB of a process that does nothing but the listing: that of bare stepping,
    /// which SQLite bounds, and what the agent takes besides.
    Series barePeak, agentExcess;
};

class Benchmark
{
public:
    Benchmark(const QDir& folder, int divisor, int rounds)
        : m_folder(folder)
        , m_divisor(divisor)
        , m_rounds(rounds)
    {
    }

    void run(Report* report)
    {
        // A child process begins with the memory of this process, so everything that makes it grow
        // comes last.
        for (const Kind& kind : Kinds) {
            for (const int records : {1, few(kind), many(kind)}) {
                std::cerr << "making " << records << ' ' << kind.name << '\n';
                peakMemoryOf([&] { makeLibrary(path(kind, records), kind.type, records); });
            }
        }
        for (const Kind& kind : Kinds) {
            measurePeaks(kind, few(kind));
            measurePeaks(kind, many(kind));
        }
        for (const Kind& kind : Kinds) {
            std::cerr << "listing " << kind.name << '\n';
            measureTimes(kind, few(kind));
            measureTimes(kind, many(kind));
            addTo(report, kind);
        }
    }

private:
    int few(const Kind& kind) const { return kind.few / m_divisor; }
    int many(const Kind& kind) const { return kind.many / m_divisor; }

    QString path(const Kind& kind, int records) const
    {
        return m_folder.filePath(
            QStringLiteral("%1-%2.sqlite").arg(QLatin1String(kind.name)).arg(records));
    }

    /// The costs of one size of one kind.
    Costs& costs(const Kind& kind, int records) { return m_costs[path(kind, records)]; }

    QStringList statements(const Kind& kind) const
    {
        Reader reader(kind.type, path(kind, 1));
        reader.list();
        return reader.statements();
    }

    void measurePeaks(const Kind& kind, int records)
    {
        constexpr double kibPerMib = 1024;
        const QString library = path(kind, records);
        const QStringList texts = statements(kind);
        const long agent = peakMemoryOf([&] { Reader(kind.type, library).list(); });
        const long bare = peakMemoryOf([&] { SqliteListing(library, texts).list(); });
        costs(kind, records).agentExcess.push_back(double(agent - bare) / kibPerMib);
        costs(kind, records).barePeak.push_back(double(bare) / kibPerMib);
    }

    void measureTimes(const Kind& kind, int records)
    {
        if (kind.timeZone) {
            qputenv("TZ", kind.timeZone);
        } else {
            qunsetenv("TZ");
        }
        Reader reader(kind.type, path(kind, records));
        SqliteListing bare(path(kind, records), statements(kind));
        // The first listings prepare the statements and bring the file into memory.
        if (reader.list() != records || bare.list() != records) {
            giveUp("a listing has another number of records");
        }
        Costs& measured = costs(kind, records);
        for (int round = 0; round < m_rounds; ++round) {
            measured.agentTime.push_back(processorTimeOf([&] { reader.list(); }));
            measured.bareTime.push_back(processorTimeOf([&] { bare.list(); }));
        }
    }

    void addTo(Report* report, const Kind& kind)
    {
        const QString ms = QStringLiteral("ms");
        const QString mib = QStringLiteral("MiB");
        const QString sqlite = QStringLiteral("SQLite");
        const auto title = [&kind](int records) {
            return QStringLiteral("%1 %2").arg(records).arg(QLatin1String(kind.name));
        };
        for (const int records : {few(kind), many(kind)}) {
            const Costs& measured = costs(kind, records);
            report->add(Comparison{
                title(records) + QStringLiteral(", time"), ms, measured.agentTime, sqlite,
                measured.bareTime, kind.budget});
        }
        report->add(Comparison{
            title(many(kind)) + QStringLiteral(", time"), ms, costs(kind, many(kind)).agentTime,
            title(few(kind)), costs(kind, few(kind)).agentTime, SlopeBudget});
        report->add(Comparison{
            title(many(kind)) + QStringLiteral(", memory besides SQLite's"), mib,
            costs(kind, many(kind)).agentExcess, title(few(kind)),
            costs(kind, few(kind)).agentExcess, MemoryBudget});
        report->add(Quantity{
            title(many(kind)) + QStringLiteral(", SQLite's peak memory"), mib,
            costs(kind, many(kind)).barePeak});
    }

    const QDir m_folder;
    const int m_divisor;
    const int m_rounds;
    QHash<QString, Costs> m_costs;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(
        QStringLiteral("Measures listings, of databases in a temporary folder."),
        Arguments::NoFolder);
    arguments.addRounds("15");
    arguments.addNumber("divisor", "List this many times fewer records.", "1");
    arguments.read();
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        giveUp("cannot make a temporary folder");
    }

    Benchmark benchmark(
        QDir(folder.path()), arguments.number("divisor"), arguments.number("rounds"));
    Report report;
    benchmark.run(&report);
    return arguments.finish(report);
}
