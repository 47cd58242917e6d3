// SPDX-License-Identifier: BSD-3-Clause
#include "openedfiles.h"

#include <QDirIterator>
#include <QFile>

#include <array>
#include <sys/inotify.h>
#include <unistd.h>

OpenedFiles::OpenedFiles(const QString& folder)
    : m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    , m_valid(m_inotify >= 0)
{
    watch(folder);
    QDirIterator directories(
        folder, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (directories.hasNext()) {
        watch(directories.next());
    }
    // The listing has opened the directories themselves.
    paths();
}

OpenedFiles::~OpenedFiles()
{
    close(m_inotify);
}

void OpenedFiles::watch(const QString& directory)
{
    const int watch =
        inotify_add_watch(m_inotify, QFile::encodeName(directory).constData(), IN_OPEN);
    m_valid = m_valid && watch >= 0;
    m_directories.insert(watch, directory);
}

QStringList OpenedFiles::paths()
{
    alignas(inotify_event) std::array<char, 65536> buffer;
    ssize_t length = 0;
    while ((length = read(m_inotify, buffer.data(), buffer.size())) > 0) {
        const char* const end = buffer.data() + length;
        for (const char* record = buffer.data(); record < end;) {
            const auto* event = reinterpret_cast<const inotify_event*>(record);
            m_valid = m_valid && (event->mask & IN_Q_OVERFLOW) == 0;
            if ((event->mask & IN_OPEN) != 0 && (event->mask & IN_ISDIR) == 0) {
                m_paths.append(
                    m_directories.value(event->wd) + QLatin1Char('/')
                    + QFile::decodeName(static_cast<const char*>(event->name)));
            }
            record += sizeof(inotify_event) + event->len;
        }
    }
    return m_paths;
}
