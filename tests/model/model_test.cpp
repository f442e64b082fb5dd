#include <gtest/gtest.h>

#include "model/convert.h"

// The model itself, against values worked out by hand.

namespace model {
namespace {

struct Example {
  const char* what;
  Id from, to;
  std::uint32_t width, height, flags;
  std::vector<std::uint8_t> source;
  std::vector<std::uint8_t> expected;
};

const Example kExamples[] = {
    {"shift and widen", 0x10003, 0x10002, 1, 1, 0, {0xBC, 0x0A}, {0xAC, 0x02}},
    {"high bits fall off", 0x10003, 0x10001, 1, 1, 0, {0xBC, 0xFA}, {0xAB}},
    {"16 bits are not widened", 0x10401, 0x10005, 3, 1, 0, {0x80, 0x7F, 0x00}, {0, 0, 0xFF, 0, 0x80, 0}},
    {"gray to 5-6-5", 0x10001, 0x20001, 1, 1, 0, {0x80}, {0x10, 0x84}},
    {"two taps", 0x1010001, 0x10001, 7, 1, 0, {'a', 'b', 'c', 'd', 'e', 'f', 'g'}, {'a', 'c', 'e', 'b', 'd', 'f'}},
    {"two taps backwards", 0x8010001, 0x10001, 6, 1, 0, {'a', 'b', 'c', 'd', 'e', 'f'}, {'e', 'c', 'a', 'f', 'd', 'b'}},
    {"packed", 0x410003, 0x10001, 2, 1, 0, {0xAB, 0xCD, 0xEF}, {0xDA, 0xEF}},
    {"packed GEV, past the end", 0x10009, 0x10001, 1, 1, 0, {0xAB, 0xCD, 0xEF}, {0xAB, 0xEF}},
    {"four zones", 0x10006, 0x10001, 8, 1, 0, {0, 1, 2, 3, 4, 5, 6, 7}, {0, 4, 1, 5, 6, 2, 7, 3}},
    {"dual lines, a single one", 0x10010001, 0x10001, 2, 3, 0, {0, 1, 2, 3, 4, 5}, {0, 2, 1, 3, 4, 5}},
    {"fields", 0x210001, 0x10001, 1, 4, 0, {0, 1, 2, 3}, {0, 2, 1, 3}},
    {"fields swapped", 0x210001, 0x10001, 1, 4, 1, {0, 1, 2, 3}, {2, 0, 3, 1}},
    {"16-bit fields", 0x310002, 0x10005, 1, 2, 1, {1, 2, 3, 4}, {3, 4, 1, 2}},
    {"copy of packed pairs", 0x410002, 0x410002, 1, 1, 0, {1, 2, 3}, {1, 2, 3}},
    {"copy of unpacked 24 bits", 0x20002, 0x20002, 1, 1, 0, {1, 2, 3, 4}, {1, 2, 3, 4}},
    {"black, white", 0x40001, 0x20002, 3, 1, 0, {16, 128, 235, 128}, {0, 0, 0, 255, 255, 255}},
    {"black, white, U first", 0x40008, 0x20002, 2, 1, 0, {128, 16, 128, 235}, {0, 0, 0, 255, 255, 255}},
    {"black, white in 10 bits", 0x40002, 0x20002, 2, 1, 0, {64, 0, 0, 2, 172, 3, 0, 2}, {0, 0, 0, 255, 255, 255}},
    {"high Cr", 0x440005, 0x20002, 1, 1, 0, {128, 255, 128}, {255, 28, 131}},
    {"middle gray, U first", 0x440007, 0x20006, 1, 1, 0, {128, 128, 128}, {131, 131, 131}},
    {"4:1:1, past the end",
     0x440006,
     0x20002,
     2,
     1,
     0,
     {128, 16, 128, 128, 235, 16},
     {0, 0, 0, 131, 131, 131, 255, 255, 255, 0, 0, 0}},
    {"5-6-5 is not replicated", 0x20001, 0x20002, 2, 1, 0, {0xFF, 0xFF, 0x21, 0x08}, {248, 252, 248, 8, 4, 8}},
    {"fourth byte ignored", 0x20007, 0x20003, 1, 1, 0, {1, 2, 3, 4}, {3, 2, 1, 0}},
    {"bits above wrap", 0x2000C, 0x20002, 1, 1, 0, {0xFF, 0x1F, 0, 0x20, 0, 0x08}, {255, 0, 128}},
    {"planes", 0x820002, 0x20002, 2, 1, 0, {1, 2, 3, 4, 5, 6}, {1, 3, 5, 2, 4, 6}},
    {"10 bits, V1", 0x20044, 0x20002, 1, 1, 0, {0xFF, 0x10, 0x20, 0x30}, {0x30, 0x20, 0x10}},
    {"10 bits, V2", 0x20045, 0x20002, 2, 1, 0, {0xFF, 3, 0, 0xC0, 0, 0, 0xF0, 0x3F}, {0, 0, 255, 255, 0, 0}},
    {"12 bits, past the end", 0x20046, 0x20002, 1, 1, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8}, {0, 2, 3, 5, 6, 8}},
    // Packings as their standards say them: streams from the lowest bit on; of CSI-2, the top 8 bits come first.
    {"1 bit", 0x410801, 0x10005, 3, 1, 0x800, {5}, {0xFF, 0xFF, 0, 0, 0xFF, 0xFF}},
    {"2 bits", 0x410802, 0x10005, 3, 1, 0x800, {0x36}, {0xAA, 0xAA, 0x55, 0x55, 0xFF, 0xFF}},
    {"4 bits", 0x410804, 0x10005, 2, 1, 0x800, {0x3E}, {0xEE, 0xEE, 0x33, 0x33}},
    {"stream of 10 bits", 0x41080A, 0x10005, 2, 1, 0x800, {0x01, 0xFA, 0x0F}, {0x40, 0x80, 0x80, 0xFF}},
    {"stream of 14 bits", 0x41080E, 0x10005, 2, 1, 0x800, {0x01, 0xA0, 0xFF, 0x0F}, {0x04, 0x80, 0xF8, 0xFF}},
    {"10 bits of CSI-2", 0x41084A, 0x10005, 3, 1, 0x800, {0x48, 0xAA, 0, 0x1B}, {0xC0, 0x48, 0x80, 0xAA, 0x40, 0}},
    {"12 bits of CSI-2", 0x41084C, 0x10005, 2, 1, 0x800, {0x12, 0xAB, 0xC3}, {0x30, 0x12, 0xC0, 0xAB}},
    {"14 bits of CSI-2", 0x41084E, 0x10005, 2, 1, 0x800, {0x48, 0xFF, 0x74, 0}, {0xD0, 0x48, 0x04, 0xFF}},
    {"RGB10p", 0x420A0A, 0x20004, 1, 1, 0x800, {0x01, 0xFE, 0xE3, 0x3F}, {0x40, 0x80, 0xC0, 0x3F, 0x80, 0xFF}},
    {"BGR10p", 0x420A1A, 0x20004, 1, 1, 0x800, {0x01, 0xFE, 0xE3, 0x3F}, {0x80, 0xFF, 0xC0, 0x3F, 0x40, 0x80}},
    {"RGB12p", 0x420A0C, 0x20004, 1, 1, 0x800, {0x23, 0x61, 0x45, 0x89, 7}, {0x30, 0x12, 0x60, 0x45, 0x90, 0x78}},
    {"BGR12p", 0x420A1C, 0x20004, 1, 1, 0x800, {0x23, 0x61, 0x45, 0x89, 7}, {0x90, 0x78, 0x60, 0x45, 0x30, 0x12}},
    {"mosaic, green mean", 0x20010, 0x20002, 2, 2, 0x20, {10, 7, 9, 13}, {9, 11, 7, 9, 11, 7, 9, 11, 7, 9, 11, 7}},
    {"mosaic, odd column",
     0x20010,
     0x42000A,
     3,
     2,
     0x40,
     {1, 2, 3, 4, 5, 6},
     {1, 3, 5, 1, 3, 5, 3, 4, 5, 1, 3, 5, 1, 3, 5, 3, 4, 5}},
    {"one line of a mosaic", 0x20010, 0x20002, 2, 1, 0, {1, 2}, {}},
};

std::vector<std::uint8_t> Converted(const Example& example) {
  Call call{};
  call.sourceWidth = call.destinationWidth = call.pixelsPerLine = example.width;
  call.sourceHeight = call.destinationHeight = call.lines = example.height;
  call.flags = example.flags;
  Bytes source(example.source);
  Bytes destination(std::vector<std::uint8_t>(64));
  Bytes intermediate(std::vector<std::uint8_t>(64));
  Convert(RouteOf(example.from, example.to), call, source, destination, intermediate);
  const auto begin = destination.Content().begin();
  return {begin, begin + static_cast<std::ptrdiff_t>(destination.Extent())};
}

TEST(Model, GivesTheValuesWorkedOutByHand) {
  for (const Example& example : kExamples) EXPECT_EQ(Converted(example), example.expected) << example.what;
}

TEST(Model, SmoothsGreenAtGreenSites) {
  // G R / B G: the green site at line 2, column 2 has 100 and a single 1 around it.
  Example example{"", 0x20010, 0x20002, 6, 6, 0x100, std::vector<std::uint8_t>(36), {}};
  example.source[2 * 6 + 2] = 100;
  example.source[3 * 6 + 3] = 1;
  Call call{6, 6, 6, 6, 6, 6, example.flags, 0, nullptr};
  Bytes source(example.source);
  Bytes destination(std::vector<std::uint8_t>(6 * 6 * 3));
  Bytes none({});
  Convert(RouteOf(example.from, example.to), call, source, destination, none);
  EXPECT_EQ(destination.Content()[(2 * 6 + 2) * 3 + 1], 20);
}

}  // namespace
}  // namespace model
