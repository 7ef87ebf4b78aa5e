#include "AppBench.h"

#include <QDir>

#include <map>

namespace trellisport::practice {
namespace {

using AppFiles = AppBench;

TEST_F(AppFiles, TheFolderLeadsToItsPage)
{
    const auto moved = get("/app");
    EXPECT_EQ(moved.status, 308);
    EXPECT_EQ(headerOf(moved, "location"), "/app/");
    EXPECT_EQ(headerOf(moved, "cache-control"), "no-cache");
    for (const char *path : {"/app/", "/app/index.html", "/app/?from=elsewhere"}) {
        const auto page = get(path);
        EXPECT_EQ(page.status, 200) << path;
        EXPECT_EQ(page.body, "<!DOCTYPE html><title>Console</title>") << path;
        EXPECT_EQ(headerOf(page, "content-length"), "37") << path;
    }
}

TEST_F(AppFiles, EveryKindOfFileSaysWhatItIs)
{
    const std::map<std::string, std::string> types{
        {"index.html", "text/html; charset=utf-8"},
        {"start.js", "text/javascript; charset=utf-8"},
        {"more.mjs", "text/javascript; charset=utf-8"},
        {"looks.css", "text/css; charset=utf-8"},
        {"program.wasm", "application/wasm"},
        {"manifest.webmanifest", "application/manifest+json"},
        {"data.json", "application/json"},
        {"icons/console.svg", "image/svg+xml"},
        {"icons/console.png", "image/png"},
        {"licences.txt", "text/plain; charset=utf-8"},
        {"text.ttf", "font/ttf"},
        {"text.woff2", "font/woff2"},
        {"LICENCE", "application/octet-stream"},
        {"thing.unheard", "application/octet-stream"},
    };
    for (const auto &[name, type] : types) {
        write(name, "content of " + name);
        const auto reply = get("/app/" + name);
        EXPECT_EQ(reply.status, 200) << name;
        EXPECT_EQ(reply.body, "content of " + name);
        EXPECT_EQ(headerOf(reply, "content-type"), type) << name;
    }
}

TEST_F(AppFiles, AnEmptyFileHasItsKindToo)
{
    write("empty.css", "");
    const auto reply = get("/app/empty.css");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "");
    EXPECT_EQ(headerOf(reply, "content-type"), "text/css; charset=utf-8");
    EXPECT_EQ(headerOf(reply, "content-length"), "0");
}

TEST_F(AppFiles, OnlyANameThatTellsTheContentIsKeptWithoutAsking)
{
    for (const char *name : {"program.0123456789abcdef.wasm", "a.b.00000000000000ff.js",
                             "icons/x.0123456789abcdef.png"}) {
        write(name, "x");
        EXPECT_EQ(headerOf(get(std::string("/app/") + name), "cache-control"),
                  "public, max-age=31536000, immutable")
            << name;
    }
    for (const char *name :
         {"start.js", "service-worker.js", "program.0123456789ABCDEF.wasm",
          "program.0123456789abcde.wasm", "program.0123456789abcdef0.wasm", "0123456789abcdef.js",
          "program-0123456789abcdef.js", "program.0123456789abcdef", "program.0123456789abcdef.",
          "x.0123456789abcdef.d/start.js", "program.0123456789abcdeg.js"}) {
        write(name, "x");
        const auto reply = get(std::string("/app/") + name);
        EXPECT_EQ(reply.status, 200) << name;
        EXPECT_EQ(headerOf(reply, "cache-control"), "no-cache") << name;
    }
}

TEST_F(AppFiles, WhatTheBrowserHasIsNotSentAgain)
{
    const auto first = get("/app/start.js");
    const std::string tag = headerOf(first, "etag");
    ASSERT_GT(tag.size(), 10U);
    for (const std::string &held : {tag, "\"other\", " + tag, "W/" + tag, std::string("*")}) {
        const auto again = get("/app/start.js", {"If-None-Match: " + held});
        EXPECT_EQ(again.status, 304) << held;
        EXPECT_EQ(again.body, "") << held;
        EXPECT_EQ(headerOf(again, "etag"), tag) << held;
        EXPECT_EQ(headerOf(again, "cache-control"), "no-cache") << held;
        EXPECT_EQ(headerOf(again, "content-length"), "7") << held;
    }
    // The connection is still in step.
    EXPECT_EQ(get("/app/start.js", {"If-None-Match: \"other\""}).body, "start()");
    EXPECT_EQ(get("/app/start.js", {"If-None-Match: " + tag.substr(1, tag.size() - 2)}).status,
              200);
}

TEST_F(AppFiles, ANewBuildIsSeenAtOnce)
{
    const std::string before = headerOf(get("/app/start.js"), "etag");
    write("start.js", "again()");
    const auto changed = get("/app/start.js", {"If-None-Match: " + before});
    EXPECT_EQ(changed.status, 200);
    EXPECT_EQ(changed.body, "again()");
    write("late.js", "late()");
    EXPECT_EQ(get("/app/late.js").body, "late()");
    remove("start.js");
    EXPECT_EQ(get("/app/start.js").status, 404);

    const QString folder = m_app.path();
    ASSERT_TRUE(QDir().rename(folder, folder + QStringLiteral("-old")));
    EXPECT_EQ(get("/app/").status, 200) << "the next one is just put in its place";
    ASSERT_TRUE(QDir().rename(folder + QStringLiteral("-old"), folder));
    EXPECT_EQ(get("/app/").status, 200);
}

TEST_F(AppFiles, HeadSaysTheSameWithoutTheContent)
{
    const auto whole = get("/app/start.js");
    auto head = m_client->head(urlOf("/app/start.js"));
    EXPECT_EQ(head.status, 200);
    EXPECT_EQ(head.body, "");
    for (const char *name : {"content-type", "content-length", "etag", "cache-control",
                             "accept-ranges", "content-security-policy"}) {
        EXPECT_EQ(headerOf(head, name), headerOf(whole, name)) << name;
        EXPECT_NE(headerOf(head, name), "-") << name;
    }
    EXPECT_EQ(m_client->head(urlOf("/app/nothing.js")).status, 404);
    EXPECT_EQ(m_client->head(urlOf("/app/push-key")).status, 200);
    EXPECT_EQ(get("/app/start.js").body, "start()"); // the connection is still in step
}

TEST_F(AppFiles, ALargeFileArrivesWhole)
{
    std::string large;
    for (int number = 0; large.size() < 9'000'000; ++number)
        large += std::to_string(number) + ' ';
    write("program.wasm", large);
    const auto reply = get("/app/program.wasm");
    EXPECT_EQ(headerOf(reply, "content-length"), std::to_string(large.size()));
    EXPECT_TRUE(reply.body == large);
    const auto part = get("/app/program.wasm", {"Range: bytes=5-9"});
    EXPECT_EQ(part.status, 200);
    EXPECT_TRUE(part.body == large);
}

TEST_F(AppFiles, TheInterfaceIsStillThere)
{
    EXPECT_EQ(get("/api/v1/dashboard").status, 200);
    EXPECT_EQ(get("/").status, 200);
    EXPECT_EQ(get("/apple").status, 404);
    EXPECT_EQ(get("/application/").status, 404);
}

} // namespace
} // namespace trellisport::practice
