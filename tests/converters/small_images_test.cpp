#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "formats/catalogue.h"
#include "simd/each_set.h"

namespace LmImagingLib {
namespace {

// Small images are converted in a way of their own, at 8 bits and at full depth, which a hint that changes no result
// leaves.
TEST(SmallImages, AreConvertedAsWithAHint) {
  constexpr std::uint32_t kWidth = 40, kHeight = 6;
  RegisterExtendedFormats();
  std::vector<unsigned char> source(kWidth * kHeight * 8 + 64), expected(source.size()), converted(source.size());
  std::minstd_rand random(1);
  for (unsigned char& byte : source) byte = static_cast<unsigned char>(random());
  for (const TypeRow& row : AllTypeRows()) {
    std::vector<PixelTypeID> destinations;
    FindDestinations(row.id, Extent::kExtended, destinations);
    for (const PixelTypeID& to : destinations) {
      SCOPED_TRACE(testing::Message() << std::hex << row.id << " to " << to);
      const PixelConverter* const converter = PixelTypeFactory::FindConverter(row.id, to);
      ASSERT_NE(converter, nullptr);
      const auto convert = [&](unsigned long flags, std::vector<unsigned char>& destination) {
        std::fill(destination.begin(), destination.end(), static_cast<unsigned char>(1));
        converter->Convert(nullptr, source.data(), kWidth, kHeight, destination.data(), kWidth, kHeight, kWidth,
                           kHeight, flags, 0, nullptr, nullptr);
      };
      ForEachInstructionSet([&] {
        for (const unsigned long depth : {ConversionFlags::kNone, ConversionFlags::kFullDepth}) {
          convert(depth | ConversionFlags::kReadLater, expected);
          convert(depth, converted);
          EXPECT_TRUE(converted == expected) << "flags " << depth;
        }
      });
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
