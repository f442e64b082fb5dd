#pragma once

#include "formats/source_type.h"
#include "formats/writers.h"
#include "walk/frame.h"

namespace LmImagingLib {

/// Develops lines `first` to `end` of an image in colour, by the steps of the frame.
void DevelopColors(const SourceType& source, const Writer& writer, const Frame& frame, std::uint32_t first,
                   std::uint32_t end);

}  // namespace LmImagingLib
