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

/// The adapters that the configuration asks for, each new. `pictures` is the directory of the
/// copies.
std::vector<std::unique_ptr<Adapter>> makeAdapters(
    const BridgeConfiguration& configuration, const QString& pictures);

/// Where the bridge keeps its own files.
struct BridgeFolder
{
    /// The folder of the user, below the data directory.
    static BridgeFolder ofUser();

    QString pictures() const { return path + QStringLiteral("/pictures"); }
    QString state() const { return path + QStringLiteral("/state.json"); }
    QString lock() const { return path + QStringLiteral("/lock"); }

    QString path;
};

/// Follows the daemon's keys, and has adapters hand on what they say. Main thread only.
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
