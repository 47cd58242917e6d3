// SPDX-License-Identifier: BSD-3-Clause
// Measures how soon the bridge sets a new look, how much work a burst of looks causes, and how much
// memory and how many wake-ups the bridge takes at rest. Prints the table. It needs a private
// session bus and a private key/value store.
#include "arguments.h"
#include "measureddaemon.h"
#include "measuredprocess.h"
#include "report.h"

#include <dconfstore.h>
#include <gvariantconversion.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <csignal>
#include <functional>
#include <optional>

namespace {

constexpr double DelayBudget = 30; // ms, from the notification of the key
constexpr double ResidentBudget = 18; // MiB
constexpr double OwnBudget = 4; // MiB
constexpr int BurstSize = 50;
/// At most one at the beginning, and one after the end.
constexpr double BurstBudget = 2;
constexpr int LimitMs = 10000;

const QString PictureUri = QStringLiteral("/org/gnome/desktop/background/picture-uri");
const QString Highlight = QStringLiteral("/desktop/zavro/theme/color/highlight");

/// Lets the event loop turn until the condition holds, or ends this process.
void waitFor(const std::function<bool()>& condition, const char* what)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(LimitMs)) {
            giveUp(QByteArray("waited in vain for ") + what);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, LimitMs);
    }
}

void waitMs(int duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// What the daemon writes for a look.
void writeLook(const QString& picture, const QString& highlight)
{
    const auto text = [](const QString& value) { return toGVariant(value); };
    std::map<QByteArray, GVariantPointer> values;
    values["/desktop/zavro/background/portrait/home_picture_filename"] = text(picture);
    values[Highlight.toUtf8()] = text(highlight);
    values["/desktop/zavro/theme/active_moodset"] = text(picture);
    if (!DconfStore::instance().write(values)) {
        giveUp("cannot write the look");
    }
    DconfStore::instance().sync();
}

/// What a process has changed itself, in KiB.
int ownMemory(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        giveUp("cannot read the memory of the bridge");
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("Private_Dirty:")) {
            return line.mid(14).trimmed().split(' ').first().toInt();
        }
    }
    giveUp("the kernel does not tell the memory of the bridge");
}

} // namespace

/// Notes when the look changes, and when the bridge hands it on.
class Listener : public QObject
{
    Q_OBJECT
public:
    Listener()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        const bool hears =
            bus.connect(
                QString(), QString(), QStringLiteral("ca.desrt.dconf.Writer"),
                QStringLiteral("Notify"), this, SLOT(noteKeys(QString, QStringList, QString)))
            && bus.connect(
                QString(), QString(), QStringLiteral("org.freedesktop.impl.portal.Settings"),
                QStringLiteral("SettingChanged"), this, SLOT(noteColor(QDBusMessage)))
            && bus.registerService(QStringLiteral("org.gnome.Shell"));
        if (!hears) {
            giveUp("cannot listen to the bus");
        }
    }

    void forget()
    {
        m_looks = 0;
        m_pictures = 0;
        m_colors = 0;
    }

    int looks() const { return m_looks; }
    int pictures() const { return m_pictures; }
    int colors() const { return m_colors; }
    double delayMs() const { return Milliseconds(m_handedOn - m_changed).count(); }

private Q_SLOTS:
    void noteKeys(const QString& prefix, const QStringList& changes, const QString& tag)
    {
        Q_UNUSED(tag)
        for (const QString& change : changes) {
            if (prefix + change == Highlight) {
                m_changed = std::chrono::steady_clock::now();
                ++m_looks;
            } else if (prefix + change == PictureUri) {
                ++m_pictures;
            }
        }
    }

    void noteColor(const QDBusMessage& message)
    {
        Q_UNUSED(message)
        m_handedOn = std::chrono::steady_clock::now();
        ++m_colors;
    }

private:
    SteadyTime m_changed;
    SteadyTime m_handedOn;
    int m_looks = 0;
    int m_pictures = 0;
    int m_colors = 0;
};

namespace {

struct Look
{
    QString picture;
    QString highlight;
};

/// The looks that are set in turns.
Look look(int number)
{
    const QString folder = QStringLiteral(SAMPLE_PICTURES);
    return number % 2 == 0
        ? Look{folder + QStringLiteral("/lighthouse-coast.jpg"), QStringLiteral("#ff2060c0")}
        : Look{folder + QStringLiteral("/desert-evening.jpg"), QStringLiteral("#ffc06020")};
}

void set(Listener* listener, int number)
{
    listener->forget();
    writeLook(look(number).picture, look(number).highlight);
    waitFor(
        [listener] {
            return listener->looks() > 0 && listener->colors() > 0 && listener->pictures() > 0;
        },
        "the bridge to hand the look on");
    // A change that comes sooner would count as a burst.
    constexpr int restMs = 400;
    waitMs(restMs);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the bridge."), Arguments::NoFolder);
    arguments.addRounds("41");
    arguments.addNumber("rest", "Seconds of rest in which wake-ups are counted.", "30");
    arguments.read();
    const int rounds = arguments.number("rounds");

    Listener listener;
    writeLook(look(0).picture, look(0).highlight);
    MeasuredProcess bridge({program("moodset-bridge")});
    waitFor([&listener] { return listener.pictures() > 0; }, "the bridge to start");
    constexpr int startMs = 1000;
    waitMs(startMs);

    Series delays;
    for (int round = 1; round <= rounds; ++round) {
        set(&listener, round);
        delays.push_back(listener.delayMs());
    }

    listener.forget();
    for (int i = 0; i < BurstSize; ++i) {
        // The last one differs from the look that is set already.
        const Look next = look(rounds + i);
        writeLook(next.picture, next.highlight);
    }
    waitFor([&listener] { return listener.pictures() > 0; }, "the end of the burst");
    waitMs(startMs);
    const double applied = listener.pictures();

    const Activity before = bridge.activity();
    waitMs(arguments.number("rest") * 1000);
    const Activity after = bridge.activity();
    constexpr double kiBPerMiB = 1024;

    Report report;
    report.add(Quantity{
        QStringLiteral("From the key's notification to the adapters' calls"), QStringLiteral("ms"),
        delays, DelayBudget});
    report.add(Quantity{
        QStringLiteral("Calls of an adapter for a burst of 50 looks"),
        QString(),
        {applied},
        BurstBudget});
    report.add(Quantity{
        QStringLiteral("Wake-ups at rest"),
        QString(),
        {double(after.wakeUps - before.wakeUps)},
        0});
    report.add(Quantity{
        QStringLiteral("Memory, resident"),
        QStringLiteral("MiB"),
        {bridge.memory().resident / kiBPerMiB},
        ResidentBudget});
    report.add(Quantity{
        QStringLiteral("Memory, its own"),
        QStringLiteral("MiB"),
        {ownMemory(bridge.id()) / kiBPerMiB},
        OwnBudget});
    bridge.stop(SIGTERM);
    return arguments.finish(report);
}

#include "bridgebenchmark.moc"
