#pragma once

#include <vector>

#include "simd/strip.h"

namespace LmImagingLib {

class RGBFilter;

/// The six lookup tables of a filter, shared by its copies.
struct RGBFilterTables {
  /// Identity tables. The 8-bit ones are complete whatever the entry count: what lies past it stays the identity.
  explicit RGBFilterTables(unsigned long entryCount);
  RGBFilterTables(const RGBFilterTables&) = delete;
  RGBFilterTables& operator=(const RGBFilterTables&) = delete;

  /// What kernels look up, or null where the 8-bit tables change nothing and the lookup may be left out.
  ///
  /// Kernels ask this and not `RGBFilter::IsIdentity`, which may be true over changed tables (a value set without
  /// update) and false over identity ones (any wide filter that was ever changed).
  const LookupTables* Lookup() const { return mismatches8 == 0 ? nullptr : &lookup; }

  /// Finds out whether the 8-bit tables are gains. Any later write makes them plain tables again.
  void FindGains();

  alignas(64) unsigned char red8[256];
  alignas(64) unsigned char green8[256];
  alignas(64) unsigned char blue8[256];
  std::vector<unsigned short> red16;
  std::vector<unsigned short> green16;
  std::vector<unsigned short> blue16;
  /// How many of the 3 * 256 8-bit entries differ from their index; kept up to date by every write.
  unsigned mismatches8 = 0;
  LookupTables lookup{{red8, {}}, {green8, {}}, {blue8, {}}, false};
};

/// The tables of `filter`, for as long as it or a copy of it lives.
const RGBFilterTables& TablesOf(const RGBFilter& filter);

}  // namespace LmImagingLib
