#pragma once

#include "simd/loops.h"
#include "simd/pick.h"

// Samples of 9 to 15 bits in a stream of bytes: eight of them take as many bytes as one has bits. Each eight are
// brought into 16 bytes of a register, where shuffles can reach all of them. Of 10 bits, for example:
//
//   bytes         b0 b1 b2 b3 b4 b5 b6 b7 b8 b9 - - - - - -      p0 is the 10 bits from bit 0 of b0 on
//   shuffled      b0b1 b1b2 b2b3 b3b4 b5b6 b6b7 b7b8 b8b9        words that hold p0 to p7
//   shifted by    0    2    4    6    0    2    4    6
//   masked        p0   p1   p2   p3   p4   p5   p6   p7
#if LM_LANES
namespace LmImagingLib::LM_ISA {
namespace {

/// Groups of eight samples that a register has room for as words.
inline constexpr std::size_t kWordGroups = kLanes / 16;

/// Some groups of a block of `kBlockGroups` groups of `kBytesOfEight` bytes: those from `kFirst` on, `kStep` apart.
/// Four pixels of three samples that take 15 bytes are a group, too.
template <std::size_t kBytesOfEight, std::size_t kBlockGroups, std::size_t kFirst, std::size_t kStep>
struct Groups {
#if LM_BYTE_SHUFFLE == 64
  // One register holds all the bytes, in their order.
  static_assert(kStep == 1);
  template <class Reader>
  static U8 Load(const Reader& read, std::size_t line) {
    return read.First(line, kFirst * kBytesOfEight, kWordGroups * kBytesOfEight);
  }

  static constexpr std::size_t ByteAt(std::size_t group, std::size_t byte) { return group * kBytesOfEight + byte; }
#elif LM_WORD_SHUFFLE == 64
  // One register holds all the bytes, too. A shuffle of words brings each group into 16 bytes of its own.
  static_assert(kStep == 1);
  struct WordOfGroup {
    static constexpr std::size_t At(std::size_t lane) { return lane / 8 * kBytesOfEight / 2 + lane % 8; }
  };
  template <class Reader>
  static U8 Load(const Reader& read, std::size_t line) {
    const U16 window[] = {U16(read.First(line, kFirst * kBytesOfEight, kWordGroups * kBytesOfEight))};
    return U8(Pick<WordOfGroup>(window));
  }

  // A group may begin with the second byte of a word.
  static constexpr std::size_t ByteAt(std::size_t group, std::size_t byte) {
    return group * 16 + group * kBytesOfEight % 2 + byte;
  }
#else
  // The 16 bytes of the last group begin earlier than its samples, as they must not pass the end of the block.
  static constexpr std::size_t Early(std::size_t group) {
    return kBlockGroups > 1 && kFirst + group * kStep + 1 == kBlockGroups ? 16 - kBytesOfEight : 0;
  }
  static constexpr std::size_t OffsetOf(std::size_t group) {
    return (kFirst + group * kStep) * kBytesOfEight - Early(group);
  }

  template <class Reader>
  static U8 Load(const Reader& read, std::size_t line) {
    if constexpr (kBlockGroups == 1) {
      return read.First(line, 0, kBytesOfEight);
    } else {
      return read.Units(line, OffsetOf(0), OffsetOf(kWordGroups - 1) - OffsetOf(0));
    }
  }

  /// The lane of a byte of a group.
  static constexpr std::size_t ByteAt(std::size_t group, std::size_t byte) { return group * 16 + Early(group) + byte; }
#endif
};

/// The bytes of words: byte i of lane l is byte `Bytes::At(l, i)` of the group of eight samples.
template <class Groups, class Bytes>
struct WordIndex {
  static constexpr std::size_t At(std::size_t lane) {
    return Groups::ByteAt(lane / 16, Bytes::At(lane % 16 / 2, lane % 2));
  }
};

template <class Groups, class Bytes, class Reader>
inline U16 PackedWords(const Reader& read, std::size_t line) {
  const U8 window[1] = {Groups::Load(read, line)};
  return U16(Pick<WordIndex<Groups, Bytes>>(window));
}

/// Lane l of each eight holds `Values::At(l)`.
template <class Values, std::size_t... kLane>
inline U16 EightValues(std::index_sequence<kLane...>) {
  return U16{static_cast<std::uint16_t>(Values::At(kLane % 8))...};
}
template <class Values>
inline U16 EightValues() {
  return EightValues<Values>(std::make_index_sequence<kLanes / 2>{});
}

/// Part `kPart` of the `kParts` registers that a block of a packed layout fills: words, from the layout's
/// `Words<Groups>(read)`, or bytes, from the upper 8 bits of samples that its `TopBytes<Groups>(read)` makes as words.
template <class Layout, std::size_t kPart = 0, std::size_t kParts = 1, class Reader>
inline U16 PackedBlock(const Reader& read, Of<std::uint16_t>) {
  constexpr std::size_t kGroups = kWordGroups;
  return Layout::template Words<Groups<Layout::kBytesOfEight, kParts * kGroups, kPart * kGroups, 1>>(read) &
         static_cast<std::uint16_t>(read.in.mask);
}
template <class Layout, std::size_t kPart = 0, std::size_t kParts = 1, class Reader>
inline U8 PackedBlock(const Reader& read, Of<std::uint8_t>) {
  constexpr std::size_t kAll = 2 * kParts * kWordGroups, kFirst = 2 * kPart * kWordGroups;
#if LM_LANES == 32
  // In the order that joins without another shuffle.
  constexpr std::size_t kSecond = kFirst + 1, kStep = 2;
#else
  constexpr std::size_t kSecond = kFirst + kWordGroups, kStep = 1;
#endif
  return JoinWords(Layout::template TopBytes<Groups<Layout::kBytesOfEight, kAll, kFirst, kStep>>(read),
                   Layout::template TopBytes<Groups<Layout::kBytesOfEight, kAll, kSecond, kStep>>(read));
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
#endif
