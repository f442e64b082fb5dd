#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"

/// What `PixelConverter::Convert` makes of an image, in buffers with more than enough room.
namespace unchecked {

using Bytes = std::vector<std::uint8_t>;
using LmImagingLib::PixelTypeID;

/// How an image lies in its buffer.
struct Layout {
  Layout(PixelTypeID type, std::size_t width, std::size_t theHeight, std::size_t lineSize)
      : planes(PlanesOf(type)),
        lineBytes(*LmImagingLib::RequiredSize(type, width, 1) - (planes - 1) * LineStep(type, width)),
        // To a single line the next one may be gigabytes away: it does not matter.
        line(lineSize != 0 && planes * theHeight > 1 ? lineSize : LineStep(type, width)),
        height(theHeight) {}

  std::size_t Lines() const { return planes * height; }
  std::size_t Bytes() const { return (Lines() - 1) * line + lineBytes; }
  /// The bytes of a line that are not the next one's.
  std::size_t OwnBytes(std::size_t index) const { return index + 1 == Lines() || lineBytes < line ? lineBytes : line; }

  static std::size_t LineStep(PixelTypeID type, std::size_t width) {
    return (*LmImagingLib::RequiredSize(type, width, 3) - *LmImagingLib::RequiredSize(type, width, 2)) / PlanesOf(type);
  }
  static std::size_t PlanesOf(PixelTypeID type) {
    constexpr std::size_t kLine = 4096;  // of 8 pixels of any type
    return (*LmImagingLib::RequiredSize(type, 8, 2, kLine) - *LmImagingLib::RequiredSize(type, 8, 1, kLine)) / kLine;
  }

  std::size_t planes, lineBytes, line, height;
};

inline bool IsInterlaced(PixelTypeID type) { return (type & LmImagingLib::kInterlacedFlag) != 0; }

/// Layouts that are converted in groups which pass the end of a line.
inline bool PassesLineEnd(PixelTypeID type) {
  for (const PixelTypeID passing : {0x10008, 0x10009, 0x20040, 0x20041, 0x20046, 0x440006, 0x640006}) {
    if (type == passing) return true;
  }
  return false;
}

/// The lines of an image parted by `line` bytes, with room behind the last.
inline Bytes Spread(const Bytes& image, const Layout& layout, std::size_t line) {
  constexpr std::size_t kRoom = 64;
  Bytes spread(layout.Lines() * line + layout.lineBytes + kRoom);
  for (std::size_t y = 0; y < layout.Lines(); ++y) {
    std::memcpy(spread.data() + y * line, image.data() + y * layout.line, layout.lineBytes);
  }
  return spread;
}

/// The destination's buffer after the conversion of the lines that the options name.
/// @param before  the buffer before
inline Bytes Convert(const LmImagingLib::ConstImageView& source, const LmImagingLib::ImageView& destination,
                     const LmImagingLib::ConvertOptions& options, const Bytes& from, const Bytes& before) {
  using namespace LmImagingLib;
  const unsigned long width = source.width;
  const unsigned long height = source.height;
  const Layout in(source.type, width, height, source.lineSize);
  const Layout out(destination.type, width, height, destination.lineSize);
  const PixelConverter* converter = PixelTypeFactory::FindConverter(source.type, destination.type);
  constexpr unsigned long kPadding = 64;
  const std::size_t outLine = out.lineBytes + kPadding;
  Bytes converted = Spread(before, out, outLine);

  // Copies of whole buffers have lines of their own length; here they are copies of bytes.
  const bool copies = dynamic_cast<const IdentityConverter*>(converter) != nullptr;
  const std::size_t dense = Layout::LineStep(source.type, width);
  if (copies && (converter->GetSourceLineSize(width) != in.lineBytes || dense != in.lineBytes)) {
    const PixelTypeID bytes = IsInterlaced(source.type) ? 0x210001 : 0x10001;
    Bytes room = from;
    room.resize(room.size() + in.line + kPadding);
    PixelTypeFactory::FindConverter(bytes, bytes)
        ->Convert(room.data(), in.line, in.Lines(), converted.data(), in.lineBytes, in.Lines(), in.lineBytes,
                  in.Lines(), options.flags, kPadding, nullptr, nullptr);
  } else {
    // Lines that are parted by padding go as wider ones, or where that would be converted too, without padding.
    const bool wider = !copies && PassesLineEnd(source.type) && in.line != dense;
    const unsigned long sourceWidth = wider ? (width + 7) / 4 * 4 : width;
    const Bytes room = Spread(from, in, copies ? in.lineBytes : converter->GetSourceLineSize(sourceWidth));
    Bytes scratch((sourceWidth * height + kPadding) * 2);
    void* scratchData = scratch.data();
    unsigned long scratchSize = scratch.size();
    converter->Convert(options.filter, room.data(), sourceWidth, height, converted.data(), width, height, width, height,
                       options.flags, kPadding, &scratchData, &scratchSize);
  }

  const std::size_t first = options.firstLine;
  const std::size_t end = options.lines == ConvertOptions::kAllLines ? height : first + options.lines;
  Bytes after = before;
  for (std::size_t plane = 0; plane < out.planes; ++plane) {
    for (std::size_t y = plane * height + first; y < plane * height + end; ++y) {
      std::memcpy(after.data() + y * out.line, converted.data() + y * outLine, out.OwnBytes(y));
    }
  }
  return after;
}

}  // namespace unchecked
