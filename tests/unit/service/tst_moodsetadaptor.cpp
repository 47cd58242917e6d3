// SPDX-License-Identifier: BSD-3-Clause
#include "service/moodsetadaptor.h"

#include <QFile>
#include <QMetaMethod>
#include <QMetaObject>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

namespace {

/// A description of an interface, one line for each element in it that matters to a client, in
/// document order. Comments, and annotations that hold documentation, do not.
QStringList outline(const QString& xml)
{
    QStringList lines;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement
            || reader.name() == QLatin1String("node")) {
            continue;
        }
        const QXmlStreamAttributes attributes = reader.attributes();
        const QString name = attributes.value(QLatin1String("name")).toString();
        if (name.endsWith(QLatin1String(".DocString"))) {
            continue;
        }
        QStringList line{reader.name().toString()};
        for (const char* const key : {"direction", "type", "name", "value"}) {
            if (attributes.hasAttribute(QLatin1String(key))) {
                line.append(attributes.value(QLatin1String(key)).toString());
            }
        }
        lines.append(line.join(QLatin1Char(' ')));
    }
    if (reader.hasError()) {
        QTest::qFail(qPrintable(reader.errorString()), __FILE__, __LINE__);
    }
    return lines;
}

QString classInfo(const char* name)
{
    const QMetaObject& type = MoodsetAdaptor::staticMetaObject;
    return QString::fromUtf8(type.classInfo(type.indexOfClassInfo(name)).value());
}

QStringList publicInterface()
{
    return {
        QStringLiteral("interface com.zavro.moodsetd"),
        QStringLiteral("method indexFile"),
        QStringLiteral("arg in s url"),
        QStringLiteral("method createMoodset"),
        QStringLiteral("arg in s url"),
        QStringLiteral("method setMoodset"),
        QStringLiteral("arg in s url"),
        QStringLiteral("method remove"),
        QStringLiteral("arg in i contentType"),
        QStringLiteral("arg in x contentId"),
        QStringLiteral("method installPackage"),
        QStringLiteral("arg in s path"),
        QStringLiteral("method saveAttributes"),
        QStringLiteral("arg in i contentType"),
        QStringLiteral("arg in x contentId"),
        QStringLiteral("arg in a{sv} args"),
        QStringLiteral("annotation org.qtproject.QtDBus.QtTypeName.In2 QVariantMap"),
        QStringLiteral("method refreshMoodsets"),
        QStringLiteral("signal contentChanged"),
        QStringLiteral("arg out i type")};
}

} // namespace

class MoodsetAdaptorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void introspectionIsThePublicInterface()
    {
        QCOMPARE(classInfo("D-Bus Interface"), QStringLiteral("com.zavro.moodsetd"));
        QCOMPARE(outline(classInfo("D-Bus Introspection")), publicInterface());
    }

    void installedDescriptionIsTheIntrospection()
    {
        QFile file(QStringLiteral(INTERFACE_DESCRIPTION));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));

        QCOMPARE(
            outline(QString::fromUtf8(file.readAll())), outline(classInfo("D-Bus Introspection")));
    }

    void everyMemberIsInTheIntrospection()
    {
        const QMetaObject& type = MoodsetAdaptor::staticMetaObject;
        QStringList members;
        for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
            const QMetaMethod member = type.method(i);
            const bool isSignal = member.methodType() == QMetaMethod::Signal;
            members.append(
                (isSignal ? QStringLiteral("signal ") : QStringLiteral("method "))
                + QString::fromLatin1(member.name()));
        }

        QStringList expected =
            publicInterface().filter(QRegularExpression(QStringLiteral("^(method|signal) ")));
        members.sort();
        expected.sort();
        QCOMPARE(members, expected);
    }
};

QTEST_GUILESS_MAIN(MoodsetAdaptorTest)

#include "tst_moodsetadaptor.moc"
