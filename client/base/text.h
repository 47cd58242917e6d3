// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCoreApplication>
#include <QString>

/// The translation context of all texts of the client: Text::tr("...").
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Text)
};

/// The singular or the plural of a translated text, with `number` in place of its "%1".
QString numbered(int number, const char* singular, const char* plural);

/// Makes the encoding of texts UTF-8 where the locale is not installed. Names and texts are nearly
/// always in it.
void assumeUtf8();

/// Makes a program use the language of the environment, if the built-in catalogue of this name has
/// it.
void installTranslation(QCoreApplication* application, const char* catalog = "moodsetctl");
