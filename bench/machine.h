#pragma once

#include <ctime>
#include <string>

namespace LmImagingLib::Bench {

/// Processor time, which other programs on a busy machine disturb less than the time of day.
inline double NanosecondsSince(std::clock_t begin) {
  return static_cast<double>(std::clock() - begin) * (1e9 / CLOCKS_PER_SEC);
}

/// What the processor says of itself, where the system reports it.
std::string ProcessorName();

}  // namespace LmImagingLib::Bench
