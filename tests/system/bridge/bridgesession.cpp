// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"

#include "dconfcommand.h"

#include <dconfstore.h>
#include <gvariantconversion.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUuid>

const QString BridgeSession::WallpaperKey =
    QStringLiteral("/desktop/zavro/background/portrait/home_picture_filename");
const QString BridgeSession::HighlightKey = QStringLiteral("/desktop/zavro/theme/color/highlight");
const QString BridgeSession::MoodsetKey = QStringLiteral("/desktop/zavro/theme/active_moodset");
const QString BridgeSession::PictureUriKey =
    QStringLiteral("/org/gnome/desktop/background/picture-uri");
const QString BridgeSession::AccentKey =
    QStringLiteral("/org/gnome/desktop/interface/accent-color");

namespace {

QString configurationFolder()
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/moodset");
}

} // namespace

bool waitUntil(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, BridgeSession::DeadlineMs);
}

BridgeSession::BridgeSession()
{
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
    QDir(configurationFolder()).removeRecursively();
    QDir(dataFolder()).removeRecursively();
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

BridgeSession::~BridgeSession()
{
    kill();
    const QStringList strays = takeWarnings();
    if (!strays.isEmpty()) {
        QTest::qFail(qPrintable(strays.join(QLatin1Char('\n'))), __FILE__, __LINE__);
    }
}

void BridgeSession::configure(const QByteArray& text)
{
    QDir().mkpath(configurationFolder());
    QFile file(configurationFolder() + QStringLiteral("/bridge.conf"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        QTest::qFail("The configuration cannot be written", __FILE__, __LINE__);
    }
}

void BridgeSession::setEnvironment(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

bool BridgeSession::start()
{
    m_process.start(QStringLiteral(BRIDGE_EXECUTABLE), QStringList());
    return m_process.waitForStarted() && waitUntil([this] {
               return run({QStringLiteral("--json")}) == 0
                   && m_output.contains(QStringLiteral("\"running\":true"));
           });
}

void BridgeSession::kill()
{
    if (isRunning()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

bool BridgeSession::waitForEnd()
{
    return waitUntil([this] { return !isRunning(); });
}

int BridgeSession::run(const QStringList& options)
{
    QProcess process;
    process.setProcessEnvironment(m_process.processEnvironment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(BRIDGE_EXECUTABLE), options);
    if (!waitUntil([&process] { return process.state() == QProcess::NotRunning; })) {
        return -1;
    }
    m_output = QString::fromUtf8(process.readAll());
    return process.exitCode();
}

QJsonObject BridgeSession::status(const QString& adapter)
{
    if (run({QStringLiteral("--status"), QStringLiteral("--json")}) != 0) {
        return {};
    }
    const QJsonArray adapters = QJsonDocument::fromJson(m_output.toUtf8())
                                    .object()
                                    .value(QStringLiteral("adapters"))
                                    .toArray();
    for (const QJsonValue& object : adapters) {
        if (object.toObject().value(QStringLiteral("name")) == adapter) {
            return object.toObject();
        }
    }
    return {};
}

QJsonObject BridgeSession::values(const QString& adapter)
{
    return status(adapter).value(QStringLiteral("set")).toObject();
}

bool BridgeSession::waitForStatus(
    const QString& adapter, const std::function<bool(const QJsonObject&)>& condition)
{
    return waitUntil([&] { return condition(status(adapter)); });
}

bool BridgeSession::waitForFirstLook(const QString& adapter)
{
    return waitForStatus(adapter, [](const QJsonObject& status) {
        return !status.value(QStringLiteral("time")).toString().isEmpty();
    });
}

bool BridgeSession::waitForFailure(const QString& adapter, const QString& part)
{
    const bool hasFailed = waitForStatus(adapter, [&part](const QJsonObject& status) {
        const QString failure = status.value(QStringLiteral("failure")).toString();
        return part.isEmpty() ? failure.isEmpty() : failure.contains(part);
    });
    if (!hasFailed) {
        qWarning().noquote() << m_output;
    }
    return hasFailed;
}

void BridgeSession::write(const QMap<QString, QString>& keys)
{
    std::map<QByteArray, GVariantPointer> values;
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        values[key.key().toUtf8()] = key.value().isEmpty() ? nullptr : toGVariant(key.value());
    }
    DconfStore::instance().write(values);
    DconfStore::instance().sync();
}

void BridgeSession::settleStore()
{
    write({{QStringLiteral("/test/fence"), QUuid::createUuid().toString()}});
}

QString BridgeSession::picture(const QString& name, const QColor& color)
{
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(color);
    const QString path = folder.path(name);
    if (!image.save(path)) {
        QTest::qFail("The picture cannot be written", __FILE__, __LINE__);
    }
    return path;
}

void BridgeSession::setLook(const QString& wallpaper, const QString& highlight)
{
    write({{WallpaperKey, wallpaper}, {HighlightKey, highlight}, {MoodsetKey, wallpaper}});
}

QString BridgeSession::stored(const QString& key)
{
    const QByteArray text = runDconf({QStringLiteral("read"), key});
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

QStringList BridgeSession::copies()
{
    return QDir(dataFolder() + QStringLiteral("/pictures"))
        .entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QString BridgeSession::dataFolder()
{
    return qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/moodset-bridge");
}

QStringList BridgeSession::takeWarnings()
{
    if (m_process.isOpen()) {
        // The event loop need not have run since the bridge has written it.
        while (m_process.waitForReadyRead(0)) { }
        m_log += m_process.readAll();
    }
    const QStringList lines = QString::fromUtf8(m_log).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QStringList untaken = lines.mid(m_warningsTaken);
    m_warningsTaken = lines.size();
    return untaken;
}
