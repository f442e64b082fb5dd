// Planar24: three planes of one byte a pixel: red, green, blue.
#include "kernels/writers/plane.h"

namespace LmImagingLib::LM_ISA {

StoreKernel<std::uint8_t> StorePlanar24;
void StorePlanar24(const Channels<std::uint8_t>& in, const LookupTables<std::uint8_t>* tables, std::size_t count,
                   const TargetLine& out, std::size_t first) {
  if (out.run != nullptr) {
    return StoreLines(in, out, [=](const Channels<std::uint8_t>& channels, const TargetLine& line) {
      StorePlanar24(channels, tables, count, line, 0);
    });
  }
  std::uint8_t* const red = out.line + first;
  std::uint8_t* const green = red + out.planeSize;
  std::uint8_t* const blue = green + out.planeSize;
  if (tables == nullptr) {
    StorePlane(in.red, count, red, out.streams);
    StorePlane(in.green, count, green, out.streams);
    StorePlane(in.blue, count, blue, out.streams);
  } else {
    StorePlane(in.red, tables->red, tables->areGains, count, red);
    StorePlane(in.green, tables->green, tables->areGains, count, green);
    StorePlane(in.blue, tables->blue, tables->areGains, count, blue);
  }
}

}  // namespace LmImagingLib::LM_ISA
