#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

// Runs a target without libFuzzer: DRIVER RUNS FOLDER. Every file below the folder is an input;
// then as many inputs as asked for are made of them by random changes, the same ones each time.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

using Input = std::string;

std::vector<Input> readAll(const std::filesystem::path &folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto &file : std::filesystem::recursive_directory_iterator(folder)) {
        if (file.is_regular_file()) {
            files.push_back(file.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<Input> inputs;
    for (const auto &file : files) {
        std::ifstream stream(file, std::ios::binary);
        inputs.emplace_back(std::istreambuf_iterator<char>(stream),
                            std::istreambuf_iterator<char>());
    }
    return inputs;
}

class Mutator {
public:
    explicit Mutator(const std::vector<Input> &inputs)
        : m_inputs(inputs)
    {
    }
    Input next()
    {
        Input input = any();
        for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
            change(input);
        }
        return input;
    }

private:
    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random);
    }
    const Input &any() { return m_inputs[below(m_inputs.size())]; }

    void change(Input &input)
    {
        const std::size_t place = below(input.size() + 1);
        const auto rest = input.size() - place;
        switch (below(5)) {
        case 0:
            input.insert(place, 1, static_cast<char>(below(256)));
            break;
        case 1:
            input.erase(place, rest > 0 ? 1 + below(std::min<std::size_t>(rest, 16)) : 0);
            break;
        case 2:
            if (rest > 0) {
                input[place] = static_cast<char>(below(256));
            }
            break;
        case 3: // a piece of another input
            if (const Input &other = any(); !other.empty()) {
                input.insert(place, other.substr(below(other.size()), 1 + below(64)));
            }
            break;
        default: // a piece of its own, again
            if (rest > 0) {
                input.insert(place, input.substr(place, 1 + below(32)));
            }
        }
    }

    const std::vector<Input> &m_inputs;
    std::mt19937 m_random{1};
};

void run(const Input &input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::cerr << "Usage: " << argv[0] << " RUNS FOLDER\n";
        return 2;
    }
    std::vector<Input> inputs = readAll(argv[2]);
    if (inputs.empty()) {
        std::cerr << argv[2] << " holds no inputs\n";
        return 2;
    }
    for (const Input &input : inputs) {
        run(input);
    }
    Mutator mutator(inputs);
    const int runs = std::atoi(argv[1]);
    for (int i = 0; i < runs; ++i) {
        run(mutator.next());
    }
    std::cout << inputs.size() << " inputs and " << runs << " made of them\n";
    return 0;
}
