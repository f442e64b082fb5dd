// Reads random bytes as a Windows bitmap file.
#include "bmp.h"

#include "pictures.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckReading({data, data + size}, LmTool::DecodeBmp, LmTool::EncodeBmp);
  return 0;
}
