#pragma once

#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace trellisport::practice {

class CertificateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The files in the data folder that prove who the service is.
struct CertificateFiles {
    std::filesystem::path authority;    ///< ca.pem, what a client must trust
    std::filesystem::path authorityKey; ///< mode 0600, like every key
    std::filesystem::path server;       ///< for 127.0.0.1, ::1 and localhost
    std::filesystem::path serverKey;
};

/// Makes what is missing in the folder, unreadable, does not belong together or is no longer valid
/// for thirty days from now; leaves the rest alone, so that a client need trust the authority only
/// once. Throws CertificateError.
CertificateFiles
ensureCertificates(const std::filesystem::path &folder,
                   std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

} // namespace trellisport::practice
