// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// Whether an adapter hands anything on.
enum class AdapterSetting {
    Auto, ///< while the shell is there
    On, ///< also before it is there, where the adapter can
    Off,
};

/// A file that is made of a template of the user.
struct TemplateFile
{
    QString source;
    QString target;
};

/// The user's configuration, `moodset/bridge.conf` in the configuration directory.
struct BridgeConfiguration
{
    static constexpr int DefaultHookLimitSeconds = 10;

    /// Reads the file. One warning tells of each value that is no valid one; the default counts
    /// then. A file that does not exist has no values.
    static BridgeConfiguration read(const QString& path);
    /// The path of the user's file.
    static QString userFile();

    AdapterSetting adapter(const QString& name) const;

    QMap<QString, AdapterSetting> adapters; ///< those that the file names
    bool keepsSilent = false; ///< whether the profile "silent" is not to become "quiet"
    QVector<TemplateFile> templates;
    QString hook; ///< the path of a program; empty if there is none
    int hookLimitSeconds = DefaultHookLimitSeconds;
};

/// The word for a setting in the file.
QString settingName(AdapterSetting setting);
