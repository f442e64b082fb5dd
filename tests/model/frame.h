#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/RGBFilter.h"
#include "model/catalogue.h"
#include "model/line.h"

namespace model {

/// Noise that is the same everywhere.
class Random {
 public:
  explicit Random(std::uint32_t seed) : mState(seed) {}
  std::uint32_t operator()() {
    mState = mState * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::uint32_t>(mState >> 33);
  }

 private:
  std::uint64_t mState;
};

/// A number from `choices`, each as likely as the others.
std::uint32_t OneOf(Random& random, std::initializer_list<std::uint32_t> choices);

/// Fills in the tables of a filter.
void ReadTables(const LmImagingLib::RGBFilter& filter, Filter& tables);

/// Null, the identity, gains, or noise, in tables of 8 or more bits: filters of the library and their tables.
class Filters {
 public:
  explicit Filters(Random& random);

  /// The tables of a filter, or null.
  const Filter* Pick(Random& random) const;
  const LmImagingLib::RGBFilter* FilterOf(const Filter* tables) const {
    return tables != nullptr ? &mFilters[static_cast<std::size_t>(tables - mTables)] : nullptr;
  }

 private:
  void SetMultipliers(std::size_t k, const std::array<double, 3>& by, const std::array<unsigned short, 3>& offsets);

  static constexpr std::size_t kCount = 5;
  LmImagingLib::RGBFilter mFilters[kCount];
  Filter mTables[kCount];
};

/// One conversion with all it needs and all it must give.
struct Frame {
  Id from, to;
  Call call;
  std::vector<std::uint8_t> source;        ///< exactly what may be read
  std::vector<std::uint8_t> untouched;     ///< the destination before, exactly as far as it is written
  std::vector<std::uint8_t> expected;      ///< and after
  std::vector<std::uint8_t> intermediate;  ///< of a chain: the buffer before
  std::size_t intermediateSize = 0;        ///< of a chain: its size as the chain reports it

  /// The pair, the geometry and the flags.
  std::string Describe() const;
};

/// Makes samples for the call and lets the model convert them.
/// @param between  of a chain: the bytes of the intermediate image before; scratch of the library's own begins as zeros
Frame MakeFrame(Id from, Id to, const Call& call, Random& random, std::uint8_t between = 0);

/// The geometry of a call, as the library takes it.
LmImagingLib::ConversionGeometry GeometryOf(const Call& call);

/// Converts with the library; the buffers are the frame's or of the same sizes.
LmBaseLib::Result ConvertWithLibrary(const LmImagingLib::PixelConverter& converter, const Call& call,
                                     const LmImagingLib::RGBFilter* filter, const void* source, void* destination,
                                     void** scratch, unsigned long* scratchSize);

/// The index of the first byte that differs, or the size.
std::size_t FirstDifference(const std::uint8_t* actual, const std::vector<std::uint8_t>& expected);

}  // namespace model
