// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// Settings of other programs in the key/value store, all of them texts, by their keys.
///
/// The programs' schemas are not opened: a schema that is not installed would end the process.
/// Names that do not begin with "/" are no keys, and are passed over.
namespace StoreTexts {

/// The user's own value; null if there is none, or none that is a text.
QJsonValue userValue(const QString& key);

/// Waits, for a few seconds at most, until the store has dealt with what other processes have asked
/// of it before, also those that have been killed since.
void settle();

/// Sets the values in one step, and clears those that are null. Returns what went wrong, or an
/// empty text.
QString write(const QJsonObject& values);

/// The saved values with those that the user has now under the plan's keys. A value that begins
/// with `ownBeginning` is taken for the adapter's own even if the record does not know it.
QJsonObject saveUserValues(
    const QJsonObject& plan, const AdapterRecord& record, const QString& ownBeginning);

/// Says which key does not have the planned value; empty if all have.
QString difference(const QJsonObject& plan);

/// Brings back the saved values where the adapter's own still are. Returns what went wrong, or an
/// empty text.
QString restore(const AdapterRecord& record);

} // namespace StoreTexts
