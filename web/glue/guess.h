#pragma once

#include <cstddef>
#include <vector>

#include "frame_samples.h"

namespace LmPage {

/// A reading of a file, and how little it surprises.
struct Guess {
  Reading reading;
  double bits;  ///< of code for a byte of the file, and a little more for types and sizes that are rare; less is better
};

/// Limits of a search.
struct GuessOptions {
  std::size_t width = 0;   ///< in pixels; 0 if it is unknown
  std::size_t height = 0;  ///< in pixels; 0 if it is unknown
  std::size_t most = 12;   ///< guesses
};

/// The likeliest readings of a file without a header, best first; empty if no type and size have its number of bytes.
/// It takes one to two seconds.
///
/// The order of red and blue is not in the bytes; the commoner one comes first. Nor are bits that no pixel uses: of the
/// types that have room for all values, the one with the fewest bits comes first.
std::vector<Guess> GuessReadings(FileBytes file, const GuessOptions& options = {});

}  // namespace LmPage
