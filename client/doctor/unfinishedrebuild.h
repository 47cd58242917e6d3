// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The edits that a rebuild saves before anything else, in a file in the user's state directory.
/// The name of the file tells whether the edits have been restored, so nothing is lost if a rebuild
/// is interrupted.
namespace UnfinishedRebuild {

/// The path for the edits of a rebuild that begins now.
QString newPath();

/// The path of the edits of the last rebuild that was interrupted. Empty if there is none.
QString find();

/// Renames a file whose edits have been restored, so that it belongs to a finished rebuild, and
/// returns the new path. Files with other names are not renamed.
QString finish(const QString& path);

} // namespace UnfinishedRebuild
