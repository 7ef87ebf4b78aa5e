#include "Platform/Linux/SocketBytes.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace trellisport::platform {

std::uint64_t socketBytes(int socket)
{
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) {
        return 0;
    }
    return info.tcpi_bytes_received + info.tcpi_bytes_acked;
}

} // namespace trellisport::platform
