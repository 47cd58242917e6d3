// SPDX-License-Identifier: BSD-3-Clause
#include "daemonprocess.h"

#include "playedphone.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <csignal>

#include <sys/syscall.h>

namespace {

const auto ServiceName = QStringLiteral("com.zavro.moodsetd");

QProcessEnvironment daemonEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{type}: %{message}"));
    return environment;
}

// The back-cover daemon for all daemons of this process. It cannot take its bus name while the test
// has it.
std::shared_ptr<PlayedBackCover> sharedBackCover()
{
    static std::weak_ptr<PlayedBackCover> shared;
    std::shared_ptr<PlayedBackCover> cover = shared.lock();
    if (!cover) {
        cover = std::make_shared<PlayedBackCover>();
        shared = cover;
        static_cast<void>(cover->appear());
    }
    return cover;
}

// The text of a log line that is a warning or worse. Null for any other line.
QString warningText(const QString& line)
{
    for (const auto& type :
         {QStringLiteral("warning: "), QStringLiteral("critical: "), QStringLiteral("fatal: ")}) {
        if (line.startsWith(type)) {
            return line.mid(type.size());
        }
    }
    return {};
}

} // namespace

DaemonProcess::DaemonProcess(const QString& executable)
    : m_backCover(sharedBackCover())
{
    m_process.setProgram(executable.isNull() ? QStringLiteral(MOODSETD_EXECUTABLE) : executable);
    m_process.setProcessEnvironment(daemonEnvironment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    QObject::connect(&m_process, &QProcess::readyRead, &m_process, [this] { readLog(); });
}

DaemonProcess::~DaemonProcess()
{
    if (QTest::currentTestFailed()) {
        deadlineMs = 3000;
    }
    if (isRunning()) {
        kill();
    }
    const QStringList strays = takeWarnings();
    if (!strays.isEmpty()) {
        const QString report = QStringLiteral("Stray messages of the daemon:\n    %1")
                                   .arg(strays.join(QStringLiteral("\n    ")));
        QTest::qFail(qPrintable(report), __FILE__, __LINE__);
    }
}

bool DaemonProcess::setPicturesFolder(const QString& folder)
{
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    QFile file(config.filePath(QStringLiteral("user-dirs.dirs")));
    const QByteArray line = "XDG_PICTURES_DIR=\"" + QFile::encodeName(folder) + "\"\n";
    return config.mkpath(QStringLiteral(".")) && file.open(QIODevice::WriteOnly)
        && file.write(line) == line.size() && file.flush();
}

void DaemonProcess::setEnvironment(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void DaemonProcess::limitAddressSpace(qint64 bytes)
{
    limit({QStringLiteral("--as=%1").arg(bytes)});
}

void DaemonProcess::limitDescriptors(int count)
{
    limit({QStringLiteral("--nofile=%1").arg(count)});
}

void DaemonProcess::limitFileSize(qint64 bytes)
{
    limit({QStringLiteral("--fsize=%1").arg(bytes), QStringLiteral("--core=0")});
}

void DaemonProcess::limit(const QStringList& limits)
{
    m_process.setArguments(limits + QStringList{m_process.program()} + m_process.arguments());
    m_process.setProgram(QStringLiteral("prlimit"));
}

bool DaemonProcess::start()
{
    m_linesSearchedForIdle = m_lines.count();
    m_process.start();
    return m_process.waitForStarted(deadlineMs);
}

qint64 DaemonProcess::processId() const
{
    return m_process.processId();
}

bool DaemonProcess::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

bool DaemonProcess::waitForName()
{
    return waitWhileRunning([this] { return ownsName() && objectAnswers(); });
}

bool DaemonProcess::waitForLine(const QString& text)
{
    return waitWhileRunning([this, &text] { return !m_lines.filter(text).isEmpty(); });
}

bool DaemonProcess::waitForIdle()
{
    return waitWhileRunning([this] {
        while (m_linesSearchedForIdle < m_lines.count()) {
            if (m_lines.at(m_linesSearchedForIdle++)
                    .startsWith(QLatin1String("debug: FileManager idle in "))) {
                return true;
            }
        }
        return false;
    });
}

bool DaemonProcess::waitForEnd()
{
    const bool ended = waitFor([this] { return !isRunning(); });
    readLog();
    return ended;
}

bool DaemonProcess::pause()
{
    if (!isRunning() || ::kill(pid_t(processId()), SIGSTOP) != 0) {
        return false;
    }
    return waitFor([this] { return isPaused(); });
}

void DaemonProcess::resume()
{
    if (isRunning()) {
        ::kill(pid_t(processId()), SIGCONT);
    }
}

bool DaemonProcess::isWaitingForAThread() const
{
    QFile call(QStringLiteral("/proc/%1/syscall").arg(processId()));
    const QByteArray lock = QByteArray::number(SYS_futex);
    return call.open(QIODevice::ReadOnly) && call.readAll().split(' ').constFirst() == lock;
}

bool DaemonProcess::terminate()
{
    m_process.terminate();
    return waitForEnd();
}

bool DaemonProcess::kill()
{
    m_process.kill();
    return waitForEnd();
}

QProcess::ExitStatus DaemonProcess::exitStatus() const
{
    return m_process.exitStatus();
}

int DaemonProcess::exitCode() const
{
    return m_process.exitCode();
}

QStringList DaemonProcess::lines() const
{
    return m_lines;
}

QStringList DaemonProcess::takeWarnings()
{
    // Each read calls readLog() again.
    while (isRunning() && m_process.waitForReadyRead(0)) { }
    QStringList texts;
    while (m_linesSearchedForWarnings < m_lines.count()) {
        const QString text = warningText(m_lines.at(m_linesSearchedForWarnings++));
        if (!text.isNull()) {
            texts.append(text);
        }
    }
    return texts;
}

bool DaemonProcess::waitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, deadlineMs);
}

bool DaemonProcess::waitWhileRunning(const std::function<bool()>& condition)
{
    bool isMet = false;
    waitFor([&] {
        // This is read before the condition, so the condition sees everything that the process has
        // done.
        const bool hasEnded = !isRunning();
        if (hasEnded) {
            readLog();
        }
        isMet = condition();
        return isMet || hasEnded;
    });
    return isMet;
}

bool DaemonProcess::ownsName() const
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return isRunning() && bus.interface()->isServiceRegistered(ServiceName)
        && bus.interface()->servicePid(ServiceName).value() == processId();
}

bool DaemonProcess::objectAnswers() const
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        ServiceName, QStringLiteral("/com/zavro/moodsetd"),
        QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, deadlineMs);
    return reply.type() == QDBusMessage::ReplyMessage;
}

bool DaemonProcess::isPaused() const
{
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(processId()));
    const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::all_of(threads.begin(), threads.end(), [&tasks](const QString& thread) {
        QFile status(tasks.filePath(thread + QStringLiteral("/status")));
        return status.open(QIODevice::ReadOnly) && status.readAll().contains("\nState:\tT");
    });
}

void DaemonProcess::readLog()
{
    m_unfinishedLine += m_process.readAll();
    QList<QByteArray> lines = m_unfinishedLine.split('\n');
    m_unfinishedLine = lines.takeLast();
    for (const QByteArray& line : std::as_const(lines)) {
        m_lines.append(QString::fromLocal8Bit(line));
    }
}
