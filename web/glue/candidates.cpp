#include "candidates.h"

#include <algorithm>
#include <memory>

#include "LmImagingLib/PFNC.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "encode/layout.h"

namespace LmPage {

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kOrderMask = kInterlacedFlag | kDualOutputMask;

// Whether cameras have a name for the type itself, not for another one of its layout.
bool HasName(PixelTypeID type) {
  const PFNCFormat* const format = FindPFNC(type, 0);
  return format != nullptr && format->type == type;
}

// Named formats are common. Fields, planes, taps, colours that share bytes and bits at the top of a word are rare.
double RarityOf(PixelTypeID type, const SampleMap& map) {
  double rarity = 0.0005 * map.channels[0].bits;
  if (!HasName(type)) rarity += 0.01;
  if ((type & kNormalizedFlag) != 0) rarity += 0.01;
  if ((type & kInterlacedFlag) != 0) rarity += 0.04;
  if (map.planes > 1) rarity += 0.12;
  if (map.pixels == 1 && map.planes == 1 && map.bytes <= 4 && map.channels.size() == 3 && map.channels[0].bits % 8 != 0)
    rarity += 0.3;
  if (HasTaps(type) || (type & kDualOutputMask) != 0) rarity += 0.35;
  return rarity;
}

bool HaveOneLayout(const Candidate& a, PixelTypeID type, bool isMosaic) {
  return a.isMosaic == isMosaic &&
         (a.type & (kOrderMask | kNormalizedFlag | kColorSpaceMask)) ==
             (type & (kOrderMask | kNormalizedFlag | kColorSpaceMask)) &&
         LmTool::LayoutOf(a.type).bits == LmTool::LayoutOf(type).bits &&
         LmTool::LayoutInWords(a.type) == LmTool::LayoutInWords(type);
}

}  // namespace

std::vector<Candidate> Candidates() {
  std::vector<Candidate> candidates;
  for (unsigned long i = 0;; ++i) {
    const std::unique_ptr<const PixelType> kind(PixelTypeFactory::CreatePixelType(i, {}));
    if (kind == nullptr) return candidates;
    const PixelTypeID type = kind->GetTypeID();
    const bool isMosaic = kind->IsBayerPattern();
    const auto same = std::find_if(candidates.begin(), candidates.end(),
                                   [&](const Candidate& c) { return HaveOneLayout(c, type, isMosaic); });
    if (same != candidates.end() && !HasName(type)) continue;
    SampleMap map = MapOf(type);
    const double rarity = RarityOf(type, map);
    if (same == candidates.end()) {
      candidates.push_back({type, isMosaic, rarity, std::move(map)});
    } else if (!HasName(same->type)) {
      *same = {type, isMosaic, rarity, std::move(map)};
    }
  }
}

const BitUse::Bits& BitUse::BitsOf(std::size_t bytes, std::size_t planes) {
  for (const Bits& known : mKnown) {
    if (known.bytes == bytes && known.planes == planes) return known;
  }
  Bits bits{bytes, planes, std::vector<std::uint8_t>(bytes * planes), std::vector<std::uint8_t>(bytes * planes, 0xFF)};
  const std::size_t planeBytes = mFile.size / planes;
  for (std::size_t plane = 0; plane < planes; ++plane) {
    std::uint8_t* const some = &bits.some[plane * bytes];
    std::uint8_t* const all = &bits.all[plane * bytes];
    const std::uint8_t* const data = mFile.data + plane * planeBytes;
    for (std::size_t group = 0; group + bytes <= planeBytes; group += bytes) {
      for (std::size_t byte = 0; byte < bytes; ++byte) {
        some[byte] |= data[group + byte];
        all[byte] &= data[group + byte];
      }
    }
  }
  mKnown.push_back(std::move(bits));
  return mKnown.back();
}

bool BitUse::Examine(Candidate& candidate) {
  SampleMap& map = candidate.map;
  const Bits& bits = BitsOf(map.bytes, map.planes);
  for (std::size_t i = 0; i < map.unused.size(); ++i) {
    if (((bits.some[i] & ~bits.all[i]) & map.unused[i]) != 0) return false;
  }
  // Types whose upper bits are used fit better than deeper ones; lower bits of 0 come from sensors that have fewer.
  for (Channel& channel : map.channels) {
    unsigned used = 0;
    for (const MappedSample& sample : channel.samples) {
      if (sample.invert != 0) return true;
      used |= static_cast<unsigned>(sample.In(&bits.some[channel.plane * map.bytes]));
    }
    if (used == 0) continue;
    while ((used >> channel.zeros & 1) == 0) ++channel.zeros;
    unsigned above = 0;
    while ((used << above >> (channel.bits - 1) & 1) == 0) ++above;
    candidate.rarity += (0.004 * above + 0.008 * channel.zeros) / static_cast<double>(map.channels.size());
  }
  return true;
}

}  // namespace LmPage
