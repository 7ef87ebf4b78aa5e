#pragma once

#include "Platform/Linux/Push/OpenSsl.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace trellisport::practice {

class VapidError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How push services know this service again (RFC 8292): a key pair on P-256 of its own. What a
/// browser subscribes to is bound to the public key, so the pair has to last.
class Vapid {
public:
    using Clock = std::chrono::system_clock;

    /// How long a signature holds. It has to be under a day; in the middle of that, either side's
    /// clock may be wrong by hours.
    static constexpr std::chrono::hours life{12};

    /// Takes the pair from the file, for the user alone; makes the file when there is none, or no
    /// such pair in it; one that can't be read stays as it is, and is an error. contact: an https
    /// address by which push services may reach whoever runs this. Throws VapidError.
    Vapid(const std::filesystem::path &file, std::string contact);

    /// The uncompressed point in base64url without padding, as browsers take it.
    [[nodiscard]] const std::string &publicKey() const noexcept { return m_publicKey; }

    /// The Authorization header's value for a message to the endpoint, an https URL. Absent when
    /// the signature fails. Any thread.
    [[nodiscard]] std::optional<std::string> authorization(const std::string &endpoint,
                                                           Clock::time_point now) const;

private:
    platform::openssl::Key m_key;
    std::string m_publicKey;
    std::string m_contact;
};

} // namespace trellisport::practice
