#pragma once

#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "image.h"

/// Reads a file as a picture. One that is refused must come with a reason; one that is accepted must be whole, and the
/// same after it is written and read again.
inline void CheckReading(const LmTool::Bytes& file, LmTool::Picture (*decode)(const LmTool::Bytes&),
                         LmTool::Bytes (*encode)(const LmTool::Picture&)) {
  const auto check = [](bool holds, const char* fault) {
    if (holds) return;
    std::cerr << fault << '\n';
    std::abort();
  };
  LmTool::Picture picture;
  try {
    picture = decode(file);
  } catch (const std::runtime_error& error) {
    check(*error.what() != 0, "refused without a reason");
    return;
  }
  check(LmTool::IsAllowed(picture.size), "an image of a size that is not allowed");
  check(picture.bits == 8 || picture.bits == 16, "an unknown depth");
  check(picture.pixels.size() == picture.RowBytes() * picture.size.height, "another size than the image's");
  const LmTool::Picture again = decode(encode(picture));
  check(again.size.width == picture.size.width && again.size.height == picture.size.height,
        "another size after writing");
  check(again.gray == picture.gray && again.bits == picture.bits && again.pixels == picture.pixels,
        "another picture after writing");
}
