#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

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

// What a plane of bytes holds, of each byte bits 7 to 0.
std::string Drawn(const json& plane) {
  std::string text;
  for (const json& byte : plane) {
    for (const std::string bit : byte) text += (bit.empty() ? "-" : bit) + ' ';
    text += "| ";
  }
  return text;
}

TEST_F(Lists, TypesTellWhereEachBitLies) {
  const json types = json::parse(Run("types --json").output);
  std::map<std::string, json> byHex;
  for (const json& type : types) {
    byHex[type["hex"]] = type;
    // No bit of a sample is stored twice, none between the lowest and the highest is missing.
    std::map<std::string, std::set<int>> samples;
    std::size_t stored = 0;
    for (const json& plane : type["memory"]) {
      for (const json& byte : plane) {
        ASSERT_EQ(byte.size(), 8U);
        for (const std::string name : byte) {
          if (name.empty()) continue;
          const std::size_t dot = name.find('.');
          samples[name.substr(0, dot)].insert(std::stoi(name.substr(dot + 1)));
          ++stored;
        }
      }
    }
    std::size_t expected = 0;
    for (const auto& [sample, bits] : samples) {
      EXPECT_EQ(*bits.rbegin() + 1, static_cast<int>(bits.size())) << type["hex"] << sample;
      expected += bits.size();
    }
    EXPECT_EQ(stored, expected) << type["hex"];
    EXPECT_GE(samples.size(), type["group"].get<std::size_t>()) << type["hex"];
  }

  EXPECT_EQ(Drawn(byHex["0x10008"]["memory"][0]),
            "p0.9 p0.8 p0.7 p0.6 p0.5 p0.4 p0.3 p0.2 | - - p1.1 p1.0 - - p0.1 p0.0 | "
            "p1.9 p1.8 p1.7 p1.6 p1.5 p1.4 p1.3 p1.2 | ");
  EXPECT_EQ(Drawn(byHex["0x20001"]["memory"][0]),
            "G.2 G.1 G.0 B.4 B.3 B.2 B.1 B.0 | R.4 R.3 R.2 R.1 R.0 G.5 G.4 G.3 | ");
  EXPECT_EQ(Drawn(byHex["0x120011"]["memory"][0]), "p.1 p.0 - - - - - - | p.9 p.8 p.7 p.6 p.5 p.4 p.3 p.2 | ");
  EXPECT_EQ(byHex["0x440006"]["group"], 4);
  EXPECT_EQ(byHex["0x82000A"]["memory"].size(), 3U);
  EXPECT_EQ(byHex["0x20003"]["memory"][0].size(), 4U);
  EXPECT_EQ(byHex["0x2010001"]["readout"], json({0, 7, 1, 6, 2, 5, 3, 4}));
}

TEST_F(Lists, InfoDrawsMemoryAndNamesWhatATypeReaches) {
  const std::string text = Run("info BayerRG12Packed").output;
  for (const char* const part : {"0x20040 (131136)", "BayerRGB12_Packed_GEV", "BayerRG12Packed (0x010C002B)",
                                 "        +-------------------------------+\n"
                                 "byte 0  |            p0 11-4            |\n"
                                 "        +---------------+---------------+\n"
                                 "byte 1  |    p1 3-0     |    p0 3-0     |\n"
                                 "        +---------------+---------------+\n"
                                 "byte 2  |            p1 11-4            |\n"
                                 "        +-------------------------------+\n",
                                 "Converts to\n  0x20001 ", "Is converted from\n  0x20040 "}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  }
  EXPECT_NE(Run("info 0x2010001").output.find("in the order 0 7 1 6 2 5 3 4."), std::string::npos);

  const json types = json::parse(Run("types --json").output);
  const json pairs = json::parse(Run("converters --json").output);
  for (const char* const name : {"0x10005", "0x420006", "BayerRG8", "YUV422_8", "RGB8_Planar", "0x20002"}) {
    json info = json::parse(Run(std::string("info --json ") + name).output);
    std::set<int> destinations, sources;
    for (const json& pair : pairs) {
      if (pair["from"]["id"] == info["id"]) destinations.insert(pair["to"]["id"].get<int>());
      if (pair["to"]["id"] == info["id"]) sources.insert(pair["from"]["id"].get<int>());
    }
    EXPECT_EQ(info["destinations"], json(destinations)) << name;
    EXPECT_EQ(info["sources"], json(sources)) << name;
    info.erase("destinations");
    info.erase("sources");
    EXPECT_EQ(std::count(types.begin(), types.end(), info), 1) << name;
    EXPECT_FALSE(info["pfnc"].empty()) << name;
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
  for (const std::string arguments : {"--help", "--version", "convert --help", "synth --help", "gallery --help",
                                      "bench --help", "info --help", "completion --help", "manual --help"}) {
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
