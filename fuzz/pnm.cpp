// Reads random bytes as a PGM or PPM file.
#include "pnm.h"

#include "pictures.h"

namespace {

LmTool::Bytes Encode(const LmTool::Picture& picture) {
  return picture.gray ? LmTool::EncodePgm(picture) : LmTool::EncodePpm(picture);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckReading({data, data + size}, LmTool::DecodePnm, Encode);
  return 0;
}
