#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "LmImagingLib/Image.h"

namespace LmImagingLib {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Refusal {
  void (*spoil)(ConstImageView& source, ImageView& destination, ConvertOptions& options);
  std::vector<const char*> message;  // words that it must have
  int code = LmBaseLib::Result::INVALID_PARAMETER;
};

TEST(ConvertImage, RefusesWithASentenceAndTouchesNothing) {
  // A mosaic of 10-bit words, 6 x 4, to 24-bit colours; each row spoils one thing.
  using C = ConstImageView;
  using I = ImageView;
  using O = ConvertOptions;
  const Refusal refusals[] = {
    {[](C& s, I&, O&) { s.data = nullptr; }, {"source.data", "null"}},
    {[](C&, I& d, O&) { d.data = nullptr; }, {"destination.data", "null"}},
    {[](C& s, I&, O&) { s.width = 0; }, {"source", "0 x 4"}},
    {[](C&, I& d, O&) { d.height = 0; }, {"destination", "6 x 0"}},
    {[](C& s, I&, O&) { s.size = 47; }, {"source.size", "47", "48"}},
    {[](C&, I& d, O&) { d.size = 71; }, {"destination.size", "71", "72"}},
    {[](C& s, I&, O&) { s.lineSize = 20, s.size = 71; }, {"source.size", "71", "72"}},
    {[](C& s, I&, O&) { s.lineSize = 11; }, {"source.lineSize", "11", "12"}},
    {[](C&, I& d, O&) { d.width = 5; }, {"5 x 4", "6 x 4"}},
    {[](C& s, I&, O&) { s.type = 0x31337; }, {"source.type", "0x31337"}},
    {[](C&, I& d, O&) { d.type = 0x40001; },
     {"destination.type", "0x40001", "0x20011"},
     LmBaseLib::Result::NOT_IMPLEMENTED},
    {[](C&, I&, O& o) { o.threads = 0; }, {"options.threads", "0"}},
    {[](C&, I&, O& o) { o.flags = 0; }, {"options.flags", "kBayerGR (0x10)"}},
    {[](C& s, I&, O&) { s.type = 0x10001; }, {"options.flags", "0x10", "mosaic"}},
    {[](C&, I&, O& o) { o.flags = 0x12; }, {"options.flags", "0x12", "0x2"}},
    {[](C&, I&, O& o) { o.flags |= ConversionFlags::kFullDepth, o.depth = ConversionDepth::kEightBits; },
     {"options.depth", "kFullDepth"}},
    {[](C&, I&, O& o) { o.flags |= 0x600; }, {"options.flags", "0x610", "one of"}},
    {[](C& s, I&, O& o) { s.type = 0x10001, o.flags = ConversionFlags::kAdaptive; },
     {"options.flags", "0x400", "mosaic"}},
    {[](C&, I&, O& o) { o.flags |= ConversionFlags::kHalfSize; }, {"6 x 4", "kHalfSize", "3 x 2"}},
    {[](C&, I& d, O& o) { d.type = 0x20010, d.width = 3, d.height = 2, o.flags |= ConversionFlags::kHalfSize; },
     {"kHalfSize", "destination.type"}},
    {[](C&, I&, O& o) { o.flags = 0x30; }, {"options.flags", "0x30"}},
    {[](C&, I&, O& o) { o.firstLine = 4; }, {"options.firstLine", "4", "0 to 3"}},
    {[](C&, I&, O& o) { o.firstLine = 2, o.lines = 3; }, {"options.lines", "3", "1 to 2"}},
    {[](C&, I&, O& o) { o.lines = 0; }, {"options.lines", "0"}},
    {[](C&, I&, O& o) { o.firstLine = 1; }, {"options.firstLine", "multiples of 2"}},
    {[](C&, I&, O& o) { o.lines = 3; }, {"options.lines", "3", "multiples of 2"}},
    {[](C& s, I& d, O&) { s.width = d.width = 1; }, {"1 x 4", "2 x 2"}},
    {[](C& s, I& d, O&) { s.height = d.height = 1; }, {"6 x 1", "2 x 2"}},
#if ULONG_MAX > 0xFFFFFFFF
    {[](C& s, I& d, O&) { s.width = d.width = 0x100000006; }, {"4294967302"}},
#endif
    {[](C& s, I& d, O&) { s.width = d.width = 0x80000003; }, {"source.width"}},
#if SIZE_MAX > 0xFFFFFFFF
    {[](C& s, I& d, O&) { s.width = s.height = d.width = d.height = 0x10000; }, {"source.size", "8589934592"}},
    {[](C& s, I&, O&) { s.lineSize = ~std::size_t{0} / 2; }, {"source.lineSize"}},
#endif
    {[](C& s, I& d, O&) { s.data = d.data; }, {"overlap"}},
    {[](C& s, I& d, O&) { s.data = static_cast<std::uint8_t*>(d.data) - 47; }, {"overlap"}},
    {[](C& s, I& d, O& o) { s.type = 0x10010001, d.type = 0x10001, o.flags = 0, s.lineSize = 8; },
     {"source.lineSize", "8", "6"}},
    {[](C& s, I& d, O& o) {
       s.type = 0x210001, d.type = 0x10001, o.flags = 0, s.height = d.height = 3, s.lineSize = 7;
     },
     {"source.lineSize", "7", "odd height, 3"}}
  };
  const Bytes frame(100, 1);
  const Bytes blank(200, 2);
  for (const Refusal& refusal : refusals) {
    Bytes memory = blank;
    ConstImageView source{0x20011, frame.data(), frame.size(), 6, 4};
    ImageView destination{0x20002, memory.data() + 100, 100, 6, 4};
    ConvertOptions options;
    options.flags = ConversionFlags::kBayerGR;
    ASSERT_TRUE(ConvertImage(source, destination, options).IsOK());
    memory = blank;
    refusal.spoil(source, destination, options);
    const ConversionResult result = ConvertImage(source, destination, options);
    EXPECT_EQ(result.result.GetCode(), refusal.code) << result.message;
    for (const char* const part : refusal.message) {
      EXPECT_NE(result.message.find(part), std::string::npos) << "lacks " << part << ": " << result.message;
    }
    EXPECT_EQ(memory, blank) << result.message;
  }
}

}  // namespace
}  // namespace LmImagingLib
