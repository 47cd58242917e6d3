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
/// A cover whose id belongs to one of the user's favourite moodsets makes that the active one, with
/// a sound. For a cover whose id belongs to no moodset, the store client is told, which can offer
/// the cover's content; while the phone is locked, that waits. Nothing of this happens before the
/// first-run wizard has finished.
///
/// The id on the phone is kept in the key/value store, so that a cover that stays on over a restart
/// changes nothing. Main thread only. The questions to the back-cover daemon and the call of the
/// store client are synchronous and hold up the event loop until they are answered, or for the
/// bus's 25 s.
class DorselMonitor : public QObject
{
    Q_OBJECT

public:
    /// The process's one monitor, made at the first call, after the application object.
    static DorselMonitor* instance();

    /// Reads the state of the cover, and restores the partner space of the active moodset.
    explicit DorselMonitor(QObject* parent = nullptr);
    ~DorselMonitor() override;

    /// The id of the cover on the phone; empty for none.
    QString activeDorselId() const;
    /// Stores an id. If it is not the one that is stored, the next check may act upon it.
    void setActiveDorselId(const QString& id);
    void clearActiveDorselId();

    bool startupWizardFinished() const;
    /// Whether the store client may be told of covers.
    bool dorselInstallEnabled() const;
    /// Whether the id is forgotten when the cover goes.
    bool followDORSELIDchanges() const;

    /// Tells the store client of the cover, at once or when the phone is unlocked.
    void notifyStore();
    /// Plays the sound of a cover that is attached.
    void playSound();

    /// A property of the back-cover daemon: the reply to the call of "Get", or an error message (a
    /// warning).
    QDBusMessage propertyValue(const QString& name);

Q_SIGNALS:
    /// The moodset of a cover is to be the active one; the URL of its file.
    void activeMoodset(const QString& url);

public Q_SLOTS:
    /// Takes what the back-cover daemon says of its properties.
    void propertiesChanged(const QDBusMessage& message);
    /// Takes the state of the device lock, from its signal or its reply.
    void deviceLockStateChanged(const QDBusMessage& message);
    /// Logs a feedback event that has failed.
    void statusFail(const quint32& id);
    /// Decides what the cover means.
    void checkDorselStatus();
    /// Makes the check that has waited for the first-run wizard.
    void homeDirChanged();

private:
    void scheduleFirstCheck();
    void followServices();
    void restorePartnerSpace() const;

    /// The last known "Ready" of the back-cover daemon: it has read the tag.
    int m_ready = -1;
    Ngf::Client* m_ngfClient;
    MGConfItem m_activeDorselId;
    MGConfItem m_dorselInstall;
    MGConfItem m_followDorselId;
    MGConfItem m_activeMoodset;
    bool m_deviceLocked = false;
    /// The stored id has changed, and no check has acted upon it.
    bool m_dorselIdChanged = false;
    /// The store client is to be called when the phone is unlocked.
    bool m_storeNotifyPending = false;
    /// Waits for the first-run wizard; null when there is nothing to wait for.
    QFileSystemWatcher* m_homeDirWatcher = nullptr;
};
