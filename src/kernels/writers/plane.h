#pragma once

#include "simd/stores.h"

namespace LmImagingLib::LM_ISA {
namespace {

#if LM_LANES
template <class Entries>
void LookUpPlane(const Entries entries, const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
  std::size_t i = 0;
  for (; i + kLanes <= count; i += kLanes) Store(entries[Pinned(Load(from + i))], to + i);
  if (i < count) StorePart(entries[LoadPart(from + i, count - i)], to + i, count - i);
}
#endif

/// Stores a plane of bytes as they are. Planes may overlap where an image is converted in place.
inline void StorePlane(const std::uint8_t* from, std::size_t count, std::uint8_t* to, bool streams) {
  if (from == to) return;
#if LM_LANES
  if (kHasStreams && streams && reinterpret_cast<std::uintptr_t>(to) % kLanes == 0) {
    for (; count >= kLanes; count -= kLanes, from += kLanes, to += kLanes) Store(Load(from), Stream{to});
  }
#else
  (void)streams;
#endif
  std::memmove(to, from, count);
}

/// Stores a plane of bytes looked up.
inline void StorePlane(const std::uint8_t* from, const ChannelTable<std::uint8_t>& table, bool isGain,
                       std::size_t count, std::uint8_t* to) {
#if LM_LANES
  if (kGainsAreFaster && isGain) {
    LookUpPlane(GainLanes(table), from, count, to);
  } else {
    LookUpPlane(Table(table), from, count, to);
  }
#else
  (void)isGain;
  for (std::size_t i = 0; i < count; ++i) to[i] = table.entries[from[i]];
#endif
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
