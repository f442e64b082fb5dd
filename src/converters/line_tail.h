#pragma once

#include <algorithm>
#include <cstring>
#include <optional>

#include "formats/source_type.h"
#include "formats/writers.h"
#include "walk/frame.h"

namespace LmImagingLib {

/// The pixels of a line after its whole groups, of a layout that converts them.
///
/// A contained frame, and one of an exact layout, converts the pixels of the line and reads no byte after its samples.
/// Any other one reads the whole group and stores its pixels after the end of the line, too, but never over a pixel
/// that is converted already.
class LineTail {
 public:
  /// @param end  the line after the last one of the conversion
  LineTail(const Format& format, const Frame& frame, std::uint32_t end)
      : mFormat(format),
        mFrame(frame),
        mEnd(end),
        mIsExact(format.groups == WholeGroups::kExact),
        mPixels(format.Rest(frame.pixels)),
        mWholePixels(frame.pixels - mPixels),
        mPresent(mIsExact ? PixelsPresent() : mPixels),
        mOffset(std::size_t{mWholePixels} / format.groupPixels * (format.groupBits / 8)) {}

  std::uint32_t WholePixels() const { return mWholePixels; }

  /// The pixels of a line that is converted in one go, as all those of its last group may be stored; empty of
  /// other lines.
  std::optional<std::uint32_t> PixelsInOneGo(std::uint32_t line, const Writer& writer) const {
    if (HasNoTail()) return mWholePixels;
    for (std::size_t plane = 0; plane < writer.planes; ++plane) {
      if (BytesBeyond(line, plane, writer) != std::size_t{mFormat.groupPixels - mPixels} * writer.pixelBytes) {
        return std::nullopt;
      }
    }
    return mWholePixels + mFormat.groupPixels;
  }

  /// The bytes of a line that are read.
  std::size_t BytesRead() const {
    if (HasNoTail()) return mOffset;
    return mOffset + (mIsExact ? LastBytes() : mFormat.groupBits / 8);
  }
  /// The bytes of a line, in its last plane, and after it that are stored.
  std::size_t BytesStored(std::uint32_t line, const Writer& writer) const {
    if (HasNoTail()) return std::size_t{mWholePixels} * writer.pixelBytes;
    return std::size_t{mFrame.pixels} * writer.pixelBytes + BytesBeyond(line, writer.planes - 1, writer);
  }

  /// @param target  the line's target
  /// @param convert  converts a group, given with a target of its own
  template <class ConvertGroup>
  void Convert(const FrameLine& line, const Writer& writer, TargetLine target, const ConvertGroup& convert) const {
    std::uint8_t group[kMostGroupBytes] = {};
    std::uint8_t converted[3][kMostPlaneBytes];
    CopyLastGroup(mFormat, mPresent, line.source + mOffset, IsContained() ? LastBytes() : mFormat.groupBits / 8, group);
    target.line = converted[0];
    target.planeSize = kMostPlaneBytes;
    target.streams = false;
    target.ahead = 0;
    convert(group, target, mFormat.groupPixels);
    for (std::size_t plane = 0; plane < writer.planes; ++plane) {
      std::uint8_t* const to = line.destination + plane * mFrame.DestinationPlane();
      std::memcpy(to + std::size_t{mWholePixels} * writer.pixelBytes, converted[plane],
                  std::size_t{mPixels} * writer.pixelBytes + BytesBeyond(line.index, plane, writer));
    }
  }

 private:
  static constexpr std::size_t kMostPlaneBytes = 64;

  // The pixels of the last group that the line has. The place of their bits may depend on their number.
  std::uint32_t PixelsPresent() const {
    const std::uint32_t left = mFrame.sourceWidth - std::min(mFrame.sourceWidth, mWholePixels);
    return std::max(mPixels, std::min(left, mFormat.groupPixels));
  }
  std::size_t LastBytes() const {
    return static_cast<std::size_t>(LineBytesOf(mFormat, mWholePixels + mPresent)) - mOffset;
  }
  bool IsContained() const { return mFrame.contained || mIsExact; }

  // A single pixel of 4:1:1 has no chroma, and stays.
  bool HasNoTail() const { return mFormat.groups == WholeGroups::kYuv411 && mPixels == 1; }

  // Bytes to store after the end of a line.
  std::size_t BytesBeyond(std::uint32_t line, std::size_t plane, const Writer& writer) const {
    if (IsContained()) return 0;
    const std::size_t all = std::size_t{mFormat.groupPixels - mPixels} * writer.pixelBytes;
    // The next line of the second field is one of the first field, and the next line of the last one of a plane is the
    // first one of the next plane. Both are there already.
    const bool beforeOtherField = mFrame.interlaced && line % 2 != 0 && line + 1 < mEnd;
    const bool beforeOtherPlane = plane + 1 < writer.planes && line + 1 >= mFrame.destinationHeight;
    if (!beforeOtherField && !beforeOtherPlane) return all;
    const std::size_t bytes = std::size_t{mFrame.pixels} * writer.pixelBytes;
    return std::min(all, mFrame.destinationLine - std::min(bytes, mFrame.destinationLine));
  }

  const Format& mFormat;
  const Frame& mFrame;
  std::uint32_t mEnd;
  bool mIsExact;
  std::uint32_t mPixels, mWholePixels, mPresent;
  std::size_t mOffset;
};

}  // namespace LmImagingLib
