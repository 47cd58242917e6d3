// SPDX-License-Identifier: BSD-3-Clause
#include "userstore.h"

#include "dconfcommand.h"

#include <QDir>
#include <QFile>

UserStore::UserStore()
{
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    const QString stored =
        qEnvironmentVariable("PRIVATE_MACHINE") + QStringLiteral("/config/dconf");
    m_valid = QDir().mkpath(stored) && QDir().mkpath(config)
        && QFile::link(stored, config + QStringLiteral("/dconf"));
}

UserStore::~UserStore()
{
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
}

QString UserStore::value(const QString& key)
{
    return QString::fromUtf8(runDconf({QStringLiteral("read"), key}));
}

QStringList UserStore::values(const QString& folder)
{
    QStringList values;
    QString group;
    const QStringList lines =
        QString::fromUtf8(runDconf({QStringLiteral("dump"), folder})).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('['))) {
            // The group is "[/]" for the keys of the directory itself, and "[folder/in/it]" for
            // others.
            const QString name = line.mid(1, line.size() - 2);
            group = name == QLatin1Char('/') ? folder : folder + name + QLatin1Char('/');
        } else if (!line.isEmpty()) {
            values.append(group + line);
        }
    }
    values.sort();
    return values;
}

void UserStore::write(const QString& key, const QString& value)
{
    runDconf({QStringLiteral("write"), key, value});
}

void UserStore::writeScreenSize(const QSize& size)
{
    write(QStringLiteral("/vantile/screen/primary/width"), QString::number(size.width()));
    write(QStringLiteral("/vantile/screen/primary/height"), QString::number(size.height()));
}
