// SPDX-License-Identifier: BSD-3-Clause
#include "swayadapter.h"

#include "filecontent.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

namespace {

const QString BackgroundName = QStringLiteral("output * bg");

QString runtimeFolder()
{
    return qEnvironmentVariable("XDG_RUNTIME_DIR");
}

/// The sockets on which sway may listen, the most likely one first.
QStringList sockets()
{
    QStringList paths;
    const QString named = qEnvironmentVariable("SWAYSOCK");
    if (!named.isEmpty()) {
        paths.append(named);
    }
    const QFileInfoList entries =
        QDir(runtimeFolder())
            .entryInfoList(
                {QStringLiteral("sway-ipc.*.sock")}, QDir::System | QDir::Files, QDir::Time);
    for (const QFileInfo& entry : entries) {
        paths.append(entry.filePath());
    }
    return paths;
}

/// Whether a process with the name of the painter runs with this argument.
bool isPainterRunning(const QByteArray& picture)
{
    const QStringList processes =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    return std::any_of(processes.begin(), processes.end(), [&picture](const QString& process) {
        const QString folder = QStringLiteral("/proc/") + process;
        QFile name(folder + QStringLiteral("/comm"));
        if (!name.open(QIODevice::ReadOnly) || name.readAll() != "swaybg\n") {
            return false;
        }
        QFile arguments(folder + QStringLiteral("/cmdline"));
        return arguments.open(QIODevice::ReadOnly)
            && arguments.readAll().split('\0').contains(picture);
    });
}

} // namespace

// Sway removes the quotes. After that, the rules of a shell for words apply.
bool canSayToSway(const QString& path)
{
    return std::all_of(path.begin(), path.end(), [](QChar character) {
        return character.isLetterOrNumber() || character.isSurrogate()
            || QStringLiteral("/._-+@%:,=").contains(character);
    });
}

SwayAdapter::SwayAdapter(QObject* parent)
    : Adapter(parent)
{
    constexpr int retryMs = 200;
    m_retry.setSingleShot(true);
    m_retry.setInterval(retryMs);
    constexpr int lookMs = 50;
    m_painterTimer.setSingleShot(true);
    m_painterTimer.setInterval(lookMs);
    connect(&m_retry, &QTimer::timeout, this, &SwayAdapter::tryToConnect);
    connect(&m_painterTimer, &QTimer::timeout, this, &SwayAdapter::lookForPainter);
    connect(&m_connection, &SwayConnection::received, this, &SwayAdapter::handleMessage);
    connect(&m_connection, &SwayConnection::lost, this, [this] {
        if (const Done done = std::exchange(m_commandDone, nullptr)) {
            done(QStringLiteral("Sway has closed the connection."));
        }
        setPresent(false);
        lookForSocket();
    });
}

QString SwayAdapter::name() const
{
    return QStringLiteral("sway");
}

void SwayAdapter::detect()
{
    connect(&m_runtimeFolder, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!isPresent()) {
            lookForSocket();
        }
    });
    if (!runtimeFolder().isEmpty()) {
        m_runtimeFolder.addPath(runtimeFolder());
    }
    lookForSocket();
}

// A socket file exists a moment before a process listens on it.
void SwayAdapter::lookForSocket()
{
    constexpr int tries = 10;
    m_triesLeft = tries;
    tryToConnect();
}

void SwayAdapter::tryToConnect()
{
    const QStringList paths = sockets();
    const bool isConnected =
        isPresent() || std::any_of(paths.begin(), paths.end(), [this](const QString& path) {
            return m_connection.open(path)
                && m_connection.send(SwayConnection::Message::Subscribe, R"(["workspace"])");
        });
    if (isConnected) {
        setPresent(true);
    } else if (!paths.isEmpty() && --m_triesLeft > 0) {
        m_retry.start();
    }
}

void SwayAdapter::handleMessage(SwayConnection::Message type, const QByteArray& payload)
{
    const QJsonDocument content = QJsonDocument::fromJson(payload);
    if (type == SwayConnection::Message::WorkspaceEvent) {
        if (content.object().value(QLatin1String("change")) == QLatin1String("reload")) {
            Q_EMIT forgotten();
        }
    } else if (type == SwayConnection::Message::Command) {
        const QJsonObject result = content.array().at(0).toObject();
        const bool isGood = result.value(QLatin1String("success")).toBool();
        if (const Done done = std::exchange(m_commandDone, nullptr)) {
            done(
                isGood ? QString()
                       : QStringLiteral("Sway refuses: %1")
                             .arg(result.value(QLatin1String("error")).toString()));
        }
    }
}

QJsonObject SwayAdapter::plan(const Appearance& appearance) const
{
    const QString& path = appearance.look.wallpaper;
    if (path.isEmpty() || !canSayToSway(path)) {
        return {};
    }
    return {{BackgroundName, path}};
}

QString SwayAdapter::shortfall(const Appearance& appearance) const
{
    if (!canSayToSway(appearance.look.wallpaper)) {
        return QStringLiteral("The path of the data folder has characters that sway does not "
                              "understand.");
    }
    return appearance.look.problem;
}

void SwayAdapter::command(const QByteArray& text, const Done& done)
{
    m_commandDone = done;
    // If this fails, lost() has been emitted.
    static_cast<void>(m_connection.send(SwayConnection::Message::Command, text));
}

void SwayAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    Q_UNUSED(appearance)
    const QString path = plan.value(BackgroundName).toString();
    // Sway reports success for pictures that it cannot show.
    if (pictureSuffix(path).isEmpty()) {
        done(QStringLiteral("The copy of the wallpaper has gone."));
        return;
    }
    command("output * bg \"" + path.toUtf8() + "\" fill", done);
}

void SwayAdapter::verify(const QJsonObject& plan, const Done& done)
{
    constexpr int looks = 40;
    m_painted = plan.value(BackgroundName).toString().toUtf8();
    m_looksLeft = looks;
    m_verifyDone = done;
    lookForPainter();
}

void SwayAdapter::lookForPainter()
{
    if (!m_verifyDone) {
        return;
    }
    const bool isRunning = isPainterRunning(m_painted);
    if (!isRunning && --m_looksLeft > 0) {
        m_painterTimer.start();
        return;
    }
    const Done done = std::exchange(m_verifyDone, nullptr);
    done(
        isRunning ? QString()
                  : QStringLiteral("Sway has not started \"swaybg\", which shows pictures."));
}

void SwayAdapter::restore(const AdapterRecord& record, const Done& done)
{
    const QStringList paths = sockets();
    const bool isThere = !record.set.isEmpty()
        && std::any_of(paths.begin(), paths.end(), [this](const QString& path) {
               return m_connection.open(path);
           });
    if (isThere) {
        command("reload", done);
    } else {
        done({});
    }
}

void SwayAdapter::abandon()
{
    m_commandDone = nullptr;
    m_verifyDone = nullptr;
    m_painterTimer.stop();
}
