#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "LmImagingLib/PixelConverter.h"
#include "converters/chain.h"
#include "converters/library_converter.h"
#include "walk/streams.h"

namespace LmImagingLib {

using LmBaseLib::Result;

namespace {

// Some first stages write whole groups and so pass the end of the intermediate image, and some second stages read past
// it; neither by more than a group. The size that callers see does not count these bytes.
constexpr std::size_t kSpareBytes = 32;

// First stages leave pixels out that belong to no group or field. They are 0, and not what was in the memory before.
unsigned char* NewScratch(std::size_t bytes) { return new unsigned char[bytes + kSpareBytes](); }

// A step that both stages divide: the larger one, or else their product, even where a smaller multiple would do.
unsigned long CombinedStep(unsigned long a, unsigned long b) {
  const unsigned long larger = std::max(a, b);
  const bool divides = a != 0 && b != 0 && larger % a == 0 && larger % b == 0;
  return divides ? larger : a * b;
}

}  // namespace

/// A scratch buffer of at least `needed` bytes for one call: the converter's own, or, where another thread is using
/// that one, a buffer that lives as long as the lease. It begins as zeros.
class ComplexConverter::ScratchLease {
 public:
  ScratchLease(const ComplexConverter& owner, unsigned long needed) : mOwner(owner) {
    if (owner.mScratchInUse.test_and_set(std::memory_order_acquire)) {
      mTemporary.reset(NewScratch(needed));
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
    } else if (owner.mScratch != nullptr) {
      std::memset(owner.mScratch, 0, needed + kSpareBytes);
    }
    mData = owner.mScratch;
  }
  ~ScratchLease() {
    if (mHoldsOwn) mOwner.mScratchInUse.clear(std::memory_order_release);
  }
  ScratchLease(const ScratchLease&) = delete;
  ScratchLease& operator=(const ScratchLease&) = delete;

  unsigned char* Data() const { return mData; }

  static void Grow(unsigned char*& data, unsigned long& capacity, unsigned long needed) {
    delete[] data;
    data = nullptr;
    capacity = 0;
    data = NewScratch(needed);
    capacity = needed;
  }

 private:
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
  const auto convertThrough = [&](void* intermediate) {
    const RGBFilter* const filter = CurrentThread().filter;
    const Result result = mFirst->Convert(source, sourceWidth, sourceHeight, intermediate, sourceWidth, sourceHeight,
                                          sourceWidth, sourceHeight, flags, 0, nullptr, nullptr);
    if (!result.IsOK()) return result;
    const FilterScope again(filter);  // the first stage used it up
    return mSecond->Convert(intermediate, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight,
                            pixelsPerLine, lines, flags, destinationPadding, nullptr, nullptr);
  };
  const unsigned long needed = mFirst->GetDestinationLineSize(U32(U32(sourceWidth) * U32(sourceHeight)));
  const BandedChain banded{ConverterStages{*mFirst, mSecond}};
  Frame frame;
  if (banded) {
    frame = FrameOf(*this, source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight,
                    pixelsPerLine, lines, flags, destinationPadding);
    // The first stage converts all lines of the source, whatever the number of lines that the second one needs.
    frame.fieldLines = frame.sourceHeight / 2 * 2;
  }
  if (scratch != nullptr && scratchSize != nullptr) {
    auto* data = static_cast<unsigned char*>(*scratch);
    if (needed > *scratchSize) {
      *scratch = nullptr;
      ScratchLease::Grow(data, *scratchSize, needed);
      *scratch = data;
    }
    if (!banded || !banded.SkipsIntermediate(frame)) return convertThrough(data);
  }
  if (banded) {
    const StreamScope streams(frame, U32(lines));
    banded.ConvertLines(frame, 0, U32(lines));
    CurrentThread().filter = nullptr;
    return Result::OK;
  }
  const ScratchLease intermediate(*this, needed);
  return convertThrough(intermediate.Data());
}

Result ComplexConverter::ConvertLine(const void* source, void* destination, unsigned long pixelCount) const {
  const ScratchLease intermediate(*this, mFirst->GetDestinationLineSize(U32(U32(GetLinesPerStep()) * U32(pixelCount))));
  const ThreadState& thread = CurrentThread();
  Frame frame;
  if (thread.frame != nullptr) frame = *thread.frame;
  // The stride stays that of the intermediate line for the second stage too: a step writes into its first lines.
  frame.destinationLine = U32(mFirst->GetDestinationLineSize(pixelCount));
  frame.sourceLine = U32(mSecond->GetSourceLineSize(pixelCount));
  FrameScope scope(frame);
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
