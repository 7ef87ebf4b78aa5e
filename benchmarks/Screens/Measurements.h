#pragma once

#include <cstddef>
#include <string>

namespace trellisport::bench {

// Each opens the real screen of a list (see subjectNamed) of a size: entries, or the bytes of the
// one text. Each reports what it read (Series.h).

/// From a reply's last byte to the first frame, and decoding the same bytes alone, by turns.
void measureOpening(const std::string &list, std::size_t size, int repetitions);
/// Each frame of a list that moves as fast as a flick moves it, and as many frames of an empty
/// window. renderer: what names the series.
void measureFlick(const std::string &renderer, const std::string &list, std::size_t size,
                  int frames);
/// What the process holds with the list open.
void measureMemory(const std::string &list, std::size_t size);
/// The same with the list as a file of the service has it.
void measureMemoryOfFile(const std::string &list, const std::string &file);
/// Letters typed into the projects' search field and chips tapped: until the list is up to date,
/// and until the frame is drawn.
void measureFilter(std::size_t size, int repetitions);

} // namespace trellisport::bench
