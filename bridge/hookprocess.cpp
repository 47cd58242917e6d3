// SPDX-License-Identifier: BSD-3-Clause
#include "hookprocess.h"

#include <QDebug>

#include <csignal>
#include <unistd.h>

namespace {

/// A process that becomes the leader of a new process group before it runs the program.
class GroupLeader : public QProcess
{
public:
    using QProcess::QProcess;

protected:
    void setupChildProcess() override
    {
        static_cast<void>(setpgid(0, 0)); // this cannot fail for a new process
    }
};

} // namespace

HookProcess::~HookProcess()
{
    end();
}

void HookProcess::run(
    const QString& program, const QMap<QString, QString>& variables, const Adapter::Done& done,
    const QStringList& arguments)
{
    end();
    m_process = new GroupLeader(this);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        environment.insert(variable.key(), variable.value());
    }
    m_process->setProcessEnvironment(environment);
    m_process->setProcessChannelMode(QProcess::ForwardedChannels);
    m_process->setStandardInputFile(QProcess::nullDevice());
    connect(
        m_process, &QProcess::errorOccurred, this, [program, done](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                done(QStringLiteral("%1 cannot be started.").arg(program));
            }
        });
    connect(
        m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
        [program, done](int code, QProcess::ExitStatus status) {
            const bool isGood = status == QProcess::NormalExit && code == 0;
            done(isGood ? QString() : QStringLiteral("%1 has failed.").arg(program));
        });
    m_process->start(program, arguments);
}

void HookProcess::end()
{
    if (!m_process) {
        return;
    }
    m_process->disconnect(this);
    const qint64 process = m_process->processId();
    if (process > 0) {
        static_cast<void>(::kill(pid_t(-process), SIGKILL)); // it may have ended
        m_process->kill();
    }
    // Qt waits for ended processes, and one of its signals may be running now.
    if (m_process->state() == QProcess::NotRunning) {
        m_process->deleteLater();
    } else {
        connect(
            m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), m_process,
            &QObject::deleteLater);
    }
    m_process = nullptr;
}
