// SPDX-License-Identifier: BSD-3-Clause
#include "dconfcommand.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace {

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QString serviceName()
{
    return QStringLiteral("ca.desrt.dconf");
}

} // namespace

QByteArray runDconf(const QStringList& arguments)
{
    constexpr int deadlineMs = 20000;
    QProcess process;
    process.start(QStringLiteral("dconf"), arguments);
    const bool ended = process.waitForFinished(deadlineMs);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString report = QStringLiteral("dconf %1: %2")
                                   .arg(
                                       arguments.join(QLatin1Char(' ')),
                                       QString::fromUtf8(process.readAllStandardError()));
        QTest::qFail(qPrintable(report), __FILE__, __LINE__);
    }
    return process.readAllStandardOutput().trimmed();
}

bool useSystemDefaults(const QByteArray& keyFile, const QByteArray& locks)
{
    const QDir folder(QDir::temp().filePath(QStringLiteral("system-defaults")));
    const QString sources = folder.filePath(QStringLiteral("sources"));
    const QString database = folder.filePath(QStringLiteral("database"));
    const QString profile = folder.filePath(QStringLiteral("profile"));
    if (!QDir().mkpath(sources + QStringLiteral("/locks"))
        || !writeFile(sources + QStringLiteral("/keys"), keyFile)
        || !writeFile(sources + QStringLiteral("/locks/keys"), locks)
        || !writeFile(profile, "user-db:user\nfile-db:" + database.toUtf8() + '\n')) {
        return false;
    }
    runDconf({QStringLiteral("compile"), database, sources});
    return qputenv("DCONF_PROFILE", profile.toUtf8());
}

qint64 dconfServicePid()
{
    QDBusConnectionInterface* const bus = QDBusConnection::sessionBus().interface();
    bus->startService(serviceName());
    return bus->servicePid(serviceName());
}

bool killDconfService()
{
    if (kill(pid_t(dconfServicePid()), SIGKILL) != 0) {
        return false;
    }
    return QTest::qWaitFor([] {
        return !QDBusConnection::sessionBus().interface()->isServiceRegistered(serviceName());
    });
}

PausedDconfService::PausedDconfService()
    : m_pid(pid_t(dconfServicePid()))
{
    if (m_pid <= 0 || kill(m_pid, SIGSTOP) != 0) {
        m_pid = 0;
    }
}

void PausedDconfService::resume()
{
    if (isPaused()) {
        kill(m_pid, SIGCONT);
        m_pid = 0;
    }
}
