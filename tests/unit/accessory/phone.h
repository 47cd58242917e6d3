// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "accessory/dorselmonitor.h"
#include "contentwriter.h"
#include "messagelog.h"
#include "playedphone.h"

#include <QSignalSpy>
#include <QString>
#include <QStringList>

#include <memory>

/// A phone with a monitor, for one test: its services, its library of moodsets, its home directory
/// and its key/value store. The first-run wizard has finished, and the phone is unlocked.
/// Everything that is stored is removed with the object. Warnings that the test does not take make
/// it fail.
class Phone
{
public:
    Phone();
    ~Phone();
    Q_DISABLE_COPY_MOVE(Phone)

    /// Starts the services and makes the monitor. False if this fails, or if the monitor does not
    /// reach the feedback service.
    Q_REQUIRED_RESULT bool start();
    /// Makes the monitor, with the services that are running. It checks a new cover after
    /// firstCheckDelay.
    void makeMonitor();

    /// Adds a moodset that belongs to a cover. Returns the path of its file.
    QString addMoodset(const QString& dorselId, bool isFavorite = true);
    void setFavorite(const QString& path, bool isFavorite);
    void setPartnerSpace(const QString& path, const QString& name);

    void finishWizard();
    void undoWizard();

    /// Whether the monitor reaches the feedback service.
    bool hasFeedback() const;

    /// Announces an id, and then that the cover is ready.
    void attach(const QString& id);

    /// Waits until the monitor has handled everything that the services have sent; false if it does
    /// not. Warnings are recorded meanwhile.
    Q_REQUIRED_RESULT bool settle();
    /// The warnings since the last call.
    QStringList takeWarnings();

    /// The moodsets that the monitor wants to apply, oldest first.
    QStringList takeSwitches();
    /// The number of sounds that were requested since the last call.
    int takeSounds();
    /// The ids that were sent to the store client since the last call.
    QStringList takeStoreCalls();

    static QString storedId();
    static void storeId(const QString& id);
    static void store(const QString& key, const QVariant& value);

    /// In milliseconds.
    int firstCheckDelay = DorselMonitor::FirstCheckDelay;
    PlayedBackCover cover;
    PlayedDeviceLock lock;
    PlayedStoreClient storeClient;
    PlayedFeedback feedback;
    std::unique_ptr<DorselMonitor> monitor;

private:
    void setColumn(const QString& path, const QString& column, const QVariant& value);

    MessageLog m_log;
    ContentWriter m_writer;
    std::unique_ptr<QSignalSpy> m_switches;
    QStringList m_warnings;
    int m_fences = 0;
};

/// The two warnings of a property that cannot be read.
QStringList propertyWarnings(const QString& error, const QString& text);
