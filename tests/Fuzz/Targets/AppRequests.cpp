#include "Fuzz/Targets/Must.h"
#include "PracticeService/App/App.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// One request for the console's files for browsers, in lines: method, path behind "/app", accepted
// encodings, the tag that the asker has.

namespace {

using namespace trellisport::practice;

std::string_view takeLine(std::string_view &input)
{
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    return line;
}

/// A folder in which every file to offer says "open", among others that say "closed".
class Folder {
public:
    Folder()
    {
        for (const char *name : {"app/index.html", "app/start.js", "app/start.js.br",
                                 "app/start.js.gz", "app/sub/more.js"})
            write(name, "open");
        for (const char *name : {"secret", "app/.hidden", "app/.git/config", "application/secret"})
            write(name, "closed");
        std::filesystem::create_symlink(path("secret"), path("app/link"));
        std::filesystem::create_directory_symlink(path("application"), path("app/linked"));
    }
    [[nodiscard]] std::string path(const char *name) const
    {
        return m_folder.filePath(QLatin1String(name)).toStdString();
    }

private:
    void write(const char *name, const char *content) const
    {
        const QString target = m_folder.filePath(QLatin1String(name));
        QFile file(target);
        must(QDir().mkpath(target.section(u'/', 0, -2)) && file.open(QIODevice::WriteOnly) &&
                 file.write(content) > 0,
             "the folder can be made");
    }
    QTemporaryDir m_folder;
};

void check(const ServiceRequest &request, const ServiceReply &reply)
{
    const bool reads = request.method == "GET" || request.method == "HEAD";
    must((reply.status == 405) == !reads, "it is only read");
    must(reply.status == 200 || reply.status == 304 || reply.status == 308 || reply.status == 404 ||
             reply.status == 405,
         "no request makes it fail");
    must(!reply.content || *reply.content == "open", "only what is offered is given");
    must(reply.content || reply.body.find("closed") == std::string::npos, "no secret is told");
    const bool isCompressed =
        std::any_of(reply.headers.begin(), reply.headers.end(),
                    [](const auto &header) { return header.first == "Content-Encoding"; });
    must(!isCompressed || !request.acceptEncoding.empty(), "who names no coding gets none");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Folder folder;
    static App app(folder.path("app"), "key");
    std::string_view input(reinterpret_cast<const char *>(data), size);
    ServiceRequest request;
    request.method = takeLine(input);
    request.path = "/app" + std::string(takeLine(input));
    request.acceptEncoding = takeLine(input);
    request.ifNoneMatch = takeLine(input);
    if (App::isAbout(request)) {
        check(request, app.handle(request));
    }
    return 0;
}
