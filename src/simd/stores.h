#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/fetch.h"
#include "simd/gain_lanes.h"
#include "simd/rgb.h"
#include "simd/strip.h"

// The loops around the text of a writer of bytes, as `loops.h` has them for source layouts.
namespace LmImagingLib::LM_ISA {
namespace {

/// A pixel after the lookup.
template <class Sample>
inline Rgb<Sample> LookUp(const LookupTables<Sample>* tables, const Channels<Sample>& in, std::size_t i) {
  if (tables == nullptr) return {in.red[i], in.green[i], in.blue[i]};
  return {tables->red.entries[in.red[i]], tables->green.entries[in.green[i]], tables->blue.entries[in.blue[i]]};
}

/// Calls `store` with the channels and the target of each line of a run. It stays apart: loops around all ways to store
/// would make single lines slow.
template <class Sample, class Store>
[[gnu::noinline]] void StoreRun(const Channels<Sample>& in, std::uint8_t* to, const LineRun& run, Store store) {
  Channels<Sample> line = in;
  const std::size_t step = run.source / sizeof(Sample);
  for (std::uint32_t left = run.lines; left != 0; --left, to += run.target) {
    store(line, to);
    line.red += step, line.green += step, line.blue += step;
  }
}

/// The same through `store`, which takes the channels and the target of a single line.
template <class Sample, class Store>
void StoreLines(const Channels<Sample>& in, const TargetLine& out, Store store) {
  TargetLine line = out;
  line.run = nullptr;
  StoreRun(in, out.line, *out.run, [=](const Channels<Sample>& channels, std::uint8_t* at) mutable {
    line.line = at;
    store(channels, line);
  });
}

/// The function that stores through a writer.
using StoreLoop = StoreKernel<std::uint8_t>;

/// Stores through a writer whose `Pixel` makes the `kBytes` bytes of one pixel.
template <class Writer>
void StorePixels(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count,
                 const TargetLine& out, std::size_t first) {
  const auto store = [=](const Channels<std::uint8_t>& line, std::uint8_t* to) {
    for (std::size_t i = 0; i < count; ++i, to += Writer::kBytes) Writer::Pixel(LookUp(tables, line, i), to);
  };
  std::uint8_t* const to = out.line + first * Writer::kBytes;
  if (out.run != nullptr) return StoreRun(in, to, *out.run, store);
  store(in, to);
}

#if LM_LANES

/// The changes of pixels before they are stored: none, or a lookup in three tables or gains.
struct AsTheyAre {
  template <class Pixels>
  Pixels operator()(const Pixels& in) const {
    return in;
  }
};

template <class Entries>
struct LookedUp {
  explicit LookedUp(const LookupTables<std::uint8_t>& tables)
      : red(tables.red), green(tables.green), blue(tables.blue) {}

#if LM_LANES < 64
  // g++ would rather call it from several loops, which takes three times as long with gains.
  [[gnu::always_inline]]
#endif
  RgbLanes<std::uint8_t>
  operator()(const RgbLanes<std::uint8_t>& in) const {
    return {red[in.r], green[in.g], blue[in.b]};
  }

  Entries red, green, blue;
};

inline std::uint8_t* Address(std::uint8_t* to) { return to; }
inline std::uint8_t* Address(Stream to) { return to.at; }

template <class Writer, class To, class Change>
void StoreBlocks(const Channels<std::uint8_t>& in, std::size_t count, To to, std::uint32_t ahead, const Change change) {
  // By reference these would be loaded anew after each store.
  const std::uint8_t *const red = Alone(in.red), *const green = Alone(in.green), *const blue = Alone(in.blue);
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes, to = to + kLanes * Writer::kBytes) {
    FetchTarget(to, kLanes * Writer::kBytes, ahead);
    Writer::Block(
        change(RgbLanes<std::uint8_t>{Pinned(Load(red + i)), Pinned(Load(green + i)), Pinned(Load(blue + i))}), to);
  }
  if (i < count) {
    // Channels may be in the source, and either line may end here.
    const std::size_t rest = count - i;
    Writer::Block(
        change(RgbLanes<std::uint8_t>{LoadPart(red + i, rest), LoadPart(green + i, rest), LoadPart(blue + i, rest)}),
        Part{Address(to), rest * Writer::kBytes});
  }
}

// Gray has fewer bytes to move; a writer may make use of that.
template <class Writer, class To>
inline auto StoreGrayBlock(U8 v, To to, int) -> decltype(Writer::GrayBlock(v, to)) {
  Writer::GrayBlock(v, to);
}
template <class Writer, class To>
inline void StoreGrayBlock(U8 v, To to, long) {
  Writer::Block({v, v, v}, to);
}

/// Stores the lines of gray: all channels are the red one.
template <class Writer, class To>
void StoreGrayBlocks(const std::uint8_t* gray, std::size_t count, To line, std::uint32_t ahead, const LineRun* run) {
  for (std::uint32_t left = LinesOf(run);;) {
    To to = line;
    std::size_t i = 0;
    const auto store = [&] {
      FetchTarget(to, kLanes * Writer::kBytes, ahead);
      StoreGrayBlock<Writer>(Load(gray + i), to, 0);
      i += kLanes;
      to = to + kLanes * Writer::kBytes;
    };
    // Beside a few shuffles, the steps of the loop take time.
    while (i + 2 * kLanes <= count) store(), store();  // NOLINT(bugprone-infinite-loop): `store` goes on
    if (i + kLanes <= count) store();
    if (i < count) {
      const U8 rest = LoadPart(gray + i, count - i);
      Writer::Block(RgbLanes<std::uint8_t>{rest, rest, rest}, Part{Address(to), (count - i) * Writer::kBytes});
    }
    if (run == nullptr || --left == 0) return;
    gray += run->source;
    line = line + run->target;
  }
}

template <class Writer, class To>
void StoreChanged(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count, To to,
                  std::uint32_t ahead, const LineRun* run) {
  if (tables == nullptr && in.red == in.green && in.red == in.blue) {
    StoreGrayBlocks<Writer>(in.red, count, to, ahead, run);
  } else if (run != nullptr) {
    StoreRun(in, Address(to), *run, [=](const Channels<std::uint8_t>& line, std::uint8_t* at) {
      StoreChanged<Writer>(line, tables, count, at, ahead, nullptr);
    });
  } else if (tables == nullptr) {
    StoreBlocks<Writer>(in, count, to, ahead, AsTheyAre{});
  } else if (kGainsAreFaster && tables->areGains) {
    StoreBlocks<Writer>(in, count, to, ahead, LookedUp<GainLanes>(*tables));
  } else {
    StoreBlocks<Writer>(in, count, to, ahead, LookedUp<Table>(*tables));
  }
}

/// Stores through a writer whose `Block` makes kLanes * kBytes bytes.
template <class Writer>
void StoreWith(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count,
               const TargetLine& out, std::size_t first) {
  std::uint8_t* const to = out.line + first * Writer::kBytes;
  if (kHasStreams && out.streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    StoreChanged<Writer>(in, tables, count, Stream{to}, 0, nullptr);
  } else {
    StoreChanged<Writer>(in, tables, count, to, out.ahead, out.run);
  }
}

template <class Writer>
constexpr auto Storer(int) -> decltype(&Writer::template Block<std::uint8_t*>, static_cast<StoreLoop*>(nullptr)) {
  return StoreWith<Writer>;
}

#endif

/// The best way to store that a writer has for this instruction set.
template <class Writer>
constexpr StoreLoop* Storer(...) {
  return StorePixels<Writer>;
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports a writer of bytes as the kernel `Name`.
#define LM_EXPORT_WRITER(Name, ...)                                                                        \
  namespace LmImagingLib::LM_ISA {                                                                         \
  StoreKernel<std::uint8_t> Name;                                                                          \
  void Name(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count, \
            const TargetLine& out, std::size_t first) {                                                    \
    Storer<__VA_ARGS__>(0)(in, tables, count, out, first);                                                 \
  }                                                                                                        \
  }
