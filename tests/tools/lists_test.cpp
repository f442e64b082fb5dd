#include <algorithm>
#include <nlohmann/json.hpp>

#include "tools/tool.h"

namespace {

using Lists = ToolTest;
using nlohmann::json;

TEST_F(Lists, TypesAreToldToPeopleAndPrograms) {
  const json types = json::parse(Run("types --json").output);
  ASSERT_EQ(types.size(), 155U);
  const auto bayer10 =
      std::find_if(types.begin(), types.end(), [](const json& type) { return type["hex"] == "0x220011"; });
  ASSERT_NE(bayer10, types.end());
  EXPECT_EQ((*bayer10)["id"], 0x220011);
  EXPECT_EQ((*bayer10)["class"], "BayerRGB10");
  EXPECT_EQ((*bayer10)["name"], "Bayer RGB10-bits, Interlaced");
  EXPECT_EQ((*bayer10)["bits"], 10);
  EXPECT_EQ((*bayer10)["bayer"], true);
  EXPECT_EQ((*bayer10)["interlaced"], true);
  EXPECT_EQ((*bayer10)["packed"], false);

  const std::string table = Run("types").output;
  for (const json& type : types) {
    EXPECT_NE(type["class"], "");
    EXPECT_NE(table.find(type["name"].get<std::string>()), std::string::npos) << type["name"];
  }
}

TEST_F(Lists, ConvertersAreFilteredBySourceAndDestination) {
  const auto count = [&](const std::string& filter) {
    return json::parse(Run("converters --json" + filter).output).size();
  };
  EXPECT_EQ(count(""), 2364U + 155U);
  EXPECT_EQ(count(" --from BayerRGB10"), 15U);
  EXPECT_EQ(count(" --to 0x10005"), 65U);
  EXPECT_EQ(count(" --from 131089 --to 'bgr 24-BITS'"), 1U);
  EXPECT_EQ(count(" --from Grayscale8 --to YUV8"), 0U);
}

TEST_F(Lists, ClassesOfVariantsOnlyNameTheFirstVariant) {
  const json from = json::parse(Run("converters --json --from YUV8_411 --to BGR24").output)[0]["from"];
  EXPECT_EQ(from["hex"], "0x440006");
}

TEST_F(Lists, HelpAndVersionSucceed) {
  for (const std::string arguments :
       {"--help", "--version", "convert --help", "synth --help", "gallery --help", "bench --help"}) {
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments;
    EXPECT_NE(result.output, "") << arguments;
  }
}

TEST_F(Lists, GalleryShowsEveryTypeAndNothingElseIsNeeded) {
  RunSilently("gallery made/for/it");
  const Bytes bytes = Read("made/for/it/index.html");
  const std::string page(bytes.begin(), bytes.end());
  const auto count = [&](const std::string& text) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = page.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  EXPECT_EQ(count("<dt>PSNR</dt>"), 155U);
  EXPECT_EQ(count("src=\"data:image/png;base64,iVBOR"), 157U);  // and the scene in colour and gray
  EXPECT_EQ(count("src="), 157U);
  EXPECT_EQ(count("<dd>exact</dd>"), 98U);  // gray and RGB, but 5-6-5
}

}  // namespace
