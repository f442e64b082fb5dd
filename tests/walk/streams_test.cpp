#include "walk/streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

constexpr std::uint32_t kWidth = 4096;
constexpr std::uint32_t kBand = 8;                               // lines of an image that is stored through the caches
constexpr std::size_t kMost = std::size_t{kBand} * kWidth * 13;  // bytes of such an image

/// An image of noise that is stored past the caches: the least one.
struct Image {
  Image(PixelTypeID theFrom, PixelTypeID theTo, std::size_t padding)
      : from(theFrom),
        to(theTo),
        converter(*PixelTypeFactory::FindConverter(from, to)),
        sourceLine(converter.GetSourceLineSize(kWidth)),
        line(converter.GetDestinationLineSize(kWidth) + padding) {
    EXPECT_FALSE(StreamsPay(sourceLine * kBand, line * kBand));
    while (!StreamsPay(sourceLine * lines, line * lines)) lines += kBand;
    source.resize(RequiredSize(from, kWidth, lines).value());
    std::minstd_rand random(1);
    for (unsigned char& byte : source) byte = static_cast<unsigned char>(random());
  }
  void Convert(std::uint32_t first, std::uint32_t count, unsigned char* destination, const RGBFilter* filter,
               unsigned long flags) const {
    converter.Convert(filter, &source[first * sourceLine], kWidth, count, destination, kWidth, count, kWidth, count,
                      flags, line - converter.GetDestinationLineSize(kWidth), nullptr, nullptr);
  }

  PixelTypeID from, to;
  const PixelConverter& converter;
  std::size_t sourceLine, line;
  std::uint32_t lines = kBand;
  std::vector<unsigned char> source;
};

// It comes out like the same image converted in bands that are not.
void ExpectLikeInBands(PixelTypeID from, PixelTypeID to, const RGBFilter* filter) {
  SCOPED_TRACE(testing::Message() << std::hex << from << " to " << to);
  const Image image(from, to, 64);
  const std::size_t line = image.line;
  std::vector<unsigned char> whole(line * image.lines, 1), inBands = whole;
  image.Convert(0, image.lines, whole.data(), filter, 0);
  for (std::uint32_t at = 0; at < image.lines; at += kBand) image.Convert(at, kBand, &inBands[at * line], filter, 0);
  EXPECT_TRUE(whole == inBands);
  std::fill(whole.begin(), whole.end(), static_cast<unsigned char>(1));
  for (std::uint32_t at = 0; at < image.lines; at += kBand) {
    image.Convert(at, kBand, &whole[at * line], filter, ConversionFlags::kReadLater);
  }
  EXPECT_TRUE(whole == inBands);

  // Lines of a checked image may be padded, and are stored one by one then.
  const std::size_t paddedLine = image.sourceLine + 1;
  std::vector<unsigned char> padded(paddedLine * image.lines);
  for (std::uint32_t at = 0; at < image.lines; ++at) {
    std::memcpy(&padded[at * paddedLine], &image.source[at * image.sourceLine], image.sourceLine);
  }
  std::fill(whole.begin(), whole.end(), static_cast<unsigned char>(1));
  ConvertOptions options;
  options.filter = filter;
  options.depth = ConversionDepth::kEightBits;
  if (PixelTypeFactory::FindPixelType(from)->IsBayerPattern()) options.flags = ConversionFlags::kBayerGR;
  EXPECT_TRUE(ConvertImage({from, padded.data(), padded.size(), kWidth, image.lines, paddedLine},
                           {to, whole.data(), whole.size(), kWidth, image.lines, line}, options)
                  .IsOK());
  EXPECT_TRUE(whole == inBands);
}

// For images that bands would change: bands of a mosaic differ at their edges, and planes have none.
/// @param shift  where in memory the image begins: pixels of four bytes at odd addresses never reach a cache line
void ExpectLikeThroughTheCaches(PixelTypeID from, PixelTypeID to, std::size_t shift, unsigned long flags) {
  SCOPED_TRACE(testing::Message() << std::hex << from << " to " << to);
  const Image image(from, to, 0);
  const auto convert = [&] {
    std::vector<unsigned char> destination(shift + RequiredSize(to, kWidth, image.lines).value(), 1);
    image.Convert(0, image.lines, &destination[shift], nullptr, flags);
    return destination;
  };
  const std::size_t most = ForceStreamsAbove(std::numeric_limits<std::size_t>::max());
  const std::vector<unsigned char> expected = convert();
  ForceStreamsAbove(most);
  ForEachInstructionSet([&] { EXPECT_TRUE(convert() == expected); });
}

class Streams : public testing::Test {
 protected:
  Streams() { RegisterExtendedFormats(); }
  ~Streams() override { ForceStreamsAbove(mMost); }

 private:
  const std::size_t mMost = ForceStreamsAbove(kMost);
};

TEST_F(Streams, StoreMosaics) {
  constexpr unsigned long kBilinear = ConversionFlags::kBayerGB | ConversionFlags::kBilinear;
  ExpectLikeThroughTheCaches(0x20010, 0x420006, 0, kBilinear);
  ExpectLikeThroughTheCaches(0x20010, 0x20003, 1, kBilinear);
  ExpectLikeThroughTheCaches(0x20016, 0x820002, 0, kBilinear);
  for (const unsigned long method : {ConversionFlags::kGradientCorrected, ConversionFlags::kAdaptive}) {
    ExpectLikeThroughTheCaches(0x20010, 0x420002, 0, ConversionFlags::kBayerGR | method);
    ExpectLikeThroughTheCaches(0x20012, 0x420006, 16, ConversionFlags::kBayerGR | method);
    ExpectLikeThroughTheCaches(0x20010, 0x20007, 1, ConversionFlags::kBayerGR | method);
  }
}

TEST_F(Streams, StoreToAndFromPlanes) {
  ExpectLikeThroughTheCaches(0x20007, 0x820002, 0, ConversionFlags::kNone);
  ExpectLikeThroughTheCaches(0x420002, 0x820002, 1, ConversionFlags::kNone);
  ExpectLikeThroughTheCaches(0x820004, 0x20004, 0, ConversionFlags::kFullDepth);
  ExpectLikeThroughTheCaches(0x820004, 0x20004, 2, ConversionFlags::kFullDepth);
}

TEST_F(Streams, StoreWhatTheCachesWouldHaveHeld) {
  RGBFilter gains(8);
  gains.SetMultipliers(1.6, 1.0, 1.09);
  ForEachInstructionSet([&] {
    ExpectLikeInBands(0x10001, 0x420002, nullptr);  // gray, three bytes a pixel
    ExpectLikeInBands(0x20010, 0x20007, nullptr);   // two lines a step, four bytes
    ExpectLikeInBands(0x40001, 0x20001, &gains);    // words, looked up
    ExpectLikeInBands(0x410003, 0x10003, nullptr);  // packed to gray words
    ExpectLikeInBands(0x420002, 0x420006, &gains);
    ExpectLikeInBands(0x410003, 0x10001, nullptr);   // a plane
    ExpectLikeInBands(0x420002, 0x420006, nullptr);  // bytes that change places
    ExpectLikeInBands(0x420006, 0x20003, nullptr);   // likewise, and a fourth that is zero
    ExpectLikeInBands(0x20004, 0x420002, nullptr);   // words to bytes
    ExpectLikeInBands(0x420002, 0x20004, nullptr);   // bytes to words
  });
}

}  // namespace
}  // namespace LmImagingLib
