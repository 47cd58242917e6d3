// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "mgconfitem.h"

#include <QObject>
#include <QString>

class QDBusMessage;
class QFileSystemWatcher;

namespace Ngf {
class Client;
}

/// Follows the phone's back cover, whose tag carries an id.
///
/// If a cover's id belongs to one of the user's favourite moodsets, that moodset becomes the active
/// one, with a sound. If the id belongs to no moodset, the monitor tells the store client, which
/// can offer the cover's content; while the phone is locked, this waits. None of this happens
/// before the first-run wizard has finished.
///
/// The id on the phone is kept in the key/value store, so a cover that stays on during a restart
/// changes nothing. Main thread only. The questions to the back-cover daemon and the call of the
/// store client are synchronous: they block the event loop until the answer comes, for 25 s at
/// most.
class DorselMonitor : public QObject
{
    Q_OBJECT

public:
    /// The only monitor of the process, made at the first call. The application object must exist.
    static DorselMonitor* instance();

    /// How long the session has to start before a cover changes its look, in milliseconds.
    static constexpr int FirstCheckDelay = 5000;

    /// Reads the state of the cover, and restores the partner space of the active moodset. If the
    /// cover has changed since the last start, it is checked after `firstCheckDelay` milliseconds.
    explicit DorselMonitor(QObject* parent = nullptr, int firstCheckDelay = FirstCheckDelay);
    ~DorselMonitor() override;

    /// The id of the cover on the phone; empty for none.
    QString activeDorselId() const;
    /// Stores an id. If it differs from the stored one, the next check may act on it.
    void setActiveDorselId(const QString& id);
    void clearActiveDorselId();

    bool startupWizardFinished() const;
    /// Whether the store client may be told about covers.
    bool dorselInstallEnabled() const;
    /// Whether the id is forgotten when the cover is taken off.
    bool followDORSELIDchanges() const;

    /// Tells the store client about the cover, at once or when the phone is unlocked.
    void notifyStore();
    /// Plays the sound of an attached cover.
    void playSound();

    /// The reply to "Get" for a property of the back-cover daemon. On failure it is an error
    /// message, and a warning is logged.
    QDBusMessage propertyValue(const QString& name);

Q_SIGNALS:
    /// Emitted with the URL of a moodset's file, if that moodset should become the active one
    /// because of the cover.
    void activeMoodset(const QString& url);

public Q_SLOTS:
    /// Handles a change of the back-cover daemon's properties.
    void propertiesChanged(const QDBusMessage& message);
    /// Handles the state of the device lock, from its signal or from its reply.
    void deviceLockStateChanged(const QDBusMessage& message);
    /// Logs a feedback event that has failed.
    void statusFail(const quint32& id);
    /// Decides what to do about the cover.
    void checkDorselStatus();
    /// Runs the check that was waiting for the first-run wizard.
    void homeDirChanged();

private:
    void scheduleFirstCheck(int delay);
    void followServices();
    void restorePartnerSpace() const;

    /// The last known value of the back-cover daemon's "Ready": whether it has read the tag.
    int m_ready = -1;
    Ngf::Client* m_ngfClient;
    MGConfItem m_activeDorselId;
    MGConfItem m_dorselInstall;
    MGConfItem m_followDorselId;
    MGConfItem m_activeMoodset;
    bool m_deviceLocked = false;
    /// Whether the stored id has changed and no check has acted on it yet.
    bool m_dorselIdChanged = false;
    /// Whether to call the store client when the phone is unlocked.
    bool m_storeNotifyPending = false;
    /// Waits for the first-run wizard. It is null if there is nothing to wait for.
    QFileSystemWatcher* m_homeDirWatcher = nullptr;
};
