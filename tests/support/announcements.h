// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVector>

/// Replaces the service object while it lives, and records the content types for which managers
/// announce changes.
class Announcements
{
public:
    Announcements();
    ~Announcements();
    Q_DISABLE_COPY_MOVE(Announcements)

    /// The types since the last call, in their order.
    static QVector<int> take();
};
