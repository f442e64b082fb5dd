#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "tools/tool.h"

namespace {

using Lists = ToolTest;
using nlohmann::json;

// docs/formats.md pins the layouts and the names of all types; here is the rest that is said of them.
TEST_F(Lists, TypesAreToldToPeopleAndPrograms) {
  const json types = json::parse(Run("types --json").output);
  const std::string table = Run("types --all").output;
  for (const json& type : types) {
    EXPECT_EQ(type["class"].get<std::string>().empty(), (type["id"].get<int>() & 0x0800) != 0) << type["name"];
    EXPECT_NE(table.find('\n' + type["hex"].get<std::string>() + ' '), std::string::npos) << type["hex"];
    json flags = json::array();
    for (const char* const flag : {"normalized", "interlaced", "packed", "planar"}) flags.push_back(type[flag]);
    const int id = type["id"];
    EXPECT_EQ(flags, json({(id & 0x100000) != 0, (id & 0x200000) != 0, (id & 0x400000) != 0, (id & 0x800000) != 0}));
  }
  const auto packed = std::find_if(types.begin(), types.end(), [](const json& type) { return type["id"] == 0x410002; });
  ASSERT_NE(packed, types.end());
  EXPECT_EQ((*packed)["bits"], 10);
  EXPECT_EQ((*packed)["bytes"], 2);
  EXPECT_EQ((*packed)["group"], 2);
  const json planar = json::parse(Run("info 0x82000A --json").output)["memory"];
  EXPECT_EQ(planar.size(), 3U);
  EXPECT_EQ(planar[0][0][0], "R.7");
  EXPECT_EQ((*packed)["memory"], json::parse(R"([[["p0.7", "p0.6", "p0.5", "p0.4", "p0.3", "p0.2", "p0.1", "p0.0"],
                             ["p1.3", "p1.2", "p1.1", "p1.0", "", "", "p0.9", "p0.8"],
                             ["", "", "p1.9", "p1.8", "p1.7", "p1.6", "p1.5", "p1.4"]]])"));
}

TEST_F(Lists, FitATerminalAndFoldVariants) {
  for (const char* const command :
       {"types", "types --all", "converters --from BayerRG12p", "converters --to 0x20A40",
        "converters --from 0x8610003 --all", "info BGR10V2Packed", "info YUV411_8_UYYVYY"}) {
    std::istringstream lines(Run(command).output);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << command << ": " << line;
  }
  const std::string types = Run("types").output;
  EXPECT_NE(types.find("\n0x10001        8     1  Grayscale8-bits +6           Mono8\n"), std::string::npos) << types;
  EXPECT_NE(types.find("\n0x20020       16     2  Bayer RGB14-bits             BayerGR16 (RG, GB, BG)\n"),
            std::string::npos);
  EXPECT_NE(types.find("99 types are left out"), std::string::npos);
  EXPECT_EQ(types.find("\n0x210001 "), std::string::npos);  // Grayscale8, interlaced
  EXPECT_NE(Run("converters --to RGB8").output.find("\n  0x10002    Grayscale10-bits +11    Mono10   "),
            std::string::npos);
}

TEST_F(Lists, InfoSaysHowTypesWithOddNamesAre) {
  EXPECT_NE(Run("info BGR32").output.find("the first byte is blue"), std::string::npos);
  const std::string mosaic = Run("info BayerRG16").output;
  EXPECT_NE(mosaic.find("a sample        16 bits"), std::string::npos) << mosaic;
  EXPECT_NE(mosaic.find("registered as   14 bits, 2 bytes"), std::string::npos) << mosaic;
  EXPECT_NE(Run("info Mono10p").output.find("a pixel         1.25 bytes"), std::string::npos);
  EXPECT_NE(Run("info RGGB").output.find("V4L2            BA81, GBRG, GRBG, RGGB"), std::string::npos);
}

TEST_F(Lists, InfoNamesWhatATypeReaches) {
  const std::string text = Run("info BayerRG12Packed").output;
  for (const char* const part : {"0x20040 (131136)", "BayerRGB12_Packed_GEV", "BayerRG12Packed (0x010C002B)",
                                 "Converts to\n  0x10001 ", "Is converted from\n  0x20040 "}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  }
  EXPECT_NE(Run("info 0x2010001").output.find("in the order 0 7 1 6 2 5 3 4."), std::string::npos);

  const json types = json::parse(Run("types --json").output);
  const json pairs = json::parse(Run("converters --json").output);
  for (const char* const name : {"0x10005", "0x420006", "BayerRG8", "YUV422_8", "RGB8_Planar", "0x20002"}) {
    json info = json::parse(Run(std::string("info --json ") + name).output);
    std::set<int> destinations, sources;
    json kept = json::array();
    for (const json& pair : pairs) {
      if (pair["from"]["id"] == info["id"]) destinations.insert(pair["to"]["id"].get<int>());
      if (pair["from"]["id"] == info["id"]) kept.push_back(pair["kept"]);
      if (pair["to"]["id"] == info["id"]) sources.insert(pair["from"]["id"].get<int>());
    }
    EXPECT_EQ(info["destinations"], json(destinations)) << name;
    EXPECT_EQ(info["sources"], json(sources)) << name;
    EXPECT_EQ(info["kept"], kept) << name;
    info.erase("destinations");
    info.erase("kept");
    info.erase("sources");
    EXPECT_EQ(std::count(types.begin(), types.end(), info), 1) << name;
    EXPECT_FALSE(info["pfnc"].empty()) << name;
  }
}

TEST_F(Lists, ConvertersAreFilteredBySourceAndDestination) {
  const json pairs = json::parse(Run("converters --json").output);
  const auto filtered = [&](int from, int to) {
    json found = json::array();
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(found), [=](const json& pair) {
      return (from == 0 || pair["from"]["id"] == from) && (to == 0 || pair["to"]["id"] == to);
    });
    return found;
  };
  const auto listed = [&](const std::string& filter) { return json::parse(Run("converters --json" + filter).output); };
  EXPECT_EQ(listed(" --from BayerRGB10"), filtered(0x20011, 0));
  EXPECT_EQ(listed(" --to 0x10005"), filtered(0, 0x10005));
  EXPECT_EQ(listed(" --from 131089 --to 'bgr 24-BITS'"), filtered(0x20011, 0x20006));
  EXPECT_EQ(listed(" --from Grayscale8 --to YUV8"), json::array());

  json identities = json::array();
  for (const json& pair : pairs) {
    if (pair["from"] == pair["to"]) identities.push_back(pair["from"]["id"]);
  }
  json ids = json::array();
  for (const json& type : json::parse(Run("types --json").output)) ids.push_back(type["id"]);
  EXPECT_EQ(ids, identities);
}

TEST_F(Lists, LostBitsAreCounted) {
  struct Case {
    const char *from, *to;
    int bits, kept;
  };
  const Case cases[] = {{"Mono12", "Mono16", 12, 12},  {"Mono12", "Mono10", 12, 10},      {"BayerRG12p", "RGB8", 12, 8},
                        {"BayerRG10", "Mono8", 10, 8}, {"RGB8", "RGB565", 8, 5},          {"RGB565", "BGR8", 5, 5},
                        {"RGB8", "Mono16", 8, 8},      {"RGB12_Planar", "RGB16", 12, 12}, {"0x40002", "RGB10", 10, 8},
                        {"0x110002", "Mono16", 10, 10}};
  for (const Case& c : cases) {
    const std::string filter = std::string("converters --from ") + c.from + " --to " + c.to;
    const json pair = json::parse(Run(filter + " --json").output)[0];
    EXPECT_EQ(pair["bits"], c.bits) << filter;
    EXPECT_EQ(pair["kept"], c.kept) << filter;
    const std::string loss = "keeps " + std::to_string(c.kept) + " of " + std::to_string(c.bits) + " bits";
    EXPECT_EQ(Run(filter).output.find(loss) != std::string::npos, c.kept < c.bits) << filter;
  }
}

TEST_F(Lists, ClassesOfVariantsOnlyNameTheFirstVariant) {
  const json from = json::parse(Run("converters --json --from YUV8_411 --to BGR24").output)[0]["from"];
  EXPECT_EQ(from["hex"], "0x440006");
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
  const json types = json::parse(Run("types --json").output);
  const auto exact = std::count_if(types.begin(), types.end(), [](const json& type) {  // gray and RGB of 8 bits on
    return (type["id"].get<int>() & 0x40000) == 0 && type["bayer"] == false && type["bits"] >= 8 &&
           type["class"] != "RGB16" && type["name"] != "RGB565p";
  });
  EXPECT_EQ(count("<dt>PSNR</dt>"), types.size());
  EXPECT_EQ(count("<dd>exact</dd>"), static_cast<std::size_t>(exact));
  EXPECT_EQ(count("src=\"data:image/png;base64,iVBOR"), types.size() + 2);  // and the scene in colour and gray
  EXPECT_EQ(count("src="), types.size() + 2);
  EXPECT_EQ(count("<details>"), 25U) << "types with variants";
  EXPECT_EQ(count("data-names=\"pBAA pGAA pgAA pRAA\""), 1U);
  EXPECT_EQ(count("BayerRG10p"), 2U) << "the placeholder of the search, and the names of a card";
}

}  // namespace
