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

/// What a pair of types is converted by: one converter, or two with an image of the type `via` between them.
struct Route {
  Stage first;
  std::optional<Stage> second;
  Id via = 0;
};

/// A source type.
struct Source {
  Family family;
  unsigned bits;         ///< significant bits as the type tells them
  unsigned bytes;        ///< bytes a pixel as the type tells them
  Stage reader;          ///< without a writer
  bool demosaiced;       ///< colour comes straight from the mosaic
  Id reorderedType = 0;  ///< the type that the reader brings samples into the order of, the only one it writes
};

const std::set<Id>& AllTypes();
/// All pairs, the 155 identities included.
std::set<Pair> AllPairs();
const Source& SourceOf(Id from);
Route RouteOf(Id from, Id to);

}  // namespace model
