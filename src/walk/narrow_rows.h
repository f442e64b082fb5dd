#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace LmImagingLib {

/// The last rows of an image of wide samples, brought to 8 bits. Neighbourhoods need each row in up to four lines; a
/// frame keeps them from step to step.
class NarrowRows {
 public:
  /// Forgets the rows: the bytes behind the addresses seen so far may change.
  void Forget();

  /// The row at `wide` in 8 bits, aligned to a cache line. Valid until the fourth call with another row.
  /// @param wide  16-bit samples; the address tells one row from another
  /// @param line  the row's number in the image
  /// @param shift  right shift that brings a sample to 8 bits; the same until rows are forgotten
  /// @param ahead  how many bytes ahead to fetch samples into the cache; 0 leaves it to the processor
  const std::uint8_t* Row(const std::uint8_t* wide, std::size_t line, std::size_t samples, std::uint32_t shift,
                          std::uint32_t ahead);

 private:
  static constexpr std::size_t kRows = 4;

  std::vector<std::uint8_t> mBytes;
  std::size_t mSamples = 0;
  const std::uint8_t* mWide[kRows] = {};  // of each row; null where none is kept
};

}  // namespace LmImagingLib
