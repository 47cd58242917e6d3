// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "measuredprocess.h"

#include <QByteArray>
#include <QString>

/// What a daemon logs when it is done with files, and with installed bundles; a number of
/// milliseconds follows.
extern const QByteArray FileIdleLine;
extern const QByteArray InstallIdleLine;

/// The line that a floor prints when it is done. A number of milliseconds follows.
extern const QByteArray DoneLine;

/// The path of a program that is built beside this one.
QByteArray program(const char* name);

/// The path of the database of a daemon with this process's environment.
QString daemonDatabase();

/// Removes a database that need not be there, with the files that SQLite keeps beside it.
void removeDatabase(const QString& path);

/// Makes a folder, which need not exist, the user's pictures folder.
void setPicturesFolder(const QString& folder);

/// Starts the program of a daemon and waits for a line of its log.
MeasuredProcess startDaemon(const QByteArray& line, const QByteArray& daemon = program("moodsetd"));

/// The time since a process was started.
Milliseconds timeSinceStart(const MeasuredProcess& process);

/// The processor time of all threads, after the process has come to rest.
Milliseconds settledProcessorTime(const MeasuredProcess& process);
