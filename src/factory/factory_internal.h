#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LmBaseLib/Gate.h"
#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelType.h"
#include "formats/catalogue.h"

namespace LmImagingLib {

/// The entries of the registry. Built-in ones are made when they are first asked for. Every access happens under the
/// factory's gate. Functions that make an entry throw `std::bad_alloc`, and have then changed nothing.
class PixelTypeFactoryInternal {
 public:
  using Pair = std::pair<PixelTypeID, PixelTypeID>;  ///< source, destination

  /// Adds the extended formats.
  void Extend();

  /// The description of a type, or null.
  const PixelType* FindType(const PixelTypeID& id);
  bool HasType(const PixelTypeID& id) const;
  /// The name of a type, or null. Callers keep pointers to names, so they are never changed.
  const char* FindName(const PixelTypeID& id);
  /// Adds a type that is not there, and its identity unless it has a converter to itself.
  void AddType(const PixelTypeID& id, std::unique_ptr<const PixelType> type, std::string name);
  /// The ids of all types, ascending.
  std::vector<PixelTypeID> TypeIds() const;

  /// The converter of a pair, or null.
  const PixelConverter* FindConverter(const Pair& pair);
  bool HasConverter(const Pair& pair) const;
  /// Adds converters to pairs that have none.
  void AddConverters(std::map<Pair, const PixelConverter*> added);
  /// Puts a converter in place of another one.
  void ReplaceConverter(const Pair& pair, const PixelConverter& converter);
  /// All pairs, ascending.
  const std::vector<Pair>& Pairs();

 private:
  bool HasBuiltinPair(const Pair& pair) const;
  const TypeRow* FindBuiltinType(const PixelTypeID& id) const;

  Extent mExtent = Extent::kStandard;
  std::map<PixelTypeID, std::unique_ptr<const PixelType>> mTypes;
  std::map<PixelTypeID, std::string> mNames;
  std::map<Pair, const PixelConverter*> mConverters;
  std::vector<std::unique_ptr<const PixelConverter>> mOwned;  // those that the registry made itself
  std::vector<Pair> mPairs;                                   // empty while it is not known
};

/// The gate that guards the registry. The thread that holds it may take it again. A child process finds it open.
LmBaseLib::Gate& FactoryGate();

}  // namespace LmImagingLib
