// Gray of colours: (77 red + 150 green + 29 blue + 128) >> 8, as bytes or in 16-bit little-endian words. The weights
// are those of ITU-R BT.601 in 256ths: 0.299, 0.587 and 0.114.
#include "kernels/writers/luma.h"

#include "kernels/writers/gray_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

struct LumaBytes {
  static constexpr std::size_t kBytes = 1;

  static void Pixel(Rgb<std::uint8_t> pixel, std::uint8_t* to) { *to = Luma(pixel); }

#if LM_LANES
  // The weights sum to 256, so the luma of gray is the gray.
  template <class To>
  static void GrayBlock(U8 v, To to) {
    Store(v, to);
  }

  template <class To>
  static void Block(const RgbLanes<std::uint8_t>& in, To to) {
    Store(LumaLanes(in), to);
  }
#endif
};

#if LM_LANES

/// The lookup of words by tables, one by one.
struct WordTables {
  RgbLanes<std::uint16_t> operator()(const RgbLanes<std::uint16_t>& in) const {
    return {Found(in.r, tables.red.entries), Found(in.g, tables.green.entries), Found(in.b, tables.blue.entries)};
  }

  static U16 Found(U16 words, const std::uint16_t* entries) {
    std::uint16_t values[kBlock<std::uint16_t>];
    std::memcpy(values, &words, sizeof values);
    for (std::uint16_t& value : values) value = entries[value];
    return Load(values);
  }

  const LookupTables<std::uint16_t>& tables;
};

/// Stores as many pixels as make whole blocks, and returns their number.
template <class Sample, class Change>
std::size_t StoreLumaBlocks(const Channels<Sample>& in, std::size_t count, std::uint8_t* to, const FitLanes fit,
                            const Change change) {
  // By reference these would be loaded anew after each store.
  const Sample *const red = Alone(in.red), *const green = Alone(in.green), *const blue = Alone(in.blue);
  std::size_t i = 0;
  for (; i + kBlock<Sample> <= count; i += kBlock<Sample>, to += 2 * kBlock<Sample>) {
    StoreLumaWords(change(RgbLanes<Sample>{Load(red + i), Load(green + i), Load(blue + i)}), to, fit);
  }
  return i;
}

std::size_t StoreLumaBlocks(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables,
                            std::size_t count, std::uint8_t* to, const Fit& fit) {
  if (tables == nullptr) return StoreLumaBlocks(in, count, to, FitLanes(fit), AsTheyAre{});
  if (kGainsAreFaster && tables->areGains) {
    return StoreLumaBlocks(in, count, to, FitLanes(fit), LookedUp<GainLanes>(*tables));
  }
  return StoreLumaBlocks(in, count, to, FitLanes(fit), LookedUp<Table>(*tables));
}

std::size_t StoreLumaBlocks(const Channels<std::uint16_t>& in, const LookupTables<std::uint16_t>* tables,
                            std::size_t count, std::uint8_t* to, const Fit& fit) {
  if (tables == nullptr) return StoreLumaBlocks(in, count, to, FitLanes(fit), AsTheyAre{});
  if (tables->areGains) {
    return ByGains(*tables, {},
                   [&](const auto& change) { return StoreLumaBlocks(in, count, to, FitLanes(fit), change); });
  }
  return StoreLumaBlocks(in, count, to, FitLanes(fit), WordTables{*tables});
}

#endif

// Words are fitted after the sum, which is exact at the depth of the samples.
template <class Sample>
void StoreLuma(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count, const TargetLine& out,
               std::size_t first) {
  if (out.run != nullptr) {
    return StoreLines(in, out, [=](const Channels<Sample>& channels, const TargetLine& line) {
      StoreLuma(channels, tables, count, line, 0);
    });
  }
  if (tables == nullptr && in.red == in.green && in.red == in.blue) {
    return StoreWideLine<GrayWords>(in, tables, count, out, first);
  }
  std::uint8_t* const to = out.line + first * 2;
  std::size_t i = 0;
#if LM_LANES
  i = StoreLumaBlocks(in, tables, count, to, out.fit);
#endif
  for (; i < count; ++i) {
    const std::uint16_t word = Fitted(Luma(LookUp(tables, in, i)), out.fit);
    std::memcpy(to + 2 * i, &word, sizeof word);
  }
}

}  // namespace

}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_STORE(StoreLumaWords, StoreLuma)
LM_EXPORT_WRITER(StoreLuma8, LumaBytes)
