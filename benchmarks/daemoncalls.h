// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "measuredprocess.h"

#include <QDBusMessage>
#include <QString>
#include <QVariantList>

/// A call of the daemon's object.
QDBusMessage daemonCall(
    const QString& method, const QVariantList& arguments = {},
    const QString& interface = QStringLiteral("com.zavro.moodsetd"));

/// A call of the daemon that does nothing.
QDBusMessage emptyCall();

/// Makes a call, and gives the time until its reply. Ends this process if it fails.
Milliseconds call(const QDBusMessage& message);
