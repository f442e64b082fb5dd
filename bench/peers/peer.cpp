#include "peer.h"

#include <memory>

#include "../frame.h"

namespace LmImagingLib::Bench {

Conversion Twice(const Conversion& first, int pixelBytes, const Conversion& second) {
  return [=, between = std::make_shared<PageBuffer>()](const Image& image) {
    const auto bytes = static_cast<std::size_t>(pixelBytes) * static_cast<std::size_t>(image.Pixels());
    if (between->Size() < bytes) *between = PageBuffer(bytes);
    first({image.source, between->Data(), image.width, image.height});
    second({between->Data(), image.destination, image.width, image.height});
  };
}

}  // namespace LmImagingLib::Bench
