// SPDX-License-Identifier: BSD-3-Clause
#include "output.h"

#include "printabletext.h"
#include "text.h"

#include <QByteArray>
#include <QTextStream>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

QString writeBytes(const QByteArray& bytes)
{
    const char* rest = bytes.constData();
    const char* const end = rest + bytes.size();
    while (rest < end) {
        const ssize_t count = write(STDOUT_FILENO, rest, size_t(end - rest));
        if (count >= 0) {
            rest += count;
        } else if (errno != EINTR) {
            return Text::tr("the output cannot be written: %1").arg(qt_error_string(errno));
        }
    }
    return {};
}

} // namespace

void Output::keepPlaces()
{
    // The file is opened for reading only, so that writing still fails.
    while (true) {
        const int descriptor = open("/dev/null", O_RDONLY);
        if (descriptor < 0) {
            return;
        }
        if (descriptor > STDERR_FILENO) {
            close(descriptor);
            return;
        }
    }
}

QString Output::writeText(const QString& text)
{
    return writeBytes(text.toLocal8Bit());
}

QString Output::writeJson(const QString& json)
{
    return writeBytes(json.toUtf8());
}

void Output::writeError(const QString& error)
{
    if (!error.isEmpty()) {
        QTextStream(stderr) << "moodsetctl: " << printableText(error) << '\n';
    }
}
