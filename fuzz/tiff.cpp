// Reads random bytes as a TIFF file.
#include "pictures.h"
#include "tiff_image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckReading({data, data + size}, LmTool::DecodeTiff, LmTool::EncodeTiff);
  return 0;
}
