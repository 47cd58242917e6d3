// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QQmlExtensionPlugin>

/// The QML module Moodset.
class MoodsetPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char* uri) override;
    void initializeEngine(QQmlEngine* engine, const char* uri) override;
};
