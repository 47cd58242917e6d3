// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "action.h"

#include <QHash>
#include <QJSValue>
#include <QObject>

class QJSEngine;

/// The methods of the daemon, as calls that report their result. No call blocks. Each returns a
/// number at once. When a call has finished, it calls `callback`, if there is one, and then emits
/// finished(), both with the outcome. Both happen on the event loop, also if an argument is
/// invalid.
///
/// An outcome is an object with these values:
///   call       the number of the call
///   method     the name of the daemon's method
///   succeeded  whether the daemon has done what the call asked for
///   error      an Error
///   errorText  why the daemon has not done it, in one line
///   moodset    the values of the moodset's roles by their names, as in models; null if there is
///              none. After remove(), it is the moodset before its removal.
///   undo       the argument of undo(); null if there is nothing to undo
/// After installPackage(), it also has these values:
///   moodsets   a list of the moodsets' URLs
///   refused    a list of the paths of moodset files that did not become moodsets
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

    /// The number of calls that have not finished.
    int running() const { return m_running.size(); }

    /// How long to wait for a picture on the network, in milliseconds; 60000 if not set.
    int networkTimeout() const { return m_networkTimeout; }
    void setNetworkTimeout(int timeout);

    /// Applies a moodset. `url` is the URL of a moodset file, or of a picture, local or on the
    /// network. From a picture, the daemon first makes a moodset.
    Q_INVOKABLE int setMoodset(const QJSValue& url, const QJSValue& callback = {});
    /// Makes a moodset, and does not apply it.
    Q_INVOKABLE int createMoodset(const QJSValue& url, const QJSValue& callback = {});
    /// Removes a moodset from the library, but does not delete its file.
    Q_INVOKABLE int remove(const QJSValue& contentId, const QJSValue& callback = {});
    /// Changes a moodset. `attributes` is an object with any of displayName, favorite,
    /// ringerVolume, the four colours, a switch for each tone, and resources, which is a map of the
    /// files of the tones.
    Q_INVOKABLE int saveAttributes(
        const QJSValue& contentId, const QJSValue& attributes, const QJSValue& callback = {});
    /// Registers a local file, and waits until the daemon has read it.
    Q_INVOKABLE int indexFile(const QJSValue& url, const QJSValue& callback = {});
    /// Installs the bundle in a directory. `folder` is its URL or path.
    Q_INVOKABLE int installPackage(const QJSValue& folder, const QJSValue& callback = {});
    /// Makes the daemon look for new, changed and removed packages.
    Q_INVOKABLE int refreshMoodsets(const QJSValue& callback = {});

    /// Undoes an earlier call. The argument is the value `undo` of its outcome.
    Q_INVOKABLE int undo(const QJSValue& undo, const QJSValue& callback = {});

    /// Stops waiting for a call. The daemon may still carry it out.
    Q_INVOKABLE void cancel(int call);

Q_SIGNALS:
    void finished(int call, const QVariantMap& outcome);
    void runningChanged();
    void networkTimeoutChanged();

private:
    using Undo = std::function<QVariant(const ActionOutcome&)>;

    struct Call
    {
        Action* action = nullptr; // null if an argument is invalid
        QString method;
        QJSValue callback;
        /// After a success, makes the argument of undo() from it. May be empty.
        Undo undo;
        /// Runs after a success, under the same number. May be empty.
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
