// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"
#include "libraryevents.h"
#include "librarythread.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

/// The result of an action.
struct ActionOutcome
{
    enum Error : int {
        NoError,
        InvalidArgument, ///< the daemon was not called
        NoDaemon, ///< the daemon does not run and cannot be started, or has ended
        Gone, ///< the moodset to be changed is not in the library
        NotDone, ///< the daemon has answered, but has not done what the call asked for
        TimedOut, ///< the result has not come in time; it may still come
        Cancelled ///< the caller has stopped waiting; the result may still come
    };

    Error error = NoError;
    /// Why it failed, in one line.
    QString text;
    /// The moodset that the action was about.
    ContentRow moodset;
    /// Further values of the outcome.
    QVariantMap details;
};

/// One call of the daemon. It reads the library before the call and after the reply, and compares
/// the two. It never blocks. Main thread only.
class Action : public QObject
{
    Q_OBJECT

public:
    /// Reads the library, on its thread. Returns nothing if the result of the call may still come.
    using Look = std::function<std::optional<ActionOutcome>()>;

    struct Plan
    {
        QString method;
        QVariantList arguments;
        /// Runs before the call. If it fails, the daemon is not called. May be empty.
        Look prepare;
        /// Gets the result of `prepare`, on the main thread. May be empty.
        std::function<void(const ActionOutcome& before)> noteBefore;
        /// Runs after the reply. If it is empty, the reply is all that can be known.
        Look judge;
        /// Completes the outcome with what only the main thread can find out. Returns nothing if
        /// the result may still come. May be empty.
        std::function<std::optional<ActionOutcome>(const ActionOutcome& outcome)> confirm;
        /// How long to wait after the reply for a result that may still come. It is called after
        /// the reply, and gives 0 if there is nothing to wait for.
        std::function<int()> waitMs;
        /// The text of the failure if the result has not come by then.
        QString failure;
    };

    Action(Plan plan, QObject* parent);
    ~Action() override;

    void start();
    void cancel();

Q_SIGNALS:
    void finished(const ActionOutcome& outcome);

private:
    void look(const Look& look, void (Action::*next)(const std::optional<ActionOutcome>&));
    void call(const std::optional<ActionOutcome>& before);
    void send();
    void handleReply(class QDBusPendingCallWatcher* watcher);
    void judge();
    void handleJudgement(const std::optional<ActionOutcome>& outcome);
    void wait();
    void finish(const ActionOutcome& outcome);

    Plan m_plan;
    std::shared_ptr<LibraryThread> m_thread;
    std::shared_ptr<LibraryEvents> m_events;
    ReadingPointer m_reading;
    QDeadlineTimer m_startDeadline;
    QDeadlineTimer m_deadline;
    QTimer m_lookAgain;
    bool m_isWaiting = false;
    bool m_isFinished = false;
};
