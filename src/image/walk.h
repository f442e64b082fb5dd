#pragma once

#include <cstddef>
#include <cstdint>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

struct Source;

/// The lines of a source and of a destination, at any distance from each other, and those to convert.
struct LineWalk {
  const std::uint8_t* source;    ///< of an interlaced source its beginning, otherwise line `sourceFirst`
  std::size_t sourceLine;        ///< bytes from a line to the next
  std::uint32_t sourceFirst;     ///< counted in the image
  std::uint8_t* destination;     ///< line `destinationFirst`
  std::size_t destinationLine;   ///< bytes from a line to the next
  std::size_t destinationPlane;  ///< lines from a plane to the next
  std::uint32_t destinationFirst;
  std::uint32_t width, height;  ///< of the image
  std::uint32_t first, end;     ///< the lines to convert
  unsigned long flags;
  const RGBFilter* filter;  ///< null stands for the identity
};

/// Where a line of the source begins; null for one that belongs to no pair of fields.
const std::uint8_t* SourceLineAt(const LineWalk& walk, bool interlaced, std::uint32_t line);

/// Whether `groups` convert lines of `width` pixels by groups that pass their end.
bool PassesLineEnd(const Source* groups, std::uint32_t width);

/// Converts lines by the line conversion of one of the library's own converters, as `PixelConverter::Convert` does, but
/// touches no byte past the end of a line.
/// @param groups  how the source groups its pixels; null if it does not
void ConvertLines(const PixelConverter& converter, const Source* groups, const LineWalk& walk);

}  // namespace LmImagingLib
