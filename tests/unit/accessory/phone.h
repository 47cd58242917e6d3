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

/// A phone with a monitor, for one test: its services, its library of moodsets, its home folder and
/// its key/value store. The first-run wizard has finished, and the phone is unlocked. All that is
/// stored goes with the object, and warnings that no one has taken fail the test.
class Phone
{
public:
    Phone();
    ~Phone();
    Q_DISABLE_COPY_MOVE(Phone)

    /// Brings the services up and makes the monitor. False if that fails, or if the monitor does
    /// not reach the feedback service.
    Q_REQUIRED_RESULT bool start();
    /// Makes the monitor, with what services there are. It checks a new cover after
    /// firstCheckDelay.
    void makeMonitor();

    /// Adds a moodset that belongs to a cover; gives the path of its file.
    QString addMoodset(const QString& dorselId, bool isFavorite = true);
    void setFavorite(const QString& path, bool isFavorite);
    void setPartnerSpace(const QString& path, const QString& name);

    void finishWizard();
    void undoWizard();

    /// Whether the monitor reaches the feedback service.
    bool hasFeedback() const;

    /// Announces an id and, after it, that the cover is ready.
    void attach(const QString& id);

    /// Returns when the monitor has dealt with all that the services have sent; false if it does
    /// not. Warnings are noted meanwhile.
    Q_REQUIRED_RESULT bool settle();
    /// The warnings since the last time.
    QStringList takeWarnings();

    /// The moodsets that the monitor has asked for, oldest first.
    QStringList takeSwitches();
    /// How many sounds have been asked for since the last time.
    int takeSounds();
    /// The ids that the store client has been told since the last time.
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
