// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "adapter.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// Settings of other programs in the key/value store, by their keys. All of them are texts.
///
/// The schemas of the programs are not opened, because a missing schema would end the process.
/// Names that do not begin with "/" are not keys, and are ignored.
namespace StoreTexts {

/// The user's own value; null if there is none, or if it is not a text.
QJsonValue userValue(const QString& key);

/// Waits, for a few seconds at most, until the store has dealt with what other processes have asked
/// of it before, also those that have been killed since.
void settle();

/// Waits until the store has what this process has written.
void flush();

/// Sets the values in one step, and clears those that are null. Returns what went wrong, or an
/// empty text.
QString write(const QJsonObject& values);

/// Adds the user's present values under the keys of the plan to the saved values. A value that
/// begins with `ownBeginning` counts as set by the adapter, even if it is not in the record.
QJsonObject saveUserValues(
    const QJsonObject& plan, const AdapterRecord& record, const QString& ownBeginning);

/// Says which key does not have the planned value; empty if all have it.
QString difference(const QJsonObject& plan);

/// Restores the saved values of the keys that still have the values of the adapter. Returns what
/// went wrong, or an empty text.
QString restore(const AdapterRecord& record);

} // namespace StoreTexts
