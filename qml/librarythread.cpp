// SPDX-License-Identifier: BSD-3-Clause
#include "librarythread.h"

#include <QFile>

#include <libraryreader.h>
#include <queryagent.h>

#include <sys/stat.h>
#include <utility>

void LibraryThread::Work::deliver(std::function<void()> function) const
{
    QMetaObject::invokeMethod(
        &m_thread->m_home,
        [reading = m_reading, function = std::move(function)] {
            if (!reading->isCancelled()) {
                function();
            }
        },
        Qt::QueuedConnection);
}

QString LibraryThread::Work::open() const
{
    return m_thread->openLibrary();
}

int LibraryThread::Work::generation() const
{
    return m_thread->m_generation;
}

std::shared_ptr<LibraryThread> LibraryThread::instance()
{
    static std::weak_ptr<LibraryThread> shared;
    std::shared_ptr<LibraryThread> thread = shared.lock();
    if (!thread) {
        thread = std::make_shared<LibraryThread>();
        shared = thread;
    }
    return thread;
}

LibraryThread::LibraryThread()
    : m_worker(new QObject)
{
    m_thread.setObjectName(QStringLiteral("moodset library"));
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start();
}

LibraryThread::~LibraryThread()
{
    m_thread.quit();
    m_thread.wait();
}

ReadingPointer LibraryThread::read(std::function<void(const Work&)> work)
{
    Work context;
    context.m_thread = this;
    context.m_reading = std::make_shared<Reading>();
    QMetaObject::invokeMethod(
        m_worker,
        [context, work = std::move(work)] {
            if (!context.isCancelled()) {
                work(context);
            }
        },
        Qt::QueuedConnection);
    return context.m_reading;
}

QString LibraryThread::openLibrary()
{
    const QString path = LibraryReader::standardPath();
    struct stat state
    {
    };
    if (stat(QFile::encodeName(path).constData(), &state) != 0) {
        // The file was removed. Only the connection still keeps it, and it may be huge.
        QueryAgent::closeConnection();
        m_file = {};
        return QStringLiteral("there is no database at %1").arg(path);
    }
    const FileIdentity file{quint64(state.st_dev), quint64(state.st_ino)};
    if (!(file == m_file)) {
        QueryAgent::closeConnection();
        m_file = file;
        ++m_generation;
    }
    return {};
}
