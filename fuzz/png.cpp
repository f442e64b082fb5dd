// Reads random bytes as a PNG file: as they are, and with the checksums that their chunks should have, without which
// hardly a chunk would be looked into.
#include <zlib.h>

#include <algorithm>

#include "pictures.h"
#include "png_image.h"

namespace {

using LmTool::Bytes;

constexpr std::size_t kSignatureBytes = 8;
constexpr std::size_t kMostSamples = std::size_t{1} << 20;  // of an image that is worth its time

std::size_t Get32(const Bytes& file, std::size_t offset) {
  std::size_t value = 0;
  for (std::size_t i = offset; i < offset + 4; ++i) value = value << 8 | file[i];
  return value;
}

// A chunk is its length, a name of four letters, the data, and the checksum of name and data.
void CorrectChecksums(Bytes& file) {
  for (std::size_t at = kSignatureBytes; at + 12 <= file.size();) {
    const std::size_t length = Get32(file, at);
    if (length > file.size() - at - 12) return;
    uLong sum = crc32(0, &file[at + 4], static_cast<uInt>(length + 4));
    for (std::size_t i = 4; i-- > 0; sum >>= 8) file[at + 8 + length + i] = static_cast<std::uint8_t>(sum);
    at += 12 + length;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes file(data, data + size);
  constexpr std::size_t kWidth = 16;
  constexpr std::size_t kHeight = 20;
  if (size >= kHeight + 4 && Get32(file, kWidth) * Get32(file, kHeight) > kMostSamples) return -1;
  CheckReading(file, LmTool::DecodePng, LmTool::EncodePng);
  CorrectChecksums(file);
  CheckReading(file, LmTool::DecodePng, LmTool::EncodePng);
  return 0;
}
