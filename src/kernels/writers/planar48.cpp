// Planar48: three planes of one 16-bit little-endian word a pixel: red, green, blue.
#include "kernels/writers/gray_words.h"

namespace LmImagingLib::LM_ISA {
namespace {

template <class Sample>
void StorePlanes(const Channels<Sample>& in, const LookupTables<Sample>* tables, std::size_t count,
                 const TargetLine& out, std::size_t first) {
  if (out.run != nullptr) {
    return StoreLines(in, out, [=](const Channels<Sample>& channels, const TargetLine& line) {
      StorePlanes(channels, tables, count, line, 0);
    });
  }
  const Sample* const channels[] = {in.red, in.green, in.blue};
  TargetLine plane = out;
  for (std::size_t k = 0; k < 3; ++k, plane.line += out.planeSize) {
    const Channels<Sample> channel{channels[k], channels[k], channels[k]};
    if (tables == nullptr) {
      StoreWideLine<GrayWords>(channel, tables, count, plane, first);
    } else {
      const ChannelTable<Sample>& table = k == 0 ? tables->red : k == 1 ? tables->green : tables->blue;
      const LookupTables<Sample> same{table, table, table, tables->areGains};
      StoreWideLine<GrayWords>(channel, &same, count, plane, first);
    }
  }
}

}  // namespace

}  // namespace LmImagingLib::LM_ISA

LM_EXPORT_WIDE_STORE(StorePlanar48, StorePlanes)
