#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace trellisport::practice {

struct ServiceRequest {
    std::string method;
    std::string path; ///< decoded, without the query
    std::multimap<std::string, std::string> query;
    std::string contentType;
    std::string acceptEncoding;
    std::string ifNoneMatch;
    std::string body;
};

/// How a reply goes out.
enum class Delivery {
    Whole,
    Slow,  ///< its body in small pieces
    Cut,   ///< the connection ends within the body
    Reset, ///< the connection is reset, and nothing goes out
};

struct ServiceReply {
    int status = 200;
    std::string contentType = "application/json";
    std::string body;
    /// Sent in place of the body when there is one; for what is too large to be copied each time.
    std::shared_ptr<const std::string> content;
    std::vector<std::pair<std::string, std::string>> headers;
    Delivery delivery = Delivery::Whole;
};

/// A reply that says no.
[[nodiscard]] ServiceReply refusal(int status, const std::string &reason);
/// Says which methods there are instead, as in "GET, PUT".
[[nodiscard]] ServiceReply wrongMethod(const char *allowed);
[[nodiscard]] ServiceReply unknownPath();

/// Whether the request only reads.
[[nodiscard]] bool isGet(const ServiceRequest &request);

/// A strong entity tag of these bytes, in its quotes.
[[nodiscard]] std::string entityTagOf(const std::string &bytes);
/// Whether the asker says that it holds what has this tag.
[[nodiscard]] bool isHeld(const ServiceRequest &request, const std::string &tag);

} // namespace trellisport::practice
