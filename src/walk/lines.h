#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "walk/frame.h"

// The walk over the lines of an image. Every conversion goes through it.
namespace LmImagingLib {

/// From line `first` to a line that may be above it.
inline std::ptrdiff_t LineOffset(std::uint32_t line, std::uint32_t first, std::size_t lineBytes) {
  return (static_cast<std::ptrdiff_t>(line) - static_cast<std::ptrdiff_t>(first)) *
         static_cast<std::ptrdiff_t>(lineBytes);
}

/// Whether a line of the source is part of the image: an odd last one belongs to no pair of fields.
inline bool HasSourceLine(const Frame& frame, std::uint32_t line) {
  return !frame.interlaced || line < frame.fieldLines;
}

/// Where a line of the source begins, from the beginning of the source on.
inline std::ptrdiff_t SourceOffsetOf(const Frame& frame, std::uint32_t line) {
  if (!frame.interlaced) return LineOffset(line, frame.sourceFirst, frame.sourceLine);
  const bool swapped = (frame.flags & ConversionFlags::kFieldOrder) != 0;
  const bool second = (line % 2 != 0) != swapped;
  return static_cast<std::ptrdiff_t>((second ? frame.secondField : 0) + line / 2 * frame.sourceLine);
}

/// Where a line of the source is; null for one that the image does not have.
inline const std::uint8_t* SourceLineAt(const Frame& frame, std::uint32_t line) {
  return HasSourceLine(frame, line) ? frame.source + SourceOffsetOf(frame, line) : nullptr;
}

inline std::uint8_t* DestinationLineAt(const Frame& frame, std::uint32_t line) {
  return frame.destination + LineOffset(line, frame.destinationFirst, frame.destinationLine);
}

/// Calls `convert` with lines `first` to `end`: from top to bottom, of an interlaced source first the even ones and
/// then the odd ones.
/// @param step  lines that are converted at once, 1 of an interlaced source; a rest of fewer lines is left out
/// @return the line after the last one of a whole step
template <class Convert>
std::uint32_t ForEachLine(const Frame& frame, std::uint32_t first, std::uint32_t end, std::uint32_t step,
                          Convert&& convert) {
  if (!frame.interlaced) {
    for (; first < end && end - first >= step; first += step) {
      convert(FrameLine{SourceLineAt(frame, first), DestinationLineAt(frame, first), first});
    }
    return first;
  }
  for (std::uint32_t parity = 0; parity < 2; ++parity) {
    for (std::uint32_t line = first + (first % 2 != parity ? 1 : 0); line < end; line += 2) {
      const std::uint8_t* const source = SourceLineAt(frame, line);
      if (source != nullptr) convert(FrameLine{source, DestinationLineAt(frame, line), line});
    }
  }
  return end;
}

/// The last line of each field, and of a progressive image the last line, of the first `lines` lines. Calls `use` with
/// its index and its offsets in source and destination, which may be unknown yet.
template <class Use>
void ForEachLastLine(const Frame& frame, std::uint32_t lines, Use&& use) {
  const std::uint32_t converted = frame.interlaced ? lines / 2 * 2 : lines;
  for (std::uint32_t k = 0; k < (frame.interlaced ? 2U : 1U) && converted > k; ++k) {
    const std::uint32_t line = converted - 1 - k;
    use(line, static_cast<std::size_t>(SourceOffsetOf(frame, line)),
        static_cast<std::size_t>(LineOffset(line, frame.destinationFirst, frame.destinationLine)));
  }
}

}  // namespace LmImagingLib
