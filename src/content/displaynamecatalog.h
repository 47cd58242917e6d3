// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>
#include <QTranslator>

/// Translates the display names of packaged content with the package's catalogue: into the language
/// of the process's locale, or into engineering English if that has no translation.
class DisplayNameCatalog
{
public:
    /// Loads the catalogue with this name, or none if the name is empty. Loading the same catalogue
    /// again costs nothing. If a catalogue is missing or damaged, all names stay as they are; if it
    /// is too large, a warning is logged as well.
    void load(const QString& name);

    /// The translation of `source`, or `source` itself.
    QString translated(const QString& source) const;

private:
    /// A translator and the data that it reads.
    class Catalog
    {
    public:
        bool load(const QByteArray& file);
        QString translated(const QByteArray& source) const;

    private:
        QByteArray m_bytes;
        QTranslator m_translator;
    };

    QString m_name;
    Catalog m_engineering;
    Catalog m_locale;
    bool m_isLoaded = false;
};
