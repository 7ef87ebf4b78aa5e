#include "Start/Readings.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

/// The least that a program of the same toolkit does: an empty window of the same size.
int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    trellisport::bench::Readings readings("bare", [] { return true; });
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick; Window { width: 390; height: 844; visible: true; "
                    "color: \"black\" }");
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window == nullptr) {
        return 1;
    }
    readings.watch(*window);
    return QGuiApplication::exec();
}
