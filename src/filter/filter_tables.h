#pragma once

#include <optional>
#include <vector>

#include "filter/derived_list.h"
#include "filter/filter_curve.h"
#include "filter/wide_tables.h"
#include "simd/strip.h"

namespace LmImagingLib {

class RGBFilter;

/// The six lookup tables of a filter, shared by its copies, and those derived from them.
struct RGBFilterTables {
  /// Identity tables. The 8-bit tables are complete whatever the entry count: entries past it stay the identity.
  explicit RGBFilterTables(unsigned long bits);
  RGBFilterTables(const RGBFilterTables&) = delete;
  RGBFilterTables& operator=(const RGBFilterTables&) = delete;

  /// The tables that kernels look bytes up in, or null where they change nothing and the lookup may be left out.
  ///
  /// Kernels ask this and not `RGBFilter::IsIdentity`, which may be true over changed tables (a value set without
  /// update) and false over identity ones (any wide filter that was ever changed).
  const LookupTables<std::uint8_t>* Lookup() const { return mismatches8 == 0 ? nullptr : &lookup; }

  /// The same for samples of `depth` bits and results of `resultDepth` bits. Derived at the first call and kept until
  /// the next write; any number of threads may call. Throws `std::bad_alloc`.
  const LookupTables<std::uint16_t>* Lookup(unsigned depth, unsigned resultDepth) const;

  /// The same for the samples of mosaics.
  const MosaicLookup* OfMosaics(unsigned depth, unsigned resultDepth) const;

  /// Finds out whether the 8-bit tables are gains. Any later write makes them plain tables again.
  void FindGains();

  /// Drops the derived tables, before the tables change.
  void ForgetDerived() { mDerived.Clear(); }

  alignas(64) unsigned char red8[256];
  alignas(64) unsigned char green8[256];
  alignas(64) unsigned char blue8[256];
  unsigned bits;
  std::vector<unsigned short> red16;
  std::vector<unsigned short> green16;
  std::vector<unsigned short> blue16;
  /// How many of the 3 * 256 8-bit entries differ from their index; kept up to date by every write.
  unsigned mismatches8 = 0;
  LookupTables<std::uint8_t> lookup{{red8, {}}, {green8, {}}, {blue8, {}}, false};
  /// The multipliers that all the entries come from, if they do.
  std::optional<Multipliers> multipliers;
  /// The curve that all the entries come from, if they do.
  std::optional<FilterCurve> curve;

 private:
  const WideTables& Derived(unsigned depth, unsigned resultDepth) const;

  mutable DerivedList<WideTables> mDerived;
};

/// The tables of `filter`, for as long as it or a copy of it lives.
const RGBFilterTables& TablesOf(const RGBFilter& filter);

}  // namespace LmImagingLib
