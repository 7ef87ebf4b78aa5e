#include "Support/FakeHttpSession.h"
#include "Support/Waiting.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

int main(int argc, char *argv[])
{
    ::testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    const int status = RUN_ALL_TESTS();
    trellisport::test::FakeHttpSession::endAll();
    trellisport::test::runPendingEvents(); // the calls end on this thread
    return status;
}
