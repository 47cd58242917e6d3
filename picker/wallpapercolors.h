// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QFutureWatcher>
#include <QObject>
#include <QUrl>
#include <QVariantList>

#include <vector>

/// Judges the colours of a moodset with its wallpapers: how well a colour can be read on them, and
/// which highlight colours match them. The pictures are read in the background.
class WallpaperColors : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QUrl homeWallpaper READ homeWallpaper WRITE setHomeWallpaper NOTIFY wallpapersChanged)
    Q_PROPERTY(QUrl applicationWallpaper READ applicationWallpaper WRITE setApplicationWallpaper
                   NOTIFY wallpapersChanged)
    Q_PROPERTY(bool ready READ isReady NOTIFY readyChanged)
    Q_PROPERTY(QVariantList candidates READ candidates NOTIFY readyChanged)

public:
    /// The smallest contrast of text that the Web Content Accessibility Guidelines (AA) allow.
    static constexpr qreal EnoughContrast = 4.5;

    explicit WallpaperColors(QObject* parent = nullptr);
    ~WallpaperColors() override;

    QUrl homeWallpaper() const { return m_home; }
    void setHomeWallpaper(const QUrl& url);
    QUrl applicationWallpaper() const { return m_application; }
    void setApplicationWallpaper(const QUrl& url);

    /// Whether at least one of the wallpapers has been read.
    bool isReady() const { return !m_surfaces.empty(); }

    /// Highlight colours that match the picture: colours of the picture, and their harmonies.
    QVariantList candidates() const { return m_candidates; }

    /// The lower of the contrasts of a colour on the two wallpapers, from 1 to 21; 0 until they
    /// have been read.
    Q_INVOKABLE qreal contrast(const QVariant& color) const;
    Q_INVOKABLE bool isEnough(const QVariant& color) const;

    /// The colour nearest to `color` with enough contrast; it is lighter, darker or less
    /// translucent. If none has enough contrast, the one with the most.
    Q_INVOKABLE QColor mended(const QVariant& color) const;

Q_SIGNALS:
    void wallpapersChanged();
    void readyChanged();

private:
    struct Reading
    {
        std::vector<QColor> surfaces;
        QVariantList candidates;
    };

    static Reading read(const QUrl& home, const QUrl& application);
    void readSoon();
    void take();

    QUrl m_home;
    QUrl m_application;
    std::vector<QColor> m_surfaces;
    QVariantList m_candidates;
    bool m_isScheduled = false;
    QFutureWatcher<Reading> m_reading;
};
