#include "ProjectDetail/Questions/QaPairs.h"

#include "Fuzz/Targets/Must.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

// The questionnaire and the answers, parted by the first zero byte.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const std::size_t middle = std::min(input.find('\0'), input.size());
    const std::string_view questionnaire = input.substr(0, middle);
    const std::string_view answers = input.substr(std::min(middle + 1, input.size()));

    const auto pairs = trellisport::qaPairs(questionnaire, answers);
    const auto lines = std::count(questionnaire.begin(), questionnaire.end(), '\n') + 1;
    must(static_cast<std::ptrdiff_t>(pairs.size()) <= lines, "a line is at most one question");
    std::size_t answered = 0;
    std::size_t from = 0;
    for (const auto &pair : pairs) {
        must(!pair.question.empty(), "a question has a text");
        must(pair.question.find('\n') == std::string::npos, "a question is one line");
        from = questionnaire.find(pair.question, from);
        must(from != std::string_view::npos, "the questions stand in the questionnaire, in order");
        answered += pair.answer.size();
    }
    must(answered <= answers.size() + 1, "answers are made of the answers' text");
    return 0;
}
