#pragma once

#include "kernels/decoder.h"
#include "kernels/yuv/yuv_by_matrix.h"
#include "kernels/yuv/yuv_luma.h"
#include "kernels/yuv/yuv_to_rgb.h"

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are templates and names
/// Exports the decoders of a layout of YUV, which has a row in formats.inc: `Name` by the system's own factors,
/// `NameByMatrix` by a matrix that comes with the lines, and `NameLuma` to gray by such a matrix.
/// @param Layout  a template of the positions, the bytes of a sample and the conversion of a colour
#define LM_EXPORT_YUV_DECODER(Name, Layout, Group, kSampleBytes)                                 \
  namespace LmImagingLib::LM_ISA {                                                               \
  namespace {                                                                                    \
  using Name##Layout = Layout<Group, kSampleBytes, Yuv>;                                         \
  using Name##ByMatrixLayout = Layout<Group, kSampleBytes, YuvByMatrix>;                         \
  }                                                                                              \
  }                                                                                              \
  LM_EXPORT_DECODER(Name, Name##Layout)                                                          \
  LM_DEFINE_DECODER(std::uint8_t, Name##ByMatrix, Name##ByMatrixLayout)                          \
  namespace LmImagingLib::LM_ISA {                                                               \
  DecodeKernel<std::uint8_t> Name##Luma;                                                         \
  Channels<std::uint8_t> Name##Luma(const SourceLines& in, std::size_t first, std::size_t count, \
                                    const Room<std::uint8_t>& room) {                            \
    return DecodeLuma<Group, kSampleBytes>(in, first, count, room);                              \
  }                                                                                              \
  }
// NOLINTEND(bugprone-macro-parentheses)
