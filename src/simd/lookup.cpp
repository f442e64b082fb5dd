// The step between a source and a writer: each channel value is replaced by its entry in the channel's table.
#include "simd/loops.h"

namespace LmImagingLib::LM_ISA {
namespace {

#if LM_LANES
void LookUpChannel(const std::uint8_t* entries, const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  const Table table(entries);
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes) Store(table[Pinned(Load(from + i))], to + i);
  if (i < count) StorePart(table[LoadPart(from + i, count - i)], to + i, count - i);
}
#else
void LookUpChannel(const std::uint8_t* entries, const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  for (std::size_t i = 0; i < count; ++i) to[i] = entries[from[i]];
}
#endif

}  // namespace

LookupKernel LookUp;
Channels LookUp(const LookupTables& tables, const Channels& in, std::size_t count, const Room& room) {
  LookUpChannel(tables.red, in.red, count, room.red);
  LookUpChannel(tables.green, in.green, count, room.green);
  LookUpChannel(tables.blue, in.blue, count, room.blue);
  return {room.red, room.green, room.blue};
}

}  // namespace LmImagingLib::LM_ISA
