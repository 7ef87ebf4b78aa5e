#include "PracticeService/App/AppFolder.h"

#include "PracticeService/ServiceMessages.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>
#include <utility>

namespace trellisport::practice {

namespace {

namespace fs = std::filesystem;

constexpr const char *start = "index.html";
constexpr const char *brotliEnd = ".br";
constexpr const char *gzipEnd = ".gz";

bool isSame(const timespec &one, const timespec &other)
{
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

bool isSame(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino &&
           one.st_size == other.st_size && isSame(one.st_mtim, other.st_mtim) &&
           isSame(one.st_ctim, other.st_ctim);
}

/// An open file, closed in the end.
class Descriptor {
public:
    // No link even when one takes the file's place just now, and no wait for a pipe's other end.
    explicit Descriptor(const fs::path &path)
        : m_number(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC))
    {
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }

    /// The file's state; absent when there is none or it is no regular file.
    [[nodiscard]] std::optional<struct stat> state() const
    {
        struct stat state {};
        if (m_number < 0 || ::fstat(m_number, &state) != 0 || !S_ISREG(state.st_mode))
            return std::nullopt;
        return state;
    }

    /// So many bytes from where it stands; absent when there are fewer.
    [[nodiscard]] std::optional<std::string> read(std::size_t size) const
    {
        std::string bytes(size, '\0');
        for (std::size_t offset = 0; offset < size;) {
            const ssize_t got = ::read(m_number, bytes.data() + offset, size - offset);
            if (got <= 0)
                return std::nullopt;
            offset += static_cast<std::size_t>(got);
        }
        return bytes;
    }

private:
    int m_number;
};

/// Calls found(name, path, state) for each file to offer; a file that can't be read is not there.
/// Whether the folder was there and could be read to its end.
template <typename Found>
bool walk(const fs::path &folder, Found found)
{
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path &path = entry->path();
        struct stat state {};
        const bool isHidden = path.filename().native().starts_with('.');
        if (isHidden || ::lstat(path.c_str(), &state) != 0)
            entry.disable_recursion_pending();
        else if (S_ISREG(state.st_mode))
            found(path.lexically_relative(folder).generic_string(), path, state);
    }
    return !error;
}

} // namespace

AppFolder::AppFolder(fs::path folder)
    : m_folder(std::move(folder))
{
    refresh();
    if (!m_files.contains(start))
        throw AppFolderError("The folder " + m_folder.string() + " holds no " + start + ".");
}

std::optional<AppFolder::File> AppFolder::find(const std::string &name)
{
    const std::lock_guard lock(m_mutex);
    refresh();
    const auto found = m_files.find(name);
    if (found == m_files.end() || name.ends_with(brotliEnd) || name.ends_with(gzipEnd))
        return std::nullopt;
    const Stored &plain = found->second;
    return File{plain.form, formBeside(plain, name + brotliEnd), formBeside(plain, name + gzipEnd)};
}

std::optional<AppFolder::Form> AppFolder::formBeside(const Stored &plain,
                                                     const std::string &name) const
{
    const auto found = m_files.find(name);
    // By whole seconds: not every compressor keeps a file's time more exactly.
    if (found == m_files.end() || found->second.state.st_mtim.tv_sec < plain.state.st_mtim.tv_sec)
        return std::nullopt;
    return found->second.form;
}

void AppFolder::refresh()
{
    Files files;
    std::size_t bytes = 0;
    const bool isWhole =
        walk(m_folder, [&](const std::string &name, const fs::path &path, const struct stat &seen) {
            bytes += static_cast<std::size_t>(seen.st_size);
            if (bytes > mostBytes || files.size() == mostFiles) {
                throw AppFolderError("The folder " + m_folder.string() +
                                     " holds more than a console's files.");
            }
            if (const auto known = m_files.find(name);
                known != m_files.end() && isSame(known->second.state, seen)) {
                files.emplace(name, known->second);
                return;
            }
            const Descriptor file(path);
            const auto state = file.state();
            auto content = state && state->st_size <= seen.st_size
                               ? file.read(static_cast<std::size_t>(state->st_size))
                               : std::nullopt;
            if (!content) // it is just being written; the next one who asks gets it
                return;
            auto shared = std::make_shared<const std::string>(*std::move(content));
            std::string tag = entityTagOf(*shared);
            files.emplace(name, Stored{*state, {std::move(shared), std::move(tag)}});
        });
    // A folder that is just being replaced is away for a moment.
    if (isWhole)
        m_files = std::move(files);
}

} // namespace trellisport::practice
