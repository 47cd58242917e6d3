// SPDX-License-Identifier: BSD-3-Clause
#include "translationcatalog.h"

#include <QFile>
#include <QTest>

TranslationCatalog::TranslationCatalog(const QString& name)
    : m_path(QStringLiteral("/usr/share/translations/%1.qm").arg(name))
{
    QFile catalog(QStringLiteral(TEST_CATALOGS "/%1.qm").arg(name));
    if (!catalog.copy(m_path)) {
        const QString reason = QStringLiteral("%1: %2").arg(m_path, catalog.errorString());
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
    }
}

TranslationCatalog::~TranslationCatalog()
{
    remove();
}

void TranslationCatalog::remove()
{
    QFile::remove(m_path);
}
