#include "PracticeService/App/ContentCoding.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

TEST(ContentCoding, IsTakenWhenItIsNamedOrAnythingIs)
{
    for (const char *header :
         {"br", "gzip, br", "gzip,br", " br ", "BR", "br;q=1", "br;q=0.001", "br ; q=0.5", "br;Q=1",
          "br;q=1.000", "*", "*;q=0.5", "gzip;q=0, *", "*;q=0, br", "br, *;q=0", ",,br,",
          "br;other=1;q=0.5", "\tbr\t", "br;"}) {
        EXPECT_TRUE(accepts(header, "br")) << header;
    }
}

TEST(ContentCoding, IsRefusedWhenItIsNotNamedOrWeighsNothing)
{
    for (const char *header :
         {"",          " ",         ",",          "gzip",          "identity",   "brotli",
          "xbr",       "b",         "br;q=0",     "br;q=0.0",      "br;q=0.000", "br; q=0",
          "*, br;q=0", "br;q=0, *", "*;q=0",      "gzip, *;q=0",   "br;q=",      "br;q=x",
          "br;q=-1",   "br;q=2",    "br;q=1.001", "br;q=0.0001",   "br;q=.5",    "br;q=1e3",
          "br q=1",    ";q=1",      "gzip;br",    "br;q=0;other=1"}) {
        EXPECT_FALSE(accepts(header, "br")) << header;
    }
}

} // namespace
} // namespace trellisport::practice
