// SPDX-License-Identifier: BSD-3-Clause
// moodset-picker: shows and changes moodsets.
#include "pickerapplication.h"
#include "pickerengine.h"
#include "text.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

namespace {

/// Without a display, Qt ends the process with a signal. This function prints the reason in one
/// line.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtFatalMsg) {
        std::fputs(
            "moodset-picker: there is no display that windows can be shown on; a Wayland or X11 "
            "session is needed\n",
            stderr);
        std::_Exit(EXIT_FAILURE);
    }
    if (qEnvironmentVariableIsSet("QT_DEBUG_PLUGINS")) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// The arguments as URLs, because the process that opens them may have another working directory.
QStringList urlsOf(const QStringList& arguments)
{
    QStringList urls;
    for (const QString& argument : arguments) {
        urls.append(
            QUrl::fromUserInput(argument, QDir::currentPath(), QUrl::AssumeLocalFile).toString());
    }
    return urls;
}

bool setScheme(const QString& name, Appearance* appearance)
{
    if (name == QLatin1String("dark")) {
        appearance->setScheme(Appearance::Scheme::Dark);
    } else if (name == QLatin1String("light")) {
        appearance->setScheme(Appearance::Scheme::Light);
    } else {
        return name.isEmpty();
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    qInstallMessageHandler(endWithoutDisplay);
    QGuiApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    QCoreApplication::setApplicationName(QStringLiteral("moodset-picker"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MOODSETD_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.zavro.moodsetpicker"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("com.zavro.moodsetpicker")));
    installTranslation(&application, "moodsetctl");
    installTranslation(&application, "moodset-picker");

    QCommandLineParser line;
    line.setApplicationDescription(
        QCoreApplication::translate("main", "Shows, makes and applies moodsets."));
    line.addHelpOption();
    line.addVersionOption();
    const QCommandLineOption scheme(
        QStringLiteral("colors"),
        QCoreApplication::translate("main", "Looks dark or light, whatever the desktop says."),
        QStringLiteral("dark|light"));
    line.addOption(scheme);
    line.addPositionalArgument(
        QStringLiteral("subject"),
        QCoreApplication::translate("main", "A picture, its address, or the folder of a bundle."),
        QStringLiteral("[subject]"));
    line.process(application);
    const QStringList urls = urlsOf(line.positionalArguments());

    PickerApplication service;
    if (!service.claim() && PickerApplication::handOver(urls)) {
        return EXIT_SUCCESS;
    }
    PickerEngine picker;
    if (!setScheme(line.value(scheme), &picker.appearance())) {
        std::fputs("moodset-picker: --colors is either dark or light\n", stderr);
        return EXIT_FAILURE;
    }
    if (!picker.show()) {
        return EXIT_FAILURE;
    }
    QObject::connect(
        &service, &PickerApplication::activated, &picker.engine(), [&picker] { picker.raise(); });
    QObject::connect(
        &service, &PickerApplication::openRequested, &picker.engine(),
        [&picker](const QString& url) { picker.open(url); });
    if (!urls.isEmpty()) {
        picker.open(urls.first());
    }
    return QGuiApplication::exec();
}
