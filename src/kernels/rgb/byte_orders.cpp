// RGB and BGR of 24 and 32 bits to each other: the bytes of a pixel change places, and the fourth becomes 0. The same
// of 48 bits. Of 48 to 24 bits, the words are in the order of the bytes to write.
#include "simd/direct.h"
#include "simd/samples.h"
#include "simd/shuffle.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <std::size_t kFromBytes, std::size_t... kOrderOfBytes>
struct ByteMap {
  static constexpr std::size_t kFrom = kFromBytes, kTo = sizeof...(kOrderOfBytes);
  static constexpr std::size_t kOrder[kTo] = {kOrderOfBytes...};
};

template <class Order>
void ShuffleLine(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                 std::size_t first) {
  ShuffleLines<Order>(in.line[0] + from * Order::kFrom, targets[0], targets[0].line + first * Order::kTo, count,
                      in.ahead);
}

#if LM_LANES
// Brings words to bytes that go past the caches, and returns how many.
std::size_t StreamBytes(const SourceLines& caller, std::size_t first, std::size_t count, std::uint8_t* to) {
  const SourceLines in = At<GraySamples<SingleSample, 2>>(caller, first);
  std::size_t done = 0;
  for (; done + kLanes <= count; done += kLanes) {
    FetchSource(in.line[0] + 2 * done, 2 * kLanes, in.ahead);
    U8 bytes[1];
    LoadSamples<2>(WholeBlock{in, 2 * done}, 0, 0, kLanes, bytes);
    Store(bytes[0], Stream{to + done});
  }
  return done;
}
#endif

void NarrowLine(const SourceLines& in, std::size_t from, std::size_t count, const TargetLine* targets,
                std::size_t first) {
  std::uint8_t* to = targets->line + 3 * first;
  std::size_t done = 0;
#if LM_LANES
  if (kHasStreams && targets->streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    done = StreamBytes(in, 3 * from, 3 * count, to);
  }
#endif
  to += done;
  WordsToBytes(in, 3 * from + done, 3 * count - done, {to, to, to, targets->ahead, targets->run});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

LM_DEFINE_DIRECT(Swap24To24, ShuffleLine<ByteMap<3, 2, 1, 0>>)
LM_DEFINE_DIRECT(Keep24To32, ShuffleLine<ByteMap<3, 0, 1, 2, kZero>>)
LM_DEFINE_DIRECT(Swap24To32, ShuffleLine<ByteMap<3, 2, 1, 0, kZero>>)
LM_DEFINE_DIRECT(Keep32To24, ShuffleLine<ByteMap<4, 0, 1, 2>>)
LM_DEFINE_DIRECT(Swap32To24, ShuffleLine<ByteMap<4, 2, 1, 0>>)
LM_DEFINE_DIRECT(Keep32To32, ShuffleLine<ByteMap<4, 0, 1, 2, kZero>>)
LM_DEFINE_DIRECT(Swap32To32, ShuffleLine<ByteMap<4, 2, 1, 0, kZero>>)
LM_DEFINE_DIRECT(Swap48To48, ShuffleLine<ByteMap<6, 4, 5, 2, 3, 0, 1>>)
LM_DEFINE_DIRECT(Keep48To24, NarrowLine)
