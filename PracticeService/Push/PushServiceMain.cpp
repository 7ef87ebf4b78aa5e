#include "PracticeService/Certificates.h"
#include "PracticeService/Push/EndpointServer.h"
#include "PracticeService/Push/PushService.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>

#include <iostream>
#include <stdexcept>
#include <string>

using namespace trellisport::practice;

namespace {

struct Wish {
    QString folder;
    QString name;
    int port = 0;
};

Wish readCommandLine(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "A small push service for trying things out: programs of this session register over the\n"
        "session bus (UnifiedPush), and what is posted to their endpoints on 127.0.0.1 is handed\n"
        "to them."));
    parser.addHelpOption();
    const QCommandLineOption data(
        QStringLiteral("data"),
        QStringLiteral("Folder with the practice service's certificates, for the own state too."),
        QStringLiteral("DIR"));
    const QCommandLineOption name(QStringLiteral("name"),
                                  QStringLiteral("Last part of the name on the session bus."),
                                  QStringLiteral("NAME"), QStringLiteral("practice"));
    const QCommandLineOption port(
        QStringLiteral("port"),
        QStringLiteral("Port to listen on when it is free; else any, as with 0."),
        QStringLiteral("N"), QStringLiteral("8444"));
    parser.addOptions({data, name, port});
    parser.process(application);
    bool isNumber = false;
    Wish wish{parser.value(data), parser.value(name), parser.value(port).toInt(&isNumber)};
    if (wish.folder.isEmpty() || wish.name.isEmpty() || !isNumber || wish.port < 0 ||
        wish.port > 65535) {
        parser.showHelp(2);
    }
    return wish;
}

int serve(const Wish &wish)
{
    const QDir folder(QDir(wish.folder).absolutePath());
    EndpointServer server(ensureCertificates(folder.path().toStdString()), wish.port);
    PushService service(QDBusConnection::sessionBus(),
                        folder.filePath(QStringLiteral("push-clients.json")),
                        QStringLiteral("https://127.0.0.1:%1/push/").arg(server.port()));
    if (!service.appear(QStringLiteral("org.unifiedpush.Distributor.") + wish.name)) {
        throw std::runtime_error("Cannot take the name on the session bus.");
    }
    server.start({[&service](const QString &path) {
                      bool isKnown = false;
                      QMetaObject::invokeMethod(
                          &service, [&] { isKnown = service.knows(path); },
                          Qt::BlockingQueuedConnection);
                      return isKnown;
                  },
                  [&service](const QString &path, const QByteArray &message) {
                      QMetaObject::invokeMethod(
                          &service, [&service, path, message] { service.deliver(path, message); });
                  }});
    std::cout << "push endpoints at https://127.0.0.1:" << server.port() << "/push/" << std::endl;
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trellisport-practice-push"));
    const Wish wish = readCommandLine(application);
    try {
        return serve(wish);
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
