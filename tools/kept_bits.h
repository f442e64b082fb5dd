#pragma once

#include <map>
#include <string>
#include <vector>

#include "LmImagingLib/PixelTypeID.h"
#include "conversion.h"
#include "encode/layout_bits.h"

namespace LmTool {

/// The bits of a sample that a conversion at full depth keeps, of the channel that loses most.
struct KeptBits {
  unsigned sample;  ///< bits that a sample of the source has
  unsigned kept;    ///< bits of it that the destination shows
};

/// "keeps 8 of 12 bits"; empty where no bit is lost.
std::string LossInWords(const KeptBits& bits);

/// Finds out how many bits conversions of a type keep. It converts small images of one colour that differ in one bit
/// of their samples, and looks whether the results differ.
class BitProbe {
 public:
  explicit BitProbe(const LmImagingLib::PixelTypeID& from);

  /// The bits of the type's deepest sample.
  unsigned SampleBits() const;
  /// Of the conversion to a type that has a converter.
  KeptBits To(const LmImagingLib::PixelTypeID& to) const;

 private:
  // Samples that are changed together: R, G, B, or the luma, or the only sample of a pixel; or all but chroma.
  struct Channel {
    char sample;
    unsigned bits;
  };

  RawFrame Frame(char flippedSample, unsigned flippedBit) const;
  void AddChannel(const Channel& channel);
  KeptBits Kept(const LmImagingLib::PixelTypeID& to, const Channel& channel) const;

  LmImagingLib::PixelTypeID mFrom;
  LayoutBits mLayout;
  std::vector<Channel> mChannels;
  RawFrame mUnchanged;
  std::map<char, std::vector<RawFrame>> mFlipped;  // by the sample, from its lowest bit on
};

}  // namespace LmTool
