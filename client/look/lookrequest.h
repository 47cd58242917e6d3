// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>

/// Handles a request of moodsetctl and returns the reply. The key "do" names the task:
///
/// - "check": checkPicture() of "path".
/// - "probe": probeAddress() of "url" for "timeoutMs".
/// - "colors": the colours that a moodset of the picture "path" would have, under "colors", and
///   their contrasts under "contrasts", or {"fault": "unreadable"}. The wallpapers are written to
///   "homeOutput" and "applicationOutput" where these are given; the "fault" may be "unwritable".
/// - "preview": writes a preview to "output", of "name", with "colors" in place of those that the
///   picture gives; of the picture "path", of the "kind" "picture", "bundle" or "legacy", unless
///   "homeWallpaper" and "applicationWallpaper" can be read. A "fault" names the file, under
///   "detail", that is "unreadable" or "unwritable".
QJsonObject answerLookRequest(const QJsonObject& request);
