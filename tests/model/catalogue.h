#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "model/line.h"

namespace model {

using Id = std::int64_t;
using Pair = std::pair<Id, Id>;

enum class Family { GRAY, BAYER, COLOR };

/// What a pair of types is converted by: one converter, or two with an image of the type `via` between them. Without
/// that type, nobody sees the image: samples have all their bits, and only the rows are made that are read.
struct Route {
  Stage first;
  std::optional<Stage> second;
  Id via = 0;
};

/// Whether the extended formats are registered.
enum class Registered { STANDARD, EXTENDED };

/// A source type.
struct Source {
  Family family;
  unsigned bits;         ///< significant bits as the type tells them
  unsigned bytes;        ///< bytes a pixel as the type tells them
  Stage reader;          ///< without a writer
  bool demosaiced;       ///< colour comes straight from the mosaic
  Id reorderedType = 0;  ///< the type that the reader brings samples into the order of, the only one it writes
};

std::set<Id> AllTypes(Registered registered);
/// All pairs, identities included.
std::set<Pair> AllPairs(Registered registered);
const Source& SourceOf(Id from);
Route RouteOf(Id from, Id to);
/// The same through rows that have all the bits of the samples, of a mosaic that is unpacked and then demosaiced.
Route ThroughAllBits(const Route& route);

}  // namespace model
