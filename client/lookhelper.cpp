// SPDX-License-Identifier: BSD-3-Clause
#include "lookhelper.h"

#include "text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include <sys/resource.h>

namespace {

/// The limit of the daemon's address space in its unit, in bytes.
constexpr rlim_t DaemonAddresses = MOODSETD_ADDRESS_SPACE;

/// The helper is in this program's directory if both were built, and in LOOK_FROM_BIN if they are
/// installed.
QString programPath()
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString beside = folder.filePath(QStringLiteral("moodset-look"));
    return QFileInfo(beside).isExecutable()
        ? beside
        : QDir::cleanPath(folder.filePath(QStringLiteral(LOOK_FROM_BIN)));
}

class LimitedProcess final : public QProcess
{
protected:
    void setupChildProcess() override
    {
        if (DaemonAddresses > 0) {
            const rlimit limit{DaemonAddresses, DaemonAddresses};
            setrlimit(RLIMIT_AS, &limit);
        }
    }
};

QJsonObject replyIn(const QByteArray& output)
{
    const QJsonObject reply = QJsonDocument::fromJson(output).object();
    return reply.isEmpty() ? QJsonObject{{QStringLiteral("fault"), QStringLiteral("crashed")}}
                           : reply;
}

QString text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString();
}

} // namespace

LookHelper::LookHelper() = default;

LookHelper::~LookHelper()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QJsonObject LookHelper::ask(const QJsonObject& request)
{
    LimitedProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(programPath(), {});
    process.write(QJsonDocument(request).toJson(QJsonDocument::Compact));
    process.closeWriteChannel();
    process.waitForFinished(-1);
    return replyIn(process.readAllStandardOutput());
}

void LookHelper::start(const QJsonObject& request)
{
    m_process.start(programPath(), {});
    m_process.write(QJsonDocument(request).toJson(QJsonDocument::Compact));
    m_process.closeWriteChannel();
}

bool LookHelper::isDone()
{
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(0);
}

QJsonObject LookHelper::reply()
{
    return replyIn(m_process.readAllStandardOutput());
}

QString pictureFault(const QString& path)
{
    const QJsonObject check = LookHelper::ask(
        {{QStringLiteral("do"), QStringLiteral("check")}, {QStringLiteral("path"), path}});
    const QString fault = text(check, "fault");
    const QString format = text(check, "format").toUpper();
    if (fault == QLatin1String("not-regular")) {
        return Text::tr("not a file");
    }
    if (fault == QLatin1String("unreadable")) {
        return Text::tr("no right to read it");
    }
    if (fault == QLatin1String("empty")) {
        return Text::tr("the file is empty");
    }
    if (fault == QLatin1String("unknown-format")) {
        return Text::tr("it is no picture of a format that the daemon decodes");
    }
    if (fault == QLatin1String("not-decoded")) {
        return Text::tr("the daemon does not decode pictures of the format %1").arg(format);
    }
    if (fault == QLatin1String("damaged")) {
        return Text::tr("the picture is damaged or cut off; its format is %1").arg(format);
    }
    if (fault == QLatin1String("too-large") || fault == QLatin1String("crashed")) {
        return Text::tr("the picture is too large for the memory that the daemon may have: %1 x %2")
            .arg(check.value(QLatin1String("width")).toInt())
            .arg(check.value(QLatin1String("height")).toInt());
    }
    return {};
}

QString addressFault(const QJsonObject& reply)
{
    const QString fault = text(reply, "fault");
    const QString detail = text(reply, "detail");
    if (fault == QLatin1String("error")) {
        return Text::tr("the address does not answer as it should: %1").arg(detail);
    }
    if (fault == QLatin1String("redirected")) {
        return Text::tr("the address points to another one, which the daemon does not follow: %1")
            .arg(detail);
    }
    if (fault == QLatin1String("no-picture")) {
        return detail.isEmpty()
            ? Text::tr("there is no picture at the address")
            : Text::tr("there is no picture at the address, but %1").arg(detail);
    }
    return {};
}
