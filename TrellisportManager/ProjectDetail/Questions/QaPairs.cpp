#include "ProjectDetail/Questions/QaPairs.h"

#include <QChar>

#include <charconv>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace trellisport {

namespace {

struct CodePoint {
    char32_t value = 0;
    std::size_t size = 0; ///< in bytes; 0 at the text's end
};

/// The text's first code point; what is no UTF-8 counts byte by byte as U+FFFD.
CodePoint firstCodePoint(std::string_view text)
{
    if (text.empty()) {
        return {};
    }
    const auto byte = static_cast<unsigned char>(text.front());
    const std::size_t size = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    if (byte < 0x80) {
        return {byte, 1};
    }
    char32_t value = byte & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (i >= text.size() || (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
            return {QChar::ReplacementCharacter, 1};
        }
        value = (value << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return {value, size};
}

bool isBlank(char32_t character)
{
    return character == '\t' || QChar::category(character) == QChar::Separator_Space;
}

std::string_view trimmed(std::string_view text)
{
    for (CodePoint first = firstCodePoint(text); first.size > 0 && isBlank(first.value);
         first = firstCodePoint(text)) {
        text.remove_prefix(first.size);
    }
    while (!text.empty()) {
        std::size_t last = text.size() - 1;
        while (last > 0 && (static_cast<unsigned char>(text[last]) & 0xC0U) == 0x80U) {
            --last;
        }
        if (!isBlank(firstCodePoint(text.substr(last)).value)) {
            break;
        }
        text = text.substr(0, last);
    }
    return text;
}

/// The digits with which a numbered line begins, its mark not included; nothing for other lines.
std::optional<std::string_view> lineNumber(std::string_view line)
{
    std::size_t end = 0;
    for (CodePoint next = firstCodePoint(line); next.size > 0 && QChar::isDigit(next.value);
         next = firstCodePoint(line.substr(end))) {
        end += next.size;
    }
    const bool isMarked = end < line.size() && (line[end] == '.' || line[end] == ')');
    return end > 0 && isMarked ? std::optional(line.substr(0, end)) : std::nullopt;
}

/// The place of the question that an answer of this number belongs to; -1 for none.
std::int64_t questionIndex(std::string_view digits)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isRead = error == std::errc() && end == digits.data() + digits.size();
    return isRead ? number - 1 : -1;
}

template <typename Visit>
void forEachLine(std::string_view text, const Visit &visit)
{
    for (;;) {
        const std::size_t end = text.find('\n');
        visit(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

std::unordered_map<std::int64_t, std::string> answersByIndex(std::string_view ownerAnswers)
{
    std::unordered_map<std::int64_t, std::string> answers;
    std::int64_t current = -1;
    forEachLine(ownerAnswers, [&](std::string_view line) {
        if (const auto number = lineNumber(line)) {
            current = questionIndex(*number);
            const std::string_view rest = trimmed(line.substr(number->size() + 1));
            if (!rest.empty()) {
                answers[current] = rest;
            }
            return;
        }
        const std::string_view more = trimmed(line);
        if (current >= 0 && !more.empty()) {
            std::string &answer = answers[current];
            if (!answer.empty()) {
                answer += '\n';
            }
            answer += more;
        }
    });
    return answers;
}

} // namespace

std::vector<QaPair> qaPairs(std::string_view questionnaire, std::string_view ownerAnswers)
{
    const auto answers = answersByIndex(ownerAnswers);
    std::vector<QaPair> pairs;
    forEachLine(questionnaire, [&](std::string_view line) {
        if (lineNumber(line)) {
            const auto answer = answers.find(static_cast<std::int64_t>(pairs.size()));
            pairs.push_back({std::string(trimmed(line)),
                             answer == answers.end() ? std::string() : answer->second});
        }
    });
    return pairs;
}

} // namespace trellisport
