// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMutex>
#include <QObject>
#include <QString>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

/// Something that was asked of the library's thread, which the one who asked can take back.
class Reading
{
public:
    bool isCancelled() const { return m_isCancelled; }

    /// Has what was asked end as soon as it can. Nothing of it is delivered any more. Main thread.
    void cancel() { m_isCancelled = true; }

private:
    std::atomic<bool> m_isCancelled{false};
};

using ReadingPointer = std::shared_ptr<Reading>;

/// The process's one thread that reads the library. One piece of work follows the other, so that
/// there is one listing at a time, and none inside of another.
///
/// It is made by the first that needs it, and has ended when the last that holds it is destroyed.
/// All but what `work` calls is for the main thread.
class LibraryThread
{
public:
    /// What a piece of work sees of the thread.
    class Work
    {
    public:
        /// Whether nobody wants its result any more.
        bool isCancelled() const { return m_reading->isCancelled(); }

        /// Runs `function` on the main thread, unless the reading is cancelled before.
        void deliver(std::function<void()> function) const;

        /// Looks whether there is a library, and opens it again if the daemon has made another one
        /// since the last work. Returns why it cannot be read, in one line, or an empty text.
        QString open() const;

        /// Counts how often a library has been opened again.
        int generation() const;

    private:
        friend class LibraryThread;
        LibraryThread* m_thread = nullptr;
        ReadingPointer m_reading;
    };

    /// The thread that all users in the process share.
    static std::shared_ptr<LibraryThread> instance();

    LibraryThread();
    /// Waits for the work that is being done, which ends soon if it is cancelled.
    ~LibraryThread();
    Q_DISABLE_COPY_MOVE(LibraryThread)

    /// Has `work` done on the thread, after all that was asked before.
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
    /// Live on the thread and on the main thread; they run what is sent to them.
    QObject* m_worker;
    QObject m_home;
    /// Of the file that the connection reads. The thread's own.
    FileIdentity m_file;
    int m_generation = 0;
};
