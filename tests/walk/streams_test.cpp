#include "walk/streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "simd/instruction_set.h"

namespace LmImagingLib {
namespace {

constexpr std::uint32_t kWidth = 4096;
constexpr std::uint32_t kBand = 8;                              // lines of an image that is stored through the caches
constexpr std::size_t kMost = std::size_t{kBand} * kWidth * 8;  // bytes of such an image

// An image that is stored past the caches comes out like the same image converted in bands that are not.
void ExpectLikeInBands(PixelTypeID from, PixelTypeID to, const RGBFilter* filter) {
  SCOPED_TRACE(testing::Message() << std::hex << from << " to " << to);
  const PixelConverter* const converter = PixelTypeFactory::FindConverter(from, to);
  ASSERT_NE(converter, nullptr);
  const std::size_t sourceLine = converter->GetSourceLineSize(kWidth);
  const std::size_t line = converter->GetDestinationLineSize(kWidth) + 64;
  std::uint32_t lines = kBand;
  while (!StreamsPay((sourceLine + line) * lines)) lines += kBand;
  ASSERT_FALSE(StreamsPay((sourceLine + line) * kBand));

  std::vector<unsigned char> source(sourceLine * lines);
  std::minstd_rand random(1);
  for (unsigned char& byte : source) byte = static_cast<unsigned char>(random());
  std::vector<unsigned char> whole(line * lines, 1);
  std::vector<unsigned char> inBands(line * lines, 1);
  converter->Convert(filter, source.data(), kWidth, lines, whole.data(), kWidth, lines, kWidth, lines, 0, 64, nullptr,
                     nullptr);
  for (std::uint32_t at = 0; at < lines; at += kBand) {
    converter->Convert(filter, source.data() + at * sourceLine, kWidth, kBand, inBands.data() + at * line, kWidth,
                       kBand, kWidth, kBand, 0, 64, nullptr, nullptr);
  }
  EXPECT_TRUE(whole == inBands);

  // Lines of a checked image may be padded, and are stored one by one then.
  std::vector<unsigned char> padded((sourceLine + 1) * lines);
  for (std::uint32_t at = 0; at < lines; ++at) {
    std::memcpy(&padded[at * (sourceLine + 1)], &source[at * sourceLine], sourceLine);
  }
  std::fill(whole.begin(), whole.end(), static_cast<unsigned char>(1));
  ConvertOptions options;
  options.filter = filter;
  options.depth = ConversionDepth::kEightBits;
  if (PixelTypeFactory::FindPixelType(from)->IsBayerPattern()) options.flags = ConversionFlags::kBayerGR;
  EXPECT_TRUE(ConvertImage({from, padded.data(), padded.size(), kWidth, lines, sourceLine + 1},
                           {to, whole.data(), whole.size(), kWidth, lines, line}, options)
                  .IsOK());
  EXPECT_TRUE(whole == inBands);
}

// Bands of a bilinear mosaic differ at their edges; the definition stores nothing past the caches.
/// @param shift  where in memory the image begins: pixels of four bytes at odd addresses never reach a cache line
void ExpectBilinearLikeTheDefinition(PixelTypeID from, PixelTypeID to, std::size_t shift) {
  SCOPED_TRACE(testing::Message() << std::hex << from << " to " << to);
  const PixelConverter* const converter = PixelTypeFactory::FindConverter(from, to);
  ASSERT_NE(converter, nullptr);
  const std::size_t sourceLine = converter->GetSourceLineSize(kWidth);
  const std::size_t line = converter->GetDestinationLineSize(kWidth);
  std::uint32_t lines = kBand;
  while (!StreamsPay((sourceLine + line) * lines)) lines += kBand;
  std::vector<unsigned char> source(sourceLine * lines);
  std::minstd_rand random(2);
  for (unsigned char& byte : source) byte = static_cast<unsigned char>(random());
  const auto convert = [&](std::size_t set) {
    ForceInstructionSet(set);
    std::vector<unsigned char> destination(shift + RequiredSize(to, kWidth, lines).value(), 1);
    converter->Convert(source.data(), kWidth, lines, destination.data() + shift, kWidth, lines, kWidth, lines,
                       ConversionFlags::kBayerGB | ConversionFlags::kBilinear, 0, nullptr, nullptr);
    return destination;
  };
  const std::size_t best = ActiveInstructionSet();
  const std::vector<unsigned char> expected = convert(0);
  for (std::size_t set = 1; set < kInstructionSets; ++set) {
    if (!HasInstructionSet(set)) continue;
    EXPECT_TRUE(convert(set) == expected) << InstructionSetName(set);
  }
  ForceInstructionSet(best);
}

class Streams : public testing::Test {
 protected:
  ~Streams() override { ForceStreamsAbove(mMost); }

 private:
  const std::size_t mMost = ForceStreamsAbove(kMost);
};

TEST_F(Streams, StoreBilinearMosaics) {
  ExpectBilinearLikeTheDefinition(0x20010, 0x420006, 0);
  ExpectBilinearLikeTheDefinition(0x20010, 0x20003, 1);
  ExpectBilinearLikeTheDefinition(0x20016, 0x820002, 0);
}

TEST_F(Streams, StoreWhatTheCachesWouldHaveHeld) {
  RGBFilter gains(8);
  gains.SetMultipliers(1.6, 1.0, 1.09);
  const std::size_t best = ActiveInstructionSet();
  for (std::size_t set = 1; set < kInstructionSets; ++set) {
    if (!HasInstructionSet(set)) continue;
    SCOPED_TRACE(InstructionSetName(set));
    ForceInstructionSet(set);
    ExpectLikeInBands(0x10001, 0x420002, nullptr);  // gray, three bytes a pixel
    ExpectLikeInBands(0x20010, 0x20007, nullptr);   // two lines a step, four bytes
    ExpectLikeInBands(0x40001, 0x20001, &gains);    // words, looked up
    ExpectLikeInBands(0x410003, 0x10003, nullptr);  // packed to gray words
    ExpectLikeInBands(0x420002, 0x420006, &gains);
    ExpectLikeInBands(0x410003, 0x10001, nullptr);  // a plane
  }
  ForceInstructionSet(best);
}

}  // namespace
}  // namespace LmImagingLib
