// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "playedservice.h"

#include <QString>

/// Plays the shell of GNOME on the bus. It reads no keys: the functions below say what a real one
/// would show.
class GnomeShell : public PlayedService
{
public:
    GnomeShell();
};

/// The path of the picture that the shell should show; empty if there is none.
QString shownPicture();

/// Whether the shell should show a copy of the present content of the file.
bool showsCopyOf(const QString& path);

/// Waits until the shell has this accent colour.
Q_REQUIRED_RESULT bool hasAccent(const QString& name);
