// SPDX-License-Identifier: BSD-3-Clause
#include "text.h"

#include <QLocale>
#include <QTextCodec>
#include <QTranslator>

#include <cstring>
#include <langinfo.h>

QString numbered(int number, const char* singular, const char* plural)
{
    return Text::tr(number == 1 ? singular : plural).arg(number);
}

void assumeUtf8()
{
    if (std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
}

void installTranslation(QCoreApplication* application, const char* catalog)
{
    const QLocale::Language language = QLocale().language();
    if (language == QLocale::English
        || (language == QLocale::C && qEnvironmentVariableIsEmpty("LANGUAGE"))) {
        return;
    }
    auto* const translator = new QTranslator(application);
    const QString wanted = language == QLocale::C
        ? qEnvironmentVariable("LANGUAGE").section(QLatin1Char(':'), 0, 0)
        : QLocale().name();
    if (translator->load(
            QStringLiteral(":/translations/%1-%2").arg(QLatin1String(catalog), wanted))) {
        QCoreApplication::installTranslator(translator);
    }
}
