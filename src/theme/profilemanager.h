// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "profilevalues.h"

#include <QQmlParserStatus>

/// The values of a profile for QML, which sets the properties before the object is complete. The
/// daemon uses ProfileValues: Qt Qml, which this class needs, would take 1.1 MiB of its memory.
class ProfileManager : public ProfileValues, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
public:
    using ProfileValues::ProfileValues;

    void classBegin() override;

    /// Makes the profile the active one if activateProfileOnChange() is true.
    void componentComplete() override;
};
