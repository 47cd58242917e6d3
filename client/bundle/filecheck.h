// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bundlecheck.h"

#include <QByteArray>
#include <QDir>
#include <QJsonObject>

#include <memory>

/// Checks one file of a bundle.
class FileCheck
{
public:
    explicit FileCheck(const QString& path);

    void checkMoodset();
    void checkIndex();

    /// Adds what was found about the value at a path in the file; see JsonPlaces::value().
    void add(Finding::Severity severity, const QString& place, const QString& text);
    QVector<Finding> findings() const { return m_findings; }

private:
    bool read();
    void warn(const QString& place, const QString& text);
    void checkName(const QString& place, const QString& name);
    void checkKeys(const QString& place, const QJsonObject& object, const QStringList& known);
    void checkWallpaper();
    void checkNumbers();
    void checkColors();
    void checkTexts();
    void checkTone(const QString& key);
    void checkIndexEntry(int index, const QDir& folder, QStringList* seen);

    QString m_path;
    QDir m_folder;
    QByteArray m_text;
    QJsonObject m_object;
    std::unique_ptr<JsonPlaces> m_places;
    QVector<Finding> m_findings;
};
