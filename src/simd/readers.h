#pragma once

#include "simd/lanes.h"
#include "simd/strip.h"

// What hands registers of source lines to the `Block` of a layout.
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Two registers of words, in an order that `JoinWords` turns into theirs in memory.
struct WordPair {
  U16 first, second;
};

/// Reads the bytes of a whole block.
struct WholeBlock {
  const SourceLines& in;
  std::size_t at;

  U8 operator()(std::size_t line, std::size_t offset) const { return Load(in.line[line] + at + offset); }
  /// The first half of a register; the rest is anything.
  U8 Half(std::size_t line, std::size_t offset) const { return LoadHalf(in.line[line] + at + offset); }
  /// The first `count` bytes of a register; the rest is anything.
  U8 First(std::size_t line, std::size_t offset, std::size_t count) const {
    return LoadPart(in.line[line] + at + offset, count);
  }
  WordPair Words(std::size_t line, std::size_t offset) const {
#if LM_LANES == 32
    return {U16(Units(line, offset, 32)), U16(Units(line, offset + 16, 32))};
#else
    return {U16((*this)(line, offset)), U16((*this)(line, offset + kLanes))};
#endif
  }
#if LM_LANES < 64
  /// 16 bytes from `offset`, and from every `step` bytes on.
  U8 Units(std::size_t line, std::size_t offset, std::size_t step) const {
    return LoadUnits(in.line[line] + at + offset, step);
  }
#endif
};

#if LM_HAS_MASKS
/// Reads the bytes of a block that ends with the line, and none after it. (Reading a copy would have to wait for it.)
struct PartOfBlock {
  const SourceLines& in;
  std::size_t at;
  std::size_t bytes;

  U8 operator()(std::size_t line, std::size_t offset) const {
    if (offset >= bytes) return U8{};
    return LoadPart(in.line[line] + at + offset, bytes - offset < kLanes ? bytes - offset : kLanes);
  }
  U8 Half(std::size_t line, std::size_t offset) const { return (*this)(line, offset); }
  U8 First(std::size_t line, std::size_t offset, std::size_t /*count*/) const { return (*this)(line, offset); }
  WordPair Words(std::size_t line, std::size_t offset) const {
    return {U16((*this)(line, offset)), U16((*this)(line, offset + kLanes))};
  }
};
#endif

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
