// SPDX-License-Identifier: BSD-3-Clause
#include "interfaceoutline.h"

#include "failunless.h"

#include <QXmlStreamReader>

QStringList interfaceOutline(const QString& xml)
{
    QStringList lines;
    QXmlStreamReader reader(xml);
    reader.readNextStartElement();
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = reader.attributes();
        if (attributes.value(QLatin1String("name")).endsWith(QLatin1String(".DocString"))) {
            continue;
        }
        QStringList words{reader.name().toString()};
        for (const char* const key : {"direction", "type", "name", "access", "value"}) {
            if (attributes.hasAttribute(QLatin1String(key))) {
                words.append(attributes.value(QLatin1String(key)).toString());
            }
        }
        lines.append(words.join(QLatin1Char(' ')));
    }
    failUnless(!reader.hasError(), qPrintable(reader.errorString()));
    return lines;
}
