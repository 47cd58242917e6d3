// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "mgconfitem.h"

#include <QObject>
#include <QUrl>

/// The source of the background and the two wallpapers that were made for it, as the key/value
/// store has them. If the source is a moodset, it is named by its file and is the active moodset.
///
/// Nothing is cached. The signals follow the store, whoever writes to it. The signal after a setter
/// comes from the event loop, as it does after a write of another process.
class MoodsetSettings : public QObject
{
    Q_OBJECT
public:
    explicit MoodsetSettings(QObject* parent = nullptr);

    /// The file of the moodset or picture. An empty URL if there is none.
    QUrl source() const;

    /// Stores the local path of `url`, or an empty text if it has none.
    void setSource(const QUrl& url);

    /// The path of the wallpaper behind applications, or an empty text.
    QString applicationImagePath() const;
    void setApplicationImagePath(const QString& path);

    /// The path of the home screen's wallpaper, or an empty text.
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
