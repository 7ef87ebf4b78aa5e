#pragma once

#include <exception>
#include <string>

namespace trellisport {

/// The client's own failures. Transport and decoding failures are errors of their own types
/// (platform::TransportError, DecodingError, EncodingError); what() is what a screen shows of any.
class APIError : public std::exception {
public:
    enum class Case { HttpError, InvalidURL };

    /// status: the reply's status code, or 0 when the reply was not an HTTP reply.
    [[nodiscard]] static APIError httpError(int status);
    [[nodiscard]] static APIError invalidURL();

    [[nodiscard]] Case errorCase() const noexcept { return m_case; }
    /// The status of an HttpError; 0 for the other case.
    [[nodiscard]] int status() const noexcept { return m_status; }
    /// "HTTP error " and the status, or "Invalid URL".
    [[nodiscard]] const std::string &errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char *what() const noexcept override { return m_description.c_str(); }

    friend bool operator==(const APIError &a, const APIError &b)
    {
        return a.m_case == b.m_case && a.m_status == b.m_status;
    }

private:
    APIError(Case errorCase, int status, std::string description);

    Case m_case;
    int m_status;
    std::string m_description;
};

} // namespace trellisport
