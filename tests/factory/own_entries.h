#pragma once

#include <deque>

#include "LmImagingLib/PixelConverter.h"

namespace LmImagingLib {

/// Ids that no other test uses: the registry forgets nothing, and the built-in entries must stay as they are.
class OwnIds {
 public:
  PixelTypeID operator()(const PixelTypeID& id) const { return mHighBits | id; }

 private:
  static inline PixelTypeID sCount = 0;
  const PixelTypeID mHighBits = ++sCount << 32;
};

/// A converter that does nothing, and lives as long as the registry may know it.
inline const PixelConverter& NewConverter(const PixelTypeID& from, const PixelTypeID& to) {
  static std::deque<PixelConverter> sConverters;
  return sConverters.emplace_back(from, to, 1, 1, 1, 1);
}

}  // namespace LmImagingLib
