// SPDX-License-Identifier: BSD-3-Clause
#include "bridgestatus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <iterator>
#include <utility>

namespace {

QString serviceName()
{
    return QStringLiteral("com.zavro.moodsetbridge");
}

/// What people call what the adapter serves.
QString nameOf(const QString& adapter)
{
    if (adapter == QLatin1String("gnome")) {
        return BridgeStatus::tr("GNOME and Phosh");
    }
    if (adapter == QLatin1String("plasma")) {
        return QStringLiteral("Plasma");
    }
    if (adapter == QLatin1String("portal")) {
        return BridgeStatus::tr("Applications");
    }
    if (adapter == QLatin1String("feedbackd")) {
        return BridgeStatus::tr("Sounds of the phone");
    }
    if (adapter == QLatin1String("files")) {
        return BridgeStatus::tr("Your own files");
    }
    return adapter;
}

/// What a value is, by the name that its adapter has given it; empty for details.
QString kindOf(const QString& adapter, const QString& value)
{
    if (adapter == QLatin1String("files")) {
        return BridgeStatus::tr("colours and wallpaper by templates");
    }
    if (adapter == QLatin1String("feedbackd")) {
        return BridgeStatus::tr("tones");
    }
    if (value.contains(QLatin1String("accent"), Qt::CaseInsensitive)) {
        return BridgeStatus::tr("accent colour");
    }
    if (value.endsWith(QLatin1String("picture-uri")) || value == QLatin1String("Image")
        || value == QLatin1String("output * bg")) {
        return BridgeStatus::tr("wallpaper");
    }
    return {};
}

QString whatIsSet(const QString& adapter, const QJsonObject& set)
{
    QStringList kinds;
    for (auto value = set.begin(); value != set.end(); ++value) {
        const QString kind = kindOf(adapter, value.key());
        if (!kind.isEmpty() && !kinds.contains(kind)) {
            kinds.append(kind);
        }
    }
    if (kinds.isEmpty()) {
        return BridgeStatus::tr("Nothing so far");
    }
    kinds.sort();
    QString text = kinds.join(QStringLiteral(", "));
    text[0] = text.at(0).toUpper();
    return text;
}

} // namespace

BridgeStatus::Report BridgeStatus::Report::fromJson(const QByteArray& json)
{
    const QJsonObject status = QJsonDocument::fromJson(json).object();
    const QJsonValue running = status.value(QLatin1String("running"));
    Report report;
    report.isKnown = running.isBool();
    report.isRunning = running.toBool();
    const QJsonArray adapters = status.value(QLatin1String("adapters")).toArray();
    for (const QJsonValue& value : adapters) {
        const QJsonObject adapter = value.toObject();
        const QString name = adapter.value(QLatin1String("name")).toString();
        if (!adapter.value(QLatin1String("present")).toBool()
            || adapter.value(QLatin1String("enabled")) == QLatin1String("off")) {
            continue;
        }
        const QString failure = adapter.value(QLatin1String("failure")).toString();
        const QJsonObject set = adapter.value(QLatin1String("set")).toObject();
        report.shells.append(QVariantMap{
            {QStringLiteral("name"), nameOf(name)},
            {QStringLiteral("text"), failure.isEmpty() ? whatIsSet(name, set) : failure},
            {QStringLiteral("failed"), !failure.isEmpty()}});
    }
    return report;
}

BridgeStatus::BridgeStatus(QObject* parent)
    : BridgeStatus(installedProgram(), parent)
{
}

BridgeStatus::BridgeStatus(const QString& program, QObject* parent)
    : QObject(parent)
    , m_program(program)
    , m_watcher(
          serviceName(), QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange)
{
    m_process.setProgram(m_program);
    m_process.setArguments({QStringLiteral("--status"), QStringLiteral("--json")});
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_limit.setSingleShot(true);
    m_limit.setInterval(LimitMs);
    m_soon.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, &m_process, &QProcess::kill);
    connect(&m_soon, &QTimer::timeout, this, &BridgeStatus::ask);
    connect(&m_soon, &QTimer::timeout, this, &BridgeStatus::askAfterNextDelay);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &BridgeStatus::askSoon);
    connect(
        &m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
        &BridgeStatus::take);
    ask();
}

BridgeStatus::~BridgeStatus()
{
    m_process.disconnect(this);
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

/// Beside this program in the build tree and below the same prefix, and else on the path.
QString BridgeStatus::installedProgram()
{
    const QString name = QStringLiteral("moodset-bridge");
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(name);
    return QFileInfo(beside).isExecutable() ? beside : QStandardPaths::findExecutable(name);
}

void BridgeStatus::askSoon()
{
    m_nextDelay = 0;
    askAfterNextDelay();
}

void BridgeStatus::askAfterNextDelay()
{
    if (m_nextDelay < int(std::size(DelaysMs))) {
        m_soon.start(DelaysMs[m_nextDelay]);
        ++m_nextDelay;
    }
}

void BridgeStatus::ask()
{
    if (m_program.isEmpty()) {
        return;
    }
    if (m_process.state() != QProcess::NotRunning) {
        m_isStale = true;
        return;
    }
    m_process.start(QIODevice::ReadOnly);
    m_limit.start();
}

void BridgeStatus::take(int exitCode, QProcess::ExitStatus status)
{
    m_limit.stop();
    const bool isWhole = status == QProcess::NormalExit && exitCode == 0;
    m_report = isWhole ? Report::fromJson(m_process.readAllStandardOutput()) : Report();
    Q_EMIT changed();
    if (std::exchange(m_isStale, false)) {
        ask();
    }
}
