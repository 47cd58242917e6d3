// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// When an adapter works.
enum class AdapterSetting {
    Auto, ///< while the shell runs
    On, ///< also before the shell runs, if the adapter can do that
    Off,
};

/// A file that is made from a template of the user.
struct TemplateFile
{
    QString source;
    QString target;
};

/// The user's configuration, `moodset/bridge.conf` in the configuration directory.
struct BridgeConfiguration
{
    static constexpr int DefaultHookLimitSeconds = 10;

    /// Reads the file. For each invalid value, it logs one warning and uses the default. A file
    /// that does not exist has no values.
    static BridgeConfiguration read(const QString& path);
    /// The path of the user's file.
    static QString userFile();

    AdapterSetting adapter(const QString& name) const;

    QMap<QString, AdapterSetting> adapters; ///< the adapters that the file names
    bool keepsSilent = false; ///< whether the profile "silent" stays, and does not become "quiet"
    QVector<TemplateFile> templates;
    QString hook; ///< the path of a program; empty if there is none
    int hookLimitSeconds = DefaultHookLimitSeconds;
};

/// The word for a setting in the file.
QString settingName(AdapterSetting setting);
