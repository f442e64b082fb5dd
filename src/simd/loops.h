#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/strip.h"

// Included by kernels only. Everything lies in unnamed namespaces, so that no code compiled for one instruction set can
// become the copy that the linker keeps for all.
namespace LmImagingLib::LM_ISA {
namespace {

struct Rgb {
  std::uint8_t r, g, b;
};

inline std::uint32_t Load16(const std::uint8_t* from) {
  std::uint16_t word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

/// A 16-bit sample brought to 8 bits; stray high bits are dropped.
inline std::uint8_t Sample16(const std::uint8_t* from, std::uint32_t shift) {
  return static_cast<std::uint8_t>(Load16(from) >> shift);
}

/// The lines of `in` from pixel `pixel` on.
template <class Layout>
SourceLines At(const SourceLines& in, std::size_t pixel) {
  SourceLines at = in;
  for (std::size_t k = 0; k < Layout::kLines; ++k) at.line[k] += pixel / Layout::kPixels * Layout::kBytes;
  return at;
}

/// Decodes a layout whose `Gray` makes the `kPixels` samples of one group.
template <class Layout>
Channels DecodeGray(const SourceLines& in, std::size_t first, std::size_t count, Strip& strip) {
  for (std::size_t i = 0; i < count; i += Layout::kPixels) Layout::Gray(At<Layout>(in, first + i), strip.red + i);
  return {strip.red, strip.red, strip.red};
}

/// Decodes a layout whose `Color` makes the `kPixels` colours of one group.
template <class Layout>
Channels DecodeColor(const SourceLines& in, std::size_t first, std::size_t count, Strip& strip) {
  for (std::size_t i = 0; i < count; i += Layout::kPixels) {
    Rgb pixels[Layout::kPixels];
    Layout::Color(At<Layout>(in, first + i), pixels);
    for (std::size_t k = 0; k < Layout::kPixels; ++k) {
      strip.red[i + k] = pixels[k].r;
      strip.green[i + k] = pixels[k].g;
      strip.blue[i + k] = pixels[k].b;
    }
  }
  return {strip.red, strip.green, strip.blue};
}

/// Stores through a writer whose `Pixel` makes the `kBytes` bytes of one pixel.
template <class Writer>
void StorePixels(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first) {
  std::uint8_t* to = out.line + first * Writer::kBytes;
  for (std::size_t i = 0; i < count; ++i, to += Writer::kBytes) {
    Writer::Pixel({in.red[i], in.green[i], in.blue[i]}, to);
  }
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

/// Exports the decoder of a layout under a name of its own.
#define LM_EXPORT_DECODER(Name, Decoder)                                                     \
  namespace LmImagingLib::LM_ISA {                                                           \
  Channels Name(const SourceLines& in, std::size_t first, std::size_t count, Strip& strip);  \
  Channels Name(const SourceLines& in, std::size_t first, std::size_t count, Strip& strip) { \
    return Decoder(in, first, count, strip);                                                 \
  }                                                                                          \
  }

/// Exports a writer under a name of its own.
#define LM_EXPORT_WRITER(Name, Store)                                                          \
  namespace LmImagingLib::LM_ISA {                                                             \
  void Name(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first);  \
  void Name(const Channels& in, std::size_t count, const TargetLine& out, std::size_t first) { \
    Store(in, count, out, first);                                                              \
  }                                                                                            \
  }
