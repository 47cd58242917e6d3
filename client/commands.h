// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

// What the client can do with pictures. Each function returns the exit status of the process, and
// has said on the standard error what went wrong if that is not 0. They need an application object.

/// Prints the table of all pictures and a summary. With watch, goes on as watchPhotos() does.
int showPhotos(const QString& folder, bool watch);

/// Prints changes to the pictures as they come, until the daemon ends, which is an error.
int watchPhotos(const QString& folder);

/// Waits until the daemon is idle, which log, the path of its log, helps to know. See IdleWait.
int waitForIdle(const QString& log, bool progress);

/// Has a picture, a path or a file URL, indexed, and waits until the database has its data. It is
/// an error if that is no picture that can be read.
int indexPicture(const QString& picture);

/// Prints the reason of a failure in one line, and returns the exit status of a failure.
int fail(const QString& reason);

/// Prints that the daemon is not running, and returns the exit status of a failure.
int failNotRunning();
