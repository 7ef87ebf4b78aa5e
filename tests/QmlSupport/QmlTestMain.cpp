#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_PresentationPlugin)

int main(int argc, char *argv[])
{
    ::testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
