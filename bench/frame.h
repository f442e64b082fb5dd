#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib::Bench {

struct ImageSize {
  std::uint32_t width;
  std::uint32_t height;

  std::size_t Pixels() const { return std::size_t{width} * height; }
};

/// Bytes that begin at a page, as the buffers of frame grabbers do; never touched before they are filled.
class PageBuffer {
 public:
  PageBuffer() = default;
  explicit PageBuffer(std::size_t bytes);

  std::uint8_t* Data() const { return mBytes.get(); }
  std::size_t Size() const { return mSize; }

 private:
  struct Free {
    void operator()(std::uint8_t* bytes) const;
  };

  std::unique_ptr<std::uint8_t, Free> mBytes;
  std::size_t mSize = 0;
};

/// The size of the frames that a case converts in turn.
struct FrameSize : ImageSize {
  bool cold;  ///< a ring of frames that no cache holds, as a camera delivers them; otherwise one frame

  std::string Name() const;
};

/// Sources of noise and destinations, for conversions of one thread. The buffers grow with the frames.
class FrameRing {
 public:
  /// Makes room for frames of a converter.
  void Prepare(const PixelConverter& converter, const FrameSize& size);
  /// Goes on to the next frame of the ring.
  void Advance() { mAt = mAt + 1 < mFrames ? mAt + 1 : 0; }
  /// Puts the ring elsewhere in the buffers, where these are larger: which pages a frame has decides how much of it
  /// caches hold.
  void Move();
  /// Makes noise of all sources again.
  void Refill();

  void Convert(const PixelConverter& converter, const RGBFilter* filter, const ImageSize& size,
               unsigned long flags) const;
  /// Moves as many bytes as a conversion of the prepared size: half of those that it reads and writes.
  void Copy() const;

  /// Bytes that a conversion of the prepared size reads and writes.
  std::size_t BytesMoved() const { return mSourceBytes + mDestinationBytes; }
  std::size_t DestinationBytes() const { return mDestinationBytes; }
  /// All sources of the ring.
  const PageBuffer& Sources() const { return mSource; }
  std::uint8_t* Source() const { return mSource.Data() + (mFirst + mAt) * mStride; }
  std::uint8_t* Destination() const { return mDestination.Data() + (mFirst + mAt) * mStride; }

 private:
  PageBuffer mSource;
  PageBuffer mDestination;
  std::size_t mSourceBytes = 0;
  std::size_t mDestinationBytes = 0;
  std::size_t mStride = 0;
  std::size_t mFirst = 0;
  std::size_t mFrames = 1;
  std::size_t mAt = 0;
};

}  // namespace LmImagingLib::Bench
