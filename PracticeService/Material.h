#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::practice {

struct Saying {
    bool byAgent = false;
    std::string text;
};

/// A question that the agent may put to its owner.
struct Dilemma {
    int timeoutMinutes = 0; ///< 0: the agent waits for ever
    std::string question;
    /// What the owner said when this lies in the past; "-": nothing in time; empty: still open.
    std::string answer;
};

/// One project's texts, from Material/stories.
struct Story {
    std::string name; ///< of the file
    std::string title;
    std::string owner;  ///< the client's user name
    std::string stage;  ///< how far a new portfolio has taken it; may be empty
    bool waits = false; ///< awarded, but not begun yet
    std::string repo;
    std::string module; ///< a source file that the logs talk about
    double budget = 0;
    int days = 0;
    std::string description;
    std::string questionnaire;
    std::string answers;
    std::string plan;
    std::string refusal; ///< what the client says to a bid that is not taken; may be empty
    /// What is said on the way: with the questions, the answers, the plan, the bid, then the award
    /// and all that follows it.
    std::vector<Saying> chat;
    std::vector<Saying> later; ///< what is said while the work goes on
    std::vector<Dilemma> dilemmas;
};

struct Bidder {
    std::string username;
    std::string displayName; ///< may be empty
    std::string country;     ///< may be empty
};

/// A burst of work as the log shows it.
struct LogEntry {
    std::string type;
    std::string text;
};

/// The texts that the practice world is made of. Read from the program's own resources.
struct Material {
    std::vector<Story> stories;
    std::vector<Bidder> bidders;
    std::vector<std::string> pitches;
    std::vector<std::vector<LogEntry>> work;   ///< each a call, its result and what follows
    std::vector<std::vector<LogEntry>> errors; ///< each ends in an error
    std::vector<Saying> chatter;               ///< for conversations that have run out of their own
    std::vector<std::string> thanks;           ///< to a client who waited for a decision
    std::vector<std::string> commits;
    std::vector<std::string> notesDiffs;
    std::vector<Dilemma> dilemmas;   ///< for projects that have none of their own left
    std::vector<std::string> twists; ///< title patterns for repeated stories

    /// Throws std::runtime_error when a file is not as it should be.
    [[nodiscard]] static Material load();

    /// The story of that name; nothing when there is none (a data folder may be older).
    [[nodiscard]] const Story *story(std::string_view name) const;
};

/// Reads one story file's text.
[[nodiscard]] Story parseStory(const std::string &name, std::string_view text);

/// Replaces "{key}" by its value; other braces stay.
[[nodiscard]] std::string expand(std::string_view text,
                                 const std::map<std::string, std::string, std::less<>> &values);

} // namespace trellisport::practice
