// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The edits that a rebuild saves first, in a file of the user's state folder. Its name tells
/// whether they have been put back, so that nothing is lost where a rebuild is cut short.
namespace UnfinishedRebuild {

/// Where a rebuild that begins now saves the edits.
QString newPath();

/// The edits of the last rebuild that was interrupted; empty if there are none.
QString find();

/// Gives the file of edits that have been put back the name of a finished rebuild, and returns its
/// path. A file of any other name stays as it is.
QString finish(const QString& path);

} // namespace UnfinishedRebuild
