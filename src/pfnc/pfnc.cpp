#include "LmImagingLib/PFNC.h"

#include <algorithm>
#include <iterator>

#include "LmImagingLib/PixelTypeFactory.h"
#include "formats/catalogue.h"
#include "pfnc/pfnc_table.h"

namespace LmImagingLib {

namespace {

using namespace PFNC;

constexpr char kUnknown[] = "the format is unknown: it is no code or name of the convention";
constexpr char kExtended[] =
    "the format is an extended one: RegisterExtendedFormats() of LmImagingLib/Extended.h has to be called first";

constexpr unsigned long kLayouts = kBayerGR | kBayerGB | kBayerRG | kBayerBG;

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

struct Spelling {
  bool (*areEqual)(char a, char b);

  bool operator()(const char* name, const char* wanted) const {
    if (name == nullptr) return false;
    for (; *name != 0 && areEqual(*name, *wanted); ++name, ++wanted) {
    }
    return *name == 0 && *wanted == 0;
  }
};
constexpr Spelling kExactly{[](char a, char b) { return a == b; }};
constexpr Spelling kInAnyCase{[](char a, char b) { return Lower(a) == Lower(b); }};

bool BeginsWith(const char* name, const char* prefix) {
  for (; *prefix != 0 && Lower(*name) == Lower(*prefix); ++name, ++prefix) {
  }
  return *prefix == 0;
}

template <class Table, class Predicate>
auto FindIn(const Table& table, Predicate&& matches) {
  const auto found = std::find_if(std::begin(table), std::end(table), matches);
  return found == std::end(table) ? nullptr : &*found;
}

bool IsRegistered(const PFNCFormat& format) {
  return !IsExtended(format.type) || PixelTypeFactory::HasPixelType(format.type);
}

PFNCResult Found(const PFNCFormat& format) {
  if (IsRegistered(format)) return {&format, nullptr};
  return {nullptr, kExtended};
}

PFNCResult FindSpelt(const char* name, const Spelling& isNamed) {
  const Entry* const entry = FindIn(
      PFNC::kFormats, [&](const Entry& e) { return isNamed(e.format.name, name) || isNamed(e.olderName, name); });
  if (entry != nullptr) return Found(entry->format);
  const PFNCFormat* const byName = FindIn(kByNameOnly, [&](const PFNCFormat& f) { return isNamed(f.name, name); });
  if (byName != nullptr) return {byName, nullptr};
  const Unsupported* const known = FindIn(kUnsupported, [&](const Unsupported& u) { return isNamed(u.name, name); });
  return {nullptr, known != nullptr ? known->reason : nullptr};
}

// Whether the flags of a conversion have the meaning of an entry's: a mosaic's layout, the range and matrix of YUV.
bool HasMeaning(const PFNCFormat& format, unsigned long flags) {
  if ((format.type & kColorSpaceMask) == kColorSpaceYUV) return format.flags == (flags & (kFullRange | kBT709));
  if (format.flags == 0) return true;
  return format.flags == ((flags & kLayouts) != 0 ? flags & kLayouts : kBayerGR);
}

}  // namespace

PFNCResult FindPFNC(std::uint32_t code) {
  const Entry* const entry = FindIn(PFNC::kFormats, [code](const Entry& e) { return e.format.code == code; });
  if (entry != nullptr) return Found(entry->format);
  const Unsupported* const known = FindIn(kUnsupported, [code](const Unsupported& u) { return u.code == code; });
  if (known != nullptr) return {nullptr, known->reason};
  // The upper half of other codes says gray or colour, and the bits of a pixel.
  const std::uint32_t number = code & 0xFFFF;
  const bool isStandard = code >> 24 == 1 || code >> 24 == 2;
  const NoPicture* const other = FindIn(kNoPictures, [&](const NoPicture& n) {
    return isStandard && n.first != 0 && number >= n.first && number <= n.last;
  });
  return {nullptr, other != nullptr ? other->reason : kUnknown};
}

PFNCResult FindPFNC(const char* name) {
  if (name == nullptr) return {nullptr, kUnknown};
  for (const Spelling& spelling : {kExactly, kInAnyCase}) {
    const PFNCResult found = FindSpelt(name, spelling);
    if (found || found.reason != nullptr) return found;
  }
  const NoPicture* const other = FindIn(kNoPictures, [name](const NoPicture& n) { return BeginsWith(name, n.prefix); });
  return {nullptr, other != nullptr ? other->reason : kUnknown};
}

const PFNCFormat* FindPFNC(PixelTypeID type, unsigned long flags) {
  const Synonym* const synonym = FindIn(kSynonyms, [type](const Synonym& s) { return s.type == type; });
  if (synonym != nullptr) type = synonym->inTable;
  const Entry* const entry =
      FindIn(PFNC::kFormats, [&](const Entry& e) { return e.format.type == type && HasMeaning(e.format, flags); });
  return entry != nullptr && IsRegistered(entry->format) ? &entry->format : nullptr;
}

const PFNCFormat* EnumPFNC(std::size_t index) {
  for (const Entry& entry : PFNC::kFormats) {
    if (IsRegistered(entry.format) && index-- == 0) return &entry.format;
  }
  return nullptr;
}

}  // namespace LmImagingLib
