#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "frame_samples.h"

namespace LmPage {

/// One of several types that a file may have. Types of equal layout have one row, that of the commonest name.
struct Candidate {
  LmImagingLib::PixelTypeID type;
  bool isMosaic;
  double rarity;  ///< bits a byte that the reading has to save to be preferred to a common one
  SampleMap map;
};

/// The candidates among all registered types.
std::vector<Candidate> Candidates();

/// Looks at all bytes of files, once for each size of groups.
class BitUse {
 public:
  explicit BitUse(FileBytes file) : mFile(file) {}

  /// Finds the bits of the candidate's samples that are never set, and makes it rarer by those.
  /// @return false if bits that are unused in the layout differ from pixel to pixel
  bool Examine(Candidate& candidate);

 private:
  struct Bits {
    std::size_t bytes, planes;
    std::vector<std::uint8_t> some, all;  // of each byte of a group, the bits that are set somewhere and everywhere
  };
  const Bits& BitsOf(std::size_t bytes, std::size_t planes);

  FileBytes mFile;
  std::deque<Bits> mKnown;
};

}  // namespace LmPage
