// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "daemonsession.h"
#include "installedbundles.h"
#include "playedphone.h"
#include "userstore.h"

#include <QString>

/// The services of a phone; those that a daemon looks for must be there before it is made.
struct Phone
{
    Phone();

    PlayedBackCover cover;
    PlayedDeviceLock lock;
    PlayedStoreClient store;
    PlayedFeedback feedback;
    bool isThere;
};

/// A daemon on a phone whose user has finished the first-run wizard, and whose store has a bundle
/// for a cover.
class PhoneSession : public Phone, public DaemonSession
{
public:
    /// The id of the cover.
    static const QString CoverId;
    /// The moodset file of the bundle, once that is installed.
    static const QString MoodsetFile;

    explicit PhoneSession(const QString& executable = QString());
    /// Ends the daemon.
    ~PhoneSession();
    Q_DISABLE_COPY_MOVE(PhoneSession)

    /// Starts the daemon, and waits until it is done with installed packages.
    bool startOnPhone();

    /// The store installs the bundle of the cover, which becomes a favourite or not.
    bool installBundle(bool isFavorite);

    /// The cover is put on.
    void attach();

    /// How often the sound of a cover has been asked for.
    int sounds();

    /// What other processes read at a key of the theme.
    static QString stored(const QString& key);

private:
    bool isMoodset();

    const InstalledBundles m_bundles;
    const UserStore m_store;
    bool m_isReady;
    int m_sounds = 0;
};
