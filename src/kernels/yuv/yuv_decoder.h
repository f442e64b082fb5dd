#pragma once

#include "kernels/decoder.h"
#include "kernels/yuv/yuv_by_matrix.h"
#include "kernels/yuv/yuv_luma.h"
#include "kernels/yuv/yuv_to_rgb.h"

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are templates and names
/// Exports the decoders of a layout of YUV, which has a row in formats.inc: `Name` by the system's own factors,
/// `NameByMatrix` by a matrix that comes with the lines, and `NameLuma` to gray by such a matrix.
/// @param Layout  a template of the positions, the bytes of a sample and the conversion of a colour
#define LM_EXPORT_YUV_DECODER(Name, Layout, Group, kSampleBytes)         \
  namespace LmImagingLib::LM_ISA {                                       \
  namespace {                                                            \
  using Name##Layout = Layout<Group, kSampleBytes, Yuv>;                 \
  using Name##ByMatrixLayout = Layout<Group, kSampleBytes, YuvByMatrix>; \
  using Name##LumaLayout = LumaOfYuv<Group, kSampleBytes>;               \
  }                                                                      \
  }                                                                      \
  LM_EXPORT_DECODER(Name, Name##Layout)                                  \
  LM_DEFINE_DECODER(std::uint8_t, Name##ByMatrix, Name##ByMatrixLayout)  \
  LM_DEFINE_DECODER(std::uint8_t, Name##Luma, Name##LumaLayout)
// NOLINTEND(bugprone-macro-parentheses)
