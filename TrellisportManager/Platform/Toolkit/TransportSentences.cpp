#include "Platform/Toolkit/TransportSentences.h"

namespace trellisport::platform {

TransportError transportError(TransportFailure failure)
{
    switch (failure) {
    case TransportFailure::Cancelled:
        return {failure, "The request was cancelled."};
    case TransportFailure::TimedOut:
        return {failure, "The server took too long to answer."};
    case TransportFailure::HostNotFound:
        return {failure, "The server could not be found."};
    case TransportFailure::CannotConnect:
        return {failure, "The server could not be reached."};
    case TransportFailure::SecureConnectionFailed:
        return {failure, "A secure connection to the server could not be made."};
    case TransportFailure::ConnectionLost:
        return {failure, "The connection to the server was lost."};
    case TransportFailure::ReplyTooLarge:
        return {failure, "The server's reply is too large."};
    case TransportFailure::Other:
        break;
    }
    return {TransportFailure::Other, "The request could not be carried out."};
}

} // namespace trellisport::platform
