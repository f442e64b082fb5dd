#include "pixel_type_names.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <numeric>
#include <sstream>
#include <utility>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/V4L2.h"

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

struct Suggestion {
  std::size_t distance;
  std::string name;
};

// Names of cameras, and those of types whose colours they say: the name of a mosaic's type would leave its layout to be
// guessed. Names of cameras, which come first, win over others as close.
std::vector<std::string> NamesToSuggest() {
  std::vector<std::string> names;
  for (std::size_t i = 0; const auto* const format = LmImagingLib::EnumPFNC(i); ++i) names.emplace_back(format->name);
  for (std::size_t i = 0; const auto* const format = LmImagingLib::EnumV4L2(i); ++i) names.emplace_back(format->name);
  for (const PixelTypeID id : RegisteredTypes()) {
    if (PixelTypeFactory::FindPixelType(id)->IsBayerPattern()) continue;
    names.push_back(ClassName(id));
    names.emplace_back(PixelTypeFactory::GetPixelTypeName(id));
  }
  return names;
}

// The edits between two names; one for a name that goes on where the text ends.
std::size_t Distance(const std::string& text, const std::string& name) {
  constexpr std::size_t kLeastBeginning = 3;
  const bool begins = text.size() >= kLeastBeginning && name.compare(0, text.size(), text) == 0;
  return begins ? 1 : EditDistance(text, name);
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

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::vector<PixelTypeID> TypesNamed(const std::string& text) {
  const std::string wanted = Lower(text);
  const std::vector<PixelTypeID> all = RegisteredTypes();
  std::vector<PixelTypeID> found;
  for (const PixelTypeID id : all) {
    if (Lower(PixelTypeFactory::GetPixelTypeName(id)) == wanted) found.push_back(id);
  }
  if (!found.empty()) return found;
  // Some classes are registered only as variants of their base id; the lowest one stands for the class.
  const auto ofClass = std::find_if(
      all.begin(), all.end(), [&](const PixelTypeID& id) { return !wanted.empty() && Lower(ClassName(id)) == wanted; });
  if (ofClass != all.end()) found.push_back(*ofClass);
  for (const NamedClass& alias : kAliases) {
    if (Lower(alias.name) == wanted) found.push_back(alias.base);
  }
  return found;
}

std::string ClosestNames(const std::string& text) {
  constexpr std::size_t kMost = 3;
  const std::string wanted = Lower(text);
  const std::size_t farthest = std::max<std::size_t>(1, wanted.size() / 3);
  std::vector<Suggestion> suggestions;
  for (const std::string& name : NamesToSuggest()) {
    const std::size_t distance = Distance(wanted, Lower(name));
    const auto isIt = [&](const Suggestion& other) { return other.name == name; };
    if (distance <= farthest && std::none_of(suggestions.begin(), suggestions.end(), isIt)) {
      suggestions.push_back({distance, name});
    }
  }
  std::stable_sort(suggestions.begin(), suggestions.end(),
                   [](const Suggestion& a, const Suggestion& b) { return a.distance < b.distance; });
  std::string list;
  for (std::size_t i = 0; i < std::min(suggestions.size(), kMost); ++i)
    list += (i == 0 ? "'" : ", '") + suggestions[i].name + "'";
  return list;
}

}  // namespace LmTool
