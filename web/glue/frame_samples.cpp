#include "frame_samples.h"

#include <numeric>

#include "encode/readout.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

std::vector<std::uint16_t> InOrder(std::size_t count) {
  std::vector<std::uint16_t> order(count);
  std::iota(order.begin(), order.end(), std::uint16_t{0});
  return order;
}

}  // namespace

bool HasTaps(PixelTypeID type) {
  constexpr std::size_t kEnough = 8;
  return LmTool::InReadoutOrder(type, InOrder(kEnough)) != InOrder(kEnough);
}

FrameSamples::FrameSamples(FileBytes bytes, const SampleMap& map, const Reading& reading)
    : mData(bytes.data),
      mMap(&map),
      mWidth(reading.width),
      mHeight(reading.height),
      mLineBytes(reading.width / map.pixels * map.bytes),
      mInterlaced((reading.type & kInterlacedFlag) != 0),
      mDualLines((reading.type & kDualOutputMask) == kDualLines) {
  if (!HasTaps(reading.type)) return;
  const std::vector<std::uint16_t> readout = LmTool::InReadoutOrder(reading.type, InOrder(mWidth));
  mPlaces.resize(mWidth);
  for (std::size_t i = 0; i < mWidth; ++i) mPlaces[readout[i]] = static_cast<std::uint16_t>(i);
}

void FrameSamples::Read(const Channel& channel, std::size_t x, std::size_t y, std::size_t count,
                        std::int32_t* out) const {
  std::size_t apart = 1, line = y;  // bytes from one to the next of neighbouring bytes; the line in memory
  const std::uint8_t* from = mData;
  if (mDualLines && y / 2 * 2 + 1 < mHeight) {
    apart = 2;
    from += y % 2;
    line = y / 2 * 2;
  } else if (mInterlaced) {
    line = y % 2 == 0 ? y / 2 : mHeight / 2 + y / 2;
  }
  from += (channel.plane * mHeight + line) * mLineBytes;
  const std::size_t perGroup = channel.samples.size();
  const std::size_t groupBytes = mMap->bytes * apart;
  if (!mPlaces.empty()) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t place = mPlaces[x + i];
      out[i] = channel.samples[place % perGroup].In(from + place / perGroup * groupBytes);
    }
    return;
  }
  const std::uint8_t* group = from + x / perGroup * groupBytes;
  std::size_t k = x % perGroup;
  for (std::size_t i = 0; i < count; ++i) {
    out[i] = channel.samples[k].In(group);
    if (++k < perGroup) continue;
    k = 0;
    group += groupBytes;
  }
}

std::int32_t FrameSamples::At(const Channel& channel, std::size_t x, std::size_t y) const {
  std::int32_t sample = 0;
  Read(channel, x, y, 1, &sample);
  return sample;
}

}  // namespace LmPage
