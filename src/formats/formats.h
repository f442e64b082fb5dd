#pragma once

#include "LmImagingLib/PixelType.h"
#include "formats/format.h"
#include "formats/sized_type.h"
#include "formats/writers.h"

// The table of formats, formats.inc, as constants. What it says at run time is in catalogue.h.
namespace LmImagingLib {

#define LM_FORMAT(Name, ...) LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name)
#define LM_WIDE_FORMAT(Name, ...)                      \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name) \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint16_t>, Name)
#define LM_YUV_FORMAT(Name, ...)                                 \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name)           \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name##ByMatrix) \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name##Luma)
#define LM_LUMA_FORMAT(Name, ...)                      \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name) \
  LM_DECLARE_IN_SETS(DecodeKernel<std::uint8_t>, Name##Luma)
#define LM_WIDE_LUMA_FORMAT(Name, ...) \
  LM_WIDE_FORMAT(Name, __VA_ARGS__)    \
  LM_WIDE_FORMAT(Name##Luma, __VA_ARGS__)
#define LM_SHORTCUT(Layout, Destination, Name) LM_DECLARE_IN_SETS(DirectKernel, Name)
#define LM_WIDE_SHORTCUT(Layout, Destination, Name) \
  LM_DECLARE_IN_SETS(DirectKernel, Name)            \
  LM_DECLARE_IN_SETS(DirectKernel, Name##Words)
#define LM_WORDS_SHORTCUT(Layout, Destination, Name) LM_DECLARE_IN_SETS(DirectKernel, Name)
#include "formats/formats.inc"
#undef LM_FORMAT
#undef LM_WIDE_FORMAT
#undef LM_YUV_FORMAT
#undef LM_LUMA_FORMAT
#undef LM_WIDE_LUMA_FORMAT
#undef LM_SHORTCUT
#undef LM_WIDE_SHORTCUT
#undef LM_WORDS_SHORTCUT

inline constexpr Format kFormats[] = {
#define LM_FORMAT(Name, ...) {#Name, {LM_TWINS(DecodeKernel<std::uint8_t>, Name), {}}, {}, {}, __VA_ARGS__},
#define LM_WIDE_FORMAT(Name, ...) {#Name, LM_WIDE_TWINS(DecodeKernel, Name), {}, {}, __VA_ARGS__},
#define LM_YUV_FORMAT(Name, ...)                           \
  {#Name,                                                  \
   {LM_TWINS(DecodeKernel<std::uint8_t>, Name), {}},       \
   LM_TWINS(DecodeKernel<std::uint8_t>, Name##ByMatrix),   \
   {LM_TWINS(DecodeKernel<std::uint8_t>, Name##Luma), {}}, \
   __VA_ARGS__},
#define LM_LUMA_FORMAT(Name, ...)                          \
  {#Name,                                                  \
   {LM_TWINS(DecodeKernel<std::uint8_t>, Name), {}},       \
   {},                                                     \
   {LM_TWINS(DecodeKernel<std::uint8_t>, Name##Luma), {}}, \
   __VA_ARGS__},
#define LM_WIDE_LUMA_FORMAT(Name, ...) \
  {#Name, LM_WIDE_TWINS(DecodeKernel, Name), {}, LM_WIDE_TWINS(DecodeKernel, Name##Luma), __VA_ARGS__},
#define LM_SHORTCUT(Layout, Destination, Name)
#define LM_WIDE_SHORTCUT(Layout, Destination, Name)
#define LM_WORDS_SHORTCUT(Layout, Destination, Name)
#include "formats/formats.inc"
#undef LM_FORMAT
#undef LM_WIDE_FORMAT
#undef LM_YUV_FORMAT
#undef LM_LUMA_FORMAT
#undef LM_WIDE_LUMA_FORMAT
#undef LM_SHORTCUT
#undef LM_WIDE_SHORTCUT
#undef LM_WORDS_SHORTCUT
};

inline constexpr Shortcut kShortcuts[] = {
#define LM_FORMAT(Name, ...)
#define LM_WIDE_FORMAT(Name, ...)
#define LM_YUV_FORMAT(Name, ...)
#define LM_LUMA_FORMAT(Name, ...)
#define LM_WIDE_LUMA_FORMAT(Name, ...)
#define LM_SHORTCUT(Layout, Destination, Name) {#Layout, &Writers::k##Destination, LM_TWINS(DirectKernel, Name), {}},
#define LM_WIDE_SHORTCUT(Layout, Destination, Name) \
  {#Layout, &Writers::k##Destination, LM_TWINS(DirectKernel, Name), LM_TWINS(DirectKernel, Name##Words)},
#define LM_WORDS_SHORTCUT(Layout, Destination, Name) \
  {#Layout, &Writers::k##Destination, {}, LM_TWINS(DirectKernel, Name)},
#include "formats/formats.inc"
#undef LM_FORMAT
#undef LM_WIDE_FORMAT
#undef LM_YUV_FORMAT
#undef LM_LUMA_FORMAT
#undef LM_WIDE_LUMA_FORMAT
#undef LM_SHORTCUT
#undef LM_WIDE_SHORTCUT
#undef LM_WORDS_SHORTCUT
};

/// Whether a kernel decodes groups of the size that its row says, with a power of two of pixels. False for a kernel
/// without a row.
constexpr bool HasRow(const char* kernel, std::size_t groupPixels, std::size_t groupBytes) {
  for (const Format& format : kFormats) {
    if (!IsSame(format.name, kernel)) continue;
    return format.groupPixels == groupPixels && format.groupBits == 8 * groupBytes &&
           (groupPixels & (groupPixels - 1)) == 0;
  }
  return false;
}

}  // namespace LmImagingLib
