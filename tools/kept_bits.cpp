#include "kept_bits.h"

#include <algorithm>

#include "LmImagingLib/Image.h"
#include "frame.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr ImageSize kSize{16, 4};  // whole groups of pixels and lines of every layout
constexpr char kNone = 0;
constexpr char kAll = '*';

}  // namespace

std::string LossInWords(const KeptBits& bits) {
  if (bits.kept >= bits.sample) return {};
  return "keeps " + std::to_string(bits.kept) + " of " + std::to_string(bits.sample) + " bits";
}

BitProbe::BitProbe(const PixelTypeID& from) : mFrom(from), mLayout(BitsOf(from)), mUnchanged(Frame(kNone, 0)) {
  for (const char sample : {'p', 'R', 'G', 'B', 'Y'}) {
    const unsigned bits = BitsOfSample(mLayout, sample);
    if (bits == 0) continue;
    mChannels.push_back({sample, bits});
    AddChannel(mChannels.back());
  }
  AddChannel({kAll, SampleBits()});
}

unsigned BitProbe::SampleBits() const {
  return std::max_element(mChannels.begin(), mChannels.end(),
                          [](const Channel& a, const Channel& b) { return a.bits < b.bits; })
      ->bits;
}

KeptBits BitProbe::To(const PixelTypeID& to) const {
  // A gray value is a sum in which the last bits of one channel may have no weight.
  if ((to & kColorSpaceMask) == kColorSpaceGrayscale) return Kept(to, {kAll, SampleBits()});
  KeptBits least{0, 0};
  for (const Channel& channel : mChannels) {
    const KeptBits bits = Kept(to, channel);
    if (least.sample == 0 || bits.sample - bits.kept > least.sample - least.kept) least = bits;
  }
  return least;
}

void BitProbe::AddChannel(const Channel& channel) {
  for (unsigned bit = 0; bit < channel.bits; ++bit) mFlipped[channel.sample].push_back(Frame(channel.sample, bit));
}

KeptBits BitProbe::Kept(const PixelTypeID& to, const Channel& channel) const {
  const Bytes unchanged = ConvertFrame(mUnchanged, to, {});
  const std::vector<RawFrame>& flipped = mFlipped.at(channel.sample);
  const auto shown = std::find_if(flipped.begin(), flipped.end(),
                                  [&](const RawFrame& frame) { return ConvertFrame(frame, to, {}) != unchanged; });
  return {channel.bits, static_cast<unsigned>(flipped.end() - shown)};
}

// Every pixel has the same colour: samples of a quarter of the scale and no chroma, with one bit flipped.
RawFrame BitProbe::Frame(char flippedSample, unsigned flippedBit) const {
  const auto isSet = [&](const StoredBit& bit) {
    if (bit.sample == 0) return false;
    const bool isChroma = bit.sample == 'U' || bit.sample == 'V';
    const bool isFlipped =
        (bit.sample == flippedSample || (flippedSample == kAll && !isChroma)) && bit.bit == flippedBit;
    return isFlipped != (bit.bit + (isChroma ? 1 : 2) == BitsOfSample(mLayout, bit.sample));
  };
  RawFrame frame{mFrom, kSize, IsMosaic(mFrom) ? ConversionFlags::kBayerRG : ConversionFlags::kNone,
                 Bytes(RequiredSize(mFrom, kSize.width, kSize.height).value())};
  const std::size_t planeBytes = SourceLayout(mFrom, kSize).lineBytes * kSize.height;
  for (std::size_t plane = 0; plane < mLayout.planes.size(); ++plane) {
    Bytes group;
    for (const LayoutBits::Byte& bits : mLayout.planes[plane]) {
      unsigned value = 0;
      for (unsigned k = 0; k < bits.size(); ++k) value |= isSet(bits[k]) ? 1U << k : 0;
      group.push_back(static_cast<std::uint8_t>(value));
    }
    const std::size_t end = std::min(frame.bytes.size(), (plane + 1) * planeBytes);
    for (std::size_t i = plane * planeBytes; i < end; ++i) frame.bytes[i] = group[i % planeBytes % group.size()];
  }
  return frame;
}

}  // namespace LmTool
