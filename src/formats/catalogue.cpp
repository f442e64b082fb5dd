#include "formats/catalogue.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "formats/formats.h"

namespace LmImagingLib {

template <class Type>
PixelType* Make(const PixelTypeID& id) {
  return Type(id).Clone();
}

namespace {

constexpr PixelTypeID kMosaic8 = 0x20010;
constexpr PixelTypeID kGray16 = 0x10005;

constexpr std::size_t CountTypes() {
  std::size_t count = 0;
  for (const Format& format : kFormats) {
    for (const FormatTypes& types : format.types) {
      for (const TypeName& type : types.types) count += type.id != 0 ? 1 : 0;
    }
  }
  return count;
}

constexpr auto SortedTypes() {
  std::array<TypeRow, CountTypes()> rows{};
  std::size_t count = 0;
  for (const Format& format : kFormats) {
    for (const FormatTypes& types : format.types) {
      for (const TypeName& type : types.types) {
        if (type.id == 0) break;
        std::size_t at = count++;
        for (; at != 0 && rows[at - 1].id > type.id; --at) rows[at] = rows[at - 1];
        rows[at] = {type.id, type.name, &format, &types};
      }
    }
  }
  return rows;
}

constexpr auto kTypes = SortedTypes();

constexpr bool AreDistinct() {
  for (std::size_t i = 1; i < kTypes.size(); ++i) {
    if (kTypes[i - 1].id == kTypes[i].id) return false;
  }
  return true;
}
static_assert(AreDistinct(), "a pixel type has two rows");

template <class Writers>
const Writer* FindIn(const Writers& writers, PixelTypeID id) {
  if (id == 0) return nullptr;  // fills the lists of types
  for (const Writer* const writer : writers) {
    if (std::find(std::begin(writer->types), std::end(writer->types), id) != std::end(writer->types)) return writer;
  }
  return nullptr;
}

// The type that brings the samples of a readout into the order of the line, whose own words stay as they are.
PixelTypeID OrderedType(const TypeRow& row) {
  switch (ReadoutOf(row.id).taps) {
    case Readout::Taps::kFour:
      return row.types->depth == 8 ? 0x10001 : 0x10002 | (row.id & kNormalizedFlag);
    case Readout::Taps::kTwoLines:
      return 0x10001;
    default:
      return 0;
  }
}

// Words whose samples need no change but the order of their lines: the destination takes them as they are.
bool IsLineCopy(const TypeRow& row, PixelTypeID to) {
  if (row.types->reach != Reach::kGrays || row.format->groupBits != 16 ||
      ReadoutOf(row.id).taps != Readout::Taps::kOne) {
    return false;
  }
  const PixelTypeID base = row.id & ~(kNormalizedFlag | kInterlacedFlag);
  return to == ((row.id & kNormalizedFlag) != 0 ? kGray16 : base);
}

// Mosaics that are demosaiced as they are stored; others go through the mosaic of 8 bits.
bool IsPlainMosaic(const TypeRow& row) {
  return row.format->groupPixels == 1 && (row.id & kInterlacedFlag) == 0 &&
         ReadoutOf(row.id).taps == Readout::Taps::kOne;
}

}  // namespace

TypeRows AllTypeRows() { return {kTypes.data(), kTypes.size()}; }

const TypeRow* FindTypeRow(PixelTypeID id) {
  const auto found = std::lower_bound(kTypes.begin(), kTypes.end(), id,
                                      [](const TypeRow& row, PixelTypeID wanted) { return row.id < wanted; });
  return found != kTypes.end() && found->id == id ? &*found : nullptr;
}

const Writer* FindWriter(const TypeRow& from, PixelTypeID to) {
  const Writer* writer = FindIn(kColorWriters, to);
  if (writer == nullptr) writer = FindIn(kDeepColorWriters, to);
  if (writer == nullptr) {
    writer = from.types->reach == Reach::kGrays ? FindIn(kGrayWriters, to) : FindIn(kLumaWriters, to);
  }
  if (writer == nullptr && from.types->reach == Reach::kMosaic) writer = FindIn(kMosaicWriters, to);
  return writer;
}

const Shortcut* FindShortcut(const char* layout, const Writer& writer) {
  const auto* const found = std::find_if(std::begin(kShortcuts), std::end(kShortcuts), [&](const Shortcut& shortcut) {
    return shortcut.writer == &writer && IsSame(shortcut.layout, layout);
  });
  return found == std::end(kShortcuts) ? nullptr : found;
}

Route RouteOf(PixelTypeID from, PixelTypeID to, Extent extent) {
  using Kind = Route::Kind;
  const TypeRow* const row = FindTypeRow(from);
  if (row == nullptr) return {};
  const bool isExtendedType = IsExtended(from) || IsExtended(to);
  if (isExtendedType && extent == Extent::kStandard) return {};
  if (from == to) return {Kind::kIdentity};
  if (IsLineCopy(*row, to)) return {Kind::kCopy};
  const PixelTypeID ordered = OrderedType(*row);
  if (ordered != 0 && to == ordered) return {Kind::kReorder};
  const Reach reach = row->types->reach;
  const bool isColor = FindIn(kColorWriters, to) != nullptr;
  const bool isStandard =
      !isExtendedType && (isColor || (reach == Reach::kGrays && FindIn(kGrayWriters, to) != nullptr) ||
                          (reach == Reach::kMosaic && to == kMosaic8));
  if (!isStandard && extent == Extent::kStandard) return {};
  if (FindWriter(*row, to) == nullptr) return {};
  if (ordered != 0) return {Kind::kChain, ordered};
  if (reach != Reach::kMosaic || FindIn(kMosaicWriters, to) != nullptr) return {Kind::kLines};
  return isStandard && !IsPlainMosaic(*row) ? Route{Kind::kChain, kMosaic8} : Route{Kind::kDemosaic};
}

void FindDestinations(PixelTypeID from, Extent extent, std::vector<PixelTypeID>& ids) {
  ids.clear();
  const auto add = [&](PixelTypeID to) {
    if (to != 0 && RouteOf(from, to, extent).kind != Route::Kind::kNone) ids.push_back(to);
  };
  const auto addAll = [&](const auto& writers) {
    for (const Writer* const writer : writers) {
      std::for_each(std::begin(writer->types), std::end(writer->types), add);
    }
  };
  add(from);
  add(OrderedType(*FindTypeRow(from)));
  addAll(kColorWriters);
  addAll(kDeepColorWriters);
  addAll(kGrayWriters);
  addAll(kMosaicWriters);
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

}  // namespace LmImagingLib
