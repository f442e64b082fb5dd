#pragma once

#include "kernels/decoder.h"
#include "kernels/yuv/yuv_by_matrix.h"
#include "kernels/yuv/yuv_luma.h"
#include "kernels/yuv/yuv_to_rgb.h"

namespace LmImagingLib::LM_ISA {
namespace {

/// The colours of a layout by the matrix that comes with the lines. Each matrix has code of its own, with its factors
/// as constants.
template <template <class, std::size_t, class> class Layout, class Group_, std::size_t kSampleBytes>
Channels<std::uint8_t> DecodeByMatrix(const SourceLines& in, std::size_t first, std::size_t count,
                                      const Room<std::uint8_t>& room) {
  const auto decode = [&](auto model) {
    return Decoder<Layout<Group_, kSampleBytes, decltype(model)>, std::uint8_t>(0)(in, first, count, room);
  };
  if (in.matrix->vToR == kFull601.vToR) return decode(YuvByMatrix<kFull601>{});
  if (in.matrix->vToR == kFull709.vToR) return decode(YuvByMatrix<kFull709>{});
  return decode(YuvByMatrix<kStudio709>{});
}

}  // namespace
}  // namespace LmImagingLib::LM_ISA

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are templates and names
/// Exports the decoders of a layout of YUV, which has a row in formats.inc: `Name` by the system's own factors,
/// `NameByMatrix` by a matrix that comes with the lines, and `NameLuma` to gray by such a matrix.
/// @param Layout  a template of the positions, the bytes of a sample and the conversion of a colour
#define LM_EXPORT_YUV_DECODER(Name, Layout, Group, kSampleBytes)                                     \
  namespace LmImagingLib::LM_ISA {                                                                   \
  namespace {                                                                                        \
  using Name##Layout = Layout<Group, kSampleBytes, Yuv>;                                             \
  }                                                                                                  \
  }                                                                                                  \
  LM_EXPORT_DECODER(Name, Name##Layout)                                                              \
  namespace LmImagingLib::LM_ISA {                                                                   \
  DecodeKernel<std::uint8_t> Name##ByMatrix;                                                         \
  Channels<std::uint8_t> Name##ByMatrix(const SourceLines& in, std::size_t first, std::size_t count, \
                                        const Room<std::uint8_t>& room) {                            \
    return DecodeByMatrix<Layout, Group, kSampleBytes>(in, first, count, room);                      \
  }                                                                                                  \
  DecodeKernel<std::uint8_t> Name##Luma;                                                             \
  Channels<std::uint8_t> Name##Luma(const SourceLines& in, std::size_t first, std::size_t count,     \
                                    const Room<std::uint8_t>& room) {                                \
    return DecodeLuma<Group, kSampleBytes>(in, first, count, room);                                  \
  }                                                                                                  \
  }
// NOLINTEND(bugprone-macro-parentheses)
