#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "LmImagingLib/Development.h"
#include "filter/derived_list.h"
#include "filter/sample_tables.h"
#include "simd/color_matrix.h"

namespace LmImagingLib {

/// The steps of a development for samples of some depth and results of another.
///
/// Without a matrix, samples are looked up in a table of black level, gain and tone. With one, that table has the
/// square root of the light in the place of the tone, and the matrix comes after demosaicing, with the tone.
class DevelopSteps {
 public:
  /// @param depth  bits of the samples; those of 8 bits have results of 8, which are widened where more are asked for
  /// @param resultDepth  bits of the destination
  DevelopSteps(const DevelopmentSettings& settings, std::uint32_t depth, std::uint32_t resultDepth);
  DevelopSteps(const DevelopSteps&) = delete;
  DevelopSteps& operator=(const DevelopSteps&) = delete;

  bool Serves(std::uint32_t depth, std::uint32_t resultDepth) const {
    return depth == mDepth && resultDepth == mResultDepth;
  }

  /// One table a channel, for samples of all their bits.
  const MosaicLookup& Lookup() const { return mSamples.Lookup(); }
  /// Bits of the entries of that table.
  std::uint32_t EntryDepth() const { return mDepth == 8 ? 8 : mResultDepth; }
  /// Null where the matrix changes nothing.
  const MatrixSteps* Matrix() const { return mHasMatrix ? &mMatrix : nullptr; }
  /// The lookup of results of 8 bits that are to become words, or null.
  const LookupTables<std::uint16_t>* Widening() const { return mWide.empty() ? nullptr : &mWidening; }
  /// How far samples may be outside of the range of their neighbours; 0xFFFF where that does not matter.
  std::uint32_t DefectThreshold() const { return mDefectThreshold; }

 private:
  void MakeMatrix(const ColorMatrix& matrix, const ToneCurve& tone);

  const std::uint32_t mDepth, mResultDepth;
  std::uint32_t mDefectThreshold;
  bool mHasMatrix;
  std::vector<std::uint16_t> mEntries[3];
  std::vector<std::uint16_t> mWide;
  std::vector<std::uint8_t> mToneBytes;
  std::optional<ToneLines> mToneLines;
  std::vector<std::uint16_t> mToneWords;
  SampleTables mSamples;
  LookupTables<std::uint16_t> mWidening{};
  MatrixSteps mMatrix{};
};

inline constexpr std::uint32_t kNoDefects = 0xFFFF;

/// The settings of a development and the tables that were made of them.
struct DevelopmentTables {
  explicit DevelopmentTables(const DevelopmentSettings& theSettings) : settings(theSettings) {}

  /// Made at the first call and kept; any number of threads may call. Throws `std::bad_alloc`.
  const DevelopSteps& Steps(std::uint32_t depth, std::uint32_t resultDepth) const;

  const DevelopmentSettings settings;

 private:
  mutable DerivedList<DevelopSteps> mSteps;
};

/// The factors of a matrix in 4096ths.
std::int16_t FactorOf(double factor);

/// The tables of `development`, for as long as it or a copy of it lives.
const DevelopmentTables& TablesOf(const Development& development);

}  // namespace LmImagingLib
