#include "PracticeService/App/App.h"

#include "PracticeService/App/ContentCoding.h"
#include "PracticeService/App/FileKind.h"

#include <utility>

namespace trellisport::practice {

namespace {

constexpr const char *root = "/app";
constexpr const char *alwaysAsk = "no-cache";
constexpr const char *neverAsk = "public, max-age=31536000, immutable";

// WebAssembly needs its own word beside 'self'; the toolkit puts styles into its elements.
constexpr const char *contentPolicy =
    "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self' 'unsafe-inline'; "
    "img-src 'self' data:; font-src 'self' data:; connect-src 'self'; manifest-src 'self'; "
    "worker-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

// What the console has no use for. Clipboard, notifications and full screen stay.
constexpr const char *permissions =
    "accelerometer=(), autoplay=(), camera=(), display-capture=(), encrypted-media=(), "
    "geolocation=(), gyroscope=(), hid=(), idle-detection=(), magnetometer=(), microphone=(), "
    "midi=(), payment=(), picture-in-picture=(), publickey-credentials-get=(), "
    "screen-wake-lock=(), serial=(), usb=(), xr-spatial-tracking=()";

/// The form of the file that the asker gets; coding is set when that is a compressed one.
const AppFolder::Form &chooseForm(const AppFolder::File &file, const ServiceRequest &request,
                                  const char *&coding)
{
    if (file.brotli && accepts(request.acceptEncoding, "br")) {
        coding = "br";
        return *file.brotli;
    }
    if (file.gzip && accepts(request.acceptEncoding, "gzip")) {
        coding = "gzip";
        return *file.gzip;
    }
    return file.plain;
}

ServiceReply replyWith(const AppFolder::File &file, const std::string &name,
                       const ServiceRequest &request)
{
    const char *coding = nullptr;
    const AppFolder::Form &form = chooseForm(file, request, coding);
    ServiceReply reply;
    reply.contentType = mediaTypeOf(name);
    reply.headers.emplace_back("ETag", form.tag);
    reply.headers.emplace_back("Cache-Control", isNamedByContent(name) ? neverAsk : alwaysAsk);
    reply.headers.emplace_back("Accept-Ranges", "none");
    if (file.brotli || file.gzip)
        reply.headers.emplace_back("Vary", "Accept-Encoding");
    if (isHeld(request, form.tag)) {
        reply.status = 304;
        // The length of what is not sent, or the HTTP library would add one of 0.
        reply.headers.emplace_back("Content-Length", std::to_string(form.bytes->size()));
        return reply;
    }
    if (coding != nullptr)
        reply.headers.emplace_back("Content-Encoding", coding);
    if (form.bytes->empty()) // else the HTTP library says it
        reply.headers.emplace_back("Content-Type", reply.contentType);
    reply.content = form.bytes;
    return reply;
}

} // namespace

App::App(const std::string &folder, std::string pushKey)
    : m_pushKey(std::move(pushKey))
{
    if (!folder.empty())
        m_folder.emplace(folder);
}

bool App::isAbout(const ServiceRequest &request)
{
    return request.path == root || request.path.starts_with(std::string(root) + '/');
}

void App::secure(const ServiceRequest &request, ServiceReply &reply)
{
    if (!isAbout(request))
        return;
    for (const auto &[name, value] : {std::pair("Content-Security-Policy", contentPolicy),
                                      std::pair("X-Content-Type-Options", "nosniff"),
                                      std::pair("Referrer-Policy", "no-referrer"),
                                      std::pair("Cross-Origin-Opener-Policy", "same-origin"),
                                      std::pair("Permissions-Policy", permissions)})
        reply.headers.emplace_back(name, value);
}

ServiceReply App::handle(const ServiceRequest &request)
{
    if (!isGet(request))
        return wrongMethod("GET, HEAD");
    ServiceReply reply;
    if (request.path == root) {
        if (!m_folder)
            return unknownPath();
        // The pages' own addresses are relative, so they need the slash.
        reply.status = 308;
        reply.headers.emplace_back("Location", std::string(root) + '/');
        reply.headers.emplace_back("Cache-Control", alwaysAsk);
        return reply;
    }
    std::string name = request.path.substr(std::string(root).size() + 1);
    if (name == "push-key") {
        reply.contentType = "text/plain";
        reply.headers.emplace_back("Cache-Control", alwaysAsk);
        reply.body = m_pushKey;
        return reply;
    }
    if (name.empty())
        name = "index.html";
    const auto file = m_folder ? m_folder->find(name) : std::nullopt;
    return file ? replyWith(*file, name, request) : unknownPath();
}

} // namespace trellisport::practice
