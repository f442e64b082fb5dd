// BMP: 14 bytes of file header, 40 of info header, then the rows, bottom up; all fields little-endian.
#include "bmp.h"

#include <algorithm>

namespace LmTool {

namespace {

constexpr std::size_t kHeaderBytes = 54;

void Put32(Bytes& file, std::size_t offset, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) file[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

}  // namespace

Bytes EncodeBmp(const Picture& picture) {
  const auto [width, height] = picture.size;
  const std::size_t rowBytes = width * 3;
  const std::size_t stride = (rowBytes + 3) / 4 * 4;
  Bytes file(kHeaderBytes + stride * height);
  file[0] = 'B';
  file[1] = 'M';
  Put32(file, 2, file.size());
  Put32(file, 10, kHeaderBytes);
  Put32(file, 14, 40);
  Put32(file, 18, width);
  Put32(file, 22, height);
  file[26] = 1;   // planes
  file[28] = 24;  // bits a pixel
  Put32(file, 34, stride * height);
  for (std::size_t y = 0; y < height; ++y) {
    std::copy_n(picture.bgr.data() + y * rowBytes, rowBytes, file.data() + kHeaderBytes + (height - 1 - y) * stride);
  }
  return file;
}

}  // namespace LmTool
