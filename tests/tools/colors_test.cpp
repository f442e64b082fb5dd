#include <algorithm>
#include <random>

#include "tools/tool.h"

namespace {

// What options make of colours. Frames are mosaics of 10-bit words that begin with red.
class ToolColors : public ToolTest {
 protected:
  static constexpr unsigned kWidth = 32, kHeight = 24;

  // A gray field of some brightness under a light with weak red and blue, on a black level of 64.
  static Bytes Frame(unsigned gray) {
    Bytes bytes;
    for (unsigned i = 0; i < kWidth * kHeight; ++i) {
      const bool redColumn = i % kWidth % 2 == 0, redRow = i / kWidth % 2 == 0;
      const unsigned sample = 64 + (redColumn != redRow ? gray : redRow ? gray / 2 : gray * 4 / 5);
      bytes.push_back(static_cast<std::uint8_t>(sample));
      bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
    }
    return bytes;
  }
  static std::string Convert(const std::string& options, const std::string& destination = "out.raw") {
    return "convert frame.raw " + destination + " --from BayerRG10 --to RGB8 --size 32x24 " + options;
  }
  // The colour of all pixels; fails if they differ.
  std::vector<unsigned> Color() const {
    const Bytes bytes = Read("out.raw");
    EXPECT_EQ(bytes.size(), std::size_t{kWidth} * kHeight * 3);
    for (std::size_t i = 3; i < bytes.size(); ++i) EXPECT_EQ(bytes[i], bytes[i - 3]) << i;
    return {bytes[0], bytes[1], bytes[2]};
  }
  void WriteText(const std::string& name, const std::string& text) const {
    Write(name, Bytes(text.begin(), text.end()));
  }
};

TEST_F(ToolColors, CurvesFollowTheFormula) {
  Write("frame.raw", Frame(400));
  struct Case {
    const char* options;
    std::vector<unsigned> color;
  };
  // Light is 200, 400 and 320 of 1023 after the black level.
  const Case cases[] = {
      {"--black 64", {50, 100, 80}},
      {"--black 64,64,384", {50, 100, 0}},
      {"--black 64 --gain 2,1,1.25", {100, 100, 100}},
      {"--gain 2,1,1.25 --black 64 --tone srgb", {167, 167, 167}},
      {"--black 64 --gain 2,1,1.25 --tone bt709", {158, 158, 158}},
      {"--black 64 --gain 2,1,1.25 --tone 2", {159, 159, 159}},
      {"--offset -16,-16,-255", {50, 100, 0}},
      {"--gain 1.5,1,2 --offset 3,0,100", {102, 116, 255}},
      {"--matrix 0,1,0,0,1,0,0,1,0 --black 64", {100, 100, 100}},
      {"--defects on --black 64 --gain 2,1,1.25 --tone srgb", {167, 167, 167}},
  };
  for (const Case& c : cases) {
    RunSilently(Convert(c.options));
    const std::vector<unsigned> color = Color();
    for (unsigned k = 0; k < 3; ++k) EXPECT_NEAR(color[k], c.color[k], 1) << c.options << " " << k;
  }
}

TEST_F(ToolColors, WhiteBalanceIsPrintedAndMakesTheSamePictureAgain) {
  Write("frame.raw", Frame(400));
  for (const std::string method : {"gray", "white", "3,3,20x12"}) {
    const ToolResult found = Run(Convert("--black 64 --tone srgb --white-balance " + method));
    EXPECT_EQ(found.exitCode, 0) << found.output;
    const Bytes picture = Read("out.raw");
    const std::vector<unsigned> color = Color();
    const auto [least, most] = std::minmax_element(color.begin(), color.end());
    EXPECT_LE(*most - *least, 1U) << method;
    const std::size_t at = found.output.find("--gain ");
    ASSERT_NE(at, std::string::npos) << found.output;
    RunSilently(Convert("--black 64 --tone srgb " + found.output.substr(at, found.output.find('\n') - at)));
    EXPECT_EQ(Read("out.raw"), picture) << method;
  }
  Write("frame.raw", Bytes(kWidth * kHeight * 2));
  const ToolResult dark = Run(Convert("--white-balance gray"));
  EXPECT_EQ(dark.exitCode, 0);
  EXPECT_NE(dark.output.find("note: the white balance of 'frame.raw' stays"), std::string::npos) << dark.output;
}

TEST_F(ToolColors, ADevelopmentFileIsAsItsOptions) {
  std::mt19937 random(1);
  Bytes frame(kWidth * kHeight * 2);
  for (std::size_t i = 0; i < frame.size(); ++i)
    frame[i] = static_cast<std::uint8_t>(random() % (i % 2 == 0 ? 256 : 4));
  Write("frame.raw", frame);
  WriteText("camera.json",
            R"({"black": 64, "gains": [1.6, 1, 1.09], "tone": "bt709", "demosaic": "mhc", "defects": 20,
                "matrix": [[1.5, -0.3, -0.2], [-0.2, 1.4, -0.2], [0, -0.5, 1.5]]})");
  const std::string matrix = " --matrix 1.5,-0.3,-0.2,-0.2,1.4,-0.2,0,-0.5,1.5";
  RunSilently(Convert("--development camera.json"));
  RunSilently(Convert("--black 64 --gain 1.6,1,1.09 --tone bt709 --demosaic mhc --defects 20" + matrix, "same.raw"));
  EXPECT_EQ(Read("out.raw"), Read("same.raw"));
  RunSilently(Convert("--tone srgb --development camera.json --demosaic block --defects off"));
  RunSilently(Convert("--black 64 --gain 1.6,1,1.09 --tone srgb --demosaic block" + matrix, "same.raw"));
  EXPECT_EQ(Read("out.raw"), Read("same.raw"));
}

TEST_F(ToolColors, RefusesWithTheArgumentItsValueAndWhatIsAllowed) {
  Write("frame.raw", Frame(400));
  struct Refusal {
    std::string options, json, message;
  };
  const Refusal refusals[] = {
      {"--tone rec2020", "", "--tone: 'rec2020' is unknown; allowed: linear, srgb, bt709, or a gamma of 0.1 to 10"},
      {"--black 1,2", "", "--black: '1,2' does not fit; allowed: a number, or three numbers R,G,B, each 0 to 65535"},
      {"--offset -256,0,0", "", "each -255 to 255"},
      {"--matrix 1,0,0,0,1,0,0,0", "", "--matrix: '1,0,0,0,1,0,0,0' does not fit; allowed: nine numbers"},
      {"--matrix 7.5,0,0,0,1,0,0,0,1", "", "sum to 7 at most"},
      {"--defects 0", "", "--defects: '0' is unknown; allowed: on, off, or a threshold of 1 to 65535"},
      {"--white-balance 1,2,3", "", "--white-balance: '1,2,3' is unknown"},
      {"--white-balance 30,20,3x3", "", "the rectangle must be inside the image of 32 x 24"},
      {"--white-balance gray --gain 1,1,1", "", "--white-balance: finds the gains"},
      {"--defects on --offset 1,1,1", "", "--offset: does not go with"},
      {"--development none.json", "", "--development"},
      {"--development x.json", "[1]", "is no JSON object; allowed: an object with any of the keys black, defects"},
      {"--development x.json", R"({"gain": [1, 1, 1]})",
       "unknown key 'gain'; allowed: black, defects, demosaic, depth"},
      {"--development x.json", R"({"gains": [1, 1]})", "has the gains [1,1]; allowed: three numbers"},
      {"--development x.json", R"({"tone": "film"})", R"(has the tone "film"; allowed: linear)"},
      {"--development x.json", R"({"depth": 10})", R"(has the depth 10; allowed: "full" or 8)"},
      {"--development x.json", R"({"demosaic": 3})", "has the demosaic 3; allowed: block|bilinear"},
  };
  for (const Refusal& refusal : refusals) {
    WriteText("x.json", refusal.json);
    const ToolResult result = Run(Convert(refusal.options));
    EXPECT_NE(result.exitCode, 0) << refusal.options;
    EXPECT_NE(result.output.find(refusal.message), std::string::npos) << refusal.options << "\n" << result.output;
    EXPECT_FALSE(std::filesystem::exists(Path("out.raw"))) << refusal.options;
  }
}

}  // namespace
