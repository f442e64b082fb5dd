#pragma once

#include <string>

#include "encode/layout_bits.h"

namespace LmTool {

/// The bytes in the order of their addresses, one below the other, each from bit 7 to bit 0, for a terminal.
std::string Drawing(const LayoutBits& layout);

/// Whether the letter of a sample needs the number of its pixel to differ from others.
bool IsNumbered(const LayoutBits& layout, const StoredBit& bit);

}  // namespace LmTool
