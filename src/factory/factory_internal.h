#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LmBaseLib/Gate.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"

namespace LmImagingLib {

/// What the registry holds. Every access happens under the factory's gate.
class PixelTypeFactoryInternal {
 public:
  using Pair = std::pair<PixelTypeID, PixelTypeID>;  ///< source, destination

  std::map<PixelTypeID, std::unique_ptr<const PixelType>> types;
  /// The names of the registered types. Callers keep pointers to them, so they are never changed.
  std::map<PixelTypeID, std::string> names;
  std::map<Pair, const PixelConverter*> converters;
  /// The converters that the registry made itself.
  std::vector<std::unique_ptr<const PixelConverter>> ownedConverters;
};

/// The gate that guards the registry, made by whoever needs it first. The thread that holds it may take it again.
LmBaseLib::Gate& FactoryGate();

}  // namespace LmImagingLib
