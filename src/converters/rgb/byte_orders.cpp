// RGB and BGR of 24 and 32 bits to each other: the bytes of a pixel change places, and the fourth becomes 0.
#include "simd/shuffle.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kFromBytes, std::size_t... kOrderOfBytes>
struct Map {
  static constexpr std::size_t kFrom = kFromBytes, kTo = sizeof...(kOrderOfBytes);
  static constexpr std::size_t kOrder[kTo] = {kOrderOfBytes...};
};

// Into the room's first plane, which is the line itself.
template <class Order>
Channels Shuffle(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  ShufflePixels<Order>(in.line[0] + first * Order::kFrom, room.red, count);
  return {room.red, room.red, room.red};
}

}  // namespace

DecodeKernel Swap24To24, Keep24To32, Swap24To32, Keep32To24, Swap32To24, Keep32To32, Swap32To32;

Channels Swap24To24(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<3, 2, 1, 0>>(in, first, count, room);
}
Channels Keep24To32(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<3, 0, 1, 2, kZero>>(in, first, count, room);
}
Channels Swap24To32(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<3, 2, 1, 0, kZero>>(in, first, count, room);
}
Channels Keep32To24(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<4, 0, 1, 2>>(in, first, count, room);
}
Channels Swap32To24(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<4, 2, 1, 0>>(in, first, count, room);
}
Channels Keep32To32(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<4, 0, 1, 2, kZero>>(in, first, count, room);
}
Channels Swap32To32(const SourceLines& in, std::size_t first, std::size_t count, const Room& room) {
  return Shuffle<Map<4, 2, 1, 0, kZero>>(in, first, count, room);
}

}  // namespace LmImagingLib::LM_ISA
