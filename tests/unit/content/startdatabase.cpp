// SPDX-License-Identifier: BSD-3-Clause
// Opens the content database as the daemon does, prints each log message as a line "type: text",
// and ends. With the argument "--with-manager", the registry has a manager, which logs its
// destruction.
#include "content/contentmanager.h"
#include "content/dbmanager.h"

#include <QCoreApplication>
#include <QDebug>

#include <cstdio>

namespace {

const char* name(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
        return "critical";
    case QtFatalMsg:
        return "fatal";
    }
    return "unknown";
}

void print(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    Q_UNUSED(context)
    std::printf("%s: %s\n", name(type), qPrintable(text));
}

class MortalManager : public ContentManager
{
public:
    using ContentManager::ContentManager;
    ~MortalManager() override { qDebug() << "manager deleted, connection open" << isConnected(); }
    Q_DISABLE_COPY_MOVE(MortalManager)

private:
    bool isConnected() const { return m_database.isOpen(); }
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(print);
    DbManager* const database = DbManager::instance();
    if (QCoreApplication::arguments().contains(QStringLiteral("--with-manager"))) {
        qDebug() << "connection open" << database->isOpen();
        database->manager(MoodsetContent::File) = new MortalManager(*database);
        // The registry can have entries without a manager.
        database->manager(MoodsetContent::Index) = nullptr;
    }
    return 0;
}
