// SPDX-License-Identifier: BSD-3-Clause
#include "mgconfitem.h"

#include <QCoreApplication>
#include <QTextStream>

#include <unistd.h>

namespace {

void print(const QString& line)
{
    QTextStream(stdout) << line << '\n' << Qt::flush;
}

} // namespace

// item-process COMMAND KEY [VALUE]
//
// set      sets the key and returns from main() at once
// sync     sets the key, calls sync(), and ends without any clean-up
// follow   prints the value, sets the key if there is a VALUE, and prints each value that it
// changes
//          to, until it is ended
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.value(1);
    MGConfItem item(arguments.value(2));
    const auto printValue = [&item] { print(item.value().toString()); };

    if (command == QLatin1String("follow")) {
        QObject::connect(&item, &MGConfItem::valueChanged, printValue);
        printValue();
        if (arguments.size() > 3) {
            item.set(arguments.value(3));
        }
        return QCoreApplication::exec();
    }
    item.set(arguments.value(3));
    if (command == QLatin1String("set")) {
        return 0;
    }
    MGConfItem::sync();
    _exit(0);
}
