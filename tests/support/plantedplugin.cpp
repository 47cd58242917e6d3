// SPDX-License-Identifier: BSD-3-Clause
//
// A plugin for pictures that claims that it can read every file, and logs each question. Qt also
// asks all plugins before it writes a picture; these questions are not logged.
#include <QDebug>
#include <QImage>
#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QSize>
#include <QVariant>

namespace {

class PlantedHandler : public QImageIOHandler
{
public:
    bool canRead() const override { return true; }

    bool read(QImage* image) override
    {
        *image = QImage(1, 1, QImage::Format_RGB32);
        return true;
    }

    bool supportsOption(ImageOption option) const override { return option == Size; }
    QVariant option(ImageOption /*option*/) const override { return QSize(1, 1); }
};

} // namespace

class PlantedPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QImageIOHandlerFactoryInterface" FILE
                          "plantedplugin.json")

public:
    Capabilities capabilities(QIODevice* device, const QByteArray& /*format*/) const override
    {
        const bool isToRead = device && device->isReadable();
        if (isToRead) {
            qWarning("The planted plugin was asked");
        }
        return isToRead ? CanRead : Capabilities();
    }

    QImageIOHandler* create(QIODevice* device, const QByteArray& format) const override
    {
        auto* const handler = new PlantedHandler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

#include "plantedplugin.moc"
