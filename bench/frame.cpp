#include "frame.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <random>

namespace LmImagingLib::Bench {

namespace {

constexpr std::align_val_t kPage{4096};

// Some layouts are read or written in groups that pass the end of the last line.
constexpr std::size_t kSpareBytes = 64;

std::size_t Planes(const PixelTypeID& id) { return (id & kPlanarFlag) != 0 ? 3 : 1; }

// The same bytes in every run. Noise, because flat pictures flatter whatever branches.
void FillWithNoise(const PageBuffer& buffer) {
  std::mt19937_64 random(1);
  std::uint8_t* const bytes = buffer.Data();
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= buffer.Size(); at += sizeof(std::uint64_t)) {
    const std::uint64_t word = random();
    std::memcpy(bytes + at, &word, sizeof word);
  }
  std::memset(bytes + at, 0, buffer.Size() - at);
}

}  // namespace

PageBuffer::PageBuffer(std::size_t bytes) : mBytes(new (kPage) std::uint8_t[bytes]), mSize(bytes) {}

void PageBuffer::Free::operator()(std::uint8_t* bytes) const { ::operator delete[](bytes, kPage); }

void FramePair::Prepare(const PixelConverter& converter, const ImageSize& size) {
  mSourceBytes = converter.GetSourceLineSize(size.width) * size.height * Planes(converter.GetSourceTypeID());
  mDestinationBytes =
      converter.GetDestinationLineSize(size.width) * size.height * Planes(converter.GetDestinationTypeID());
  const std::size_t needed = std::max(mSourceBytes, mDestinationBytes) + kSpareBytes;  // copies fit both ways
  if (needed <= mSource.Size()) return;
  mSource = PageBuffer(needed);
  mDestination = PageBuffer(needed);
  FillWithNoise(mSource);
  std::memset(mDestination.Data(), 0, needed);
}

void FramePair::Convert(const PixelConverter& converter, const RGBFilter* filter, const ImageSize& size,
                        unsigned long flags) const {
  converter.Convert(filter, mSource.Data(), size.width, size.height, mDestination.Data(), size.width, size.height,
                    size.width, size.height, flags, 0, nullptr, nullptr);
}

void FramePair::Copy() const { std::memcpy(mDestination.Data(), mSource.Data(), BytesMoved() / 2); }

}  // namespace LmImagingLib::Bench
