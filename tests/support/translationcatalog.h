// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QLocale>
#include <QString>

/// Installs one of the tests' translation catalogues in the system's directory while the object
/// lives:
/// - "seasons-de": "Autumn" is "Herbst", "Grün" is "Grünland", "Spring" is empty, and
///   the empty text is "Namenlos"
/// - "seasons_eng_en": "Autumn" is "Autumn (engineering)", "Winter" is "Winter (engineering)",
///   "Spring" is empty
/// - "weather-de": "Autumn" is "Herbstwetter"
///
/// Use it in the private machine. A catalogue that cannot be installed fails the current test.
class TranslationCatalog
{
public:
    explicit TranslationCatalog(const QString& name);
    ~TranslationCatalog();
    Q_DISABLE_COPY_MOVE(TranslationCatalog)

    /// Removes the catalogue early.
    void remove();

private:
    QString m_path;
};

/// Makes German the locale of the process while it lives.
class GermanLocale
{
public:
    GermanLocale() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    ~GermanLocale() { QLocale::setDefault(QLocale::system()); }
    Q_DISABLE_COPY_MOVE(GermanLocale)
};
