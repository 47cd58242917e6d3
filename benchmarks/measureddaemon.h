// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "measuredprocess.h"

#include <QByteArray>
#include <QString>

/// What a daemon logs when it is done with files, and with installed bundles; a number of
/// milliseconds follows.
extern const QByteArray FileIdleLine;
extern const QByteArray InstallIdleLine;

/// What a floor says when it is done; a number of milliseconds follows.
extern const QByteArray DoneLine;

/// The path of a program that is built beside this one.
QByteArray program(const char* name);

/// Where a daemon with this process's environment keeps its database.
QString daemonDatabase();

/// Removes a database that need not be there, with the files that SQLite keeps beside it.
void removeDatabase(const QString& path);

/// Makes a folder, which need not exist, the user's pictures folder.
void setPicturesFolder(const QString& folder);

/// Starts a daemon and waits for a line of its log.
MeasuredProcess startDaemon(const QByteArray& line);

/// The time since a process was started.
Milliseconds timeSinceStart(const MeasuredProcess& process);

/// Processor time of all threads once a process does nothing more.
Milliseconds settledProcessorTime(const MeasuredProcess& process);
