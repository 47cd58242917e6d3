// SPDX-License-Identifier: BSD-3-Clause
// Measures the app moodset-picker: its first frames against an empty window and a listing, and the
// flicking through its pictures. Prints the table. See docs/performance.md.
#include "arguments.h"
#include "clocktime.h"
#include "content/moodsetqueryagent.h"
#include "content/queryagentdatabase.h"
#include "listedlibrary.h"
#include "measureddaemon.h"
#include "pickerapplication.h"
#include "pickerengine.h"
#include "recordcounter.h"
#include "report.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSqlQuery>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <functional>
#include <utility>

namespace {

constexpr double FirstFrameBudget = 1.1;
constexpr double MemoryBudget = 1.15;
constexpr double FrameGapBudgetMs = 30;

/// What a window's own process says when the first frame has been drawn, and when the one with the
/// moodsets has; the processor time of all threads follows, in ms.
const QByteArray FirstFrameLine = "first frame: ";
const QByteArray ListFrameLine = "frame with the list: ";

const QString AppOption = QStringLiteral("--show-app");
const QString WindowOption = QStringLiteral("--show-window");

void say(const QByteArray& line)
{
    std::fprintf(stderr, "%s%f\n", line.constData(), timeOn(CLOCK_PROCESS_CPUTIME_ID));
}

/// Draws with neither a display nor a graphics card.
void preparePlatform()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
}

/// The process of an empty window, which is stopped after its first frame.
int showWindow()
{
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick 2.15\nimport QtQuick.Templates 2.15 as T\n"
                    "T.ApplicationWindow { visible: true; width: 960; height: 720 }");
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (window == nullptr) {
        return EXIT_FAILURE;
    }
    QObject::connect(window, &QQuickWindow::frameSwapped, window, [] { say(FirstFrameLine); });
    return QGuiApplication::exec();
}

/// The process of the app, as its main function has it.
int showApp()
{
    PickerApplication service;
    service.claim();
    PickerEngine picker;
    if (!picker.show()) {
        return EXIT_FAILURE;
    }
    QQuickWindow* const window = picker.window();
    bool isFirst = true;
    QObject::connect(window, &QQuickWindow::frameSwapped, window, [&isFirst, window] {
        if (std::exchange(isFirst, false)) {
            say(FirstFrameLine);
        }
        const auto* const list = window->findChild<QQuickItem*>(QStringLiteral("moodsets"));
        if (list != nullptr && list->property("count").toInt() > 0) {
            say(ListFrameLine);
        }
    });
    return QGuiApplication::exec();
}

struct Frame
{
    double processor = 0;
    double wall = 0;
};

/// Waits for a line of a window's process.
Frame frame(MeasuredProcess* process, const QByteArray& line)
{
    const double processor = process->waitForLine(line).toDouble();
    return {processor, timeSinceStart(*process).count()};
}

/// The library of the user who is asked for, in a folder of its own.
QString makeUserLibrary(const QDir& folder, MoodsetContent::Type type, int records)
{
    const QString data = folder.filePath(QStringLiteral("picker-%1").arg(type));
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    QString path = QueryAgentDatabase::filePath();
    QDir().mkpath(QFileInfo(path).path());
    makeLibrary(path, type, records);
    return path;
}

/// Lists all moodsets, as the app does, and keeps nothing.
Frame listMoodsets(QueryAgentDatabase* reader, int records)
{
    const double processor = timeOn(CLOCK_PROCESS_CPUTIME_ID);
    const double wall = timeOn(CLOCK_MONOTONIC);
    RecordCounter counter;
    QueryAgent::Parameters parameters;
    parameters.modificationTimes = true;
    if (!MoodsetQueryAgent(*reader).query(&counter, parameters) || counter.count() != records) {
        giveUp("a listing failed");
    }
    return {timeOn(CLOCK_PROCESS_CPUTIME_ID) - processor, timeOn(CLOCK_MONOTONIC) - wall};
}

void measureFirstFrame(const QDir& folder, int records, int rounds, Report* report)
{
    QueryAgentDatabase reader;
    reader.setDatabaseName(makeUserLibrary(folder, MoodsetContent::Moodset, records));
    reader.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!reader.open()) {
        giveUp("cannot open a library");
    }
    const QByteArray self = program("pickerbenchmark");
    Series firstFrame, firstFrameWall, listFrame, least, leastWall;
    // The first round only brings all files into memory.
    for (int round = 0; round <= rounds; ++round) {
        MeasuredProcess window({self, WindowOption.toLatin1()});
        const Frame empty = frame(&window, FirstFrameLine);
        window.stop(SIGKILL);
        MeasuredProcess app({self, AppOption.toLatin1()});
        const Frame first = frame(&app, FirstFrameLine);
        const Frame list = frame(&app, ListFrameLine);
        app.stop(SIGKILL);
        const Frame listing = listMoodsets(&reader, records);
        if (round > 0) {
            firstFrame.push_back(first.processor);
            firstFrameWall.push_back(first.wall);
            listFrame.push_back(list.processor);
            least.push_back(empty.processor + listing.processor);
            leastWall.push_back(empty.wall + listing.wall);
        }
    }
    const QString ms = QStringLiteral("ms");
    const QString floor = QStringLiteral("empty window and a listing");
    report->add(Comparison{
        QStringLiteral("App, warm, first frame, processor time"), ms, firstFrame, floor, least,
        FirstFrameBudget});
    report->add(Comparison{
        QStringLiteral("App, warm, time to the first frame"), ms, firstFrameWall, floor,
        leastWall});
    report->add(Comparison{
        QStringLiteral("App, warm, frame with %1 moodsets, processor time").arg(records), ms,
        listFrame, floor, least});
}

/// Gives each picture of a library a file, below a folder.
void makePictures(const QString& library, const QString& folder)
{
    const QString picture = folder + QStringLiteral("/picture.jpg");
    const QString name = QStringLiteral("pictures");
    if (!QFile::copy(QStringLiteral(SAMPLE_PICTURES "/" SAMPLE_PICTURE), picture)) {
        giveUp("cannot copy a picture");
    }
    {
        QSqlDatabase writer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        writer.setDatabaseName(library);
        QSqlQuery query(writer);
        if (!writer.open()
            || !(query = QSqlQuery(writer))
                    .exec(QStringLiteral("UPDATE directory SET path = replace(path, "
                                         "'/home/user/Pictures', '%1')")
                              .arg(folder))
            || !query.exec(QStringLiteral("SELECT path, fileName FROM file JOIN directory ON "
                                          "directory.id = directoryId"))) {
            giveUp("cannot place pictures");
        }
        while (query.next()) {
            const QDir album(query.value(0).toString());
            if (!album.mkpath(QStringLiteral("."))
                || !QFile::link(picture, album.filePath(query.value(1).toString()))) {
                giveUp("cannot make a picture");
            }
        }
    }
    QSqlDatabase::removeDatabase(name);
}

double residentMib()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    constexpr double pagesPerMib = 256;
    return file.readAll().split(' ').value(1).toDouble() / pagesPerMib;
}

struct Flick
{
    double worstGap = 0; ///< between two frames
    double worstWork = 0; ///< the interface thread's processor time for one frame
};

/// Moves a list by a row with each frame until `end`, a share of the list.
Flick flick(QQuickWindow* window, QQuickItem* list, double end)
{
    Flick worst;
    QEventLoop loop;
    double wall = 0;
    double work = 0;
    const auto step = [&] {
        const double wallNow = timeOn(CLOCK_MONOTONIC);
        const double workNow = timeOn(CLOCK_THREAD_CPUTIME_ID);
        if (wall > 0) {
            worst.worstGap = std::max(worst.worstGap, wallNow - wall);
            worst.worstWork = std::max(worst.worstWork, workNow - work);
        }
        wall = wallNow;
        work = workNow;
        const double y = list->property("contentY").toDouble();
        const double top = list->property("originY").toDouble();
        const double height = list->property("contentHeight").toDouble();
        if (y - top + list->height() >= height * end) {
            loop.quit();
            return;
        }
        list->setProperty("contentY", y + list->property("cell").toDouble());
        window->update();
    };
    QObject::connect(window, &QQuickWindow::frameSwapped, &loop, step);
    step();
    loop.exec();
    return worst;
}

/// Draws frames until one has been drawn while the condition is true.
void waitForFrame(QQuickWindow* window, const std::function<bool()>& condition)
{
    QEventLoop loop;
    QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&] {
        condition() ? loop.quit() : window->update();
    });
    window->update();
    loop.exec();
}

void measureFlicking(const QDir& folder, int pictures, Report* report)
{
    const QString library = makeUserLibrary(folder, MoodsetContent::Image, pictures);
    const QString files = folder.filePath(QStringLiteral("pictures"));
    QDir().mkpath(files);
    makePictures(library, files);

    PickerEngine picker;
    if (!picker.show()) {
        giveUp("the app does not start");
    }
    QQuickWindow* const window = picker.window();
    constexpr QSize phone(360, 640);
    window->resize(phone);
    waitForFrame(window, [&picker] { return picker.content() != nullptr; });
    QMetaObject::invokeMethod(picker.content(), "showTab", Q_ARG(QVariant, 1));
    auto* const list = window->findChild<QQuickItem*>(QStringLiteral("pictures"));
    const int rows = pictures / list->property("columns").toInt();
    waitForFrame(window, [list, rows] { return list->property("count").toInt() >= rows; });

    constexpr double beforeShare = 0.1;
    flick(window, list, beforeShare);
    const double before = residentMib();
    const Flick worst = flick(window, list, 1);
    const double after = residentMib();
    const QString what = QStringLiteral("Flicking through the app's %1 pictures, ").arg(pictures);
    report->add(Comparison{
        what + QStringLiteral("memory"),
        QStringLiteral("MiB"),
        {after},
        QStringLiteral("before"),
        {before},
        MemoryBudget});
    report->add(Quantity{
        what + QStringLiteral("interface thread in the worst frame"),
        QStringLiteral("ms"),
        {worst.worstWork},
        FrameGapBudgetMs});
    report->add(Quantity{
        what + QStringLiteral("worst gap between frames"),
        QStringLiteral("ms"),
        {worst.worstGap},
        FrameGapBudgetMs});
}

} // namespace

int main(int argc, char* argv[])
{
    preparePlatform();
    const QGuiApplication application(argc, argv);
    const QString role = QCoreApplication::arguments().value(1);
    if (role == WindowOption || role == AppOption) {
        return role == AppOption ? showApp() : showWindow();
    }
    Arguments arguments(QStringLiteral("Measures the app moodset-picker."));
    arguments.addRounds("7");
    arguments.addNumber("divisor", "Work on this many times fewer records.", "1");
    arguments.read();
    constexpr int moodsets = 100;
    constexpr int pictures = 10000;
    const int divisor = arguments.number("divisor");

    Report report;
    measureFirstFrame(arguments.folder(), moodsets, arguments.number("rounds"), &report);
    measureFlicking(arguments.folder(), pictures / divisor, &report);
    return arguments.finish(report);
}
