#include <array>
#include <cstdio>
#include <cstring>

// Something of each kind that the flags change, so that their effect can be looked for: a copy of a
// length that is known only at run time, a buffer on the stack, more stack than a page, and calls
// through a pointer.

namespace {

using Measure = std::size_t (*)(const char *);

std::size_t copied(const char *text)
{
    std::array<char, 64> buffer{};
    std::memcpy(buffer.data(), text, std::strlen(text));
    return std::strlen(buffer.data());
}

std::size_t printed(const char *text)
{
    std::array<char, 65536> buffer{};
    return static_cast<std::size_t>(std::snprintf(buffer.data(), std::strlen(text), "%s", text));
}

template <std::size_t factor>
std::size_t multiplied(const char *text)
{
    return std::strlen(text) * factor;
}

constexpr std::array<Measure, 12> measures{
    copied,        printed,       multiplied<2>, multiplied<3>, multiplied<4>,  multiplied<5>,
    multiplied<6>, multiplied<7>, multiplied<8>, multiplied<9>, multiplied<10>, multiplied<11>};

} // namespace

int main(int argc, char *argv[])
{
    const volatile auto chosen = static_cast<std::size_t>(argc) % measures.size();
    return static_cast<int>(measures[chosen](argv[0]));
}
