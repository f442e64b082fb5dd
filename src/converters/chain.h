#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "walk/frame.h"

namespace LmImagingLib {

class LibraryConverter;

/// The converters that an image passes through.
struct ConverterStages {
  const PixelConverter& first;
  const PixelConverter* second;  ///< null unless it is a chain
};

/// The stages of a chain of the library's own class; of any other converter the converter itself.
ConverterStages StagesOf(const PixelConverter& converter);

/// Two of the library's own converters, through as much of the intermediate image as is needed at a time: it never
/// leaves the cache, and threads share no buffer. Pixels that the first one leaves out are 0.
class BandedChain {
 public:
  /// Null members where one of the converters is not the library's, or the intermediate image has planes.
  explicit BandedChain(const ConverterStages& stages);

  explicit operator bool() const { return mSecond != nullptr; }

  /// Whether samples are looked up before they are brought to the intermediate image's bits, so that this one, which
  /// callers may have the memory of, has no say.
  bool SkipsIntermediate(const Frame& frame) const;

  /// Converts lines `first` to `end`. Throws `std::bad_alloc` where the intermediate lines are long.
  void ConvertLines(const Frame& frame, std::uint32_t first, std::uint32_t end) const;

 private:
  const LibraryConverter* mFirst = nullptr;
  const LibraryConverter* mSecond = nullptr;
};

}  // namespace LmImagingLib
