// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "profilevalues.h"

#include <QQmlParserStatus>

/// The values of a profile for QML, which sets the properties before the object counts as complete.
/// The daemon uses ProfileValues, because this class needs Qt Qml, which would take more memory
/// than any other of the daemon's libraries but Qt Core.
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
