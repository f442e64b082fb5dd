#pragma once

#include "converters/writers.h"
#include "simd/kernel.h"

namespace LmImagingLib {

LM_DECLARE_KERNEL(DirectKernel, BayerBlock8ToRGB24)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock8ToBGR24)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock8ToRGB32)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock8ToBGR32)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock16ToRGB24)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock16ToBGR24)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock16ToRGB32)
LM_DECLARE_KERNEL(DirectKernel, BayerBlock16ToBGR32)
LM_DECLARE_KERNEL(DirectKernel, BayerBilinearToRGB24)
LM_DECLARE_KERNEL(DirectKernel, BayerBilinearToBGR24)
LM_DECLARE_KERNEL(DirectKernel, BayerBilinearToRGB32)
LM_DECLARE_KERNEL(DirectKernel, BayerBilinearToBGR32)

/// A way from a mosaic to one writer that needs no strip, for conversions that look nothing up. Its kernels take cells
/// 0 and 2 alone: codes 1 and 3 are these with red and blue exchanged, and so is a writer's pixel.
struct MosaicShortcut {
  const Writer* writer;
  Twins<DirectKernel> block8, block16, bilinear;
  const MosaicShortcut* swapped;  ///< to the writer that exchanges red and blue
};

/// The bits of a cell code that kernels are given.
inline constexpr std::uint32_t kShortcutCells = 2;

inline constexpr MosaicShortcut kMosaicShortcuts[4] = {
    {&OutputRGB24::kWriter, kBayerBlock8ToRGB24, kBayerBlock16ToRGB24, kBayerBilinearToRGB24, &kMosaicShortcuts[1]},
    {&OutputBGR24::kWriter, kBayerBlock8ToBGR24, kBayerBlock16ToBGR24, kBayerBilinearToBGR24, &kMosaicShortcuts[0]},
    {&OutputRGB32::kWriter, kBayerBlock8ToRGB32, kBayerBlock16ToRGB32, kBayerBilinearToRGB32, &kMosaicShortcuts[3]},
    {&OutputBGR32::kWriter, kBayerBlock8ToBGR32, kBayerBlock16ToBGR32, kBayerBilinearToBGR32, &kMosaicShortcuts[2]},
};

}  // namespace LmImagingLib
