#include "BusSupport/FakeLauncher.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Notifications/LauncherBadge.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace trellisport::test {

namespace {

TEST(LauncherBadge, CarriesTheCountAndGoesAtZero)
{
    PrivateBus bus;
    const FakeLauncher launcher(bus.connect());
    platform::LauncherBadge badge(bus.connect(), QStringLiteral("org.trellisport.test.desktop"));
    badge.show(3);
    badge.show(0);
    ASSERT_TRUE(waitUntil([&] { return launcher.updates().size() == 2; }));
    EXPECT_EQ(launcher.updates()[0].uri,
              QStringLiteral("application://org.trellisport.test.desktop"));
    EXPECT_EQ(launcher.updates()[0].properties,
              (QVariantMap{{QStringLiteral("count"), qint64(3)},
                           {QStringLiteral("count-visible"), true}}));
    EXPECT_EQ(launcher.updates()[0].properties[QStringLiteral("count")].metaType(),
              QMetaType::fromType<qlonglong>());
    EXPECT_EQ(launcher.updates()[1].properties[QStringLiteral("count-visible")], false);
}

} // namespace
} // namespace trellisport::test
