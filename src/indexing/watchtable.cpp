// SPDX-License-Identifier: BSD-3-Clause
#include "watchtable.h"

#include <sys/inotify.h>

namespace {

const QLatin1Char Separator('/');

} // namespace

WatchTable::WatchTable(int inotifyFd)
    : m_inotifyFd(inotifyFd)
{
}

int WatchTable::add(const QString& path, qint64 id, uint32_t mask)
{
    const int watch = inotify_add_watch(m_inotifyFd, path.toUtf8().constData(), mask);
    if (watch >= 0) {
        m_watches.remove(directory(watch).path);
        m_directories.insert(watch, {path + Separator, id});
        m_watches.insert(path + Separator, watch);
    }
    return watch;
}

bool WatchTable::contains(const QString& path) const
{
    return m_watches.contains(path + Separator);
}

WatchedDirectory WatchTable::directory(int watch) const
{
    return m_directories.value(watch);
}

void WatchTable::remove(int watch)
{
    m_watches.remove(m_directories.take(watch).path);
    inotify_rm_watch(m_inotifyFd, watch);
}

void WatchTable::remove(const QString& path)
{
    const auto watch = m_watches.constFind(path + Separator);
    if (watch != m_watches.constEnd()) {
        remove(*watch);
    }
}

void WatchTable::clear()
{
    for (auto watch = m_directories.keyBegin(); watch != m_directories.keyEnd(); ++watch) {
        inotify_rm_watch(m_inotifyFd, *watch);
    }
    m_directories.clear();
    m_watches.clear();
}
