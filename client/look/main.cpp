// SPDX-License-Identifier: BSD-3-Clause
// moodset-look: reads a request of moodsetctl from the standard input, a JSON object, and writes
// the reply to the standard output.
#include "lookrequest.h"
#include "theme/scalingthread.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    // A platform without a display, which every machine has, and which cleans up after itself, as
    // "offscreen" does not.
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    const QGuiApplication application(argc, argv);
    keepScalingThread();
    QFile input;
    QFile output;
    if (!input.open(stdin, QIODevice::ReadOnly) || !output.open(stdout, QIODevice::WriteOnly)) {
        return EXIT_FAILURE;
    }
    const QJsonObject reply = answerLookRequest(QJsonDocument::fromJson(input.readAll()).object());
    const QByteArray text = QJsonDocument(reply).toJson(QJsonDocument::Compact);
    return output.write(text) == text.size() && output.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
