#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "LmImagingLib/BMPSaver.h"

namespace LmImagingLib {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

// A directory of its own for each test, so that tests may run side by side.
class BMPSaverTest : public testing::Test {
 protected:
  BMPSaverTest()
      : mDirectory(fs::path(testing::TempDir()) /
                   (std::string("bmp_saver_") + testing::UnitTest::GetInstance()->current_test_info()->name())) {
    fs::remove_all(mDirectory);
    fs::create_directories(mDirectory);
  }
  ~BMPSaverTest() override { fs::remove_all(mDirectory); }

  std::string Path() const { return (mDirectory / "image.bmp").string(); }
  Bytes ReadBack() const {
    std::ifstream file(Path(), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }

 private:
  fs::path mDirectory;
};

struct Case {
  const char* name;
  long width;
  long height;
  unsigned short bits;
  bool hasData;
  Bytes fileSize, widthField, heightField, bitsField, imageSize;
  std::size_t pixelBytes;
};

TEST_F(BMPSaverTest, WritesEveryByteAsLaidDown) {
  const Case cases[] = {
      {"2x2 colour",
       2,
       2,
       24,
       true,  //
       {66, 0, 0, 0},
       {2, 0, 0, 0},
       {254, 255, 255, 255},
       {24, 0},
       {12, 0, 0, 0},
       12},
      {"rows are not padded",
       3,
       1,
       24,
       true,  //
       {63, 0, 0, 0},
       {3, 0, 0, 0},
       {255, 255, 255, 255},
       {24, 0},
       {9, 0, 0, 0},
       9},
      {"bits are truncated to bytes",
       5,
       3,
       1,
       true,  //
       {55, 0, 0, 0},
       {5, 0, 0, 0},
       {253, 255, 255, 255},
       {1, 0},
       {1, 0, 0, 0},
       1},
      {"nothing to store",
       0,
       7,
       24,
       true,  //
       {54, 0, 0, 0},
       {0, 0, 0, 0},
       {249, 255, 255, 255},
       {24, 0},
       {0, 0, 0, 0},
       0},
      {"gray without a palette, sizes of two bytes",
       20,
       15,
       8,
       true,  //
       {0x62, 0x01, 0, 0},
       {20, 0, 0, 0},
       {241, 255, 255, 255},
       {8, 0},
       {0x2C, 0x01, 0, 0},
       300},
      {"unusual bit count",
       1,
       1,
       0x0108,
       true,  //
       {87, 0, 0, 0},
       {1, 0, 0, 0},
       {255, 255, 255, 255},
       {8, 1},
       {33, 0, 0, 0},
       33},
      {"no buffer",
       2,
       2,
       24,
       false,  //
       {66, 0, 0, 0},
       {2, 0, 0, 0},
       {254, 255, 255, 255},
       {24, 0},
       {12, 0, 0, 0},
       0},
      {"negative size, truncated toward zero",
       -3,
       1,
       1,
       true,  //
       {54, 0, 0, 0},
       {253, 255, 255, 255},
       {255, 255, 255, 255},
       {1, 0},
       {0, 0, 0, 0},
       0},
      {"negative width",
       -4,
       2,
       24,
       true,  //
       {30, 0, 0, 0},
       {252, 255, 255, 255},
       {254, 255, 255, 255},
       {24, 0},
       {232, 255, 255, 255},
       0},
      {"negative height",
       2,
       -2,
       24,
       true,  //
       {42, 0, 0, 0},
       {2, 0, 0, 0},
       {2, 0, 0, 0},
       {24, 0},
       {244, 255, 255, 255},
       0},
      {"both negative",
       -2,
       -2,
       24,
       true,  //
       {66, 0, 0, 0},
       {254, 255, 255, 255},
       {2, 0, 0, 0},
       {24, 0},
       {12, 0, 0, 0},
       12},
      {"2^31 bits wrap to a negative size",
       0x10000,
       0x1000,
       8,
       true,  //
       {54, 0, 0, 0xF0},
       {0, 0, 1, 0},
       {0, 0xF0, 0xFF, 0xFF},
       {8, 0},
       {0, 0, 0, 0xF0},
       0},
      {"2^32 bits and 32 wrap to 4 bytes",
       0x8000001,
       1,
       32,
       true,  //
       {58, 0, 0, 0},
       {1, 0, 0, 8},
       {255, 255, 255, 255},
       {32, 0},
       {4, 0, 0, 0},
       4},
  };
  Bytes pixels(300);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i * 7 + 1);

  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Bytes expected;
    const auto append = [&expected](const Bytes& bytes) {
      expected.insert(expected.end(), bytes.begin(), bytes.end());
    };
    append({'B', 'M'});
    append(c.fileSize);
    append({0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0});
    append(c.widthField);
    append(c.heightField);
    append({1, 0});
    append(c.bitsField);
    append({0, 0, 0, 0});
    append(c.imageSize);
    append(Bytes(16, 0));
    expected.insert(expected.end(), pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(c.pixelBytes));

    // Each case writes over the file of the one before, which is longer at times.
    BMPSaver saver;
    EXPECT_EQ(saver.SaveBMP(Path(), c.hasData ? pixels.data() : nullptr, c.width, c.height, c.bits).GetCode(), 0);
    EXPECT_EQ(ReadBack(), expected);
  }
}

TEST_F(BMPSaverTest, ReportsAFileThatCannotBeOpened) {
  const unsigned char pixel[3] = {};
  BMPSaver saver;
  for (const std::string& path : {Path() + "/no/such/directory.bmp", fs::path(Path()).parent_path().string()}) {
    EXPECT_EQ(saver.SaveBMP(path, pixel, 1, 1, 24).GetCode(), 0x4000) << path;
  }
  EXPECT_FALSE(fs::exists(Path()));
}

}  // namespace
}  // namespace LmImagingLib
