// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The candidate that a mistyped word most likely means. Empty if none is similar.
QString nearest(const QString& word, const QStringList& candidates);

/// "; did you mean X?" for the nearest candidate; empty if there is none.
QString didYouMean(const QString& word, const QStringList& candidates);

/// The same; if there is none, "; see COMMAND" for the command that shows all candidates.
QString didYouMean(const QString& word, const QStringList& candidates, const QString& command);
