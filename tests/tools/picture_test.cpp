#include <png.h>
#include <zlib.h>

#include <random>

#include "tools/tool.h"

namespace {

using Pictures = ToolTest;

void Append32(Bytes& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void AppendChunk(Bytes& file, const std::string& type, const Bytes& data) {
  Append32(file, static_cast<std::uint32_t>(data.size()));
  Bytes covered(type.begin(), type.end());
  covered.insert(covered.end(), data.begin(), data.end());
  file.insert(file.end(), covered.begin(), covered.end());
  Append32(file, static_cast<std::uint32_t>(crc32(0, covered.data(), static_cast<uInt>(covered.size()))));
}

struct PngFile {
  std::uint32_t width, height;
  std::uint8_t bits, colorType;
  Bytes rows;  // each behind the byte 0, which stands for no filter
  Bytes palette;
};

Bytes Written(const PngFile& png) {
  Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  Bytes header;
  Append32(header, png.width);
  Append32(header, png.height);
  header.insert(header.end(), {png.bits, png.colorType, 0, 0, 0});
  AppendChunk(file, "IHDR", header);
  if (!png.palette.empty()) AppendChunk(file, "PLTE", png.palette);
  AppendChunk(file, "gAMA", {0, 1, 134, 160});  // linear light: the samples are to be taken as they are
  uLongf size = compressBound(png.rows.size());
  Bytes packed(size);
  compress(packed.data(), &size, png.rows.data(), png.rows.size());
  packed.resize(size);
  AppendChunk(file, "IDAT", packed);
  AppendChunk(file, "IEND", {});
  return file;
}

// The pixels of a PNG file that has 8 bits a channel.
Bytes PixelsOf(const Bytes& file, bool gray) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0) << image.message;
  EXPECT_EQ(image.format, gray ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB);
  image.format = gray ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
  Bytes pixels(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0) << image.message;
  return pixels;
}

TEST_F(Pictures, PngHoldsColoursOrGrays) {
  const Bytes samples{10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
  Write("colours.raw", samples);
  RunSilently("convert colours.raw colours.png --from RGB8 --size 2x2");
  EXPECT_EQ(PixelsOf(Read("colours.png"), false), samples);
  for (const char* const from : {"Mono8", "BayerRG8"}) {
    Write("grays.raw", {1, 2, 3, 4});
    RunSilently(std::string("convert grays.raw grays.png --size 2x2 --from ") + from + " --to " + from);
    EXPECT_EQ(PixelsOf(Read("grays.png"), true), (Bytes{1, 2, 3, 4})) << from;
  }
  Write("deep.raw", {0xBC, 0x0A});  // gray types are gray of themselves
  RunSilently("convert deep.raw deep.png --from Mono12 --size 1x1 --depth 8");
  EXPECT_EQ(PixelsOf(Read("deep.png"), true), Bytes{0xAB});
}

TEST_F(Pictures, EveryKindOfPngIsRead) {
  struct Case {
    const char* kind;
    PngFile png;
    const char* to;
    Bytes samples;
  };
  const Case cases[] = {
      {"8-bit gray", {2, 2, 8, 0, {0, 1, 2, 0, 3, 4}, {}}, "Mono8", {1, 2, 3, 4}},
      {"16-bit gray", {2, 1, 16, 0, {0, 1, 255, 2, 0}, {}}, "Mono16", {255, 1, 0, 2}},
      {"1-bit gray", {3, 1, 1, 0, {0, 0xA0}, {}}, "Mono8", {255, 0, 255}},
      {"gray and alpha", {1, 1, 8, 4, {0, 7, 9}, {}}, "Mono8", {7}},
      {"8-bit colour", {2, 1, 8, 2, {0, 1, 2, 3, 4, 5, 6}, {}}, "RGB8", {1, 2, 3, 4, 5, 6}},
      {"16-bit colour", {1, 1, 16, 2, {0, 1, 0, 2, 0, 3, 255}, {}}, "RGB16", {0, 1, 0, 2, 255, 3}},
      {"16-bit colour and alpha", {1, 1, 16, 6, {0, 1, 0, 2, 0, 3, 255, 9, 9}, {}}, "RGB8", {1, 2, 3}},
      {"colour and alpha", {1, 1, 8, 6, {0, 1, 2, 3, 0}, {}}, "RGB8", {1, 2, 3}},
      {"palette", {2, 1, 4, 3, {0, 0x10}, {9, 8, 7, 1, 2, 3}}, "RGB8", {1, 2, 3, 9, 8, 7}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.kind);
    Write("picture.png", Written(c.png));
    RunSilently(std::string("convert picture.png samples.raw --to ") + c.to);
    EXPECT_EQ(Read("samples.raw"), c.samples);
  }
}

TEST_F(Pictures, EveryKindOfBmpIsRead) {
  // 3 x 2 pixels, upper row 1 to 9, lower row 11 to 19, in the bytes blue, green, red.
  const Bytes upper{1, 2, 3, 4, 5, 6, 7, 8, 9};
  const Bytes lower{11, 12, 13, 14, 15, 16, 17, 18, 19};
  for (const bool topDown : {false, true}) {
    for (const std::uint8_t bits : Bytes{24, 32}) {
      Bytes file(60);  // a gap of 6 bytes before the pixels
      file[0] = 'B';
      file[1] = 'M';
      file[10] = 60;
      file[14] = 40;
      file[18] = 3;
      file[22] = 2;
      if (topDown) file[22] = 0xFE, file[23] = file[24] = file[25] = 0xFF;
      file[26] = 1;
      file[28] = bits;
      for (const Bytes& row : topDown ? std::vector<Bytes>{upper, lower} : std::vector<Bytes>{lower, upper}) {
        for (std::size_t i = 0; i < row.size(); ++i) {
          file.push_back(row[i]);
          if (bits == 32 && i % 3 == 2) file.push_back(0xEE);
        }
        if (bits == 24) file.insert(file.end(), 3, 0xEE);  // to a multiple of 4
      }
      Write("picture.bmp", file);
      RunSilently("convert picture.bmp samples.raw --to BGR8");
      Bytes pixels = upper;
      pixels.insert(pixels.end(), lower.begin(), lower.end());
      EXPECT_EQ(Read("samples.raw"), pixels) << int{bits} << topDown;

      file.pop_back();
      Write("picture.bmp", file);
      EXPECT_GT(Run("convert picture.bmp cut.raw --to BGR8").exitCode, 0);
    }
  }
  EXPECT_EQ(Files().size(), 2U);
}

TEST_F(Pictures, DamagedFilesAreToldAndLeaveNothing) {
  PngFile png{64, 64, 8, 2, Bytes(64 * 193), {}};
  std::mt19937 random;  // for noise, which does not shrink
  for (std::size_t i = 0; i < png.rows.size(); ++i) {
    if (i % 193 != 0) png.rows[i] = static_cast<std::uint8_t>(random());
  }
  const Bytes whole = Written(png);
  std::vector<Bytes> damaged;
  for (std::size_t size = 0; size < whole.size(); size += 1 + size / 8) {
    damaged.emplace_back(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
  }
  damaged.emplace_back(whole.begin(), whole.end() - 12);  // ends behind the pixels
  for (const std::size_t flipped : {1U, 20U, 31U, 90U}) {
    damaged.push_back(whole);
    damaged.back()[flipped] ^= 0x40;
  }
  for (const Bytes& file : damaged) {
    Write("picture.png", file);
    const ToolResult result = Run("convert picture.png out.bmp");
    EXPECT_EQ(result.exitCode, 1) << file.size() << result.output;
    EXPECT_EQ(result.output.rfind("lmimaging: SOURCE: cannot read 'picture.png' as a PNG picture: ", 0), 0U)
        << result.output;
    EXPECT_EQ(Files(), std::vector<std::string>{"picture.png"}) << file.size();
  }
  // Sizes are checked before memory is taken for them.
  for (const PngFile& large : {PngFile{65536, 1, 8, 0, {0}, {}}, PngFile{0x7FFFFFFF, 0x7FFFFFFF, 16, 6, {0}, {}}}) {
    Write("picture.png", Written(large));
    const ToolResult result = Run("convert picture.png out.bmp");
    EXPECT_NE(result.output.find("at most 268435456 pixels"), std::string::npos) << result.output;
  }
}

TEST_F(Pictures, SceneIsDrawnAsAPicture) {
  RunSilently("synth scene.raw --type RGB8 --size 40x30");
  RunSilently("synth scene.png --size 40x30");
  EXPECT_EQ(PixelsOf(Read("scene.png"), false), Read("scene.raw"));
  RunSilently("synth mosaic.raw --type BayerGB10 --size 40x30");
  RunSilently("convert mosaic.raw converted.bmp --from BayerGB10 --size 40x30");
  RunSilently("synth mosaic.bmp --type BayerGB10 --size 40x30");
  EXPECT_EQ(Read("mosaic.bmp"), Read("converted.bmp"));
}

}  // namespace
