// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetsettings.h"

MoodsetSettings::MoodsetSettings(QObject* parent)
    : QObject(parent)
    , m_source(QStringLiteral("/desktop/tuvalo/background/portrait/picture_filename"))
    , m_applicationImage(QStringLiteral("/desktop/zavro/background/portrait/app_picture_filename"))
    , m_homeImage(QStringLiteral("/desktop/zavro/background/portrait/home_picture_filename"))
{
    connect(&m_source, &MGConfItem::valueChanged, this, &MoodsetSettings::sourceChanged);
    connect(
        &m_applicationImage, &MGConfItem::valueChanged, this,
        &MoodsetSettings::applicationImageChanged);
    connect(&m_homeImage, &MGConfItem::valueChanged, this, &MoodsetSettings::homeImageChanged);
}

QUrl MoodsetSettings::source() const
{
    return QUrl::fromLocalFile(m_source.value().toString());
}

void MoodsetSettings::setSource(const QUrl& url)
{
    m_source.set(url.toLocalFile());
}

QString MoodsetSettings::applicationImagePath() const
{
    return m_applicationImage.value().toString();
}

void MoodsetSettings::setApplicationImagePath(const QString& path)
{
    m_applicationImage.set(path);
}

QString MoodsetSettings::homeImagePath() const
{
    return m_homeImage.value().toString();
}

void MoodsetSettings::setHomeImagePath(const QString& path)
{
    m_homeImage.set(path);
}
