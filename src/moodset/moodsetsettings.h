// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QUrl>
#include <mgconfitem.h>

/// What was last asked for as the background, and the two wallpapers that were built for it, as
/// three keys of the key/value store.
///
/// For a moodset the source is the moodset's file, which is how the active moodset is known.
/// Nothing is cached, and a change by another process is told of like one made here.
class MoodsetSettings : public QObject
{
    Q_OBJECT

public:
    explicit MoodsetSettings(QObject* parent);

    /// A file URL; empty while the key is not set.
    QUrl source() const;
    /// Stores the local path of `url`, which is empty for a URL that is not local.
    void setSource(const QUrl& url);

    /// Local paths; empty while the key is not set.
    QString applicationImagePath() const;
    void setApplicationImagePath(const QString& path);
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
