// Planar24: three planes of one byte a pixel: red, green, blue.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {

namespace {

// memmove: a planar source that is converted in place hands its own planes in.
void StorePlane(const std::uint8_t* channel, std::size_t count, std::uint8_t* to) {
  if (channel != to) std::memmove(to, channel, count);
}

}  // namespace

StoreKernel StorePlanar24;
void StorePlanar24(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first) {
  std::uint8_t* const to = out.line + first;
  StorePlane(in.red, count, to);
  StorePlane(in.green, count, to + out.planeSize);
  StorePlane(in.blue, count, to + 2 * out.planeSize);
}

}  // namespace LmImagingLib::LM_ISA
