#pragma once

#include <cstdint>
#include <vector>

#include "filter/sample_tables.h"
#include "simd/strip.h"

namespace LmImagingLib {

struct RGBFilterTables;

/// The arguments of `RGBFilter::SetMultipliers`.
struct Multipliers {
  double red, green, blue;
  unsigned short redOffset, greenOffset, blueOffset;
};

/// Entry `index` of a channel with a gain and an offset: multiplier * index + offset, truncated and limited to
/// `entryCount` - 1. A gain that is not a number is the limit, too.
unsigned short ScaledEntry(double multiplier, unsigned long index, unsigned long offset, unsigned long entryCount);

/// Tables for samples of 9 to 16 bits, derived from those of a filter of any bit size.
///
/// Multipliers act on the sample as they would in a filter of its own bits, offsets in proportion. A curve is computed
/// at the bits of the sample or of the result, whichever are more. Other tables are taken at the sample's place between
/// black and white, linearly between entries.
class WideTables {
 public:
  WideTables(const RGBFilterTables& filter, unsigned depth, unsigned resultDepth);

  bool Serves(unsigned depth, unsigned resultDepth) const { return depth == mDepth && resultDepth == mResultDepth; }
  /// Null where the tables change nothing.
  const LookupTables<std::uint16_t>* Lookup() const { return mIsIdentity ? nullptr : &mLookup; }
  /// The same for the samples of mosaics.
  const MosaicLookup* OfMosaics() const { return mIsIdentity ? nullptr : &mSamples.Lookup(); }

 private:
  unsigned mDepth, mResultDepth;
  bool mIsIdentity = false;
  std::vector<std::uint16_t> mEntries[3];
  LookupTables<std::uint16_t> mLookup{};
  SampleTables mSamples;
};

}  // namespace LmImagingLib
