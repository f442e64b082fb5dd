#include "encode/readout.h"

#include <algorithm>
#include <iterator>

namespace LmTool {

using namespace LmImagingLib;

namespace {

// Which parts of a line the taps read at once. Tap t delivers pixel (start + step k) of group k, of a line of
// `taps` zones of equal width; a start is the zone's first pixel, or its last one if the tap reads backwards.
struct Taps {
  PixelTypeID mask, value;
  std::size_t count;
  bool backwards[4];
};
constexpr PixelTypeID kFormatMask = kColorSpaceMask | kFormatNumberMask;
constexpr Taps kTaps[] = {
    {kDualOutputMask, kDualLeftRight, 2, {false, false}},
    {kDualOutputMask, kDualLeftRightInverted, 2, {false, true}},
    {kDualOutputMask, kDualLeftInvertedRight, 2, {true, false}},
    {kDualOutputMask, kDualLeftInvertedRightInverted, 2, {true, true}},
    {kFormatMask, 0x10006, 4, {false, false, true, true}},
    {kFormatMask, 0x10007, 4, {false, false, true, true}},
};

}  // namespace

std::vector<std::uint16_t> InReadoutOrder(const PixelTypeID& type, std::vector<std::uint16_t> samples) {
  const auto* const taps = std::find_if(std::begin(kTaps), std::end(kTaps),
                                        [&](const Taps& entry) { return (type & entry.mask) == entry.value; });
  if (taps == std::end(kTaps)) return samples;
  std::vector<std::uint16_t> ordered = samples;  // what is left over of whole groups stays at its place
  const std::size_t zone = samples.size() / taps->count;
  for (std::size_t k = 0; k < zone; ++k) {
    for (std::size_t tap = 0; tap < taps->count; ++tap) {
      ordered[k * taps->count + tap] = samples[tap * zone + (taps->backwards[tap] ? zone - 1 - k : k)];
    }
  }
  return ordered;
}

}  // namespace LmTool
