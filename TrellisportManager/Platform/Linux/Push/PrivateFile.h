#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace trellisport::platform {

/// A small file that only its user may read. A write replaces the whole file or leaves it as it
/// was.
class PrivateFile {
public:
    /// No file needs to be there yet, nor its folder.
    explicit PrivateFile(QString path);

    /// Absent when there is none, when it can't be read, and when it is larger than it could be.
    [[nodiscard]] std::optional<QByteArray> read() const;
    /// Readable and writable for the user alone, in a folder made for the user alone.
    [[nodiscard]] bool write(const QByteArray &content) const;

private:
    QString m_path;
};

/// The folder in which this program may keep what the system needs it to know, by the rules for
/// such folders: below $XDG_STATE_HOME, else ~/.local/state. It need not exist.
[[nodiscard]] QString stateFolder();

} // namespace trellisport::platform
