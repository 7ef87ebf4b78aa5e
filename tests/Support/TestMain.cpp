#include "Support/FakeHttpSession.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

int main(int argc, char *argv[])
{
    ::testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    const int status = RUN_ALL_TESTS();
    trellisport::test::FakeHttpSession::endAll();
    return status;
}
