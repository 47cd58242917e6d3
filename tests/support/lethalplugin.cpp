// SPDX-License-Identifier: BSD-3-Clause
//
// A plugin for AVIF pictures that kills the process when it decodes one, or already when it is
// asked for the size of one that has "lethal size" in its first bytes. It plays a fault in a
// decoder.
#include <QIODevice>
#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QSize>
#include <QVariant>

#include <csignal>

namespace {

class LethalHandler : public QImageIOHandler
{
public:
    bool canRead() const override { return true; }
    bool read(QImage* /*image*/) override { return raise(SIGKILL) == 0; }

    bool supportsOption(ImageOption option) const override { return option == Size; }

    QVariant option(ImageOption /*option*/) const override
    {
        if (device()->peek(64).contains("lethal size")) {
            raise(SIGKILL);
        }
        return QSize(40, 30);
    }
};

} // namespace

class LethalPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QImageIOHandlerFactoryInterface" FILE
                          "lethalplugin.json")

public:
    Capabilities capabilities(QIODevice* device, const QByteArray& format) const override
    {
        return device && device->isReadable() && format == "avif" ? CanRead : Capabilities();
    }

    QImageIOHandler* create(QIODevice* device, const QByteArray& format) const override
    {
        auto* const handler = new LethalHandler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

#include "lethalplugin.moc"
