// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodsetitem.h"

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <QVariant>

class MGConfItem;

/// The current theme. It begins to follow the keys when one of its properties is read for the first
/// time. A colour that is not set is undefined.
class Theme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariant highlightColor READ highlightColor NOTIFY changed)
    Q_PROPERTY(QVariant secondaryHighlightColor READ secondaryHighlightColor NOTIFY changed)
    Q_PROPERTY(QVariant primaryColor READ primaryColor NOTIFY changed)
    Q_PROPERTY(QVariant secondaryColor READ secondaryColor NOTIFY changed)
    Q_PROPERTY(QUrl homeWallpaper READ homeWallpaper NOTIFY changed)
    Q_PROPERTY(QUrl applicationWallpaper READ applicationWallpaper NOTIFY changed)
    Q_PROPERTY(QUrl activeMoodset READ activeMoodset NOTIFY changed)
    Q_PROPERTY(QString activeName READ activeName NOTIFY activeNameChanged)
    Q_PROPERTY(int version READ version NOTIFY changed)

public:
    explicit Theme(QObject* parent = nullptr);
    ~Theme() override;

    QVariant highlightColor();
    QVariant secondaryHighlightColor();
    QVariant primaryColor();
    QVariant secondaryColor();

    /// The URLs of the wallpapers, which change when the files are replaced. Empty if no wallpaper
    /// is set.
    QUrl homeWallpaper();
    QUrl applicationWallpaper();

    /// The URL of the active moodset's file or picture; empty if there is none.
    QUrl activeMoodset();

    /// The name of the active moodset; empty if it is not in the library.
    QString activeName();

    /// A number that grows with each change of the theme, including the content of the wallpapers.
    int version();

Q_SIGNALS:
    void changed();
    void activeNameChanged();

private:
    struct Values
    {
        QVariant highlight;
        QVariant secondaryHighlight;
        QVariant primary;
        QVariant secondary;
        QUrl homeWallpaper;
        QUrl applicationWallpaper;
        QUrl activeMoodset;

        bool operator==(const Values& other) const;
    };

    static Values readValues();
    void follow();
    void update();
    void updateName();

    bool m_isFollowing = false;
    Values m_values;
    int m_version = 0;
    QString m_activeName;
    QTimer m_updateSoon;
    MoodsetItem m_active;
    std::shared_ptr<LibraryEvents> m_events;
};
