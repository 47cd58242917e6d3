// SPDX-License-Identifier: BSD-3-Clause
#include "bridgeconfiguration.h"

#include <QDebug>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include <array>
#include <optional>

namespace {

constexpr std::array<AdapterSetting, 3> Settings{
    AdapterSetting::Auto, AdapterSetting::On, AdapterSetting::Off};

std::optional<AdapterSetting> settingFromName(const QString& name)
{
    for (const AdapterSetting setting : Settings) {
        if (name == settingName(setting)) {
            return setting;
        }
    }
    return std::nullopt;
}

void warnOfValue(const QString& key, const QString& value)
{
    qWarning() << "The configuration has no valid value for" << key << "but" << value;
}

/// Replaces "~/" at the beginning of a path with the home directory. Empty, with a warning, if the
/// path is not absolute.
QString pathOf(const QSettings& file, const QString& key)
{
    // Without quotes, a value with a comma becomes a list.
    const QString text = file.value(key).toStringList().join(QLatin1String(", "));
    QString path = text.startsWith(QLatin1String("~/")) ? QDir::homePath() + text.mid(1) : text;
    if (!path.isEmpty() && !path.startsWith(QLatin1Char('/'))) {
        warnOfValue(key, text);
        return {};
    }
    return path;
}

bool readFlag(const QSettings& file, const QString& key, const QString& yes, const QString& no)
{
    const QString value = file.value(key, no).toString();
    if (value != yes && value != no) {
        warnOfValue(key, value);
    }
    return value == yes;
}

int readLimit(const QSettings& file, const QString& key)
{
    constexpr int largest = 600;
    bool isNumber = false;
    const int value =
        file.value(key, BridgeConfiguration::DefaultHookLimitSeconds).toInt(&isNumber);
    if (!isNumber || value < 1 || value > largest) {
        warnOfValue(key, file.value(key).toString());
        return BridgeConfiguration::DefaultHookLimitSeconds;
    }
    return value;
}

} // namespace

QString settingName(AdapterSetting setting)
{
    switch (setting) {
    case AdapterSetting::Auto:
        return QStringLiteral("auto");
    case AdapterSetting::On:
        return QStringLiteral("on");
    case AdapterSetting::Off:
        return QStringLiteral("off");
    }
    Q_UNREACHABLE();
}

QString BridgeConfiguration::userFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/moodset/bridge.conf");
}

BridgeConfiguration BridgeConfiguration::read(const QString& path)
{
    BridgeConfiguration configuration;
    QSettings file(path, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    if (file.status() != QSettings::NoError) {
        qWarning() << "The configuration cannot be read:" << path;
    }

    file.beginGroup(QStringLiteral("adapters"));
    const QStringList names = file.childKeys();
    for (const QString& name : names) {
        const QString value = file.value(name).toString();
        const std::optional<AdapterSetting> setting = settingFromName(value);
        if (setting) {
            configuration.adapters.insert(name, *setting);
        } else {
            warnOfValue(name, value);
        }
    }
    file.endGroup();

    configuration.keepsSilent = readFlag(
        file, QStringLiteral("feedbackd/silent"), QStringLiteral("silent"),
        QStringLiteral("quiet"));
    configuration.hook = pathOf(file, QStringLiteral("files/hook"));
    configuration.hookLimitSeconds = readLimit(file, QStringLiteral("files/hook-limit"));

    const QStringList groups = file.childGroups();
    for (const QString& group : groups) {
        if (group.startsWith(QLatin1String("template-"))) {
            const TemplateFile entry{
                pathOf(file, group + QStringLiteral("/source")),
                pathOf(file, group + QStringLiteral("/target"))};
            if (entry.source.isEmpty() || entry.target.isEmpty()) {
                qWarning() << "The configuration names no source or no target in" << group;
            } else {
                configuration.templates.append(entry);
            }
        }
    }
    return configuration;
}

AdapterSetting BridgeConfiguration::adapter(const QString& name) const
{
    // Files of the user are written only if the user asks for it.
    return adapters.value(
        name, name == QLatin1String("files") ? AdapterSetting::Off : AdapterSetting::Auto);
}
