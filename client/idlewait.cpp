// SPDX-License-Identifier: BSD-3-Clause
#include "idlewait.h"

#include "moodsetservice.h"

#include <QFileInfo>

namespace {

constexpr int IdlePauseMs = 100;
constexpr int QuietLooksForIdle = 10;

} // namespace

IdleWait::IdleWait(MoodsetService& service, const LibraryReader& library, QObject* parent)
    : QObject(parent)
    , m_service(service)
    , m_library(library)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(IdlePauseMs);
    connect(&m_pause, &QTimer::timeout, &service, &MoodsetService::ask);
    connect(&service, &MoodsetService::alive, this, &IdleWait::look);
}

bool IdleWait::setLog(const QString& path)
{
    m_log.setFileName(path);
    return QFileInfo(path).isFile() && m_log.open(QIODevice::ReadOnly);
}

void IdleWait::start()
{
    m_service.ask();
}

void IdleWait::look()
{
    const LibraryReader::Counts counts = m_library.counts();
    Q_EMIT progress(counts);
    if (isIdle(counts)) {
        Q_EMIT idle();
    } else {
        m_pause.start();
    }
}

bool IdleWait::isIdle(const LibraryReader::Counts& counts)
{
    if (m_log.isOpen()) {
        return logSaysIdle() && counts.waitingPhotos == 0;
    }

    const int dataVersion = m_library.dataVersion();
    const bool quiet = counts.waitingPhotos == 0 && dataVersion == m_lastDataVersion;
    m_quietLooks = quiet ? m_quietLooks + 1 : 0;
    m_lastDataVersion = dataVersion;
    return m_quietLooks >= QuietLooksForIdle;
}

bool IdleWait::logSaysIdle()
{
    while (!m_filesIdleInLog || !m_packagesIdleInLog) {
        const qint64 start = m_log.pos();
        const QByteArray line = m_log.readLine();
        if (!line.endsWith('\n')) {
            m_log.seek(start);
            break;
        }
        m_filesIdleInLog |= line.contains("FileManager idle in ");
        m_packagesIdleInLog |= line.contains("InstallManager idle in ");
    }
    return m_filesIdleInLog && m_packagesIdleInLog;
}
