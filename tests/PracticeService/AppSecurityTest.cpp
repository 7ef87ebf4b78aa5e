#include "AppBench.h"

#include <filesystem>

namespace trellisport::practice {
namespace {

using testing::HasSubstr;
using testing::Not;

class AppSecurity : public AppBench {
protected:
    static void expectGuards(const CurlClient::Reply &reply, const std::string &about)
    {
        EXPECT_EQ(headerOf(reply, "content-security-policy"),
                  "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; "
                  "style-src 'self' 'unsafe-inline'; img-src 'self' data:; "
                  "font-src 'self' data:; connect-src 'self'; manifest-src 'self'; "
                  "worker-src 'self'; base-uri 'none'; form-action 'none'; "
                  "frame-ancestors 'none'")
            << about;
        EXPECT_EQ(headerOf(reply, "x-content-type-options"), "nosniff") << about;
        EXPECT_EQ(headerOf(reply, "referrer-policy"), "no-referrer") << about;
        EXPECT_EQ(headerOf(reply, "cross-origin-opener-policy"), "same-origin") << about;
        for (const char *feature : {"camera=()", "microphone=()", "geolocation=()", "usb=()"})
            EXPECT_THAT(headerOf(reply, "permissions-policy"), HasSubstr(feature)) << about;
        EXPECT_EQ(headerOf(reply, "strict-transport-security"), "-") << about;
    }
};

TEST_F(AppSecurity, EveryReplyBelowTheFolderIsGuarded)
{
    expectGuards(get("/app"), "the redirect");
    expectGuards(get("/app/"), "the page");
    expectGuards(get("/app/program.wasm"), "a file");
    expectGuards(get("/app/push-key"), "the key");
    expectGuards(get("/app/nothing"), "nothing");
    const std::string tag = headerOf(get("/app/start.js"), "etag");
    expectGuards(get("/app/start.js", {"If-None-Match: " + tag}), "what is held");
    expectGuards(m_client->send("POST", urlOf("/app/"), "{}"), "a wrong method");
    const auto large = m_client->send("POST", urlOf("/app/"), std::string(2'000'000, 'x'));
    EXPECT_EQ(large.status, 413);
    expectGuards(large, "a body that is too large");
}

TEST_F(AppSecurity, TheInterfaceIsLeftAsItWas)
{
    EXPECT_EQ(headerOf(get("/api/v1/dashboard"), "content-security-policy"), "-");
    EXPECT_THAT(headerOf(get("/"), "content-security-policy"), Not(HasSubstr("wasm")));
}

TEST_F(AppSecurity, OnlyReadingIsPossible)
{
    for (const char *method : {"POST", "PUT", "DELETE", "PATCH", "OPTIONS"}) {
        for (const char *path : {"/app", "/app/", "/app/start.js", "/app/push-key"}) {
            const auto reply = m_client->send(method, urlOf(path), "");
            EXPECT_EQ(reply.status, 405) << method << path;
            EXPECT_EQ(headerOf(reply, "allow"), "GET, HEAD") << method << path;
        }
    }
    EXPECT_EQ(get("/app/start.js").body, "start()");
}

TEST_F(AppSecurity, NothingButTheFoldersFilesIsGiven)
{
    namespace fs = std::filesystem;
    const std::string secret = m_folder.path().toStdString() + "/ca-key.pem";
    ASSERT_TRUE(fs::exists(secret));
    const std::string data = fs::path(m_folder.path().toStdString()).filename().string();
    const std::string app = fs::path(m_app.path().toStdString()).filename().string();
    write(".hidden", "hidden");
    write(".git/config", "hidden");
    write("sub/.hidden", "hidden");
    write("sub/seen.txt", "seen");
    fs::create_symlink(secret, pathOf("link.txt"));
    fs::create_directory_symlink(m_folder.path().toStdString(), pathOf("linked"));
    fs::create_symlink("start.js", pathOf("near.js"));
    fs::create_symlink("/dev/zero", pathOf("zero"));
    fs::create_hard_link(pathOf("sub/seen.txt"), pathOf("sub/two.txt"));
    ASSERT_EQ(get("/app/sub/seen.txt").body, "seen");
    ASSERT_EQ(get("/app/sub/two.txt").body, "seen");
    for (const std::string &path : std::vector<std::string>{
             "/app/../" + data + "/ca-key.pem",
             "/app/%2e%2e/" + data + "/ca-key.pem",
             "/app/..%2f" + data + "%2Fca-key.pem",
             "/app/%252e%252e/" + data + "/ca-key.pem",
             "/app/sub/../start.js",
             "/app/./start.js",
             "/app/../" + app + "/start.js",
             "/app//start.js",
             "/app/start.js/",
             "/app/start.js%00",
             "/app/start.js%00.png",
             "/app/" + secret,
             "/app/%2F" + secret.substr(1),
             "/app/..\\..\\etc\\passwd",
             "/app/../../../../../../../../etc/passwd",
             "/app/..%c0%af..%c0%afetc/passwd",
             "/app/link.txt",
             "/app/linked/ca-key.pem",
             "/app/linked",
             "/app/near.js",
             "/app/zero",
             "/app/.hidden",
             "/app/%2ehidden",
             "/app/.git/config",
             "/app/sub/.hidden",
             "/app/sub",
             "/app/sub/",
             "/app/START.JS",
             "/app/" + std::string(6000, 'a'),
         }) {
        const auto reply = get(path);
        EXPECT_EQ(reply.status, 404) << path;
        EXPECT_EQ(reply.body, R"({"error":"There is nothing under this path."})") << path;
    }
    EXPECT_EQ(get("/app/").status, 200);
}

TEST_F(AppSecurity, AFolderThatHasGrownTooLargeIsAFailureAndNoMore)
{
    namespace fs = std::filesystem;
    write("huge.bin", "");
    fs::resize_file(pathOf("huge.bin"), std::uintmax_t(1) << 40);
    const auto reply = get("/app/start.js");
    EXPECT_EQ(reply.status, 500);
    expectGuards(reply, "a failure");
    EXPECT_EQ(get("/api/v1/dashboard").status, 200);
    remove("huge.bin");
    EXPECT_EQ(get("/app/start.js").status, 200);
}

TEST(AppAbsent, WithoutAFolderThereIsOnlyTheKey)
{
    const QTemporaryDir folder;
    const ServiceProcess service(folder.path());
    ASSERT_FALSE(service.url().empty());
    CurlClient client(service.authority());
    for (const char *path : {"/app", "/app/", "/app/index.html"})
        EXPECT_EQ(client.get(service.url() + path).status, 404) << path;
    EXPECT_EQ(client.get(service.url() + "/app/push-key").status, 200);
}

} // namespace
} // namespace trellisport::practice
