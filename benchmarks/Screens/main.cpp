#include "Screens/Measurements.h"

#include <QGuiApplication>

#include <iostream>
#include <string>
#include <vector>

using namespace trellisport::bench;

namespace {

int complain()
{
    std::cerr << "trellisport-bench-screens open LIST SIZE REPETITIONS\n"
                 "                          flick RENDERER LIST SIZE FRAMES\n"
                 "                          memory LIST SIZE\n"
                 "                          memory-of-file LIST FILE\n"
                 "                          filter SIZE REPETITIONS\n";
    return 2;
}

} // namespace

int main(int argc, char *argv[])
{
    // Frames are drawn when they are asked for, on this thread, so that they can be timed.
    qputenv("QSG_RENDER_LOOP", "basic");
    const QGuiApplication application(argc, argv);
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() == 4 && words[0] == "open") {
        measureOpening(words[1], std::stoul(words[2]), std::stoi(words[3]));
    } else if (words.size() == 5 && words[0] == "flick") {
        measureFlick(words[1], words[2], std::stoul(words[3]), std::stoi(words[4]));
    } else if (words.size() == 3 && words[0] == "memory") {
        measureMemory(words[1], std::stoul(words[2]));
    } else if (words.size() == 3 && words[0] == "memory-of-file") {
        measureMemoryOfFile(words[1], words[2]);
    } else if (words.size() == 3 && words[0] == "filter") {
        measureFilter(std::stoul(words[1]), std::stoi(words[2]));
    } else {
        return complain();
    }
    return 0;
}
