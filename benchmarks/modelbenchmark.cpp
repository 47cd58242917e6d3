// SPDX-License-Identifier: BSD-3-Clause
// Measures the models of the QML module against bare listings of the library, in turns, and prints
// the table. See docs/performance.md.
#include "arguments.h"
#include "clocktime.h"
#include "content/moodsetqueryagent.h"
#include "content/photoqueryagent.h"
#include "content/queryagentdatabase.h"
#include "listedlibrary.h"
#include "measuredprocess.h"
#include "moodsetmodel.h"
#include "peakmemory.h"
#include "photomodel.h"
#include "recordcounter.h"
#include "report.h"
#include "thumbnailprovider.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QTimer>

#include <algorithm>
#include <deque>
#include <iostream>
#include <utility>

namespace {

constexpr double FillBudget = 1.4;
constexpr double MoodsetFillBudget = 1.6;
constexpr double RefreshBudget = 1.3;
constexpr double InterfaceFillBudget = 0.05;
constexpr double InterfaceChangeBudget = 0.03;
constexpr double FirstRowBudget = 0.2;
constexpr double MemoryBudget = 1.15;

/// What something has taken, in ms.
struct Time
{
    double process = 0; ///< processor time of all threads
    double interface = 0; ///< of this thread
    double wall = 0;
};

class Watch
{
public:
    Time time() const
    {
        return {
            timeOn(CLOCK_PROCESS_CPUTIME_ID) - m_start.process,
            timeOn(CLOCK_THREAD_CPUTIME_ID) - m_start.interface,
            timeOn(CLOCK_MONOTONIC) - m_start.wall};
    }

private:
    const Time m_start{
        timeOn(CLOCK_PROCESS_CPUTIME_ID), timeOn(CLOCK_THREAD_CPUTIME_ID), timeOn(CLOCK_MONOTONIC)};
};

/// A library with one kind of records, which models find instead of the daemon's library.
class Library
{
public:
    Library(const QDir& folder, MoodsetContent::Type type, int records)
        : m_folder(folder.filePath(QStringLiteral("%1-%2").arg(type).arg(records)))
        , m_type(type)
        , m_records(records)
    {
        use();
        const QString path = QueryAgentDatabase::filePath();
        QDir().mkpath(QFileInfo(path).path());
        makeLibrary(path, type, records);
        m_reader.setDatabaseName(path);
        m_reader.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!m_reader.open()) {
            giveUp("cannot open a library");
        }
    }

    void use() const { qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder)); }

    /// Lists all as a model does, and keeps nothing.
    Time listBarely()
    {
        RecordCounter counter;
        const Watch watch;
        QueryAgent::Parameters parameters;
        parameters.modificationTimes = true;
        const bool succeeded = m_type == MoodsetContent::Image
            ? PhotoQueryAgent(m_reader).queryPage(&counter, {})
            : MoodsetQueryAgent(m_reader).query(&counter, parameters);
        if (!succeeded || counter.count() != m_records) {
            giveUp("a listing failed");
        }
        return watch.time();
    }

    /// Removes every hundredth of the pictures, a thousand of a hundred thousand.
    void removeSome()
    {
        constexpr int share = 100;
        const QString name = QStringLiteral("writer");
        {
            QSqlDatabase writer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            writer.setDatabaseName(QueryAgentDatabase::filePath());
            QSqlQuery query(writer);
            if (!writer.open()
                || !QSqlQuery(writer).exec(
                    QStringLiteral("DELETE FROM image WHERE fileId % %1 = %2")
                        .arg(share)
                        .arg(m_removed))) {
                giveUp("cannot remove pictures");
            }
            query = QSqlQuery(writer);
            query.exec(QStringLiteral("SELECT count(*) FROM image"));
            query.next();
            m_records = query.value(0).toInt();
        }
        QSqlDatabase::removeDatabase(name);
        ++m_removed;
    }

    int records() const { return m_records; }

private:
    const QString m_folder;
    const MoodsetContent::Type m_type;
    int m_records;
    int m_removed = 0;
    QueryAgentDatabase m_reader;
};

/// Runs the event loop until a model has as many rows and is ready.
Time waitFor(const ContentModel& model, int rows, const Watch& watch)
{
    QEventLoop loop;
    const auto check = [&] {
        if (model.status() == ContentModel::Error) {
            giveUp("a model cannot read the library");
        }
        if (model.status() == ContentModel::Ready && model.count() == rows) {
            loop.quit();
        }
    };
    QObject::connect(&model, &ContentModel::statusChanged, &loop, check);
    QObject::connect(&model, &ContentModel::updated, &loop, check);
    loop.exec();
    return watch.time();
}

struct Filling
{
    Time whole;
    Time firstRow;
};

Filling fill(ContentModel* model, int rows)
{
    Filling filling;
    const Watch watch;
    bool isFirst = true;
    QObject::connect(model, &ContentModel::rowsInserted, model, [&] {
        if (std::exchange(isFirst, false)) {
            filling.firstRow = watch.time();
        }
    });
    model->componentComplete();
    filling.whole = waitFor(*model, rows, watch);
    model->disconnect(model);
    return filling;
}

Time refresh(ContentModel* model, int rows)
{
    // A model pauses for as long as its last reading took.
    QEventLoop rest;
    constexpr int restMs = 1500;
    QTimer::singleShot(restMs, &rest, &QEventLoop::quit);
    rest.exec();
    const Watch watch;
    model->refresh();
    return waitFor(*model, rows, watch);
}

struct PhotoTimes
{
    Series bare, bareWall, fill, interfaceFill, firstRow, refresh, interfaceChange;
};

void measurePhotos(const QDir& folder, int records, int rounds, Report* report)
{
    Library library(folder, MoodsetContent::Image, records);
    PhotoTimes times;
    library.listBarely();
    for (int round = 0; round < rounds; ++round) {
        const Time bare = library.listBarely();
        times.bare.push_back(bare.process);
        times.bareWall.push_back(bare.wall);
        PhotoModel model;
        const Filling filling = fill(&model, library.records());
        times.fill.push_back(filling.whole.process);
        times.interfaceFill.push_back(filling.whole.interface);
        times.firstRow.push_back(filling.firstRow.wall);
        times.refresh.push_back(refresh(&model, library.records()).process);
        library.removeSome();
        times.interfaceChange.push_back(refresh(&model, library.records()).interface);
    }
    const QString ms = QStringLiteral("ms");
    const QString listing = QStringLiteral("bare listing");
    const QString photos = QStringLiteral("%1 photos, ").arg(records);
    report->add(Comparison{
        photos + QStringLiteral("model filled, processor time"), ms, times.fill, listing,
        times.bare, FillBudget});
    report->add(Comparison{
        photos + QStringLiteral("refresh with nothing changed, processor time"), ms, times.refresh,
        listing, times.bare, RefreshBudget});
    report->add(Comparison{
        photos + QStringLiteral("interface thread while the model is filled"), ms,
        times.interfaceFill, listing, times.bare, InterfaceFillBudget});
    report->add(Comparison{
        photos + QStringLiteral("interface thread while %1 are removed").arg(records / 100), ms,
        times.interfaceChange, listing, times.bare, InterfaceChangeBudget});
    report->add(Comparison{
        photos + QStringLiteral("time to the first row"), ms, times.firstRow, listing,
        times.bareWall, FirstRowBudget});
}

void measureMoodsets(const QDir& folder, int records, int rounds, Report* report)
{
    Library library(folder, MoodsetContent::Moodset, records);
    Series bare;
    Series filled;
    library.listBarely();
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(library.listBarely().process);
        MoodsetModel model;
        filled.push_back(fill(&model, records).whole.process);
    }
    report->add(Comparison{
        QStringLiteral("%1 moodsets, model filled, processor time").arg(records),
        QStringLiteral("ms"), filled, QStringLiteral("bare listing"), bare, MoodsetFillBudget});
}

double residentMib()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    constexpr double pagesPerMib = 256;
    return file.readAll().split(' ').value(1).toDouble() / pagesPerMib;
}

/// Asks for thumbnails as a view does that is flicked: each is taken back when it has left the
/// view.
void flick(ThumbnailProvider* provider, const QString& picture, int count)
{
    constexpr std::size_t shown = 40;
    constexpr int side = 200;
    std::deque<QQuickImageResponse*> responses;
    QEventLoop loop;
    int open = 0;
    for (int i = 0; i < count; ++i) {
        QQuickImageResponse* const response = provider->requestImageResponse(
            QStringLiteral("file://%1?v=%2").arg(picture).arg(i), QSize(side, side));
        ++open;
        QObject::connect(response, &QQuickImageResponse::finished, &loop, [&, response] {
            responses.erase(
                std::remove(responses.begin(), responses.end(), response), responses.end());
            response->deleteLater();
            if (--open == 0) {
                loop.quit();
            }
        });
        responses.push_back(response);
        if (responses.size() > shown) {
            responses.front()->cancel();
        }
        QCoreApplication::processEvents();
    }
    if (open > 0) {
        loop.exec();
    }
}

void measureFlicking(const QString& picture, int count, Report* report)
{
    ThumbnailProvider provider;
    constexpr int beforeShare = 10;
    flick(&provider, picture, count / beforeShare);
    const double before = residentMib();
    flick(&provider, picture, count);
    const double after = residentMib();
    report->add(Comparison{
        QStringLiteral("Memory after flicking through %1 thumbnails").arg(count),
        QStringLiteral("MiB"),
        {after},
        QStringLiteral("before"),
        {before},
        MemoryBudget});
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the models of the QML module."));
    arguments.addRounds("7");
    arguments.addNumber("divisor", "Work on this many times fewer records.", "1");
    arguments.read();
    constexpr int photos = 100000;
    constexpr int moodsets = 10000;
    constexpr int thumbnails = 10000;
    const int divisor = arguments.number("divisor");
    const int rounds = arguments.number("rounds");

    Report report;
    measurePhotos(arguments.folder(), photos / divisor, rounds, &report);
    measureMoodsets(arguments.folder(), moodsets / divisor, rounds, &report);
    measureFlicking(
        QStringLiteral(SAMPLE_PICTURES "/" SAMPLE_PICTURE), thumbnails / divisor, &report);
    return arguments.finish(report);
}
