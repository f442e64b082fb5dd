#include "filter/wide_tables.h"

#include <algorithm>

#include "filter/filter_tables.h"
#include "filter/gain.h"

namespace LmImagingLib {

namespace {

using Entries = std::vector<std::uint16_t>;

Entries FromMultiplier(double multiplier, unsigned offset, unsigned bits, unsigned depth) {
  const unsigned long count = 1UL << depth;
  const unsigned long scaled = depth >= bits ? offset << (depth - bits) : offset >> (bits - depth);  // below 2^31
  Entries entries(count);
  for (unsigned long i = 0; i < count; ++i) entries[i] = ScaledEntry(multiplier, i, scaled, count);
  return entries;
}

// Black and white are the first and the last entry in both. Sample i is at i * (entries - 1) / (samples - 1); the
// entries on both sides of it are weighted by the distance from the other one, and the sum is brought back to the
// sample's scale. Products and sums fit 32 bits: they are at most 65535 * 65535 + 32767.
Entries FromTable(const std::vector<unsigned short>& table, unsigned depth) {
  const std::size_t last = table.size() - 1;
  const std::size_t white = (std::size_t{1} << depth) - 1;
  Entries entries(white + 1);
  for (std::size_t i = 0; i <= white; ++i) {
    const std::size_t place = i * last;
    const std::size_t below = place / white, part = place % white;
    const std::size_t above = std::min(below + 1, last);
    const std::size_t sum = table[below] * (white - part) + table[above] * part;
    entries[i] = static_cast<std::uint16_t>((sum + last / 2) / last);
  }
  return entries;
}

// Samples of `depth` bits, entries of `bits` bits.
Entries FromCurve(const FilterCurve& curve, std::size_t channel, unsigned filterBits, unsigned depth, unsigned bits) {
  Entries entries(std::size_t{1} << depth);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    entries[i] = curve.Entry(channel, i, filterBits, depth, bits - depth);
  }
  return entries;
}

bool IsIdentity(const Entries& entries, unsigned up) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i] != i << up) return false;
  }
  return true;
}

}  // namespace

// Written so that a gain that is not a number saturates too.
unsigned short ScaledEntry(double multiplier, unsigned long index, unsigned long offset, unsigned long entryCount) {
  const double value = multiplier * static_cast<double>(index) + static_cast<double>(offset);
  if (!(value < static_cast<double>(entryCount))) return static_cast<unsigned short>(entryCount - 1);
  return static_cast<unsigned short>(static_cast<std::uint32_t>(value));
}

WideTables::WideTables(const RGBFilterTables& filter, unsigned depth, unsigned resultDepth)
    : mDepth(depth), mResultDepth(resultDepth) {
  const unsigned bits = filter.curve ? std::max(depth, resultDepth) : depth;  // of an entry
  if (filter.multipliers) {
    const Multipliers& by = *filter.multipliers;
    mEntries[0] = FromMultiplier(by.red, by.redOffset, filter.bits, depth);
    mEntries[1] = FromMultiplier(by.green, by.greenOffset, filter.bits, depth);
    mEntries[2] = FromMultiplier(by.blue, by.blueOffset, filter.bits, depth);
  } else if (filter.curve) {
    for (std::size_t k = 0; k < 3; ++k) mEntries[k] = FromCurve(*filter.curve, k, filter.bits, depth, bits);
  } else {
    mEntries[0] = FromTable(filter.red16, depth);
    mEntries[1] = FromTable(filter.green16, depth);
    mEntries[2] = FromTable(filter.blue16, depth);
  }
  mIsIdentity = std::all_of(std::begin(mEntries), std::end(mEntries),
                            [=](const Entries& entries) { return IsIdentity(entries, bits - depth); });
  if (mIsIdentity) return;

  ChannelTable<std::uint16_t>* const channels[] = {&mLookup.red, &mLookup.green, &mLookup.blue};
  mLookup.areGains = bits == depth;
  for (std::size_t k = 0; k < 3; ++k) {
    const std::optional<WideGain> gain = mLookup.areGains ? FindWideGain(mEntries[k], depth) : std::nullopt;
    mLookup.areGains = mLookup.areGains && gain;
    if (gain) channels[k]->gain = *gain;
    for (std::uint16_t& entry : mEntries[k]) {
      entry = static_cast<std::uint16_t>(resultDepth >= bits ? entry << (resultDepth - bits)
                                                             : entry >> (bits - resultDepth));
    }
    channels[k]->entries = mEntries[k].data();
  }
  mSamples.Make(mLookup, depth, resultDepth);
}

}  // namespace LmImagingLib
