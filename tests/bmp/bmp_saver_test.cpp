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
  std::int32_t width, height;
  unsigned short bits;
  std::int32_t imageSize;  // as the header tells it
  std::int32_t stored;     // bytes behind the headers
};

constexpr Case kCases[] = {
    {"colour", 2, 2, 24, 12, 12},
    {"rows are not padded", 3, 1, 24, 9, 9},
    {"bits are truncated to bytes", 5, 3, 1, 1, 1},
    {"nothing to store", 0, 7, 24, 0, 0},
    {"gray without a palette", 20, 15, 8, 300, 300},
    {"unusual bit count", 1, 1, 0x0108, 33, 33},
    {"negative size, truncated toward zero", -3, 1, 1, 0, 0},
    {"negative width", -4, 2, 24, -24, 0},
    {"both negative", -2, -2, 24, 12, 12},
    {"2^31 bits wrap to a negative size", 0x10000, 0x1000, 8, -0x10000000, 0},
    {"2^32 bits and 32 wrap to 4 bytes", 0x8000001, 1, 32, 4, 4},
};

TEST_F(BMPSaverTest, WritesEveryByteAsLaidDown) {
  Bytes pixels(300);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i * 7 + 1);
  for (const Case& c : kCases) {
    for (const bool hasData : {true, false}) {
      SCOPED_TRACE(c.name);
      Bytes expected{'B', 'M'};
      const auto append = [&expected](std::int64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) expected.push_back(static_cast<unsigned char>(value >> 8 * i));
      };
      append(c.imageSize + 54, 4);
      for (const std::int64_t field : {0, 54, 40}) append(field, 4);
      append(c.width, 4);
      append(-std::int64_t{c.height}, 4);
      append(1, 2);
      append(c.bits, 2);
      append(0, 4);
      append(c.imageSize, 4);
      expected.resize(54);
      if (hasData) expected.insert(expected.end(), pixels.begin(), pixels.begin() + c.stored);

      // Each case writes over the file of the one before, which is longer at times.
      EXPECT_EQ(BMPSaver().SaveBMP(Path(), hasData ? pixels.data() : nullptr, c.width, c.height, c.bits).GetCode(), 0);
      EXPECT_EQ(ReadBack(), expected);
    }
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
