// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "failunless.h"
#include "interfaceoutline.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

namespace {

const QLatin1String InterfaceName("com.zavro.moodsetd");

/// The lines of an outline that describe the daemon's interface, without the line with its name.
QStringList daemonInterface(const QStringList& outline)
{
    const int start = outline.indexOf(QStringLiteral("interface ") + InterfaceName) + 1;
    const int end = outline.indexOf(QRegularExpression(QStringLiteral("^interface .*")), start);
    return start == 0 ? QStringList() : outline.mid(start, end < 0 ? -1 : end - start);
}

/// The members of an interface ("method get", "signal changed") in their order.
QStringList memberNames(const QStringList& interface)
{
    return interface.filter(QRegularExpression(QStringLiteral("^(method|signal|property) ")));
}

/// Each member with its arguments and annotations, in their order.
QMap<QString, QStringList> membersOf(const QStringList& interface)
{
    const QStringList names = memberNames(interface);
    QMap<QString, QStringList> members;
    QString current;
    for (const QString& line : interface) {
        if (names.contains(line)) {
            current = line;
            members.insert(line, {});
        } else {
            members[current].append(line);
        }
    }
    return members;
}

/// The rows of the page's tables that show a member: its name, and its arguments as
/// "`i` contentType, `x` contentId".
QMap<QString, QString> rowsOfPage(const QString& page)
{
    QMap<QString, QString> rows;
    const QRegularExpression row(
        QStringLiteral("^\\| `(\\w+)` \\| ([^|]*?) *\\|"), QRegularExpression::MultilineOption);
    for (auto match = row.globalMatch(page); match.hasNext();) {
        const QRegularExpressionMatch cells = match.next();
        rows.insert(cells.captured(1), cells.captured(2));
    }
    return rows;
}

/// The same rows, made from an interface.
QMap<QString, QString> rowsOfInterface(const QStringList& interface)
{
    const QMap<QString, QStringList> members = membersOf(interface);
    QMap<QString, QString> rows;
    for (auto member = members.begin(); member != members.end(); ++member) {
        QStringList arguments;
        for (const QString& line : member.value()) {
            const QStringList words = line.split(QLatin1Char(' '));
            if (words.constFirst() == QLatin1String("arg")) {
                arguments.append(QStringLiteral("`%1` %2").arg(words.at(2), words.at(3)));
            }
        }
        rows.insert(member.key().section(QLatin1Char(' '), 1), arguments.join(QLatin1String(", ")));
    }
    return rows;
}

QString textOf(const QString& path)
{
    QFile file(path);
    failUnless(file.open(QIODevice::ReadOnly), qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

} // namespace

/// Compares the documents about the interface with the introspection of the running daemon.
class IntrospectionTest : public QObject
{
    Q_OBJECT

private:
    QStringList m_daemonsOutline;
    QStringList m_daemons;
    QStringList m_documented;

private Q_SLOTS:
    void initTestCase()
    {
        DaemonSession session;
        QVERIFY(session.startOnBus());
        const QDBusMessage reply = BusClient::callObject(
            QStringLiteral("/com/zavro/moodsetd"),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
        m_daemonsOutline = interfaceOutline(reply.arguments().value(0).toString());
        m_daemons = daemonInterface(m_daemonsOutline);

        m_documented =
            daemonInterface(interfaceOutline(textOf(QStringLiteral(INTERFACE_DESCRIPTION))));
    }

    void listsTheInterfaceInItsOrder()
    {
        const QStringList expected{
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
            QStringLiteral("arg out i type"),
        };
        QCOMPARE(m_daemons, expected);
    }

    void goesOnWithTheStandardInterfacesOnly()
    {
        const QStringList interfaces =
            m_daemonsOutline.filter(QRegularExpression(QStringLiteral("^(interface|node)\\b")));

        QCOMPARE(
            interfaces,
            QStringList(
                {QStringLiteral("interface com.zavro.moodsetd"),
                 QStringLiteral("interface org.freedesktop.DBus.Properties"),
                 QStringLiteral("interface org.freedesktop.DBus.Introspectable"),
                 QStringLiteral("interface org.freedesktop.DBus.Peer")}));
    }

    void memberIsTheSameInTheDocumentAndOnTheBus_data()
    {
        QTest::addColumn<QString>("member");

        // This takes the members of both sides, so that neither can have a member that the other
        // lacks.
        QStringList names = memberNames(m_documented) + memberNames(m_daemons);
        names.removeDuplicates();
        for (const QString& name : qAsConst(names)) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }

    void memberIsTheSameInTheDocumentAndOnTheBus()
    {
        QFETCH(QString, member);

        const QMap<QString, QStringList> documented = membersOf(m_documented);
        const QMap<QString, QStringList> daemons = membersOf(m_daemons);

        QVERIFY2(documented.contains(member), "the document lacks it");
        QVERIFY2(daemons.contains(member), "the daemon lacks it");
        QCOMPARE(documented.value(member), daemons.value(member));
    }

    void membersStandInTheSameOrderInTheDocumentAndOnTheBus() { QCOMPARE(m_documented, m_daemons); }

    void pageShowsTheMembersAndTheirArguments()
    {
        QCOMPARE(rowsOfPage(textOf(QStringLiteral(INTERFACE_PAGE))), rowsOfInterface(m_daemons));
    }
};

QTEST_GUILESS_MAIN(IntrospectionTest)

#include "tst_introspection.moc"
