#include "camera_names.h"

#include <algorithm>
#include <iterator>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/V4L2.h"
#include "named_type.h"
#include "pixel_type_names.h"
#include "text_columns.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr std::size_t kMostLikely = 4;
// Of 8 and 16 bits, for screens and files; those of the source's kind first.
constexpr PixelTypeID kFromGray[] = {0x10001, 0x10005, 0x420002, 0x420006, 0x20004, 0x20007};
constexpr PixelTypeID kFromColors[] = {0x420002, 0x420006, 0x20004, 0x10001, 0x20007, 0x10005};

std::vector<PixelTypeID> LikelyDestinations(const PixelTypeID& from) {
  const bool isGray = (from & kColorSpaceMask) == kColorSpaceGrayscale;
  std::vector<PixelTypeID> likely;
  for (const PixelTypeID to : isGray ? kFromGray : kFromColors) {
    if (likely.size() < kMostLikely && to != from && PixelTypeFactory::HasConverter(from, to)) likely.push_back(to);
  }
  return likely;
}

std::size_t CountDestinations(const PixelTypeID& from) {
  unsigned long count = 0;
  for (PixelTypeID to = 0; PixelTypeFactory::EnumConverterTo(count, from, to);) ++count;
  return count;
}

}  // namespace

std::vector<std::string> FourccsOf(const PixelTypeID& type) {
  std::vector<std::string> names;
  for (std::size_t i = 0; const V4L2Format* const format = EnumV4L2(i); ++i) {
    if (format->type == type) names.emplace_back(format->name);
  }
  return names;
}

std::string CameraNames(const PixelTypeID& type) {
  const std::vector<const PFNCFormat*> formats = FormatsOf(type);
  if (formats.empty()) {
    const std::vector<std::string> fourccs = FourccsOf(type);
    return fourccs.empty() ? "" : Joined(fourccs, ", ") + " (V4L2)";
  }
  std::vector<std::string> names;
  names.reserve(formats.size());
  for (const PFNCFormat* const format : formats) names.emplace_back(format->name);
  if (!PixelTypeFactory::FindPixelType(type)->IsBayerPattern()) return Joined(names, ", ");
  constexpr std::size_t kLayoutAt = 5;  // of "BayerRG8"
  std::vector<std::string> layouts;
  std::transform(names.begin() + 1, names.end(), std::back_inserter(layouts),
                 [&](const std::string& name) { return name.substr(kLayoutAt, 2); });
  return names.front() + " (" + Joined(layouts, ", ") + ")";
}

std::string ShortLabel(const PixelTypeID& type) {
  const PFNCFormat* const format = FindPFNC(type, 0);
  const bool leadsToIt = format != nullptr && format->type == type && format->flags == 0;
  return std::string(leadsToIt ? format->name : PixelTypeFactory::GetPixelTypeName(type)) + " (" + HexID(type) + ")";
}

std::string DestinationsInWords(const PixelTypeID& from, const std::string& lister) {
  std::string text;
  const std::vector<PixelTypeID> likely = LikelyDestinations(from);
  for (const PixelTypeID to : likely) text += ShortLabel(to) + ", ";
  return text + "and " + std::to_string(CountDestinations(from) - likely.size()) + " more that `" + lister + "` lists";
}

}  // namespace LmTool
