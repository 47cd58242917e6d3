// SPDX-License-Identifier: BSD-3-Clause
#include "displaynamecatalog.h"

#include <QLocale>

namespace {

QString translate(const QTranslator& translator, const QByteArray& source)
{
    return translator.translate(nullptr, source.constData(), nullptr, -1);
}

} // namespace

void DisplayNameCatalog::load(const QString& name)
{
    if (name == m_name) {
        return;
    }
    m_name = name;
    m_isLoaded = false;
    // Looking for a file whose name has a NUL in it is a warning of the platform's.
    if (name.isEmpty() || name.contains(QChar::Null)) {
        return;
    }
    const QString directory = QStringLiteral("/usr/share/translations/");
    // Null texts, since empty ones would keep every catalogue from being found.
    const bool hasEngineering = m_engineeringTranslator.load(
        name + QStringLiteral("_eng_en"), directory, QString(), QString());
    const bool hasLocale =
        m_localeTranslator.load(QLocale(), name, QStringLiteral("-"), directory, QString());
    m_isLoaded = hasEngineering || hasLocale;
}

QString DisplayNameCatalog::translated(const QString& source) const
{
    if (!m_isLoaded) {
        return source;
    }
    const QByteArray text = source.toUtf8();
    QString translation = translate(m_localeTranslator, text);
    if (translation.isEmpty()) {
        translation = translate(m_engineeringTranslator, text);
    }
    return translation.isEmpty() ? source : translation;
}
