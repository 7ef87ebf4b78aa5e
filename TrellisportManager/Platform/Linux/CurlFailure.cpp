#include "Platform/Linux/CurlFailure.h"

namespace trellisport::platform {

TransportError transportError(CURLcode code)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return transportError(TransportFailure::HostNotFound);
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return transportError(TransportFailure::CannotConnect);
    case CURLE_OPERATION_TIMEDOUT:
        return transportError(TransportFailure::TimedOut);
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return {TransportFailure::SecureConnectionFailed,
                "The server's certificate could not be trusted."};
    case CURLE_SSL_CACERT_BADFILE:
        return {TransportFailure::SecureConnectionFailed,
                "The file of certificate authorities could not be read."};
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_CLIENTCERT:
        return transportError(TransportFailure::SecureConnectionFailed);
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return transportError(TransportFailure::ConnectionLost);
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_OUT_OF_MEMORY: // also what libcurl says of a header line without end
        return transportError(TransportFailure::ReplyTooLarge);
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return {TransportFailure::Other, "The server's reply could not be understood."};
    default:
        return transportError(TransportFailure::Other);
    }
}

bool isUnreadableReply(CURLcode code)
{
    return code == CURLE_UNSUPPORTED_PROTOCOL || code == CURLE_WEIRD_SERVER_REPLY;
}

} // namespace trellisport::platform
