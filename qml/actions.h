// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "action.h"

#include <QHash>
#include <QJSValue>
#include <QObject>

class QJSEngine;

/// The methods of the daemon, as calls that tell what has come of them. None waits: each returns a
/// number at once, and when it is over, calls `callback`, if given, and then emits finished(), both
/// with the outcome. This comes from the event loop, also for arguments that make no sense.
///
/// An outcome is an object with these values:
///   call       the number of the call
///   method     the name of the daemon's method
///   succeeded  whether what was asked for has come about
///   error      an Error
///   errorText  why it has not, in one line
///   moodset    the values of the moodset's roles by their names, as in models; null if there is
///              none. After remove() it is the moodset as it was.
///   undo       what undo() takes; null where there is nothing to undo
/// and after installPackage()
///   moodsets   a list of the moodsets' URLs
///   refused    a list of the paths of moodset files of which no moodset was made
class Actions : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int running READ running NOTIFY runningChanged)
    Q_PROPERTY(
        int networkTimeout READ networkTimeout WRITE setNetworkTimeout NOTIFY networkTimeoutChanged)

public:
    enum Error : int {
        NoError = ActionOutcome::NoError,
        InvalidArgument = ActionOutcome::InvalidArgument,
        NoDaemon = ActionOutcome::NoDaemon,
        Gone = ActionOutcome::Gone,
        NotDone = ActionOutcome::NotDone,
        TimedOut = ActionOutcome::TimedOut,
        Cancelled = ActionOutcome::Cancelled
    };
    Q_ENUM(Error)

    explicit Actions(QJSEngine* engine, QObject* parent = nullptr);
    ~Actions() override;

    /// How many calls are under way.
    int running() const { return m_running.size(); }

    /// How long to wait for a picture on the network, in milliseconds; 60000 if not set.
    int networkTimeout() const { return m_networkTimeout; }
    void setNetworkTimeout(int timeout);

    /// Makes a moodset active. `url` is that of a moodset file, or of a picture, here or on the
    /// network, of which a moodset is made first.
    Q_INVOKABLE int setMoodset(const QJSValue& url, const QJSValue& callback = {});
    /// Makes a moodset, and leaves the active one.
    Q_INVOKABLE int createMoodset(const QJSValue& url, const QJSValue& callback = {});
    /// Takes a moodset out of the library, but not its file.
    Q_INVOKABLE int remove(const QJSValue& contentId, const QJSValue& callback = {});
    /// Changes a moodset. `attributes` is an object with any of displayName, favorite,
    /// ringerVolume, the four colours, a switch for each tone, and resources, a map of the tones'
    /// files.
    Q_INVOKABLE int saveAttributes(
        const QJSValue& contentId, const QJSValue& attributes, const QJSValue& callback = {});
    /// Has the daemon take in a local file, and waits until it has been read.
    Q_INVOKABLE int indexFile(const QJSValue& url, const QJSValue& callback = {});
    /// Has the bundle in a directory taken in; `folder` is its URL or path.
    Q_INVOKABLE int installPackage(const QJSValue& folder, const QJSValue& callback = {});
    /// Has the daemon look for new, changed and removed packages.
    Q_INVOKABLE int refreshMoodsets(const QJSValue& callback = {});

    /// Undoes what an outcome tells of, by its value `undo`.
    Q_INVOKABLE int undo(const QJSValue& undo, const QJSValue& callback = {});

    /// Gives up waiting for a call. What it asked for may come about all the same.
    Q_INVOKABLE void cancel(int call);

Q_SIGNALS:
    void finished(int call, const QVariantMap& outcome);
    void runningChanged();
    void networkTimeoutChanged();

private:
    using Undo = std::function<QVariant(const ActionOutcome&)>;

    struct Call
    {
        Action* action = nullptr; // null for one that was refused
        QString method;
        QJSValue callback;
        /// Turns a success into what undo() takes. May be empty.
        Undo undo;
        /// What to do after a success, under the same number. May be empty.
        std::function<Action::Plan(const ActionOutcome&)> next;
    };

    int begin(
        const Action::Plan& plan, const QJSValue& callback, Undo undo = {},
        std::function<Action::Plan(const ActionOutcome&)> next = {});
    void start(int number, const Action::Plan& plan);
    int refuse(const QString& method, const QString& error, const QJSValue& callback);
    int make(bool makesActive, const QJSValue& url, const QJSValue& callback);
    int undoRemoval(const QVariantMap& undo, const QJSValue& callback);
    void handleFinish(int number, const ActionOutcome& outcome);
    void finish(int number, const ActionOutcome& outcome);

    QJSEngine* m_engine;
    QHash<int, Call> m_running;
    int m_lastNumber = 0;
    int m_networkTimeout;
};
