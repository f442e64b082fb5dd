#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simd/mosaic.h"

namespace LmImagingLib {

/// Tables as the samples of a mosaic are looked up in them: with bytes of their own where results have 8 bits.
class SampleTables {
 public:
  SampleTables() = default;
  SampleTables(const SampleTables&) = delete;
  SampleTables& operator=(const SampleTables&) = delete;

  /// @param tables  of samples of `depth` bits; they must outlive these. Gains of words are taken over from them.
  void Make(const LookupTables<std::uint16_t>& tables, unsigned depth, unsigned resultDepth);

  const MosaicLookup& Lookup() const { return mLookup; }

 private:
  SampleTable MakeTable(std::size_t channel, const ChannelTable<std::uint16_t>& table, unsigned depth,
                        unsigned resultDepth);

  std::vector<std::uint8_t> mBytes[3];
  std::optional<SampleParts> mParts[3];
  MosaicLookup mLookup{};
};

}  // namespace LmImagingLib
