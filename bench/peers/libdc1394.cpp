// libdc1394, which has no vectors. Its YUV has the full range, and its words have the high byte first, but in mosaics.
#include <dc1394/dc1394.h>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

Conversion ToRGB24(dc1394color_coding_t coding) {
  return [=](const Image& image) {
    dc1394_convert_to_RGB8(const_cast<std::uint8_t*>(image.source), image.destination,
                           static_cast<std::uint32_t>(image.width), static_cast<std::uint32_t>(image.height),
                           DC1394_BYTE_ORDER_YUYV, coding, 8);
  };
}

Conversion Demosaic(dc1394bayer_method_t method) {
  return [=](const Image& image) {
    dc1394_bayer_decoding_8bit(image.source, image.destination, static_cast<std::uint32_t>(image.width),
                               static_cast<std::uint32_t>(image.height), DC1394_COLOR_FILTER_RGGB, method);
  };
}

Conversion DemosaicWords(dc1394bayer_method_t method, std::uint32_t bits) {
  return [=](const Image& image) {
    dc1394_bayer_decoding_16bit(reinterpret_cast<const std::uint16_t*>(image.source),
                                reinterpret_cast<std::uint16_t*>(image.destination),
                                static_cast<std::uint32_t>(image.width), static_cast<std::uint32_t>(image.height),
                                DC1394_COLOR_FILTER_RGGB, method, bits);
  };
}

}  // namespace

Peer Libdc1394() {
  return {"libdc1394",
          {
              {"Mono8 to RGB24", ToRGB24(DC1394_COLOR_CODING_MONO8)},
              {"YUV 4:1:1 to RGB24, full range", ToRGB24(DC1394_COLOR_CODING_YUV411)},
              {"UYV 4:4:4 to RGB24, full range", ToRGB24(DC1394_COLOR_CODING_YUV444)},
              {"bilinear Bayer8 to RGB24", Demosaic(DC1394_BAYER_METHOD_BILINEAR)},
              {"gradient-corrected Bayer8 to RGB24", Demosaic(DC1394_BAYER_METHOD_HQLINEAR)},
              {"bilinear Bayer12 to RGB48", DemosaicWords(DC1394_BAYER_METHOD_BILINEAR, 12)},
          },
          {}};
}

}  // namespace LmImagingLib::Bench
