// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

/// Runs work on a few threads of its own. The work that was added last comes first. Any thread may
/// call it.
class ThumbnailQueue
{
public:
    using Work = std::function<void()>;
    /// The number of work that has been added; 0 is no work.
    using Ticket = quint64;

    explicit ThumbnailQueue(int threads);
    /// Drops the work that has not begun, and waits for the work that has.
    ~ThumbnailQueue();
    ThumbnailQueue(const ThumbnailQueue&) = delete;
    ThumbnailQueue& operator=(const ThumbnailQueue&) = delete;

    Ticket add(Work work);

    /// Removes work from the queue; false if it has begun already.
    bool remove(Ticket ticket);

    /// How much of the work has not begun.
    std::size_t waiting();

private:
    struct Entry
    {
        Ticket ticket;
        Work work;
    };

    void run();

    const std::size_t m_mostThreads;
    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::list<Entry> m_entries; // the newest first
    Ticket m_lastTicket = 0;
    bool m_isEnding = false;
    std::size_t m_idle = 0;
    std::vector<std::thread> m_threads;
};
