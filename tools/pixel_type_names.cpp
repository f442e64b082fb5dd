#include "pixel_type_names.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <memory>
#include <numeric>
#include <optional>
#include <sstream>
#include <utility>

#include "LmImagingLib/PixelTypeFactory.h"
#include "error.h"

namespace LmTool {

using LmImagingLib::PixelTypeFactory;
using LmImagingLib::PixelTypeID;

namespace {

constexpr PixelTypeID kBaseMask = LmImagingLib::kColorSpaceMask | LmImagingLib::kFormatNumberMask;

struct NamedClass {
  const char* name;
  PixelTypeID base;
};

constexpr NamedClass kClasses[] = {
    {"Grayscale4", 0x10400},
    {"Grayscale8", 0x10001},
    {"Grayscale8Signed", 0x10401},
    {"Grayscale10", 0x10002},
    {"Grayscale12", 0x10003},
    {"Grayscale14", 0x10004},
    {"Grayscale16", 0x10005},
    {"Grayscale8_DualQuadMultiplexed", 0x10006},
    {"Grayscale10_DualQuadMultiplexed", 0x10007},
    {"Grayscale10_Packed_GEV", 0x10008},
    {"Grayscale12_Packed_GEV", 0x10009},
    {"RGB16", 0x20001},
    {"RGB24", 0x20002},
    {"RGB32", 0x20003},
    {"RGB48", 0x20004},
    {"RGB64", 0x20005},
    {"BGR24", 0x20006},
    {"BGR32", 0x20007},
    {"RGB48_10Bits", 0x20008},
    {"RGB64_10Bits", 0x20009},
    {"RGB8_3", 0x2000A},
    {"RGB8_4", 0x2000B},
    {"RGB48_12Bits", 0x2000C},
    {"RGB64_12Bits", 0x2000D},
    {"BGR48_10Bits", 0x20042},
    {"BGR48_12Bits", 0x20043},
    {"BGR10PackedV1", 0x20044},
    {"BGR10PackedV2", 0x20045},
    {"RGB12PackedV1", 0x20046},
    {"BayerRGB8", 0x20010},
    {"BayerRGB10", 0x20011},
    {"BayerRGB12", 0x20012},
    {"BayerRGB14", 0x20016},
    {"BayerRGB16", 0x20020},
    {"BayerRGB12_Packed_GEV", 0x20040},
    {"BayerRGB10_Packed_GEV", 0x20041},
    {"YUV8", 0x40001},
    {"YUV10", 0x40002},
    {"YUV8_444", 0x40003},
    {"YCrCb", 0x40005},
    {"YUV8_411", 0x40006},
    {"YUV8_444_GEV", 0x40007},
    {"YUV8_422_GEV", 0x40008},
};

// Names beside those of classes.
constexpr NamedClass kAliases[] = {{"RGB565", 0x20001}};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::optional<PixelTypeID> ParseNumber(const std::string& text) {
  const bool hex = text.rfind("0x", 0) == 0;
  const char* const end = text.data() + text.size();
  PixelTypeID value = 0;
  const auto [stop, error] = std::from_chars(text.data() + (hex ? 2 : 0), end, value, hex ? 16 : 10);
  if (error != std::errc() || stop != end || value < 0) return std::nullopt;
  return value;
}

// The registered types that have the text, in lower case, for their name or for their class's name. Some classes are
// registered only as variants of their base id; the lowest one stands for the class.
std::vector<PixelTypeID> TypesNamed(const std::string& text) {
  const std::vector<PixelTypeID> all = RegisteredTypes();
  std::vector<PixelTypeID> found;
  for (const PixelTypeID id : all) {
    if (Lower(PixelTypeFactory::GetPixelTypeName(id)) == text) found.push_back(id);
  }
  if (!found.empty()) return found;
  const auto ofClass =
      std::find_if(all.begin(), all.end(), [&](const PixelTypeID& id) { return Lower(ClassName(id)) == text; });
  if (ofClass != all.end()) found.push_back(*ofClass);
  for (const NamedClass& alias : kAliases) {
    if (Lower(alias.name) == text) found.push_back(alias.base);
  }
  return found;
}

// The number of single-character edits between two texts.
std::size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
    }
  }
  return row.back();
}

std::string ClosestNames(const std::string& text) {
  constexpr std::size_t kMost = 3;
  const std::size_t farthest = std::max<std::size_t>(2, text.size() / 2);
  std::vector<std::pair<std::size_t, std::string>> names;
  for (const PixelTypeID id : RegisteredTypes()) {
    for (const std::string& name : {ClassName(id), std::string(PixelTypeFactory::GetPixelTypeName(id))}) {
      const auto [shorter, longer] = std::minmax({text.size(), name.size()});
      if (longer - shorter > farthest) continue;  // an edit changes the length by one at most
      const std::size_t distance = EditDistance(text, Lower(name));
      if (distance <= farthest) names.emplace_back(distance, name);
    }
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i)
    list += (i == 0 ? "'" : ", '") + names[i].second + "'";
  return list;
}

}  // namespace

std::vector<PixelTypeID> RegisteredTypes() {
  std::vector<PixelTypeID> ids;
  for (unsigned long i = 0;; ++i) {
    const std::unique_ptr<const LmImagingLib::PixelType> type(PixelTypeFactory::CreatePixelType(i, {}));
    if (type == nullptr) return ids;
    ids.push_back(type->GetTypeID());
  }
}

std::string ClassName(const PixelTypeID& id) {
  const auto* const row = std::find_if(std::begin(kClasses), std::end(kClasses),
                                       [&](const NamedClass& entry) { return entry.base == (id & kBaseMask); });
  return row == std::end(kClasses) ? "" : row->name;
}

std::string HexID(const PixelTypeID& id) {
  std::ostringstream text;
  text << "0x" << std::hex << std::uppercase << id;
  return text.str();
}

std::string Label(const PixelTypeID& id) { return HexID(id) + " (" + PixelTypeFactory::GetPixelTypeName(id) + ")"; }

PixelTypeID ParsePixelType(const std::string& argument, const std::string& text) {
  constexpr const char* kAllowed = "; allowed: an id, a name or a class name that `lmimaging types` lists";
  const std::string wanted = Lower(text);
  if (const std::optional<PixelTypeID> id = ParseNumber(wanted)) {
    if (PixelTypeFactory::HasPixelType(*id)) return *id;
    throw ToolError(argument, "no pixel type has the id '" + text + "'" + kAllowed);
  }
  const std::vector<PixelTypeID> found = TypesNamed(wanted);
  if (found.size() == 1) return found.front();
  if (found.empty()) {
    const std::string closest = ClosestNames(wanted);
    const std::string hint = closest.empty() ? "" : " (did you mean " + closest + "?)";
    throw ToolError(argument, "no pixel type is named '" + text + "'" + hint + kAllowed);
  }
  std::string ids;
  for (const PixelTypeID id : found) ids += (ids.empty() ? "" : ", ") + HexID(id) + " (" + ClassName(id) + ")";
  throw ToolError(argument, "'" + text + "' names several pixel types; allowed: one of the ids " + ids);
}

}  // namespace LmTool
