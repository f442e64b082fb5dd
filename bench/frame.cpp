#include "frame.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <random>

namespace LmImagingLib::Bench {

namespace {

constexpr std::size_t kPageBytes = 4096;

// Some layouts are read or written in groups that pass the end of the last line.
constexpr std::size_t kSpareBytes = 64;
constexpr std::align_val_t kPage{kPageBytes};

// Frames that have four times the bytes of the last-level cache.
std::size_t RingLength(std::size_t bytesMoved) {
  const long cache = sysconf(_SC_LEVEL3_CACHE_SIZE);
  const std::size_t bytes = cache > 0 ? static_cast<std::size_t>(cache) : std::size_t{64} << 20;
  return 4 * bytes / bytesMoved + 1;
}

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

std::string FrameSize::Name() const {
  return std::to_string(width) + "x" + std::to_string(height) + (cold ? "-cold" : "");
}

void FrameRing::Prepare(const PixelConverter& converter, const FrameSize& size) {
  mSourceBytes = converter.GetSourceLineSize(size.width) * size.height * Planes(converter.GetSourceTypeID());
  mDestinationBytes =
      converter.GetDestinationLineSize(size.width) * size.height * Planes(converter.GetDestinationTypeID());
  const std::size_t largest = std::max(mSourceBytes, mDestinationBytes) + kSpareBytes;  // copies fit both ways
  mStride = (largest + kPageBytes - 1) / kPageBytes * kPageBytes;
  mFrames = size.cold ? RingLength(BytesMoved()) : 1;
  mFirst = mAt = 0;
  const std::size_t needed = mFrames * mStride;
  if (needed <= mSource.Size()) return;
  mSource = PageBuffer(needed);
  mDestination = PageBuffer(needed);
  FillWithNoise(mSource);
  std::memset(mDestination.Data(), 0, needed);
}

void FrameRing::Move() { mFirst = (mFirst + mFrames + 1) * mStride <= mSource.Size() ? mFirst + 1 : 0; }

void FrameRing::Refill() { FillWithNoise(mSource); }

void FrameRing::Convert(const PixelConverter& converter, const RGBFilter* filter, const ImageSize& size,
                        unsigned long flags) const {
  converter.Convert(filter, Source(), size.width, size.height, Destination(), size.width, size.height, size.width,
                    size.height, flags, 0, nullptr, nullptr);
}

void FrameRing::Copy() const { std::memcpy(Destination(), Source(), BytesMoved() / 2); }

}  // namespace LmImagingLib::Bench
