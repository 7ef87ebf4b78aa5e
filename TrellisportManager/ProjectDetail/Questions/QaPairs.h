#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trellisport {

/// A question of the agent's questionnaire and the client's answer to it.
struct QaPair {
    std::string question; ///< the line, number and all
    std::string answer;   ///< empty: not answered

    [[nodiscard]] const std::string &identity() const noexcept { return question; }
    friend bool operator==(const QaPair &, const QaPair &) = default;
};

/// Pairs the numbered lines of a questionnaire with the numbered answers, both UTF-8.
///
/// A line is a question when it begins with digits and then "." or ")". Answers are found by place:
/// the question that comes n-th, whatever its own number, gets the answer numbered n. An answer
/// goes on in the lines below it that have no number; of two with one number the later holds.
///
/// Digits are those of every script, as in the regular expression \d; but an answer's number is
/// read from ASCII digits only, and one that can't be read, or is beyond 64 bits, counts as 0: such
/// an answer, like one numbered 0, is nobody's. Blanks at the ends, tabs and the spaces of all
/// scripts, are taken off. Time and space are linear in the texts.
[[nodiscard]] std::vector<QaPair> qaPairs(std::string_view questionnaire,
                                          std::string_view ownerAnswers);

} // namespace trellisport
