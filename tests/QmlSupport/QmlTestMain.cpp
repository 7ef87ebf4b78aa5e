#include "Support/FakeHttpSession.h"

#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <gmock/gmock.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_PresentationPlugin)

int main(int argc, char *argv[])
{
    ::testing::InitGoogleMock(&argc, argv);
    // What a test is run with may tell more of the screen.
    if (!qEnvironmentVariable("QT_QPA_PLATFORM").startsWith(QLatin1String("offscreen"))) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    // Controls tell their names only once somebody listens.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    const int status = RUN_ALL_TESTS();
    trellisport::test::FakeHttpSession::endAll();
    return status;
}
