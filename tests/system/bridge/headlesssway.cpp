// SPDX-License-Identifier: BSD-3-Clause
#include "headlesssway.h"

#include "bridgesession.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdlib>

namespace {

QString runtimeFolder()
{
    return qEnvironmentVariable("XDG_RUNTIME_DIR");
}

QStringList socketsLike(const QString& pattern)
{
    return QDir(runtimeFolder()).entryList({pattern}, QDir::System);
}

} // namespace

HeadlessSway::~HeadlessSway()
{
    kill();
}

QStringList HeadlessSway::programs()
{
    return {
        QStringLiteral("sway"), QStringLiteral("swaymsg"), QStringLiteral("swaybg"),
        QStringLiteral("grim")};
}

bool HeadlessSway::start(const QByteArray& lines)
{
    QFile configuration(m_folder.filePath(QStringLiteral("config")));
    if (!configuration.open(QIODevice::WriteOnly)) {
        return false;
    }
    configuration.write(
        "xwayland disable\noutput * mode " + QByteArray::number(Width) + 'x'
        + QByteArray::number(Height) + '\n' + lines);
    configuration.close();

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    environment.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    environment.insert(QStringLiteral("WLR_HEADLESS_OUTPUTS"), QStringLiteral("1"));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    // Otherwise the sockets of another run would count as those of this run.
    const QStringList old =
        socketsLike(QStringLiteral("sway-ipc.*")) + socketsLike(QStringLiteral("wayland-*"));
    for (const QString& name : old) {
        QFile::remove(runtimeFolder() + QLatin1Char('/') + name);
    }
    m_process.start(
        QStringLiteral("bwrap"),
        {QStringLiteral("--unshare-user"), QStringLiteral("--uid"), QStringLiteral("4242"),
         QStringLiteral("--gid"), QStringLiteral("4242"), QStringLiteral("--die-with-parent"),
         QStringLiteral("--dev-bind"), QStringLiteral("/"), QStringLiteral("/"),
         QStringLiteral("sway"), QStringLiteral("-c"), configuration.fileName()});
    const bool isUp = m_process.waitForStarted() && waitUntil([] {
                          return !socketsLike(QStringLiteral("sway-ipc.*.sock")).isEmpty()
                              && !socketsLike(QStringLiteral("wayland-?")).isEmpty();
                      });
    if (!isUp) {
        qWarning().noquote() << m_process.readAll();
        return false;
    }
    m_display = socketsLike(QStringLiteral("wayland-?")).first();
    return waitUntil([this] { return middle().isValid(); });
}

void HeadlessSway::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(2000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
}

QString HeadlessSway::socket() const
{
    return runtimeFolder() + QLatin1Char('/')
        + socketsLike(QStringLiteral("sway-ipc.*.sock")).value(0);
}

bool HeadlessSway::reload()
{
    QProcess message;
    message.start(
        QStringLiteral("swaymsg"), {QStringLiteral("-s"), socket(), QStringLiteral("reload")});
    return message.waitForFinished(BridgeSession::DeadlineMs) && message.exitCode() == 0;
}

QColor HeadlessSway::middle() const
{
    QProcess grim;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WAYLAND_DISPLAY"), m_display);
    grim.setProcessEnvironment(environment);
    grim.start(
        QStringLiteral("grim"), {QStringLiteral("-t"), QStringLiteral("ppm"), QStringLiteral("-")});
    if (!grim.waitForFinished(BridgeSession::DeadlineMs) || grim.exitCode() != 0) {
        return {};
    }
    const QImage image = QImage::fromData(grim.readAllStandardOutput(), "PPM");
    return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
}

bool isClose(const QColor& one, const QColor& other)
{
    constexpr int tolerance = 6;
    return one.isValid() && other.isValid() && std::abs(one.red() - other.red()) <= tolerance
        && std::abs(one.green() - other.green()) <= tolerance
        && std::abs(one.blue() - other.blue()) <= tolerance;
}
