// BMP: 14 bytes of file header, 40 bytes of info header, then the pixel rows; all fields little-endian.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "LmImagingLib/BMPSaver.h"

namespace LmImagingLib {

namespace {

using LmBaseLib::Result;

constexpr std::size_t kFileHeaderBytes = 14;
constexpr std::size_t kInfoHeaderBytes = 40;
constexpr std::uint32_t kPixelOffset = kFileHeaderBytes + kInfoHeaderBytes;

using Header = std::array<unsigned char, kPixelOffset>;

void Put16(Header& header, std::size_t offset, std::uint32_t value) {
  header[offset] = static_cast<unsigned char>(value);
  header[offset + 1] = static_cast<unsigned char>(value >> 8);
}

void Put32(Header& header, std::size_t offset, std::uint32_t value) {
  Put16(header, offset, value);
  Put16(header, offset + 2, value >> 16);
}

// Width * height * bits / 8. The product wraps in 32 bits as two's complement; the division truncates toward zero.
std::int32_t ImageSize(std::uint32_t width, std::uint32_t height, std::uint32_t bitsPerPixel) {
  return static_cast<std::int32_t>(width * height * bitsPerPixel) / 8;
}

Header MakeHeader(std::uint32_t width, std::uint32_t height, std::uint32_t bitsPerPixel, std::uint32_t imageSize) {
  Header header{};
  header[0] = 'B';
  header[1] = 'M';
  Put32(header, 2, imageSize + kPixelOffset);
  Put32(header, 10, kPixelOffset);
  Put32(header, 14, kInfoHeaderBytes);
  Put32(header, 18, width);
  Put32(header, 22, 0 - height);  // negative: the top row comes first
  Put16(header, 26, 1);           // planes
  Put16(header, 28, bitsPerPixel);
  Put32(header, 34, imageSize);
  return header;
}

}  // namespace

BMPSaver::BMPSaver() = default;
BMPSaver::~BMPSaver() = default;
BMPSaver& BMPSaver::operator=(const BMPSaver& other) = default;

Result BMPSaver::SaveBMP(const std::string& path, const void* data, long width, long height,
                         unsigned short bitsPerPixel) {
  const auto width32 = static_cast<std::uint32_t>(width);
  const auto height32 = static_cast<std::uint32_t>(height);
  const std::int32_t imageSize = ImageSize(width32, height32, bitsPerPixel);
  const Header header = MakeHeader(width32, height32, bitsPerPixel, static_cast<std::uint32_t>(imageSize));

  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return Result::FILE_OPEN_FAILED;
  std::fwrite(header.data(), kFileHeaderBytes, 1, file);
  std::fwrite(header.data() + kFileHeaderBytes, kInfoHeaderBytes, 1, file);
  if (data != nullptr && imageSize > 0) std::fwrite(data, static_cast<std::size_t>(imageSize), 1, file);
  std::fclose(file);
  return Result::OK;
}

}  // namespace LmImagingLib
