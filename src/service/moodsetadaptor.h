// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

class AlbumGallery;

/// The daemon's interface on the bus. It forwards each call to the service object's slot with the
/// same name, and forwards the slot object's signal to the bus. The reply to a call is sent after
/// everything that it has written is stored. data/dbus/com.zavro.moodsetd.xml documents the same
/// interface.
class MoodsetAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.zavro.moodsetd")
    // The order of the methods is fixed. It differs from the order of the slots.
    // clang-format off
    Q_CLASSINFO("D-Bus Introspection",
        "  <interface name=\"com.zavro.moodsetd\">\n"
        "    <method name=\"indexFile\">\n"
        "      <arg direction=\"in\" type=\"s\" name=\"url\"/>\n"
        "    </method>\n"
        "    <method name=\"createMoodset\">\n"
        "      <arg direction=\"in\" type=\"s\" name=\"url\"/>\n"
        "    </method>\n"
        "    <method name=\"setMoodset\">\n"
        "      <arg direction=\"in\" type=\"s\" name=\"url\"/>\n"
        "    </method>\n"
        "    <method name=\"remove\">\n"
        "      <arg direction=\"in\" type=\"i\" name=\"contentType\"/>\n"
        "      <arg direction=\"in\" type=\"x\" name=\"contentId\"/>\n"
        "    </method>\n"
        "    <method name=\"installPackage\">\n"
        "      <arg direction=\"in\" type=\"s\" name=\"path\"/>\n"
        "    </method>\n"
        "    <method name=\"saveAttributes\">\n"
        "      <arg direction=\"in\" type=\"i\" name=\"contentType\"/>\n"
        "      <arg direction=\"in\" type=\"x\" name=\"contentId\"/>\n"
        "      <arg direction=\"in\" type=\"a{sv}\" name=\"args\"/>\n"
        "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In2\" value=\"QVariantMap\"/>\n"
        "    </method>\n"
        "    <method name=\"refreshMoodsets\"/>\n"
        "    <signal name=\"contentChanged\">\n"
        "      <arg direction=\"out\" type=\"i\" name=\"type\"/>\n"
        "    </signal>\n"
        "  </interface>\n")
    // clang-format on

public:
    explicit MoodsetAdaptor(AlbumGallery* parent);

public Q_SLOTS:
    void createMoodset(const QString& url);
    void indexFile(const QString& url);
    void installPackage(const QString& path);
    void refreshMoodsets();
    void remove(int contentType, qlonglong contentId);
    void saveAttributes(int contentType, qlonglong contentId, const QVariantMap& args);
    void setMoodset(const QString& url);

Q_SIGNALS:
    void contentChanged(int type);
};
