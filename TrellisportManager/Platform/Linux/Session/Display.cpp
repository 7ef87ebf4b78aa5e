#include "Platform/Linux/Session/Display.h"

#include <QDir>
#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace trellisport::platform {

namespace {

/// Whether somebody listens on a local socket. A name in place of a path begins with a NUL.
bool somebodyListens(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path)) {
        return false;
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) {
        return false;
    }
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) +
                                             static_cast<std::size_t>(path.size()));
    const bool listens = ::connect(socket, reinterpret_cast<const sockaddr *>(&address), size) == 0;
    ::close(socket);
    return listens;
}

bool compositorListens()
{
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (name.isEmpty()) {
        return false;
    }
    const QString path = QDir::isAbsolutePath(name)
                             ? name
                             : qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1Char('/') + name;
    return somebodyListens(QFile::encodeName(path));
}

bool xServerListens()
{
    // [HOST]:NUMBER[.SCREEN]
    const QString display = qEnvironmentVariable("DISPLAY");
    const qsizetype colon = display.lastIndexOf(QLatin1Char(':'));
    if (colon < 0) {
        return false;
    }
    const QString host = display.left(colon);
    if (!host.isEmpty() && host != QLatin1String("unix")) {
        return true; // on another machine: asking would take too long
    }
    const QByteArray path =
        "/tmp/.X11-unix/X" + display.mid(colon + 1).section(QLatin1Char('.'), 0, 0).toUtf8();
    return somebodyListens('\0' + path) || somebodyListens(path);
}

} // namespace

bool displayIsReachable()
{
    const QString toolkit = qEnvironmentVariable("QT_QPA_PLATFORM");
    const bool needsNone = !toolkit.isEmpty() && !toolkit.startsWith(QLatin1String("wayland")) &&
                           !toolkit.startsWith(QLatin1String("xcb"));
    return needsNone || compositorListens() || xServerListens();
}

void adoptDisplay(const QStringList &session)
{
    constexpr std::array names{"DISPLAY",         "WAYLAND_DISPLAY",  "XAUTHORITY",
                               "XDG_RUNTIME_DIR", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP",
                               "QT_QPA_PLATFORM"};
    for (const char *name : names) {
        const QString start = QLatin1String(name) + QLatin1Char('=');
        for (const QString &entry : session) {
            if (entry.startsWith(start)) {
                qputenv(name, entry.mid(start.size()).toUtf8());
            }
        }
    }
    if (displayIsReachable()) {
        return;
    }
    // The session tells nothing: most have one compositor, in its usual place.
    const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    const QStringList sockets =
        runtime.entryList({QStringLiteral("wayland-?")}, QDir::System, QDir::Name);
    for (const QString &socket : sockets) {
        if (somebodyListens(QFile::encodeName(runtime.filePath(socket)))) {
            qputenv("WAYLAND_DISPLAY", socket.toUtf8());
            return;
        }
    }
}

void preferReachableDisplay()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && compositorListens() &&
        !xServerListens()) {
        qputenv("QT_QPA_PLATFORM", "wayland");
    }
}

} // namespace trellisport::platform
