// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMutex>
#include <QObject>
#include <QString>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

/// Work that was given to the library's thread. The caller can cancel it.
class Reading
{
public:
    bool isCancelled() const { return m_isCancelled; }

    /// Makes the work end as soon as it can. Nothing more is delivered. Main thread only.
    void cancel() { m_isCancelled = true; }

private:
    std::atomic<bool> m_isCancelled{false};
};

using ReadingPointer = std::shared_ptr<Reading>;

/// The thread that reads the library; a process has only one. It does one piece of work after the
/// other, so there is never more than one listing.
///
/// The first user starts the thread, and it ends when the last user is destroyed. All functions
/// except those that `work` calls are for the main thread.
class LibraryThread
{
public:
    /// The part of the thread that a piece of work can use.
    class Work
    {
    public:
        /// Whether the caller has cancelled the work.
        bool isCancelled() const { return m_reading->isCancelled(); }

        /// Runs `function` on the main thread, unless the reading is cancelled before.
        void deliver(std::function<void()> function) const;

        /// Checks that there is a library. If the daemon has made a new database file, it opens
        /// that file. Returns why the library cannot be read, in one line, or an empty text.
        QString open() const;

        /// The number of times that a library was opened.
        int generation() const;

    private:
        friend class LibraryThread;
        LibraryThread* m_thread = nullptr;
        ReadingPointer m_reading;
    };

    /// The thread that all users in the process share.
    static std::shared_ptr<LibraryThread> instance();

    LibraryThread();
    /// Waits for the current work, which ends soon if it is cancelled.
    ~LibraryThread();
    Q_DISABLE_COPY_MOVE(LibraryThread)

    /// Runs `work` on the thread, after all earlier work.
    ReadingPointer read(std::function<void(const Work&)> work);

private:
    struct FileIdentity
    {
        quint64 device = 0;
        quint64 inode = 0;
        bool operator==(const FileIdentity& other) const
        {
            return device == other.device && inode == other.inode;
        }
    };

    QString openLibrary();

    QThread m_thread;
    /// The first lives on the thread, the second on the main thread. They run the functions that
    /// are sent to them.
    QObject* m_worker;
    QObject m_home;
    /// The identity of the file that the connection reads. Only the thread uses it.
    FileIdentity m_file;
    int m_generation = 0;
};
