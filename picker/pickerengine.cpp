// SPDX-License-Identifier: BSD-3-Clause
#include "pickerengine.h"

#include "bridgestatus.h"
#include "iconprovider.h"
#include "photorows.h"
#include "picturepreview.h"
#include "wallpapercolors.h"

#include <QCoreApplication>
#include <QDir>
#include <QQuickWindow>

#include <cstdlib>
#include <utility>

namespace {

constexpr const char* Uri = "MoodsetPicker";

void registerTypes(Appearance* appearance, Incoming* incoming, Notices* notices)
{
    // This is in a module of its own, because Style, which is in the other module, needs it.
    qmlRegisterSingletonInstance("MoodsetPicker.Desktop", 1, 0, "Appearance", appearance);
    qmlRegisterSingletonInstance(Uri, 1, 0, "Incoming", incoming);
    qmlRegisterSingletonInstance(Uri, 1, 0, "Notices", notices);
    qmlRegisterSingletonType(QUrl(QStringLiteral("qrc:/qml/Style.qml")), Uri, 1, 0, "Style");
    qmlRegisterType<BridgeStatus>(Uri, 1, 0, "BridgeStatus");
    qmlRegisterType<PhotoRows>(Uri, 1, 0, "PhotoRows");
    qmlRegisterType<PicturePreview>(Uri, 1, 0, "PicturePreview");
    qmlRegisterType<WallpaperColors>(Uri, 1, 0, "WallpaperColors");
}

} // namespace

PickerEngine::Interpretation::Interpretation()
{
    qputenv("QV4_FORCE_INTERPRETER", "1");
}

PickerEngine::PickerEngine()
{
    registerTypes(&m_appearance, &m_incoming, &m_notices);
    // In the build tree, the module is in a directory beside the programs. When both are installed,
    // it is in the directory of Qt, or in one below the same prefix.
    const QDir programs(QCoreApplication::applicationDirPath());
    m_engine.addImportPath(programs.absoluteFilePath(QStringLiteral(QML_FROM_BIN)));
    m_engine.addImportPath(programs.absoluteFilePath(QStringLiteral("../imports")));
    m_engine.addImageProvider(IconProvider::name(), new IconProvider);
}

bool PickerEngine::show()
{
    m_engine.load(QUrl(QStringLiteral("qrc:/qml/Main.qml")));
    if (window() == nullptr) {
        return false;
    }
    // Queued, because a frame may be drawn by another thread.
    m_firstFrame = QObject::connect(
        window(), &QQuickWindow::frameSwapped, &m_engine, [this] { readContent(); },
        Qt::QueuedConnection);
    window()->show();
    return true;
}

void PickerEngine::readContent()
{
    if (!QObject::disconnect(m_firstFrame)) {
        return; // Another frame was drawn in the meantime.
    }
    window()->setProperty("loadsContent", true);
    if (content() == nullptr) {
        QCoreApplication::exit(EXIT_FAILURE);
        return;
    }
    const QStringList texts = std::exchange(m_toOpen, {});
    for (const QString& text : texts) {
        open(text);
    }
}

QQuickWindow* PickerEngine::window() const
{
    const QList<QObject*> objects = m_engine.rootObjects();
    return objects.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(objects.first());
}

QObject* PickerEngine::content() const
{
    return window()->property("content").value<QObject*>();
}

void PickerEngine::raise()
{
    window()->show();
    window()->raise();
    window()->requestActivate();
}

void PickerEngine::open(const QString& text)
{
    if (content() == nullptr) {
        m_toOpen.append(text);
        return;
    }
    QMetaObject::invokeMethod(content(), "openText", Q_ARG(QVariant, text));
}
