// BMP: 14 bytes of file header, 40 of info header, then the rows, bottom up; all fields little-endian.
#include "bmp.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace LmTool {

namespace {

constexpr std::size_t kFileHeaderBytes = 14;
constexpr std::size_t kInfoHeaderBytes = 40;
constexpr std::size_t kHeaderBytes = kFileHeaderBytes + kInfoHeaderBytes;

// Where fields lie in the file.
constexpr std::size_t kFileSize = 2;
constexpr std::size_t kPixelsBegin = 10;
constexpr std::size_t kInfoSize = 14;
constexpr std::size_t kWidth = 18;
constexpr std::size_t kHeight = 22;
constexpr std::size_t kPlaneCount = 26;
constexpr std::size_t kBits = 28;
constexpr std::size_t kCompression = 30;
constexpr std::size_t kPixelBytes = 34;

void Put32(Bytes& file, std::size_t offset, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) file[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::uint32_t Get32(const Bytes& file, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value |= std::uint32_t{file[offset + i]} << (8 * i);
  return value;
}

std::size_t StrideOf(std::size_t width, std::size_t pixelBytes) { return (width * pixelBytes + 3) / 4 * 4; }

}  // namespace

Bytes EncodeBmp(const Picture& picture) {
  const auto [width, height] = picture.size;
  const std::size_t stride = StrideOf(width, 3);
  Bytes file(kHeaderBytes + stride * height);
  file[0] = 'B';
  file[1] = 'M';
  Put32(file, kFileSize, file.size());
  Put32(file, kPixelsBegin, kHeaderBytes);
  Put32(file, kInfoSize, kInfoHeaderBytes);
  Put32(file, kWidth, width);
  Put32(file, kHeight, height);
  file[kPlaneCount] = 1;
  file[kBits] = 24;
  Put32(file, kPixelBytes, stride * height);
  const std::size_t channels = picture.gray ? 1 : 3;
  for (std::size_t y = 0; y < height; ++y) {
    const std::uint8_t* const row = picture.pixels.data() + y * width * channels;
    std::uint8_t* const out = file.data() + kHeaderBytes + (height - 1 - y) * stride;
    for (std::size_t i = 0; i < width * 3; ++i) out[i] = picture.gray ? row[i / 3] : row[i];
  }
  return file;
}

Picture DecodeBmp(const Bytes& file) {
  if (file.size() < kHeaderBytes || file[0] != 'B' || file[1] != 'M' || Get32(file, kInfoSize) < kInfoHeaderBytes) {
    throw std::runtime_error("it does not begin as a bitmap file does");
  }
  const unsigned bits = file[kBits] | unsigned{file[kBits + 1]} << 8;
  const std::uint32_t compression = Get32(file, kCompression);
  if ((bits != 24 && bits != 32) || compression != 0) {
    throw std::runtime_error("it has " + std::to_string(bits) + " bits a pixel and compression " +
                             std::to_string(compression) + "; allowed: 24 or 32 bits without compression");
  }
  const std::uint32_t height = Get32(file, kHeight);
  const bool topDown = height > std::numeric_limits<std::uint32_t>::max() / 2;  // negative
  Picture picture{{Get32(file, kWidth), topDown ? 0 - height : height}, false, 8, {}};
  if (!IsAllowed(picture.size)) {
    throw std::runtime_error("it is " + picture.size.Text() + "; allowed: " + AllowedSizes());
  }
  const std::size_t pixelBytes = bits / 8;
  const std::size_t stride = StrideOf(picture.size.width, pixelBytes);
  const std::size_t begin = Get32(file, kPixelsBegin);
  const std::size_t needed = begin + stride * picture.size.height;
  if (begin < kHeaderBytes || file.size() < needed) {
    throw std::runtime_error("it has " + std::to_string(file.size()) + " bytes, its pixels lie in bytes " +
                             std::to_string(begin) + " to " + std::to_string(needed - 1));
  }
  picture.pixels.reserve(picture.size.Pixels() * 3);
  for (std::size_t y = 0; y < picture.size.height; ++y) {
    const std::size_t row = topDown ? y : picture.size.height - 1 - y;
    const std::uint8_t* pixel = file.data() + begin + row * stride;
    for (std::size_t x = 0; x < picture.size.width; ++x, pixel += pixelBytes) {
      picture.pixels.insert(picture.pixels.end(), pixel, pixel + 3);
    }
  }
  return picture;
}

}  // namespace LmTool
