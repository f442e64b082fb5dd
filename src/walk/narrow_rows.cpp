#include "walk/narrow_rows.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "simd/kernel.h"
#include "walk/strips.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(DecodeKernel, Grayscale16)

void NarrowRows::Forget() { std::fill(std::begin(mWide), std::end(mWide), nullptr); }

const std::uint8_t* NarrowRows::Row(const std::uint8_t* wide, std::size_t line, std::size_t samples,
                                    std::uint32_t shift, std::uint32_t ahead) {
  const std::size_t stride = (samples + kCacheLine - 1) / kCacheLine * kCacheLine;
  if (samples != mSamples) {
    Forget();
    mBytes.resize(kRows * stride + kCacheLine);
    mSamples = samples;
  }
  void* aligned = mBytes.data();
  std::size_t space = mBytes.size();
  std::align(kCacheLine, kRows * stride, aligned, space);
  std::uint8_t* const row = static_cast<std::uint8_t*>(aligned) + line % kRows * stride;
  if (mWide[line % kRows] != wide) {
    kGrayscale16.Active()({{wide}, shift, 0, ahead}, 0, samples, {row, row, row});
    mWide[line % kRows] = wide;
  }
  return row;
}

}  // namespace LmImagingLib
