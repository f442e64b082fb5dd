#pragma once

// The first bytes of a register: loaded and stored without a touch of any other byte in memory.
namespace LmImagingLib::LM_ISA {
namespace {

#if !LM_HAS_MASKS

using U64 = Lanes<std::uint64_t>;

template <class Word>
inline Word LoadWord(const std::uint8_t* from) {
  Word word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// 1 to 8 bytes as a number. Loads overlap where that saves one: bits that are in both are the same.
inline std::uint64_t LoadFew(const std::uint8_t* from, std::size_t count) {
  if (count >= 8) return LoadWord<std::uint64_t>(from);
  const std::size_t last = 8 * (count - 1);
  if (count >= 4) {
    return LoadWord<std::uint32_t>(from) | std::uint64_t{LoadWord<std::uint32_t>(from + count - 4)} << (last - 24);
  }
  return from[0] | std::uint64_t{from[count / 2]} << count / 2 * 8 | std::uint64_t{from[count - 1]} << last;
}

/// Stores the first 1 to 8 bytes of a number, likewise.
inline void StoreFew(std::uint64_t bytes, std::uint8_t* to, std::size_t count) {
  if (count >= 8) {
    std::memcpy(to, &bytes, 8);
    return;
  }
  const std::size_t last = 8 * (count - 1);
  if (count >= 4) {
    const auto low = static_cast<std::uint32_t>(bytes), high = static_cast<std::uint32_t>(bytes >> (last - 24));
    std::memcpy(to, &low, sizeof low);
    std::memcpy(to + count - 4, &high, sizeof high);
    return;
  }
  to[0] = static_cast<std::uint8_t>(bytes);
  to[count / 2] = static_cast<std::uint8_t>(bytes >> count / 2 * 8);
  to[count - 1] = static_cast<std::uint8_t>(bytes >> last);
}

/// Loads and stores the first `count` bytes, at most kLanes, and touches no other; the rest loads as 0. By numbers, not
/// by a copy on the stack, whose bytes would have to be stored before they are loaded as a register.
inline U8 LoadPart(const std::uint8_t* from, std::size_t count) {
  U64 v{};
#pragma GCC unroll 4
  for (std::size_t k = 0; k < kLanes / 8; ++k) {
    if (count > 8 * k) v[k] = LoadFew(from + 8 * k, count - 8 * k);
  }
  return U8(v);
}
inline void StorePart(U8 v, std::uint8_t* to, std::size_t count) {
#pragma GCC unroll 4
  for (std::size_t k = 0; k < kLanes / 8; ++k) {
    if (count > 8 * k) StoreFew(U64(v)[k], to + 8 * k, count - 8 * k);
  }
}

#endif

/// Loads and stores the first `count` samples, at most a register's, and touches no other; the rest loads as 0.
inline U16 LoadPart(const std::uint16_t* from, std::size_t count) {
  return U16(LoadPart(reinterpret_cast<const std::uint8_t*>(from), 2 * count));
}
inline void StorePart(U16 v, std::uint16_t* to, std::size_t count) {
  StorePart(U8(v), reinterpret_cast<std::uint8_t*>(to), 2 * count);
}

/// Where to store the first `bytes` bytes, and no others.
struct Part {
  std::uint8_t* at;
  std::size_t bytes;

  Part operator+(std::size_t count) const { return {at + count, bytes - (count < bytes ? count : bytes)}; }
};

inline void Store(U8 v, Part to) {
  if (to.bytes >= kLanes) {
    Store(v, to.at);
  } else if (to.bytes != 0) {
    StorePart(v, to.at, to.bytes);
  }
}

template <class To>
inline void Store(U16 v, To to) {
  Store(U8(v), to);
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA
