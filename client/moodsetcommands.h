// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

// What the client can do with moodsets. As with commands.h, each function returns the exit status
// of the process, and has said on the standard error what went wrong if that is not 0.
//
// The daemon's replies do not tell how a call went, so each function looks at what has come of it.

/// Prints the table of all moodsets.
int showMoodsets();

/// Makes active what is named by a path, a URL, or the id or name of a moodset. What comes of a
/// picture on the network is not waited for.
int setMoodset(const QString& source);

/// Has a moodset made of a picture, a path or a URL. A picture on the network is not waited for.
int createMoodset(const QString& picture);

/// Makes the moodset of an id or name a favourite, or no longer one.
int setFavorite(const QString& moodset, bool favorite);

/// Removes the moodset of an id or name from the library; its file stays.
int removeMoodset(const QString& moodset);

/// Has the moodset and index files of a package's folder read, and waits until they are.
int installPackage(const QString& folder);

/// Has the folders where packages are installed looked through. Does not wait.
int refreshMoodsets();
