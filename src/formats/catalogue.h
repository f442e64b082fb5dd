#pragma once

#include <cstddef>
#include <vector>

#include "formats/format.h"
#include "formats/readout.h"

// The built-in pixel types, writers and pairs, derived from the table of formats.
namespace LmImagingLib {

/// A built-in pixel type.
struct TypeRow {
  PixelTypeID id = 0;
  const char* name = nullptr;  ///< null composes one
  const Format* format = nullptr;
  const FormatTypes* types = nullptr;
};

/// Rows one after the other.
struct TypeRows {
  const TypeRow* first;
  std::size_t count;

  // NOLINTBEGIN(readability-identifier-naming): for loops over ranges ask for these names
  const TypeRow* begin() const { return first; }
  const TypeRow* end() const { return first + count; }
  // NOLINTEND(readability-identifier-naming)
};

/// All built-in types, ascending.
TypeRows AllTypeRows();
/// The row of a type, or null.
const TypeRow* FindTypeRow(PixelTypeID id);
/// The writer for a pair, or null where none stores the destination.
const Writer* FindWriter(const TypeRow& from, PixelTypeID to);
/// The shortcut from a layout, or a method of demosaicing, to a writer; null where there is none.
const Shortcut* FindShortcut(const char* layout, const Writer& writer);

/// Whether a type is one of the extended formats: they have the format numbers from 0x0800 on.
constexpr bool IsExtended(PixelTypeID id) { return (id & kFormatNumberMask) >= 0x0800; }

/// The built-in entries that the registry has: those of old, or the extended ones too.
enum class Extent { kStandard, kExtended };

/// How a built-in pair is served.
struct Route {
  enum class Kind {
    kNone,      ///< it is no built-in pair
    kIdentity,  ///< bytes are copied
    kCopy,      ///< the same, to another type whose lines have another order
    kReorder,   ///< samples change their places in the line
    kLines,     ///< lines are decoded and stored
    kDemosaic,  ///< rows of a mosaic become colours
    kChain,     ///< through the type `via`
  };

  Kind kind = Kind::kNone;
  PixelTypeID via = 0;
};
Route RouteOf(PixelTypeID from, PixelTypeID to, Extent extent);

/// Fills `ids` with the destinations of a built-in type, itself included, ascending.
void FindDestinations(PixelTypeID from, Extent extent, std::vector<PixelTypeID>& ids);

}  // namespace LmImagingLib
