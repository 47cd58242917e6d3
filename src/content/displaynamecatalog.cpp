// SPDX-License-Identifier: BSD-3-Clause
#include "displaynamecatalog.h"

#include "contextfreecatalog.h"
#include "packagedfile.h"

#include <QLocale>
#include <QStringList>

#include <climits>

namespace {

const QLatin1String Directory("/usr/share/translations/");

/// Appends the names of a catalogue's file: the full `name`, and shorter ones without its last
/// parts. Each part follows one of `delimiters`.
void appendNames(QString name, const QString& prefix, const char* delimiters, QStringList* names)
{
    int end = name.size();
    while (end > 0) {
        name.truncate(end);
        *names << prefix + name + QLatin1String(".qm") << prefix + name;
        end = 0;
        for (const char* delimiter = delimiters; *delimiter != '\0'; ++delimiter) {
            end = qMax(end, name.lastIndexOf(QLatin1Char(*delimiter)));
        }
    }
}

/// The files that QTranslator::load() tries for a catalogue's name alone, in its order.
QStringList engineeringNames(const QString& catalog)
{
    QStringList names;
    appendNames(catalog + QLatin1String("_eng_en"), QString(), "_.", &names);
    return names;
}

/// The files that QTranslator::load() tries for a locale's catalogue with the prefix "-", in its
/// order.
QStringList localeNames(const QString& catalog)
{
    const QString prefix = catalog + QLatin1Char('-');
    QStringList names;
    const QStringList languages = QLocale().uiLanguages();
    for (QString language : languages) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        appendNames(language, prefix, "_", &names);
        appendNames(language.toLower(), prefix, "_", &names);
    }
    names << prefix << catalog;
    names.removeDuplicates();
    return names;
}

/// The content of the first file that exists.
QByteArray readFirst(const QStringList& names)
{
    for (const QString& name : names) {
        const bool isAbsolute = name.startsWith(QLatin1Char('/'));
        const PackagedFile file = PackagedFile::read(isAbsolute ? name : Directory + name);
        if (file.state != PackagedFile::NotReadable) {
            return file.content;
        }
    }
    return {};
}

} // namespace

void DisplayNameCatalog::load(const QString& name)
{
    if (name == m_name) {
        return;
    }
    m_name = name;
    m_isLoaded = false;
    // No file can have a name with a NUL, but another file may have the part before it. A very long
    // name would give too many names to try.
    if (name.isEmpty() || name.contains(QChar::Null) || name.size() > PATH_MAX) {
        return;
    }
    const bool hasEngineering = m_engineering.load(readFirst(engineeringNames(name)));
    const bool hasLocale = m_locale.load(readFirst(localeNames(name)));
    m_isLoaded = hasEngineering || hasLocale;
}

QString DisplayNameCatalog::translated(const QString& source) const
{
    if (!m_isLoaded) {
        return source;
    }
    const QByteArray text = source.toUtf8();
    QString translation = m_locale.translated(text);
    if (translation.isEmpty()) {
        translation = m_engineering.translated(text);
    }
    return translation.isEmpty() ? source : translation;
}

bool DisplayNameCatalog::Catalog::load(const QByteArray& file)
{
    m_bytes = contextFreeCatalog(file);
    return m_translator.load(reinterpret_cast<const uchar*>(m_bytes.constData()), m_bytes.size());
}

QString DisplayNameCatalog::Catalog::translated(const QByteArray& source) const
{
    return m_translator.translate(nullptr, source.constData(), nullptr, -1);
}
