#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace trellisport::practice {

class AppFolderError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The files of the console for browsers, held in memory. Only what was found in the folder can be
/// asked for: regular files in it and in its folders, no symbolic links, nothing whose name begins
/// with a dot. What has changed in the folder is read again before the next file is given; while
/// the folder is away, the files are those that it held.
class AppFolder {
public:
    /// More than that is no console.
    static constexpr std::size_t mostFiles = 2000;
    static constexpr std::size_t mostBytes = std::size_t(256) * 1024 * 1024;

    /// Bytes as they go out.
    struct Form {
        std::shared_ptr<const std::string> bytes;
        std::string tag; ///< of these bytes
    };
    /// A file, and what lies compressed beside it as NAME.br and NAME.gz.
    struct File {
        Form plain;
        std::optional<Form> brotli;
        std::optional<Form> gzip;
    };

    /// Throws AppFolderError when there is no index.html, or too much.
    explicit AppFolder(std::filesystem::path folder);

    /// The file of that name, such as "icons/small.png". A compressed one is not a file of its own,
    /// and left out when it is older than its file. Any thread. Throws AppFolderError when there is
    /// too much by now.
    [[nodiscard]] std::optional<File> find(const std::string &name);

private:
    struct Stored {
        struct stat state; ///< when it was read
        Form form;
    };
    using Files = std::map<std::string, Stored>;

    void refresh();
    [[nodiscard]] std::optional<Form> formBeside(const Stored &plain,
                                                 const std::string &name) const;

    std::filesystem::path m_folder;
    std::mutex m_mutex;
    Files m_files; ///< by name
};

} // namespace trellisport::practice
