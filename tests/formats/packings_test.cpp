#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/PixelType.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/frame.h"
#include "model/guarded_buffer.h"
#include "simd/each_set.h"

// Packings as their standards say them: samples are added into one large integer, whose bytes are the line, and come
// back from the conversion, whatever the width of the line.

namespace LmImagingLib {
namespace {

/// A non-negative integer of any size, from its lowest byte on.
class LargeInteger {
 public:
  explicit LargeInteger(std::size_t bits) : bytes((bits + 7) / 8) {}

  /// Adds value * 2^power.
  void Add(unsigned value, std::size_t power) {
    std::uint64_t sum = std::uint64_t{value} << power % 8;
    for (std::size_t at = power / 8; sum != 0; ++at, sum >>= 8) {
      sum += bytes.at(at);
      bytes[at] = static_cast<std::uint8_t>(sum);
    }
  }

  std::vector<std::uint8_t> bytes;
};

struct Packing {
  PixelTypeID type;
  unsigned bits;         ///< of a sample
  unsigned channels;     ///< samples of a pixel
  bool blueFirst;        ///< whether the first channel is blue
  unsigned topTogether;  ///< CSI-2: pixels whose top 8 bits come before their low bits; 0 of a stream
  PixelTypeID back;      ///< the destination that shows the samples, shifted up to 16 bits
};

constexpr Packing kPackings[] = {
    {0x410801, 1, 1, false, 0, 0x10005},  {0x410802, 2, 1, false, 0, 0x10005},  {0x410804, 4, 1, false, 0, 0x10005},
    {0x41080A, 10, 1, false, 0, 0x10005}, {0x41080E, 14, 1, false, 0, 0x10005}, {0x41084A, 10, 1, false, 4, 0x10005},
    {0x41084C, 12, 1, false, 2, 0x10005}, {0x41084E, 14, 1, false, 4, 0x10005}, {0x42090A, 10, 1, false, 0, 0x20020},
    {0x42090E, 14, 1, false, 0, 0x20020}, {0x42094A, 10, 1, false, 4, 0x20020}, {0x42094C, 12, 1, false, 2, 0x20020},
    {0x42094E, 14, 1, false, 4, 0x20020}, {0x420A0A, 10, 3, false, 0, 0x20004}, {0x420A0C, 12, 3, false, 0, 0x20004},
    {0x420A1A, 10, 3, true, 0, 0x20004},  {0x420A1C, 12, 3, true, 0, 0x20004},
};

std::vector<std::uint8_t> Packed(const Packing& packing, const std::vector<unsigned>& samples) {
  LargeInteger line(samples.size() * packing.bits);
  if (packing.topTogether == 0) {
    for (std::size_t i = 0; i < samples.size(); ++i) line.Add(samples[i], i * packing.bits);
    return line.bytes;
  }
  const unsigned lowBits = packing.bits - 8;
  for (std::size_t first = 0; first < samples.size(); first += packing.topTogether) {
    const std::size_t count = std::min<std::size_t>(packing.topTogether, samples.size() - first);
    for (std::size_t k = 0; k < count; ++k) {
      const std::size_t begin = first * packing.bits;
      line.Add(samples[first + k] >> lowBits, begin + 8 * k);
      line.Add(samples[first + k] & ((1U << lowBits) - 1), begin + 8 * count + lowBits * k);
    }
  }
  return line.bytes;
}

/// The sample at 16 bits: shifted up, but for those of fewer than 8 bits, which are repeated.
unsigned At16(unsigned sample, unsigned bits) {
  return bits < 8 ? sample * (65535 / ((1U << bits) - 1)) : sample << (16 - bits);
}

class Packings : public testing::TestWithParam<std::size_t> {
 protected:
  Packings() { RegisterExtendedFormats(); }

  void Check(const Packing& packing, unsigned long width, unsigned long height) {
    SCOPED_TRACE(testing::Message() << std::hex << "0x" << packing.type << std::dec << ", width " << width);
    std::vector<unsigned> expected;
    std::vector<std::uint8_t> lines;
    for (unsigned long y = 0; y < height; ++y) {
      std::vector<unsigned> samples(width * packing.channels);
      for (unsigned& sample : samples) sample = mRandom() & ((1U << packing.bits) - 1);
      const std::vector<std::uint8_t> line = Packed(packing, samples);
      lines.insert(lines.end(), line.begin(), line.end());
      for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t channel = i % packing.channels;
        const std::size_t from = packing.blueFirst ? i - channel + (packing.channels - 1 - channel) : i;
        expected.push_back(At16(samples[from], packing.bits));
      }
    }
    const PixelType& type = *PixelTypeFactory::FindPixelType(packing.type);
    EXPECT_EQ(RequiredSize(packing.type, width, height), lines.size());
    EXPECT_EQ(type.GetBufferSizeFor(width, height), lines.size());
    EXPECT_EQ(PixelTypeFactory::FindConverter(packing.type, packing.back)->GetSourceLineSize(width),
              lines.size() / height);

    std::uint8_t* const in = mSource.Place(lines.size(), GuardedBuffer::Against::END);
    std::copy(lines.begin(), lines.end(), in);
    const std::size_t bytes = expected.size() * 2;
    std::uint8_t* const out = mDestination.Place(bytes, GuardedBuffer::Against::END);
    const ConversionResult result =
        ConvertImage({packing.type, in, lines.size(), width, height}, {packing.back, out, bytes, width, height});
    ASSERT_TRUE(result.IsOK()) << result.message;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(out[2 * i] | out[2 * i + 1] << 8, expected[i]) << "sample " << i;
    }
  }

 private:
  const ForcedInstructionSet mForced{GetParam()};
  model::Random mRandom{14};
  GuardedBuffer mSource{1 << 16};
  GuardedBuffer mDestination{1 << 16};
};

INSTANTIATE_TEST_SUITE_P(InstructionSets, Packings, testing::ValuesIn(InstructionSetsHere()),
                         [](const auto& set) { return InstructionSetName(set.param); });

TEST_P(Packings, ComeBackAsTheirSamplesAtEveryWidth) {
  for (const Packing& packing : kPackings) {
    for (unsigned long width = 1; width <= 140 && !HasFailure(); ++width) Check(packing, width, 3);
    for (const unsigned long width : {255UL, 257UL, 2047UL, 2048UL, 2051UL}) Check(packing, width, 2);
  }
}

}  // namespace
}  // namespace LmImagingLib
