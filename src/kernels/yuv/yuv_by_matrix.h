#pragma once

#include "kernels/yuv/yuv_to_rgb.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// YUV to RGB by a matrix that comes with the lines, scaled by 8192: each channel is the sum of its products and the
/// constant, shifted right by 13. Factors have 16 bits with sign, samples 9, so that sums stay below 2^26.
struct YuvByMatrix {
  static Rgb<std::uint8_t> Color(const SourceLines& in, int y, int u, int v) {
    const YuvMatrix& m = *in.matrix;
    const int luma = m.y * y + m.constant;
    const int cu = u - 128;
    const int cv = v - 128;
    return {Clamp8((luma + m.vToR * cv) >> 13), Clamp8((luma + m.uToG * cu + m.vToG * cv) >> 13),
            Clamp8((luma + m.uToB * cu) >> 13)};
  }

#if LM_LANES
  /// The factors of two products, in turn.
  static I16 Pair(int even, int odd) {
    const auto word = [](int value) { return static_cast<std::uint32_t>(value) & 0xFFFF; };
    return I16(U32{} + (word(even) | word(odd) << 16));
  }

  static RgbWords Words(const SourceLines& lines, const YuvPairs& in) {
    const YuvMatrix& m = *lines.matrix;
    const I16 y = I16((U16(in.yv) & 0xFF) ^ 0x80), u = I16(U16(in.uv) << 8) >> 8, v = I16(in.uv) >> 8;
    const I32 constant = I32{} + m.constant;
    const auto sum = [&](I16 difference, int factor) {
      const I16 factors = Pair(m.y, factor);
      return I32Pair{MultiplyAdd(ZipHalves<0>(y, difference), factors) + constant,
                     MultiplyAdd(ZipHalves<1>(y, difference), factors) + constant};
    };
    const I32Pair r = sum(v, m.vToR), b = sum(u, m.uToB);
    I32Pair g = sum(u, m.uToG);
    const I16 vFactor = Pair(m.vToG, 0);
    g.low += MultiplyAdd(ZipHalves<0>(v, I16{}), vFactor);
    g.high += MultiplyAdd(ZipHalves<1>(v, I16{}), vFactor);
    return {ClampPack(r.low >> 13, r.high >> 13), ClampPack(g.low >> 13, g.high >> 13),
            ClampPack(b.low >> 13, b.high >> 13)};
  }

  static RgbLanes<std::uint8_t> Color(const SourceLines& in, U8 y, U8 u, U8 v) {
    return ColorsOf<YuvByMatrix>(in, y, u, v);
  }
#endif
};

}  // namespace
}  // namespace LmImagingLib::LM_ISA
