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

/// Adds what "KEY=VALUE" asks for to the attributes. Returns why it makes no sense, in one line, or
/// an empty text: the daemon would store a mistyped value as it comes.
QString add(QVariantMap* attributes, const QString& edit);

/// Makes the daemon save attributes of the moodset with this id, and checks the result. Returns the
/// reason of a failure in one line, or an empty text.
QString save(const MoodsetService& service, qint64 id, const QVariantMap& attributes);

} // namespace MoodsetEdit
