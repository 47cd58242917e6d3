// SPDX-License-Identifier: BSD-3-Clause
#include "service/moodsetadaptor.h"

#include "interfaceoutline.h"

#include <QFile>
#include <QMetaMethod>
#include <QMetaObject>
#include <QRegularExpression>
#include <QTest>

namespace {

QString classInfo(const char* name)
{
    const QMetaObject& type = MoodsetAdaptor::staticMetaObject;
    return QString::fromUtf8(type.classInfo(type.indexOfClassInfo(name)).value());
}

/// The introspection of the adaptor on the bus, inside a node.
QStringList introspection()
{
    return interfaceOutline(
        QStringLiteral("<node>%1</node>").arg(classInfo("D-Bus Introspection")));
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
        QCOMPARE(introspection(), publicInterface());
    }

    void installedDescriptionIsTheIntrospection()
    {
        QFile file(QStringLiteral(INTERFACE_DESCRIPTION));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));

        QCOMPARE(interfaceOutline(QString::fromUtf8(file.readAll())), introspection());
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
