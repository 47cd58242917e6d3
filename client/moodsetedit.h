// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <moodsetdata.h>

class MoodsetService;

/// Changes to a moodset, as the attributes that the daemon takes.
namespace MoodsetEdit {

/// The keys that a user can edit.
QStringList keys();

/// Adds the change of "KEY=VALUE" to the attributes. Returns the reason in one line if the value is
/// wrong, and otherwise an empty text. The daemon itself would store any value unchecked.
QString add(QVariantMap* attributes, const QString& edit);

/// Makes the daemon save attributes of the moodset with this id, and checks the result. Returns the
/// reason of a failure in one line, or an empty text.
QString save(const MoodsetService& service, qint64 id, const QVariantMap& attributes);

} // namespace MoodsetEdit
