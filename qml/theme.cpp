// SPDX-License-Identifier: BSD-3-Clause
#include "theme.h"

#include "recordvalues.h"

#include <mgconfitem.h>

#include <QColor>

#include <colorstring.h>
#include <moodsetnames.h>

namespace ThemeKey = MoodsetNames::ThemeKey;

namespace {

QString text(const QLatin1String& key)
{
    return MGConfItem(key).value().toString();
}

QVariant color(const QLatin1String& key)
{
    const QColor color = colorFromString(text(key));
    return color.isValid() ? QVariant(color) : QVariant();
}

QUrl wallpaper(const QLatin1String& key)
{
    const QString path = text(key);
    return RecordValues::versionedUrl(path, RecordValues::stateOf(path));
}

} // namespace

bool Theme::Values::operator==(const Values& other) const
{
    return highlight == other.highlight && secondaryHighlight == other.secondaryHighlight
        && primary == other.primary && secondary == other.secondary
        && homeWallpaper == other.homeWallpaper
        && applicationWallpaper == other.applicationWallpaper
        && activeMoodset == other.activeMoodset;
}

Theme::Theme(QObject* parent)
    : QObject(parent)
{
    m_updateSoon.setSingleShot(true);
    m_updateSoon.setInterval(0);
    connect(&m_updateSoon, &QTimer::timeout, this, &Theme::update);
    connect(&m_active, &MoodsetItem::moodsetChanged, this, &Theme::updateName);
}

Theme::~Theme() = default;

QVariant Theme::highlightColor()
{
    follow();
    return m_values.highlight;
}

QVariant Theme::secondaryHighlightColor()
{
    follow();
    return m_values.secondaryHighlight;
}

QVariant Theme::primaryColor()
{
    follow();
    return m_values.primary;
}

QVariant Theme::secondaryColor()
{
    follow();
    return m_values.secondary;
}

QUrl Theme::homeWallpaper()
{
    follow();
    return m_values.homeWallpaper;
}

QUrl Theme::applicationWallpaper()
{
    follow();
    return m_values.applicationWallpaper;
}

QUrl Theme::activeMoodset()
{
    follow();
    return m_values.activeMoodset;
}

QString Theme::activeName()
{
    follow();
    return m_activeName;
}

int Theme::version()
{
    follow();
    return m_version;
}

Theme::Values Theme::readValues()
{
    Values values;
    values.highlight = color(ThemeKey::Highlight);
    values.secondaryHighlight = color(ThemeKey::SecondaryHighlight);
    values.primary = color(ThemeKey::Primary);
    values.secondary = color(ThemeKey::Secondary);
    values.homeWallpaper = wallpaper(ThemeKey::HomeWallpaper);
    values.applicationWallpaper = wallpaper(ThemeKey::ApplicationWallpaper);
    const QString active = text(ThemeKey::ActiveMoodset);
    values.activeMoodset = active.isEmpty() ? QUrl() : QUrl::fromLocalFile(active);
    return values;
}

void Theme::follow()
{
    if (m_isFollowing) {
        return;
    }
    m_isFollowing = true;
    for (const QLatin1String& key :
         {ThemeKey::Highlight, ThemeKey::SecondaryHighlight, ThemeKey::Primary, ThemeKey::Secondary,
          ThemeKey::HomeWallpaper, ThemeKey::ApplicationWallpaper, ThemeKey::ActiveMoodset}) {
        auto* const item = new MGConfItem(key, this);
        // The keys of one theme change together.
        connect(item, &MGConfItem::valueChanged, &m_updateSoon, qOverload<>(&QTimer::start));
    }
    m_values = readValues();
    m_active.setUrl(m_values.activeMoodset);
    m_active.componentComplete();
    // If a moodset is applied again, its wallpapers are written again, but no key changes.
    m_events = LibraryEvents::instance();
    connect(
        m_events.get(), &LibraryEvents::contentChanged, &m_updateSoon, qOverload<>(&QTimer::start));
}

void Theme::update()
{
    const Values values = readValues();
    if (values == m_values) {
        return;
    }
    m_values = values;
    ++m_version;
    m_active.setUrl(values.activeMoodset);
    Q_EMIT changed();
}

void Theme::updateName()
{
    const ContentRow& row = m_active.row();
    const QString name = row.content.isValid()
        ? RecordValues::value(row, RecordValues::NameRole).toString()
        : QString();
    if (name != m_activeName) {
        m_activeName = name;
        Q_EMIT activeNameChanged();
    }
}
