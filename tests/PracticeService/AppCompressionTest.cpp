#include "AppBench.h"

#include <filesystem>

namespace trellisport::practice {
namespace {

/// What stands for compressed content is told apart by its text; nobody here opens it.
class AppCompression : public AppBench {
protected:
    AppCompression()
    {
        write("start.js.br", "as brotli");
        write("start.js.gz", "as gzip");
        write("program.wasm.gz", "gzip alone");
    }
    CurlClient::Reply getWith(const std::string &path, const std::string &accepted)
    {
        return get(path, {"Accept-Encoding: " + accepted});
    }
    void age(const std::string &name, std::chrono::seconds by) const
    {
        namespace fs = std::filesystem;
        const fs::path path = pathOf(name);
        fs::last_write_time(path, fs::last_write_time(path) - by);
    }
};

TEST_F(AppCompression, TheBestFormThatTheBrowserTakesIsSent)
{
    struct Case {
        const char *accepted;
        const char *coding;
        const char *body;
    };
    for (const Case &wish :
         {Case{"gzip, deflate, br, zstd", "br", "as brotli"}, Case{"br", "br", "as brotli"},
          Case{"gzip", "gzip", "as gzip"}, Case{"gzip;q=1, br;q=0.1", "br", "as brotli"},
          Case{"br;q=0, gzip", "gzip", "as gzip"}, Case{"br;q=0, gzip;q=0", "-", "start()"},
          Case{"*;q=0", "-", "start()"}, Case{"identity", "-", "start()"},
          Case{"deflate", "-", "start()"}, Case{"*", "br", "as brotli"}}) {
        const auto reply = getWith("/app/start.js", wish.accepted);
        EXPECT_EQ(reply.status, 200) << wish.accepted;
        EXPECT_EQ(reply.body, wish.body) << wish.accepted;
        EXPECT_EQ(headerOf(reply, "content-encoding"), wish.coding) << wish.accepted;
        EXPECT_EQ(headerOf(reply, "content-type"), "text/javascript; charset=utf-8");
        EXPECT_EQ(headerOf(reply, "vary"), "Accept-Encoding") << wish.accepted;
        EXPECT_EQ(headerOf(reply, "content-length"), std::to_string(reply.body.size()));
    }
    EXPECT_EQ(headerOf(get("/app/start.js"), "content-encoding"), "-");
    const auto twice = get("/app/start.js", {"Accept-Encoding: gzip", "Accept-Encoding: br"});
    EXPECT_EQ(headerOf(twice, "content-encoding"), "br");
}

TEST_F(AppCompression, AFormThatIsMissingIsDoneWithout)
{
    EXPECT_EQ(getWith("/app/program.wasm", "br, gzip").body, "gzip alone");
    EXPECT_EQ(getWith("/app/program.wasm", "br").body.size(), 4U);
    const auto plain = getWith("/app/index.html", "br, gzip");
    EXPECT_EQ(headerOf(plain, "content-encoding"), "-");
    EXPECT_EQ(headerOf(plain, "vary"), "-");
}

TEST_F(AppCompression, EachFormHasATagOfItsOwn)
{
    const std::string brotli = headerOf(getWith("/app/start.js", "br"), "etag");
    const std::string gzip = headerOf(getWith("/app/start.js", "gzip"), "etag");
    const std::string plain = headerOf(get("/app/start.js"), "etag");
    EXPECT_NE(brotli, gzip);
    EXPECT_NE(brotli, plain);
    EXPECT_NE(gzip, plain);
    const auto held = get("/app/start.js", {"Accept-Encoding: br", "If-None-Match: " + brotli});
    EXPECT_EQ(held.status, 304);
    EXPECT_EQ(headerOf(held, "vary"), "Accept-Encoding");
    EXPECT_EQ(get("/app/start.js", {"If-None-Match: " + brotli}).status, 200);
}

TEST_F(AppCompression, WhatIsCompressedIsNoFileOfItsOwn)
{
    EXPECT_EQ(get("/app/start.js.br").status, 404);
    EXPECT_EQ(get("/app/start.js.gz").status, 404);
}

TEST_F(AppCompression, AFormOlderThanItsFileIsLeftOut)
{
    age("start.js.br", std::chrono::seconds(5));
    EXPECT_EQ(getWith("/app/start.js", "br, gzip").body, "as gzip");
    age("start.js", std::chrono::seconds(5));
    EXPECT_EQ(getWith("/app/start.js", "br, gzip").body, "as brotli");
}

} // namespace
} // namespace trellisport::practice
