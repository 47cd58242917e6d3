// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "mgconfitem.h"

#include <QObject>
#include <QUrl>

/// What was last asked for as the background, and the two wallpapers that were built for it, as the
/// key/value store has them. A moodset that was asked for is named by its file, and is the active
/// one.
///
/// Nothing is cached, and the signals follow the store, whoever writes to it: a setter's own signal
/// comes from the event loop, like that of a write of another process.
class MoodsetSettings : public QObject
{
    Q_OBJECT
public:
    explicit MoodsetSettings(QObject* parent = nullptr);

    /// The file of the moodset or the picture, an empty URL if there is none.
    QUrl source() const;

    /// Stores the local path of `url`, an empty text if it has none.
    void setSource(const QUrl& url);

    /// The path of the wallpaper behind applications, empty if there is none.
    QString applicationImagePath() const;
    void setApplicationImagePath(const QString& path);

    /// The path of the home screen's wallpaper, empty if there is none.
    QString homeImagePath() const;
    void setHomeImagePath(const QString& path);

Q_SIGNALS:
    void sourceChanged();
    void applicationImageChanged();
    void homeImageChanged();

private:
    MGConfItem m_source;
    MGConfItem m_applicationImage;
    MGConfItem m_homeImage;
};
