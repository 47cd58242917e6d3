// SPDX-License-Identifier: BSD-3-Clause
#include "thumbnailqueue.h"

#include <algorithm>
#include <utility>

#include <sys/resource.h>

namespace {

/// Lets other threads go before the calling one, so that decoders that take all processors do not
/// make a view stutter. On Linux, each thread has a niceness of its own.
void goBehindTheInterface()
{
    constexpr int niceness = 10;
    constexpr id_t thisThread = 0;
    // Without the right to it, which is possible for a process that is nicer already, all is as it
    // was.
    static_cast<void>(setpriority(PRIO_PROCESS, thisThread, niceness));
}

} // namespace

ThumbnailQueue::ThumbnailQueue(int threads)
    : m_mostThreads(std::size_t(std::max(threads, 1)))
{
}

ThumbnailQueue::~ThumbnailQueue()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        m_entries.clear();
    }
    m_hasWork.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

ThumbnailQueue::Ticket ThumbnailQueue::add(Work work)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.push_front({++m_lastTicket, std::move(work)});
    if (m_idle < m_entries.size() && m_threads.size() < m_mostThreads) {
        m_threads.emplace_back([this] { run(); });
    }
    m_hasWork.notify_one();
    return m_lastTicket;
}

bool ThumbnailQueue::remove(Ticket ticket)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [ticket](const Entry& e) {
        return e.ticket == ticket;
    });
    if (entry == m_entries.end()) {
        return false;
    }
    m_entries.erase(entry);
    return true;
}

std::size_t ThumbnailQueue::waiting()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_entries.size();
}

void ThumbnailQueue::run()
{
    goBehindTheInterface();
    std::unique_lock<std::mutex> lock(m_mutex);
    while (true) {
        ++m_idle;
        m_hasWork.wait(lock, [this] { return m_isEnding || !m_entries.empty(); });
        --m_idle;
        if (m_isEnding) {
            return;
        }
        const Work work = std::move(m_entries.front().work);
        m_entries.pop_front();
        lock.unlock();
        work();
        lock.lock();
    }
}
