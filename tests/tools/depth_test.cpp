#include <tiffio.h>

#include <random>
#include <set>

#include "tools/tool.h"

namespace {

// Frames and pictures of more than 8 bits.
class Depth : public ToolTest {
 protected:
  static Bytes BytesOf(const std::vector<unsigned>& words) {
    Bytes bytes;
    for (const unsigned word : words) {
      bytes.push_back(static_cast<std::uint8_t>(word));
      bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    return bytes;
  }

  std::vector<unsigned> Words(const std::string& name) const {
    const Bytes bytes = Read(name);
    std::vector<unsigned> words;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) words.push_back(bytes[i] | unsigned{bytes[i + 1]} << 8);
    return words;
  }
};

TEST_F(Depth, PicturesBringSamplesBack) {
  struct Case {
    const char* type;
    unsigned bits;
    std::vector<const char*> endings;
  };
  const Case cases[] = {
      {"Mono10", 10, {"png", "tif", "pgm"}}, {"Mono14", 14, {"png"}}, {"Mono16", 16, {"png", "tiff", "pgm"}},
      {"RGB10", 10, {"png", "tif", "ppm"}},  {"RGB12", 12, {"png"}},  {"RGB16", 16, {"png", "tif", "ppm"}}};
  std::mt19937 random;
  for (const Case& c : cases) {
    std::vector<unsigned> frame(7 * 5 * (c.type[0] == 'M' ? 1 : 3));
    for (unsigned& sample : frame) sample = static_cast<unsigned>(random()) & ((1U << c.bits) - 1);
    Write("frame.raw", BytesOf(frame));
    for (const std::string ending : c.endings) {
      SCOPED_TRACE(c.type + (" " + ending));
      const std::string picture = "picture." + ending;
      RunSilently("convert frame.raw " + picture + " --size 7x5 --from " + c.type);
      RunSilently("convert " + picture + " back.raw --to " + c.type);
      EXPECT_EQ(Words("back.raw"), frame);
      RunSilently("convert " + picture + " balanced." + ending + " --gain 0,1,1");
      RunSilently("convert balanced." + ending + " balanced.raw --to RGB16");
      const std::vector<unsigned> balanced = Words("balanced.raw");
      const bool isGray = c.type[0] == 'M';
      EXPECT_EQ(balanced[0], isGray ? frame[0] << (16 - c.bits) : 0) << "gains are for colours";
      EXPECT_EQ(balanced[2], frame[isGray ? 0 : 2] << (16 - c.bits));
    }
  }
}

TEST_F(Depth, WhiteIsWhiteAndGrayIsNotBlack) {
  Write("white.raw", Bytes(6, 0xFF));
  for (const std::string from : {"Mono12p", "BayerRG12p", "BayerRG12Packed"}) {
    RunSilently("convert white.raw out.ppm --size 2x2 --from " + from);
    Bytes pixels = Read("out.ppm");
    pixels.erase(pixels.begin(), pixels.end() - 24);
    for (std::size_t i = 0; i < 24; ++i) EXPECT_EQ(pixels[i], i % 2 == 0 ? 0xFF : 0xF0) << from;
  }
  Write("frame.raw", BytesOf({1023, 512, 4, 0}));
  RunSilently("convert frame.raw deep.raw --size 2x2 --from Mono10 --to Mono16");
  RunSilently("convert deep.raw out.bmp --size 2x2 --from Mono16");
  RunSilently("convert out.bmp out.raw --to Mono8");
  EXPECT_EQ(Read("out.raw"), (Bytes{255, 128, 1, 0}));
  RunSilently("convert frame.raw low.raw --size 2x2 --from Mono10 --to Mono16 --depth 8");
  EXPECT_EQ(Words("low.raw"), (std::vector<unsigned>{255, 128, 1, 0}));
}

// Gains work on all bits: values that differ before stay apart, and no step is wider than the gain.
TEST_F(Depth, GainsLeaveNoComb) {
  std::vector<unsigned> frame(64 * 64);
  for (unsigned i = 0; i < frame.size(); ++i) frame[i] = i / 128 * 32 + i % 64 / 2;  // each cell has a value of its own
  Write("frame.raw", BytesOf(frame));
  RunSilently("convert frame.raw out.raw --from BayerRG12 --to RGB16 --size 64x64 --gain 4,1.5,4 --demosaic block");
  const std::vector<unsigned> rgb = Words("out.raw");
  for (const std::size_t channel : {0U, 1U, 2U}) {
    std::set<unsigned> levels;
    for (std::size_t i = channel; i < rgb.size(); i += 3) levels.insert(rgb[i]);
    EXPECT_EQ(levels.size(), 1024U);
    unsigned before = *levels.begin();
    for (const unsigned level : levels) {
      EXPECT_LE(level - before, 16 * (channel == 1 ? 2U : 4U)) << "at " << level;
      before = level;
    }
  }
}

TEST_F(Depth, OtherProgramsOpenThePictures) {
  RunSilently("synth frame.raw --type BayerRG12p --size 128x96");
  for (const std::string name : {"out.png", "out.tif", "out.ppm"}) {
    RunSilently("convert frame.raw " + name + " --from BayerRG12p --size 128x96 --demosaic bilinear");
    RunSilently("convert " + name + " gray-" + name + " --to Mono16");
  }
  const bool hasIdentify = Has("identify");
  const bool hasPillow = Shell("/usr/bin/python3 -c 'import PIL'").exitCode == 0;
  for (const std::string name : {"out.png", "out.tif", "out.ppm"}) {
    if (hasIdentify) {
      EXPECT_EQ(Run("--version >/dev/null; identify -format '%w %h %z' " + name).output, "128 96 16") << name;
    }
    if (hasPillow && name != "out.ppm") {  // of which Pillow keeps 8 bits
      const std::string open = "/usr/bin/python3 -c \"from PIL import Image; i = Image.open('gray-" + name +
                               "'); i.load(); print(i.size, len(set(i.getdata())) > 256)\"";
      EXPECT_EQ(Shell(open).output, "(128, 96) True\n") << name;
    }
  }
  if (!hasIdentify || !hasPillow) GTEST_SKIP() << "needs identify of ImageMagick, and Pillow";
}

struct TiffFile {
  const char* kind;
  int bits, samples, photometric, planes, compression;
  Bytes rows;  // of 2 x 2 pixels; of planes one after the other
  const char* to;
  Bytes expected;  // empty where the file is refused
  const char* mention;
};

TEST_F(Depth, EveryKindOfTiffIsReadOrRefused) {
  constexpr int kOne = PLANARCONFIG_CONTIG, kSeparate = PLANARCONFIG_SEPARATE, kPlain = COMPRESSION_NONE;
  constexpr int kGray = PHOTOMETRIC_MINISBLACK, kNegative = PHOTOMETRIC_MINISWHITE, kRGB = PHOTOMETRIC_RGB;
  const Bytes grays{1, 2, 3, 4}, colours{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, words{1, 2, 3, 4, 5, 6, 7, 8};
  const Bytes separate{1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12};
  const TiffFile cases[] = {
      {"gray", 8, 1, kGray, kOne, COMPRESSION_LZW, grays, "Mono8", grays, ""},
      {"white is 0", 8, 1, kNegative, kOne, kPlain, {0, 2, 3, 255}, "Mono8", {255, 253, 252, 0}, ""},
      {"words", 16, 1, kGray, kOne, kPlain, words, "Mono16", words, ""},
      {"RGB", 8, 3, kRGB, kOne, COMPRESSION_PACKBITS, colours, "RGB8", colours, ""},
      {"words and alpha", 16, 4, kRGB, kOne, COMPRESSION_ADOBE_DEFLATE, Bytes(32, 7), "RGB16", Bytes(24, 7), ""},
      {"planes", 8, 3, kRGB, kSeparate, COMPRESSION_LZW, separate, "RGB8", colours, ""},
      {"32 bits", 32, 1, kGray, kOne, kPlain, Bytes(16), "Mono8", {}, "32 bits a sample"},
      {"a cube", 8, 65, kGray, kOne, kPlain, Bytes(260), "Mono8", {}, "65 samples a pixel; allowed: 1 to 64"},
      {"CMYK", 8, 4, PHOTOMETRIC_SEPARATED, kOne, kPlain, Bytes(16), "Mono8", {}, "gray and RGB"},
  };
  for (const TiffFile& c : cases) {
    SCOPED_TRACE(c.kind);
    TIFF* const tiff = TIFFOpen(Path("in.tif").c_str(), "wb");  // the high byte first
    for (const auto& [tag, value] : {std::pair{TIFFTAG_IMAGEWIDTH, 2},
                                     {TIFFTAG_IMAGELENGTH, 2},
                                     {TIFFTAG_BITSPERSAMPLE, c.bits},
                                     {TIFFTAG_SAMPLESPERPIXEL, c.samples},
                                     {TIFFTAG_PHOTOMETRIC, c.photometric},
                                     {TIFFTAG_PLANARCONFIG, c.planes},
                                     {TIFFTAG_COMPRESSION, c.compression}}) {
      TIFFSetField(tiff, static_cast<std::uint32_t>(tag), value);
    }
    Bytes rows = c.rows;
    const std::size_t planes = c.planes == kSeparate ? 3 : 1;
    const std::size_t rowBytes = rows.size() / planes / 2;
    for (std::size_t i = 0; i < 2 * planes; ++i) {
      EXPECT_GE(TIFFWriteScanline(tiff, &rows[i * rowBytes], i % 2, static_cast<std::uint16_t>(i / 2)), 0);
    }
    TIFFClose(tiff);
    std::filesystem::remove(Path("out.raw"));
    const ToolResult result = Run(std::string("convert in.tif out.raw --to ") + c.to);
    EXPECT_EQ(Read("out.raw"), c.expected);
    EXPECT_EQ(result.exitCode, c.expected.empty() ? 1 : 0) << result.output;
    EXPECT_NE(result.output.find(c.mention), std::string::npos) << result.output;
    Bytes cut = Read("in.tif");
    cut.resize(cut.size() / 2);
    Write("in.tif", cut);
    EXPECT_EQ(Run(std::string("convert in.tif cut.raw --to ") + c.to).exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(Path("cut.raw")));
  }
}

TEST_F(Depth, PgmAndPpmAreRead) {
  struct Case {
    std::string file;
    const char* to;
    Bytes expected;  // empty where the file is refused
  };
  const Case cases[] = {{"P5 2 1 255\n\x01\x02", "Mono8", {1, 2}},
                        {"P6\n# by hand\n1 1\n255\n\x01\x02\x03", "RGB8", {1, 2, 3}},
                        {"P5 1 1 1023\n\x03\xFF", "Mono16", {0xC0, 0xFF}},
                        {"P5 1 1 1000\n\x03\xE8", "Mono16", {0xFF, 0xFF}},
                        {"P5 1 1 3\n\x02", "Mono8", {170}},
                        {"P5 1 1 3\n\x04", "Mono8", {}},
                        {"P5 1 1 70000\n\x04\x04", "Mono8", {}},
                        {"P5 1 2 255\n\x04", "Mono8", {}},
                        {"P2 1 1 255\n4\n", "Mono8", {}},
                        {"P5 65535 65535 255\n", "Mono8", {}},
                        {"P5 1", "Mono8", {}},
                        {"", "Mono8", {}}};
  for (const Case& c : cases) {
    Write("in.pgm", Bytes(c.file.begin(), c.file.end()));
    std::filesystem::remove(Path("out.raw"));
    const ToolResult result = Run(std::string("convert in.pgm out.raw --to ") + c.to);
    EXPECT_EQ(Read("out.raw"), c.expected) << c.file << result.output;
    EXPECT_EQ(result.exitCode, c.expected.empty() ? 1 : 0) << c.file;
  }
}

}  // namespace
