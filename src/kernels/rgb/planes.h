#pragma once

#include "simd/direct.h"
#include "simd/samples.h"

// Bytes of colours into three planes. Large planes go past the caches from registers: a strip would be read while its
// stores still wait for memory.
namespace LmImagingLib::LM_ISA {
namespace {

#if LM_LANES
// Stores whole blocks past the caches, and returns how many pixels they have.
template <class Layout>
std::size_t StreamPlanes(const SourceLines& caller, std::size_t first, std::size_t count, Stream red, Stream green,
                         Stream blue) {
  const SourceLines in = At<Layout>(caller, first);
  constexpr std::size_t kBlocks = 64 / kLanes;  // which fill a cache line of each plane
  std::size_t done = 0, at = 0;
  for (; done + 64 <= count; done += 64, at += BytesOf<Layout>(64)) {
    FetchAhead<Layout>(in, 0, at, 64);
    RgbLanes<std::uint8_t> pixels[kBlocks];
    for (std::size_t k = 0; k < kBlocks; ++k) {
      pixels[k] = Layout::Block(WholeBlock{in, at + k * BytesOf<Layout>(kLanes)}, Of<std::uint8_t>{});
    }
    for (std::size_t k = 0; k < kBlocks; ++k) Store(pixels[k].r, red + (done + k * kLanes));
    for (std::size_t k = 0; k < kBlocks; ++k) Store(pixels[k].g, green + (done + k * kLanes));
    for (std::size_t k = 0; k < kBlocks; ++k) Store(pixels[k].b, blue + (done + k * kLanes));
  }
  return done;
}
#endif

template <class Layout>
void StorePlanes(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                 std::size_t first) {
  const TargetLine& target = targets[0];
  std::uint8_t* const red = target.line + first;
  std::uint8_t* const green = red + target.planeSize;
  std::uint8_t* const blue = green + target.planeSize;
  std::size_t done = 0;
#if LM_LANES
  if (kHasStreams && target.streams && (reinterpret_cast<std::uintptr_t>(red) | target.planeSize) % kLanes == 0) {
    done = StreamPlanes<Layout>(in, from, count, Stream{red}, Stream{green}, Stream{blue});
    if (done == count) return;
  }
#endif
  Decoder<Layout, std::uint8_t>(0)(in, from + done, count - done,
                                   {red + done, green + done, blue + done, target.ahead, target.run});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
