// Looks the samples of a row of a mosaic up, even and odd columns in tables of their own.
#include "simd/gain_lanes.h"
#include "simd/joined.h"
#include "simd/mosaic.h"
#include "simd/part_lanes.h"
#include "simd/samples.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class In>
inline In SampleOf(const std::uint8_t* row, std::size_t i) {
  In sample;
  std::memcpy(&sample, row + i * sizeof sample, sizeof sample);
  return sample;
}

inline const std::uint8_t* EntriesOf(const SampleTable& table, std::uint8_t /*result*/) { return table.bytes; }
inline const std::uint16_t* EntriesOf(const SampleTable& table, std::uint16_t /*result*/) { return table.words; }

#if LM_LANES

/// Words of two registers that follow each other in memory as bytes, of which those above 255 become 255. None is
/// above 32767.
inline U8 ClampedBytes(U16 first, U16 second) {
#if LM_LANES == 16
  return ClampJoin(I16(first), I16(second));
#elif LM_LANES == 32
  return JoinInOrder(first, second);
#else
  return JoinWords(first, second);
#endif
}

/// Bytes that are multiplied: those of even columns, and those of odd ones, as words.
struct ByteProducts {
  explicit ByteProducts(const Gain& gain) : factor(gain.factor), down(static_cast<std::uint16_t>(8 - gain.shift)) {}

  U16 operator()(U16 upperHalves) const { return Least(MultiplyHigh(upperHalves >> down, factor), U16{} + 255); }

  std::uint16_t factor, down;
};

// The samples that were looked up by products: whole registers of the row.
inline std::size_t Multiply(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out,
                            Of<std::uint8_t>) {
  const ByteProducts even(tables.even.gain), odd(tables.odd.gain);
  const std::uint32_t ahead = tables.ahead;
  std::size_t i = 0;
  for (; i + kLanes <= width; i += kLanes) {
    FetchSource(row + i, kLanes, ahead);
    const auto pairs = U16(Load(row + i));
    Store(even(pairs << 8) | odd(pairs & 0xFF00) << 8, out + i);
  }
  return i;
}

template <bool kOf16Bits>
std::size_t MultiplyWords(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out) {
  const WideProducts<kOf16Bits> products(tables.even.wideGain, tables.odd.wideGain);
  const auto down = static_cast<std::uint16_t>(8 - tables.even.wideGain.up);
  const std::uint32_t ahead = tables.ahead;
  std::size_t i = 0;
  for (; i + kLanes <= width; i += kLanes) {
    const std::uint8_t* const from = row + 2 * i;
    FetchSource(from, 2 * kLanes, ahead);
    // A product that is too large has more than 8 bits here, too.
    Store(ClampedBytes(products(U16(Load(from))) >> down, products(U16(Load(from + kLanes))) >> down), out + i);
  }
  return i;
}

template <bool kOf16Bits>
std::size_t MultiplyWords(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint16_t* out) {
  const WideProducts<kOf16Bits> products(tables.even.wideGain, tables.odd.wideGain);
  const auto most = static_cast<std::uint16_t>(0xFFFFU >> tables.even.wideGain.up);
  const std::uint32_t ahead = tables.ahead;
  std::size_t i = 0;
  for (; i + kLanes / 2 <= width; i += kLanes / 2) {
    FetchSource(row + 2 * i, kLanes, ahead);
    Store(Least(products(U16(Load(row + 2 * i))), U16{} + most), out + i);
  }
  return i;
}

template <class Out>
std::size_t Multiply(const std::uint8_t* row, std::size_t width, const RowTables& tables, Out* out, Of<std::uint16_t>) {
  return tables.even.wideGain.up == 0 ? MultiplyWords<true>(row, width, tables, out)
                                      : MultiplyWords<false>(row, width, tables, out);
}

// Whether tables in registers are faster than lookups one by one: not where a shuffle moves 16 bytes only, unless it
// takes several registers of entries, as NEON's do.
constexpr bool kPermutes = LM_LANES > 16 || LM_STORES_IN_TURN;

// The samples that were looked up in tables in registers.
inline std::size_t Permute(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out,
                           Of<std::uint8_t>) {
  const Table even({tables.even.bytes, {}}), odd({tables.odd.bytes, {}});
  const std::uint32_t ahead = tables.ahead;
  std::size_t i = 0;
#if LM_BYTE_SHUFFLE == 64
  for (; i + kLanes <= width; i += kLanes) {
    FetchSource(row + i, kLanes, ahead);
    const U8 samples = Load(row + i);
    Store((U16(even[samples]) & 0xFF) | (U16(odd[samples]) & 0xFF00), out + i);
  }
#else
  // Narrow tables take long, so that columns are parted first.
  for (; i + 2 * kLanes <= width; i += 2 * kLanes) {
    FetchSource(row + i, 2 * kLanes, ahead);
    const auto first = U16(Load(row + i)), second = U16(Load(row + i + kLanes));
    const U8 evens = even[ClampJoin(I16(first & 0xFF), I16(second & 0xFF))];
    const U8 odds = odd[ClampJoin(I16(first >> 8), I16(second >> 8))];
    Store(ZipHalves<0>(evens, odds), out + i);
    Store(ZipHalves<1>(evens, odds), out + i + kLanes);
  }
#endif
  return i;
}

inline std::size_t Permute(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out,
                           Of<std::uint16_t>) {
  std::size_t i = 0;
#if LM_BYTE_SHUFFLE == 64
  if (tables.even.parts == nullptr || tables.odd.parts == nullptr) return 0;
  const PartLanes even(*tables.even.parts), odd(*tables.odd.parts);
  const std::uint32_t ahead = tables.ahead;
  const U16 mask = U16{} + static_cast<std::uint16_t>(tables.mask);
  for (; i + 2 * kLanes <= width; i += 2 * kLanes) {
    FetchSource(row + 2 * i, 4 * kLanes, ahead);
    StoreByParts(even, odd, row + 2 * i, mask, out + i);
  }
  // The rest is looked up together with some before it: one by one, it would take longer.
  const std::size_t end = width - width % 2;
  if (i == 0 || i == end) return i;
  i = end - 2 * kLanes;
  StoreByParts(even, odd, row + 2 * i, mask, out + i);
  return end;
#else
  (void)row, (void)width, (void)tables, (void)out;
#endif
  return i;
}

// The samples that were looked up one by one, in whole blocks. What words have above a sample is cleared in registers,
// which takes less time than in each of them. It is done for the next block while one is looked up: words that were
// stored just now take longer to load.
template <class Out>
std::size_t LookUpBlocks(const std::uint8_t* row, std::size_t width, const RowTables& tables, Out* out) {
  constexpr std::size_t kCount = 256;
  alignas(kLanes) std::uint16_t blocks[2][kCount];
  const Out* const even = EntriesOf(tables.even, Out{});
  const Out* const odd = EntriesOf(tables.odd, Out{});
  const std::uint32_t ahead = tables.ahead;
  const U16 mask = U16{} + static_cast<std::uint16_t>(tables.mask);
  const std::size_t end = width - width % kCount;
  for (std::size_t i = 0; i < end + kCount; i += kCount) {
    std::uint16_t* const next = blocks[i / kCount % 2];
    if (i < end) {
      const std::uint8_t* const from = row + 2 * i;
      FetchSource(from, 2 * kCount, ahead);
      for (std::size_t k = 0; k < kCount; k += kLanes / 2) Store(U16(Load(from + 2 * k)) & mask, next + k);
    }
    if (i == 0) continue;
    StoreJoined(kCount, out + i - kCount,
                [even, odd, at = +blocks[(i / kCount + 1) % 2]](std::size_t k, std::size_t n) {
                  return (n % 2 == 0 ? even : odd)[at[k + n]];
                });
  }
  return end;
}

#else

template <class Out, class In>
std::size_t Multiply(const std::uint8_t* /*row*/, std::size_t /*width*/, const RowTables& /*tables*/, Out* /*out*/,
                     Of<In>) {
  return 0;
}

#endif

template <class In, class Out>
void LookUpSamples(const std::uint8_t* row, std::size_t width, const RowTables& tables, Out* out) {
  const Out* const even = EntriesOf(tables.even, Out{});
  const Out* const odd = EntriesOf(tables.odd, Out{});
  const std::uint32_t mask = tables.mask;
  std::size_t done = 0;
  if (tables.areGains) {
    done = Multiply(row, width, tables, out, Of<In>{});
  } else {
#if LM_LANES
    if constexpr (sizeof(Out) == 1 && kPermutes) done = Permute(row, width, tables, out, Of<In>{});
    if constexpr (sizeof(In) == 2) done += LookUpBlocks(row + 2 * done, width - done, tables, out + done);
#endif
  }
  StoreJoined(width - done, out + done, [=](std::size_t i, std::size_t k) {
    return (k % 2 == 0 ? even : odd)[SampleOf<In>(row, done + i + k) & mask];
  });
}

}  // namespace

LookUpRowKernel<std::uint8_t, std::uint8_t> LookUpBytes;
LookUpRowKernel<std::uint16_t, std::uint8_t> LookUpToBytes;
LookUpRowKernel<std::uint16_t, std::uint16_t> LookUpWords;
void LookUpBytes(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out) {
  LookUpSamples<std::uint8_t>(row, width, tables, out);
}
void LookUpToBytes(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint8_t* out) {
  LookUpSamples<std::uint16_t>(row, width, tables, out);
}
void LookUpWords(const std::uint8_t* row, std::size_t width, const RowTables& tables, std::uint16_t* out) {
  LookUpSamples<std::uint16_t>(row, width, tables, out);
}

}  // namespace LmImagingLib::LM_ISA
