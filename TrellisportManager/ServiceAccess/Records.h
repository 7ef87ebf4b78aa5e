#pragma once

#include "ServiceAccess/RecordField.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// What the service sends, record by record. Every record is a value whose fields are set once, by
/// decoding or by aggregate initialisation in the order below. Its `fields` list names the JSON key
/// of each field, in the same order; decoding and encoding (RecordCoding.h) follow that list, and
/// it is the only place where a key stands.
namespace trellisport {

/// UTF-8.
using Text = std::string;
using OptionalText = std::optional<Text>;
using OptionalInteger = std::optional<std::int64_t>;
using OptionalNumber = std::optional<double>;

/// A project as listed.
struct Project {
    const Text id;                        ///< the service's identifier, used in every project path
    const OptionalText refNumber;         ///< the service's own reference number
    const OptionalInteger freelancerProjectId;  ///< the number on the marketplace
    const Text title;
    const OptionalText description;
    const OptionalNumber bidAmount;       ///< the agent's bid, money without a currency
    const OptionalText bidStatus;         ///< the stage in the agent's pipeline, e.g. "bid_placed"
    const OptionalText ownerUsername;     ///< the client on the marketplace
    const OptionalText githubRepoUrl;
    const OptionalText createdAt;
    const OptionalText updatedAt;

    static constexpr auto fields = std::tuple{
        field(&Project::id, "id"),
        field(&Project::refNumber, "ref_number"),
        field(&Project::freelancerProjectId, "freelancer_project_id"),
        field(&Project::title, "title"),
        field(&Project::description, "description"),
        field(&Project::bidAmount, "bid_amount"),
        field(&Project::bidStatus, "bid_status"),
        field(&Project::ownerUsername, "owner_username"),
        field(&Project::githubRepoUrl, "github_repo_url"),
        field(&Project::createdAt, "created_at"),
        field(&Project::updatedAt, "updated_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
};

}  // namespace trellisport
