// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "jsonplaces.h"

#include <QJsonObject>
#include <QString>
#include <QVector>

/// A fault of a bundle's file.
struct Finding
{
    enum class Severity {
        Error, ///< The daemon refuses the file.
        Warning, ///< The moodset will not be what the file seems to say.
    };

    Severity severity = Severity::Error;
    QString file;
    JsonPlaces::Place place;
    QString text;
};

/// The faults of a moodset file or an index file, which its name tells. They are judged as the
/// daemon would read the file.
QVector<Finding> checkBundleFile(const QString& path);

/// The moodset files and index files at a path: the file itself, or those in the directory and in
/// all directories below it, sorted.
QStringList bundleFiles(const QString& path);

/// "FILE:LINE:COLUMN: error: what".
QString findingLine(const Finding& finding);

QJsonObject findingRecord(const Finding& finding);
