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
  const char* what;
  void (*spoil)(ConstImageView& source, ImageView& destination, ConvertOptions& options);
  int code;
  std::vector<const char*> message;  // what it must name
};

TEST(ConvertImage, RefusesWithASentenceAndTouchesNothing) {
  // A mosaic of 10-bit words, 6 x 4, to 24-bit colours; each row spoils one thing.
  using C = ConstImageView;
  using I = ImageView;
  using O = ConvertOptions;
  constexpr int kInvalid = LmBaseLib::Result::INVALID_PARAMETER;
  const Refusal refusals[] = {
    {"no source", [](C& s, I&, O&) { s.data = nullptr; }, kInvalid, {"source.data", "null"}},
    {"no destination", [](C&, I& d, O&) { d.data = nullptr; }, kInvalid, {"destination.data", "null"}},
    {"no pixels", [](C& s, I&, O&) { s.width = 0; }, kInvalid, {"source", "0 x 4"}},
    {"no lines", [](C&, I& d, O&) { d.height = 0; }, kInvalid, {"destination", "6 x 0"}},
    {"small source", [](C& s, I&, O&) { s.size = 47; }, kInvalid, {"source.size", "47", "48"}},
    {"small destination", [](C&, I& d, O&) { d.size = 71; }, kInvalid, {"destination.size", "71", "72"}},
    {"small source for its padding",
     [](C& s, I&, O&) {
       s.lineSize = 20;
       s.size = 71;
     },
     kInvalid,
     {"source.size", "71", "72"}},
    {"short lines", [](C& s, I&, O&) { s.lineSize = 11; }, kInvalid, {"source.lineSize", "11", "12"}},
    {"sizes that differ", [](C&, I& d, O&) { d.width = 5; }, kInvalid, {"5 x 4", "6 x 4"}},
    {"unknown type", [](C& s, I&, O&) { s.type = 0x31337; }, kInvalid, {"source.type", "0x31337"}},
    {"unknown pair",
     [](C&, I& d, O&) { d.type = 0x40001; },
     LmBaseLib::Result::NOT_IMPLEMENTED,
     {"destination.type", "0x40001", "0x20011"}},
    {"no thread", [](C&, I&, O& o) { o.threads = 0; }, kInvalid, {"options.threads", "0"}},
    {"no layout", [](C&, I&, O& o) { o.flags = 0; }, kInvalid, {"options.flags", "kBayerGR (0x10)"}},
    {"a layout of no mosaic", [](C& s, I&, O&) { s.type = 0x10001; }, kInvalid, {"options.flags", "0x10", "mosaic"}},
    {"a flag of nobody", [](C&, I&, O& o) { o.flags = 0x12; }, kInvalid, {"options.flags", "0x12", "0x2"}},
    {"8 bits at full depth",
     [](C&, I&, O& o) {
       o.flags |= ConversionFlags::kFullDepth;
       o.depth = ConversionDepth::kEightBits;
     },
     kInvalid,
     {"options.depth", "kFullDepth"}},
    {"two methods", [](C&, I&, O& o) { o.flags |= 0x600; }, kInvalid, {"options.flags", "0x610", "one of"}},
    {"a method of no mosaic",
     [](C& s, I&, O& o) {
       s.type = 0x10001;
       o.flags = ConversionFlags::kAdaptive;
     },
     kInvalid,
     {"options.flags", "0x400", "mosaic"}},
    {"whole size for half",
     [](C&, I&, O& o) { o.flags |= ConversionFlags::kHalfSize; },
     kInvalid,
     {"6 x 4", "kHalfSize", "3 x 2"}},
    {"half a mosaic",
     [](C&, I& d, O& o) {
       d.type = 0x20010;
       d.width = 3;
       d.height = 2;
       o.flags |= ConversionFlags::kHalfSize;
     },
     kInvalid,
     {"kHalfSize", "destination.type"}},
    {"two layouts", [](C&, I&, O& o) { o.flags = 0x30; }, kInvalid, {"options.flags", "0x30"}},
    {"line that is not there", [](C&, I&, O& o) { o.firstLine = 4; }, kInvalid, {"options.firstLine", "4", "0 to 3"}},
    {"too many lines",
     [](C&, I&, O& o) {
       o.firstLine = 2;
       o.lines = 3;
     },
     kInvalid,
     {"options.lines", "3", "1 to 2"}},
    {"none", [](C&, I&, O& o) { o.lines = 0; }, kInvalid, {"options.lines", "0"}},
    {"half a pair above", [](C&, I&, O& o) { o.firstLine = 1; }, kInvalid, {"options.firstLine", "multiples of 2"}},
    {"half a pair below", [](C&, I&, O& o) { o.lines = 3; }, kInvalid, {"options.lines", "3", "multiples of 2"}},
    {"narrow", [](C& s, I& d, O&) { s.width = d.width = 1; }, kInvalid, {"1 x 4", "2 x 2"}},
    {"low", [](C& s, I& d, O&) { s.height = d.height = 1; }, kInvalid, {"6 x 1", "2 x 2"}},
#if ULONG_MAX > 0xFFFFFFFF
    {"width that wraps", [](C& s, I& d, O&) { s.width = d.width = 0x100000006; }, kInvalid, {"4294967302"}},
#endif
    {"line that wraps", [](C& s, I& d, O&) { s.width = d.width = 0x80000003; }, kInvalid, {"source.width"}},
#if SIZE_MAX > 0xFFFFFFFF
    {"size that wraps",
     [](C& s, I& d, O&) { s.width = s.height = d.width = d.height = 0x10000; },
     kInvalid,
     {"source.size", "8589934592"}},
    {"line size that wraps", [](C& s, I&, O&) { s.lineSize = ~std::size_t{0} / 2; }, kInvalid, {"source.lineSize"}},
#endif
    {"in place", [](C& s, I& d, O&) { s.data = d.data; }, kInvalid, {"overlap"}},
    {"shifted by a byte",
     [](C& s, I& d, O&) { s.data = static_cast<std::uint8_t*>(d.data) - 47; },
     kInvalid,
     {"overlap"}},
    {"dual lines with padding",
     [](C& s, I& d, O& o) {
       s.type = 0x10010001;
       d.type = 0x10001;
       o.flags = 0;
       s.lineSize = 8;
     },
     kInvalid,
     {"source.lineSize", "8", "6"}},
    {"fields that padding parts",
     [](C& s, I& d, O& o) {
       s.type = 0x210001;
       d.type = 0x10001;
       o.flags = 0;
       s.height = d.height = 3;
       s.lineSize = 7;
     },
     kInvalid,
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
    EXPECT_EQ(result.result.GetCode(), refusal.code) << refusal.what;
    for (const char* const part : refusal.message) {
      EXPECT_NE(result.message.find(part), std::string::npos) << refusal.what << ": " << result.message;
    }
    EXPECT_EQ(memory, blank) << refusal.what;
  }
}

}  // namespace
}  // namespace LmImagingLib
