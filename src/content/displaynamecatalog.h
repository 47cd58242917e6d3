// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QTranslator>

/// Translates the display names of packaged content with the package's catalogue, for the locale of
/// the process, and into engineering English where that has nothing.
class DisplayNameCatalog
{
public:
    /// Loads the catalogue of a name, or none for an empty name. Loading the one that is loaded
    /// costs nothing. A catalogue that is missing leaves all names as they are.
    void load(const QString& name);

    /// The translation of `source`, or `source` itself.
    QString translated(const QString& source) const;

private:
    QString m_name;
    QTranslator m_engineeringTranslator;
    QTranslator m_localeTranslator;
    bool m_isLoaded = false;
};
