// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "library.h"
#include "photo.h"

#include <QString>
#include <QVector>

/// The size of photo, or what there is instead: "waiting", "unreadable" or "unknown".
QString displaySize(const Photo& photo);

/// When photo was taken, or "-".
QString displayTaken(const Photo& photo);

/// The orientation of photo, or "-".
QString displayOrientation(const Photo& photo);

/// A table of photos, one to a line, below a line of titles; columns are as wide as their
/// content. Empty without photos.
QString photoTable(const QVector<Photo>& photos, const QString& folder);

/// One line that sums up what the database holds.
QString summaryLine(const Library::Counts& counts, const QVector<Photo>& photos);
