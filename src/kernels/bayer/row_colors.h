#pragma once

#include "kernels/bayer/numbers.h"
#include "kernels/writers/interleaved.h"
#include "simd/mosaic.h"

// Where the colours go that are made of parted rows: into rows of each colour, or into the pixels of a writer.
namespace LmImagingLib::LM_ISA {
namespace {

/// The colours of the pixels of one parity.
template <class Value>
struct Colors {
  Numbers<Value> line, green, column;
};

/// Stores pixels as rows of colours, or through a writer.
template <class Sample>
struct ToRows {
  template <class Value>
  void operator()(std::size_t i, const Colors<Value>& even, const Colors<Value>& odd) const {
    StoreColumns(even.line, odd.line, to.line + 2 * i);
    StoreColumns(even.green, odd.green, to.green + 2 * i);
    StoreColumns(even.column, odd.column, to.column + 2 * i);
  }

  const RowColors<Sample> to;
};
template <class Writer, class To>
struct ToPixels {
  void operator()(std::size_t i, const Colors<std::int16_t>& even, const Colors<std::int16_t>& odd) const {
    const To at = to + 2 * i * Writer::kBytes;
    const std::size_t rest = end - 2 * i;
#if LM_LANES
    if (rest >= kLanes) {
      StoreBlock(even, odd, at);
    } else {
      StoreBlock(even, odd, Part{Address(at), rest * Writer::kBytes});
    }
#else
    Writer::Pixel(Pixel(even), at);
    if (rest > 1) Writer::Pixel(Pixel(odd), at + Writer::kBytes);
#endif
  }

#if LM_LANES
  template <class Any>
  static void StoreBlock(const Colors<std::int16_t>& even, const Colors<std::int16_t>& odd, Any at) {
    if constexpr (Writer::kBytes == 3 && !LM_STORES_IN_TURN) {
      // Two pixels are three words, which move in fewer steps than six bytes.
      constexpr bool kRedFirst = Writer::kFirstColor == First::kRed;
      const auto first = [](const Colors<std::int16_t>& of) { return kRedFirst ? of.line : of.column; };
      const auto last = [](const Colors<std::int16_t>& of) { return kRedFirst ? of.column : of.line; };
      StoreInterleaved<std::uint16_t>(U16(Columns(first(even), even.green)), U16(Columns(last(even), first(odd))),
                                      U16(Columns(odd.green, last(odd))), at);
    } else {
      Writer::Block(RgbLanes<std::uint8_t>{Columns(even.line, odd.line), Columns(even.green, odd.green),
                                           Columns(even.column, odd.column)},
                    at);
    }
  }
#else
  static Rgb<std::uint8_t> Pixel(const Colors<std::int16_t>& colors) {
    return {static_cast<std::uint8_t>(colors.line), static_cast<std::uint8_t>(colors.green),
            static_cast<std::uint8_t>(colors.column)};
  }
#endif

  const std::size_t end;
  const To to;
};

/// Hands `make` what stores the pixels of a row from `first` to `end` through a writer.
template <class Writer, class Make>
void MakePixels(std::size_t first, std::size_t end, const TargetLine& target, const Make& make) {
#if LM_LANES
  const auto address = reinterpret_cast<std::uintptr_t>(target.line + first * Writer::kBytes);
  if (kHasStreams && target.streams && address % kLanes == 0) {
    return make(ToPixels<Writer, Stream>{end, Stream{target.line}});
  }
#else
  (void)first;
#endif
  make(ToPixels<Writer, std::uint8_t*>{end, target.line});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are templates and names
/// Exports `Make<Writer>`, which stores the pixels of a row by a method, for each order and size of pixels of bytes.
#define LM_EXPORT_ROW_PIXELS(Name, Make)                                     \
  LM_EXPORT_ROW_PIXELS_TO(Name##ToRGB24, Make<Interleaved<First::kRed, 3>>)  \
  LM_EXPORT_ROW_PIXELS_TO(Name##ToBGR24, Make<Interleaved<First::kBlue, 3>>) \
  LM_EXPORT_ROW_PIXELS_TO(Name##ToRGB32, Make<Interleaved<First::kRed, 4>>)  \
  LM_EXPORT_ROW_PIXELS_TO(Name##ToBGR32, Make<Interleaved<First::kBlue, 4>>)
// NOLINTEND(bugprone-macro-parentheses)

#define LM_EXPORT_ROW_PIXELS_TO(Name, ...)                                                                 \
  namespace LmImagingLib::LM_ISA {                                                                         \
  RowPixelsKernel Name;                                                                                    \
  void Name(const PartedRows<std::int16_t>& in, const std::int16_t* const* differences, std::size_t first, \
            std::size_t end, const TargetLine& target) {                                                   \
    __VA_ARGS__(in, differences, first, end, target);                                                      \
  }                                                                                                        \
  }
