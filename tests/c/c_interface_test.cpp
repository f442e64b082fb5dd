#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"
#include "LmImagingLib/lmimaging.h"

namespace LmImagingLib {
namespace {

constexpr PixelTypeID kBayer12 = 0x20012, kRGB24 = 0x420002, kRGB48 = 0x20004;
constexpr unsigned long kWidth = 700, kHeight = 500;  // large enough for several threads

template <class Struct>
Struct Sized() {
  Struct zeros{};
  zeros.structSize = sizeof zeros;
  return zeros;
}

template <class Byte>
LmiImage ImageOf(PixelTypeID type, std::vector<Byte>& bytes) {
  return {sizeof(LmiImage), type, bytes.data(), bytes.size() * sizeof(Byte), kWidth, kHeight, 0};
}

struct CInterface : testing::Test {
  CInterface() : frame(kWidth * kHeight) {
    RegisterExtendedFormats();
    std::mt19937 random(16);
    for (std::uint16_t& sample : frame) sample = static_cast<std::uint16_t>(random() % 4096);
    options.flags = LMI_BAYER_GB;
  }

  ConstImageView Frame() const { return LmImagingLib::ViewOf(kBayer12, frame, kWidth, kHeight); }

  std::vector<std::uint16_t> frame;
  LmiOptions options = Sized<LmiOptions>();
  // Of this interface, and of the one for C++.
  std::vector<std::uint16_t> ours = std::vector<std::uint16_t>(kWidth * kHeight * 3);
  std::vector<std::uint16_t> expected = std::vector<std::uint16_t>(kWidth * kHeight * 3);
  LmiImage source = ImageOf(kBayer12, frame), destination = ImageOf(kRGB48, ours);
  const ImageView picture = LmImagingLib::ViewOf(kRGB48, expected, kWidth, kHeight);
};

TEST_F(CInterface, TakesStructsOfOtherVersions) {
  struct Newer {
    LmiOptions known;
    std::uint64_t added;
  } newer{options, 0};
  newer.known.structSize = sizeof newer;
  LmiOptions older = options;
  older.structSize = offsetof(LmiOptions, flags);  // as if flags and depth had come later
  LmiImage gray = source;
  gray.type = 0x10003;
  ASSERT_EQ(lmiConvert(&source, &destination, &newer.known), LMI_OK) << lmiMessage();
  ASSERT_EQ(lmiConvert(&gray, &destination, &older), LMI_OK) << lmiMessage();
  EXPECT_NE(lmiConvert(&source, &destination, &older), LMI_OK) << "the layout of the mosaic is not read";
  newer.added = 1;
  EXPECT_EQ(lmiConvert(&source, &destination, &newer.known), LMI_INVALID_PARAMETER);
  EXPECT_NE(std::string(lmiMessage()).find("options has members"), std::string::npos) << lmiMessage();

  struct NewerFormat {
    LmiFormat known;
    std::uint64_t added;
  } format{Sized<LmiFormat>(), 7};
  format.known.structSize = sizeof format;
  EXPECT_EQ(lmiFindFormat("Mono8", &format.known), LMI_OK);
  EXPECT_EQ(format.added, 0U);
  format.known = {offsetof(LmiFormat, pfncName), 0, nullptr, "untouched", nullptr, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(lmiFindFormat("BayerRG8", &format.known), LMI_OK);
  EXPECT_EQ(format.known.type, 0x20010);
  EXPECT_STREQ(format.known.pfncName, "untouched");
}

TEST_F(CInterface, FindsFormatsByAllTheirNames) {
  LmiFormat found = Sized<LmiFormat>();
  const std::pair<const char*, std::function<LmiCode()>> lookups[] = {
      {"PFNC name", [&] { return lmiFindFormat("bayerrg10", &found); }},
      {"fourcc", [&] { return lmiFindFormat("RG10", &found); }},
      {"code", [&] { return lmiFindFormatByPFNC(0x0110000D, &found); }},
      {"fourcc's code", [&] { return lmiFindFormatByFourcc(0x30314752, &found); }},
      {"type", [&] { return lmiFindFormatByType(0x20011, LMI_BAYER_RG, &found); }}};
  for (const auto& [by, lookup] : lookups) {
    found = Sized<LmiFormat>();
    ASSERT_EQ(lookup(), LMI_OK) << by << ": " << lmiMessage();
    EXPECT_EQ(std::tuple(found.type, found.flags, found.pfnc, found.fourcc, found.isMosaic, found.sampleDepth),
              std::tuple(0x20011, 0x40U, 0x0110000DU, 0x30314752U, 1U, 10U))
        << by;
    EXPECT_EQ(std::string(found.pfncName) + " " + found.fourccName, "BayerRG10 RG10") << by;
    EXPECT_STREQ(found.name, PixelTypeFactory::GetPixelTypeName(0x20011)) << by;
  }
  ASSERT_EQ(lmiFindFormat("bayer10p", &found), LMI_OK) << lmiMessage();  // the name of a registered type
  EXPECT_EQ(found.flags, 0U);
  EXPECT_EQ(found.pfncName, nullptr) << "no layout is guessed";

  const auto expectNone = [&](LmiCode code, const char* words) {
    EXPECT_EQ(code, LMI_NOT_FOUND);
    EXPECT_NE(std::string(lmiMessage()).find(words), std::string::npos) << lmiMessage();
  };
  expectNone(lmiFindFormat("Mono11", &found), "'Mono11': the format is unknown");
  expectNone(lmiFindFormat("PGAA", &found), "several fourccs");
  expectNone(lmiFindFormat("Bayer RGB10-bits", &found), "several types: 0x20011 and 0x20041");
  expectNone(lmiFindFormatByPFNC(0x026000C0, &found), "carries coordinates");
  expectNone(lmiFindFormatByFourcc(0x47504A4D, &found), "compressed");
  expectNone(lmiFindFormatByFourcc(0xB0363159, &found), "high byte");
  expectNone(lmiFindFormatByType(42, 0, &found), "0x2A");
}

TEST_F(CInterface, EnumeratesAllFormats) {
  LmiFormat found = Sized<LmiFormat>();
  std::size_t types = 0, codes = 0, fourccs = 0, destinations = 0;
  for (std::int64_t previous = -1; lmiEnumTypes(types, &found) == LMI_OK; ++types, previous = found.type) {
    EXPECT_LT(previous, found.type);
  }
  EXPECT_EQ(types, PixelTypeFactory::CountPixelTypes({}));
  for (; lmiEnumPFNC(codes, &found) == LMI_OK; ++codes) EXPECT_EQ(found.pfnc, EnumPFNC(codes)->code);
  EXPECT_EQ(EnumPFNC(codes), nullptr);
  for (; lmiEnumFourccs(fourccs, &found) == LMI_OK; ++fourccs) EXPECT_EQ(found.fourcc, EnumV4L2(fourccs)->code);
  EXPECT_EQ(EnumV4L2(fourccs), nullptr);
  EXPECT_GT(fourccs, 40U);
  for (std::int64_t to = 0; lmiEnumDestinations(kBayer12, destinations, &to) == LMI_OK; ++destinations) {
    EXPECT_TRUE(PixelTypeFactory::HasConverter(kBayer12, to));
  }
  EXPECT_GT(destinations, 10U);
}

struct Counter {
  std::atomic<int> calls{0}, jobs{0};
};

TEST_F(CInterface, ConvertsAsTheInterfaceForCPlusPlus) {
  LmiFilter* filter = nullptr;
  ASSERT_EQ(lmiCreateFilter(8, &filter), LMI_OK);
  RGBFilter same(8);
  const double gains[] = {1.5, 1, 0.75};
  const std::uint16_t offsets[] = {3, 0, 9};
  std::vector<std::uint16_t> table(256);
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<std::uint16_t>(255 - i);
  LmiCurve curve = {sizeof curve, {4, 5, 6}, {}, {-1, 0, 1.5}, {LMI_TONE_SRGB, 0, 0}};
  const std::function<void()> changes[] = {[] {},
                                           [&] {
                                             ASSERT_EQ(lmiSetGains(filter, gains, offsets), LMI_OK);
                                             same.SetMultipliers(1.5, 1, 0.75, 3, 0, 9);
                                           },
                                           [&] {
                                             ASSERT_EQ(lmiSetTable(filter, LMI_BLUE, table.data(), table.size()),
                                                       LMI_OK);
                                             for (unsigned long i = 0; i < 256; ++i)
                                               same.SetBlueValue(i, table[i], i == 255);
                                           },
                                           [&] {
                                             ASSERT_EQ(lmiSetCurve(filter, &curve), LMI_OK);
                                             same.SetCurve({4, 1, -1}, {5, 1, 0}, {6, 1, 1.5}, {ToneCurve::kSRGB});
                                           }};
  Counter counter;
  options.filter = filter;
  options.executorContext = &counter;
  options.executor = [](void* context, std::size_t count, LmiJob job, void* jobContext) {
    ++static_cast<Counter*>(context)->calls;
    for (std::size_t i = count; i-- > 0;) {
      ++static_cast<Counter*>(context)->jobs;
      job(jobContext, i);
    }
  };
  options.threads = 3;
  options.flags |= LMI_ADAPTIVE | LMI_FILTER_FIRST;
  options.firstLine = 4;
  for (const auto& change : changes) {
    change();
    for (const std::uint32_t depth : {LMI_DEPTH_FULL, LMI_DEPTH_EIGHT_BITS}) {
      options.depth = depth;
      ConvertOptions sameOptions;
      sameOptions.filter = &same;
      sameOptions.flags = options.flags;
      sameOptions.firstLine = 4;
      sameOptions.depth = depth == LMI_DEPTH_FULL ? ConversionDepth::kFull : ConversionDepth::kEightBits;
      ASSERT_EQ(lmiConvert(&source, &destination, &options), LMI_OK) << lmiMessage();
      ASSERT_TRUE(ConvertImage(Frame(), picture, sameOptions).IsOK());
      EXPECT_TRUE(ours == expected);
    }
  }
  EXPECT_EQ(counter.calls, 8);
  EXPECT_EQ(counter.jobs, 24);
  lmiFreeFilter(filter);

  options = Sized<LmiOptions>();
  options.flags = LMI_BAYER_GB;
  options.lines = 6;
  ours.assign(ours.size(), 0xABCD);
  ASSERT_EQ(lmiConvert(&source, &destination, &options), LMI_OK) << lmiMessage();
  EXPECT_NE(ours[6 * kWidth * 3 - 1], 0xABCD);
  EXPECT_EQ(ours[6 * kWidth * 3], 0xABCD);
}

TEST_F(CInterface, DevelopsAsTheInterfaceForCPlusPlus) {
  LmiDevelopmentSettings set = Sized<LmiDevelopmentSettings>();
  set.correctsDefects = 1;
  set.defectThreshold = 100;
  std::copy_n(std::begin({60.0, 61.0, 62.0}), 3, set.black);
  std::copy_n(std::begin({1.5, 1.0, 1.25}), 3, set.gains);
  std::copy_n(std::begin({1.5, -0.3, -0.2, -0.2, 1.4, -0.2, 0.0, -0.5, 1.5}), 9, set.matrix);
  set.tone = {LMI_TONE_GAMMA, 0, 1.8};
  set.method = LMI_BLOCKS;
  set.depth = LMI_DEPTH_EIGHT_BITS;
  const DevelopmentSettings same{true,
                                 100,
                                 {60, 61, 62},
                                 {1.5, 1, 1.25},
                                 ConversionFlags::kNone,
                                 {1.5, -0.3, -0.2, -0.2, 1.4, -0.2, 0, -0.5, 1.5},
                                 {ToneCurve::kGamma, 1.8},
                                 ConversionDepth::kEightBits};
  DevelopOptions sameOptions;
  sameOptions.flags = ConversionFlags::kBayerGB;
  const std::tuple<const LmiDevelopmentSettings*, DevelopmentSettings> cases[] = {{&set, same}, {nullptr, {}}};
  for (const auto& [settings, sameSettings] : cases) {
    LmiDevelopment* development = nullptr;
    ASSERT_EQ(lmiCreateDevelopment(settings, &development), LMI_OK) << lmiMessage();
    ASSERT_EQ(lmiDevelop(development, &source, &destination, &options), LMI_OK) << lmiMessage();
    lmiFreeDevelopment(development);
    Development made;
    ASSERT_TRUE(Development::Make(sameSettings, made).IsOK());
    ASSERT_TRUE(Develop(made, Frame(), picture, sameOptions).IsOK());
    EXPECT_TRUE(ours == expected);
  }
}

TEST_F(CInterface, EstimatesWhiteBalanceAsTheInterfaceForCPlusPlus) {
  LmiWhiteBalanceOptions how = {sizeof how, LMI_RECTANGLE, LMI_BAYER_GB, 10, 20, 300, 200, {1, 2, 3}};
  LmiWhiteBalance light = Sized<LmiWhiteBalance>();
  ASSERT_EQ(lmiEstimateWhiteBalance(&source, &how, &light), LMI_OK) << lmiMessage();
  const WhiteBalance same = EstimateWhiteBalance(
      Frame(), {WhiteBalanceOptions::kRectangle, 10, 20, 300, 200, ConversionFlags::kBayerGB, {1, 2, 3}});
  EXPECT_EQ(std::tuple(light.gains[0], light.gains[1], light.gains[2], light.cells, light.usableCells, light.isFound),
            std::tuple(same.gains.red, same.gains.green, same.gains.blue, 15000U, same.usableCells, 1U));
  std::fill(frame.begin(), frame.end(), std::uint16_t{0});
  ASSERT_EQ(lmiEstimateWhiteBalance(&source, &how, &light), LMI_OK);
  EXPECT_EQ(light.isFound, 0U);
  EXPECT_STRNE(lmiMessage(), "");
  const LmiTone tone = {LMI_TONE_GAMMA, 0, 2};
  double value = 0;
  ASSERT_EQ(lmiToneAt(&tone, 0.25, &value), LMI_OK);
  EXPECT_STREQ(lmiMessage(), "");
  EXPECT_DOUBLE_EQ(value, 0.5);
}

TEST_F(CInterface, RefusesWithTheArgumentAndItsValue) {
  LmiFilter* filter = nullptr;
  ASSERT_EQ(lmiCreateFilter(4, &filter), LMI_OK);
  LmiFilter* none = nullptr;
  LmiDevelopment* development = nullptr;
  const auto withOptions = [&](auto change) {
    LmiOptions wrong = options;
    change(wrong);
    return lmiConvert(&source, &destination, &wrong);
  };
  const auto withSettings = [&](auto change) {
    LmiDevelopmentSettings wrong = Sized<LmiDevelopmentSettings>();
    change(wrong);
    return lmiCreateDevelopment(&wrong, &development);
  };
  const double gains[] = {1, -2, 1};
  const std::uint16_t values[16] = {1, 2, 16};
  LmiCurve curve = Sized<LmiCurve>();
  curve.black[1] = -3;
  std::size_t bytes = 77;
  const auto expectRefusal = [](LmiCode code, const char* words) {
    EXPECT_EQ(code, LMI_INVALID_PARAMETER) << words;
    EXPECT_NE(std::string(lmiMessage()).find(words), std::string::npos) << lmiMessage();
  };
  expectRefusal(lmiConvert(nullptr, &destination, &options), "source is null");
  expectRefusal(withOptions([](LmiOptions& o) { o.structSize = 0; }), "options.structSize is 0");
  expectRefusal(withOptions([](LmiOptions& o) { o.structSize = ~std::size_t{0}; }), "options.structSize is 1844");
  expectRefusal(withOptions([](LmiOptions& o) { o.depth = 2; }),
                "options.depth is 2; allowed: LMI_DEPTH_FULL (0), LMI_DEPTH_EIGHT_BITS (1)");
  expectRefusal(withSettings([](LmiDevelopmentSettings& s) { s.method = 1; }),
                "settings.method is 0x1; allowed: 0, LMI_BLOCKS");
  expectRefusal(withSettings([](LmiDevelopmentSettings& s) { s.tone.kind = 5; }), "settings.tone.kind is 5");
  expectRefusal(withSettings([](LmiDevelopmentSettings& s) { s.tone.gamma = -1, s.tone.kind = LMI_TONE_GAMMA; }),
                "settings.tone.gamma is -1");
  expectRefusal(lmiCreateFilter(17, &none), "bitSize is 17; allowed: 1 to 16");
  expectRefusal(lmiSetGains(filter, gains, nullptr), "gains has -2");
  expectRefusal(lmiSetTable(filter, LMI_RED, values, 15), "count is 15; the table has 16");
  expectRefusal(lmiSetTable(filter, LMI_RED, values, 16), "values has 16 at index 2");
  expectRefusal(lmiSetTable(filter, 3, values, 16), "channel is 3");
  expectRefusal(lmiSetCurve(filter, &curve), "curve.black has -3");
  expectRefusal(lmiRequiredSize(kRGB24, 10, 10, 29, &bytes), "10, 10 and 29");
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(development, nullptr);
  EXPECT_EQ(bytes, 77U);
  lmiFreeFilter(filter);
}

TEST_F(CInterface, KeepsAMessageForEachThread) {
  ASSERT_NE(lmiConvert(nullptr, nullptr, nullptr), LMI_OK);
  const std::string before = lmiMessage();
  std::thread([] {
    EXPECT_STREQ(lmiMessage(), "");
    LmiFormat format = Sized<LmiFormat>();
    EXPECT_NE(lmiFindFormat(std::string(5000, 'x').c_str(), &format), LMI_OK);
    EXPECT_EQ(std::strlen(lmiMessage()), 1023U);
  }).join();
  EXPECT_EQ(lmiMessage(), before);
}

}  // namespace
}  // namespace LmImagingLib
