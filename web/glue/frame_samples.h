#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "sample_map.h"

namespace LmPage {

/// The bytes of a file, which the frame does not own.
struct FileBytes {
  const std::uint8_t* data;
  std::size_t size;
};

/// How a file is read as a frame.
struct Reading {
  LmImagingLib::PixelTypeID type;
  unsigned long flags;  ///< bits of `ConversionFlags`: the layout of a mosaic
  std::size_t width;
  std::size_t height;
};

/// Whether the pixels of a line are not in their order in memory.
bool HasTaps(LmImagingLib::PixelTypeID type);

/// The samples of a frame at their pixels, in the counts of the camera: fields, taps and planes are in order.
class FrameSamples {
 public:
  /// @param bytes  at least `RequiredSize` of the reading; they have to outlive the frame
  /// @param reading  its width is a multiple of the pixels of a group
  FrameSamples(FileBytes bytes, const SampleMap& map, const Reading& reading);

  /// Reads `count` samples of a channel in line y from sample x on. Of shared chroma, sample x belongs to the pixels
  /// from x * `Channel::step` on.
  void Read(const Channel& channel, std::size_t x, std::size_t y, std::size_t count, std::int32_t* out) const;
  /// One sample.
  std::int32_t At(const Channel& channel, std::size_t x, std::size_t y) const;

  const SampleMap& Map() const { return *mMap; }
  std::size_t Width() const { return mWidth; }
  std::size_t Height() const { return mHeight; }

 private:
  const std::uint8_t* mData;
  const SampleMap* mMap;
  std::size_t mWidth, mHeight, mLineBytes;
  bool mInterlaced, mDualLines;
  std::vector<std::uint16_t> mPlaces;  // where pixel x is in memory; empty where it is pixel x there, too
};

}  // namespace LmPage
