#include <algorithm>
#include <cstdint>
#include <memory>

#include "LmImagingLib/PixelConverter.h"
#include "walk/conversion_context.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// Some first stages write whole groups and so pass the end of the intermediate image, and some second stages read past
// it; neither by more than a group. The size that callers see does not count these bytes.
constexpr std::size_t kSpareBytes = 32;

std::unique_ptr<unsigned char[]> NewScratch(std::size_t bytes) {
  return std::unique_ptr<unsigned char[]>(new unsigned char[bytes + kSpareBytes]);
}

// A step that both stages divide: the larger one, or else their product, even where a smaller multiple would do.
unsigned long CombinedStep(unsigned long a, unsigned long b) {
  const unsigned long larger = std::max(a, b);
  return larger % a == 0 && larger % b == 0 ? larger : a * b;
}

}  // namespace

/// A scratch buffer of at least `needed` bytes for one call: the caller's, the converter's own, or, where another
/// thread is using that one, a buffer that lives as long as the lease.
class ComplexConverter::ScratchLease {
 public:
  ScratchLease(const ComplexConverter& owner, unsigned long needed) : mOwner(owner) {
    if (owner.mScratchInUse.test_and_set(std::memory_order_acquire)) {
      mTemporary = NewScratch(needed);
      mData = mTemporary.get();
      return;
    }
    mHoldsOwn = true;
    if (needed > owner.mScratchCapacity) {
      try {
        Grow(owner.mScratch, owner.mScratchCapacity, needed);
      } catch (...) {
        owner.mScratchInUse.clear(std::memory_order_release);
        throw;
      }
    }
    mData = owner.mScratch;
  }

  ScratchLease(const ComplexConverter& owner, unsigned long needed, void** scratch, unsigned long* scratchSize)
      : mOwner(owner) {
    auto* data = static_cast<unsigned char*>(*scratch);
    if (needed > *scratchSize) {
      *scratch = nullptr;
      Grow(data, *scratchSize, needed);
      *scratch = data;
    }
    mData = data;
  }

  ~ScratchLease() {
    if (mHoldsOwn) mOwner.mScratchInUse.clear(std::memory_order_release);
  }
  ScratchLease(const ScratchLease&) = delete;
  ScratchLease& operator=(const ScratchLease&) = delete;

  unsigned char* Data() const { return mData; }

 private:
  static void Grow(unsigned char*& data, unsigned long& capacity, unsigned long needed) {
    delete[] data;
    data = nullptr;
    capacity = 0;
    data = NewScratch(needed).release();
    capacity = needed;
  }

  const ComplexConverter& mOwner;
  std::unique_ptr<unsigned char[]> mTemporary;
  unsigned char* mData = nullptr;
  bool mHoldsOwn = false;
};

ComplexConverter::ComplexConverter(const PixelConverter& first, const PixelConverter& second)
    : PixelConverter(first.GetSourceTypeID(), second.GetDestinationTypeID(), first.GetSourcePixelByteSize(),
                     second.GetDestinationPixelByteSize(),
                     CombinedStep(first.GetPixelsPerStep(), second.GetPixelsPerStep()),
                     CombinedStep(first.GetLinesPerStep(), second.GetLinesPerStep())),
      mFirst(&first),
      mSecond(&second) {}

ComplexConverter::~ComplexConverter() { delete[] mScratch; }

unsigned long ComplexConverter::GetSourceLineSize(unsigned long pixelCount) const {
  return mFirst->GetSourceLineSize(pixelCount);
}

unsigned long ComplexConverter::GetDestinationLineSize(unsigned long pixelCount) const {
  return mSecond->GetDestinationLineSize(pixelCount);
}

Result ComplexConverter::Convert(const void* source, unsigned long sourceWidth, unsigned long sourceHeight,
                                 void* destination, unsigned long destinationWidth, unsigned long destinationHeight,
                                 unsigned long pixelsPerLine, unsigned long lines, unsigned long flags,
                                 unsigned long destinationPadding, void** scratch, unsigned long* scratchSize) const {
  const auto pixels =
      static_cast<std::uint32_t>(static_cast<std::uint32_t>(sourceWidth) * static_cast<std::uint32_t>(sourceHeight));
  const unsigned long needed = mFirst->GetDestinationLineSize(pixels);
  const bool callersScratch = scratch != nullptr && scratchSize != nullptr;
  const ScratchLease intermediate =
      callersScratch ? ScratchLease(*this, needed, scratch, scratchSize) : ScratchLease(*this, needed);

  const ContextScope context;
  const RGBFilter* const filter = context->filter;
  const Result result = mFirst->Convert(source, sourceWidth, sourceHeight, intermediate.Data(), sourceWidth,
                                        sourceHeight, sourceWidth, sourceHeight, flags, 0, nullptr, nullptr);
  if (!result.IsOK()) return result;
  context->filter = filter;  // the first stage cleared it
  return mSecond->Convert(intermediate.Data(), sourceWidth, sourceHeight, destination, destinationWidth,
                          destinationHeight, pixelsPerLine, lines, flags, destinationPadding, nullptr, nullptr);
}

Result ComplexConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  const ContextScope context;
  const auto pixels = static_cast<std::uint32_t>(static_cast<std::uint32_t>(GetLinesPerStep()) *
                                                 static_cast<std::uint32_t>(pixelCount));
  const ScratchLease intermediate(*this, mFirst->GetDestinationLineSize(pixels));
  // The stride stays that of the intermediate line for the second stage too: a step writes into its first lines.
  context->destinationStride = static_cast<std::uint32_t>(mFirst->GetDestinationLineSize(pixelCount));
  context->sourceLineSize = static_cast<std::uint32_t>(mSecond->GetSourceLineSize(pixelCount));
  const Result result = mFirst->ConvertLine(source, intermediate.Data(), pixelCount);
  if (!result.IsOK()) return result;
  return mSecond->ConvertLine(intermediate.Data(), destination, pixelCount);
}

Result ComplexConverter::ConvertPixel(const void* source, void* destination) const {
  const ScratchLease intermediate(*this, mFirst->GetDestinationLineSize(1));
  const Result result = mFirst->ConvertPixel(source, intermediate.Data());
  if (!result.IsOK()) return result;
  return mSecond->ConvertPixel(intermediate.Data(), destination);
}

}  // namespace LmImagingLib
