// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapterdriver.h"
#include "appearance.h"
#include "bridgeconfiguration.h"
#include "changegroup.h"
#include "filewatch.h"
#include "picturecopies.h"
#include "staterecord.h"

#include <QObject>

#include <memory>
#include <vector>

/// Makes the adapters that the configuration names. `pictures` is the directory of the copies of
/// wallpapers.
std::vector<std::unique_ptr<Adapter>> makeAdapters(
    const BridgeConfiguration& configuration, const QString& pictures);

/// The places of the files of the bridge.
struct BridgeFolder
{
    /// The directory below the user's data directory.
    static BridgeFolder ofUser();

    QString pictures() const { return path + QStringLiteral("/pictures"); }
    QString state() const { return path + QStringLiteral("/state.json"); }
    QString lock() const { return path + QStringLiteral("/lock"); }

    QString path;
};

/// Follows the keys of the daemon, and gives their values to the adapters. Main thread only.
class Bridge : public QObject
{
    Q_OBJECT
public:
    Bridge(
        const BridgeConfiguration& configuration, const BridgeFolder& folder,
        QObject* parent = nullptr);

    void start();

private:
    void handleLook();
    void handleSound();
    void hand(Adapter::Subject subject);
    void handOutWallpaper(Look* look);
    void handleRest();
    void storeSoon();
    void store();

    StateRecord m_state;
    PictureCopies m_pictures;
    ChangeGroup m_lookKeys;
    ChangeGroup m_soundKeys;
    FileWatch m_wallpapers;
    Appearance m_appearance;
    bool m_willStore = false;
    QString m_storeFailure;
    std::vector<std::unique_ptr<AdapterDriver>> m_drivers;
};
