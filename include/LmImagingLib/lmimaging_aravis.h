#pragma once

/// @file
/// Buffers of cameras as images, for C and C++: of Aravis (version 0.8, for GigE Vision and USB3 Vision), and by the
/// figures that buffers of other libraries have. For programs that use Aravis; nothing else includes this header.

#include <arv.h>

#include "LmImagingLib/lmimaging.h"

#ifdef __cplusplus
extern "C" {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#endif

// NOLINTBEGIN(modernize-use-using,modernize-use-nullptr,readability-identifier-naming): this is C

/// A buffer of a camera as an image to read. The image is valid as long as the memory of the buffer is.
typedef struct LmiCameraImage {
  LmiImage image;      ///< the frame; calls that take it never write to it
  uint32_t flags;      ///< bits of `LmiFlags` that the format says: Bayer layout, range and matrix of YUV
  const char* reason;  ///< null; or a sentence why there is no image, which is valid as `lmiMessage` is
} LmiCameraImage;

/// The image of a buffer by its figures.
/// @param code  the pixel format, as the GenICam Pixel Format Naming Convention numbers it
/// @param width, height  in pixels
/// @param padding  bytes after each line
/// @param data  the first byte of the first line
/// @param size  bytes that there are; more than those of the image, such as chunks after it, are ignored
static inline LmiCameraImage lmiCameraImage(uint32_t code, size_t width, size_t height, size_t padding,
                                            const void* data, size_t size) {
  LmiCameraImage result = {{sizeof(LmiImage), 0, NULL, 0, 0, 0, 0}, 0, NULL};
  LmiFormat format = {sizeof(LmiFormat), 0, NULL, NULL, NULL, 0, 0, 0, 0, 0, 0};
  size_t line = 0;
  size_t needed = 0;
  if (lmiFindFormatByPFNC(code, &format) != LMI_OK ||
      (padding != 0 && lmiRequiredSize(format.type, width, 1, 0, &line) != LMI_OK) ||
      lmiRequiredSize(format.type, width, height, padding != 0 ? line + padding : 0, &needed) != LMI_OK) {
    result.reason = lmiMessage();
  } else if (data == NULL || size < needed) {
    result.reason = "the buffer has fewer bytes than its image";
  } else {
    result.image.type = format.type;
    result.image.data = (void*)data;
    result.image.size = size;
    result.image.width = width;
    result.image.height = height;
    result.image.lineSize = padding != 0 ? line + padding : 0;
    result.flags = format.flags;
  }
  return result;
}

/// The image of a buffer of Aravis: of its first part that is an image, where it has several. Chunks are left out.
///
/// Its format is the one that came with the frame, which may be another one than the camera has by now.
/// @param buffer  as `arv_stream_pop_buffer` and `arv_camera_acquisition` return it, or null; the caller keeps
/// ownership
static inline LmiCameraImage lmiArvImage(ArvBuffer* buffer) {
  LmiCameraImage none = {{sizeof(LmiImage), 0, NULL, 0, 0, 0, 0}, 0, "the buffer has no image"};
  guint part = 0;
  if (buffer == NULL || arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS) {
    none.reason = "the buffer was not filled by a whole frame";
    return none;
  }
  for (part = 0; part < arv_buffer_get_n_parts(buffer); ++part) {
    if (arv_buffer_get_part_data_type(buffer, part) == ARV_BUFFER_PART_DATA_TYPE_2D_IMAGE) {
      size_t size = 0;
      gint x = 0;
      gint y = 0;
      gint width = 0;
      gint height = 0;
      gint padding = 0;
      gint after = 0;  // the last line
      const void* const data = arv_buffer_get_part_data(buffer, part, &size);
      arv_buffer_get_part_region(buffer, part, &x, &y, &width, &height);
      arv_buffer_get_part_padding(buffer, part, &padding, &after);
      return lmiCameraImage(arv_buffer_get_part_pixel_format(buffer, part), (size_t)width, (size_t)height,
                            (size_t)padding, data, size);
    }
  }
  return none;
}

// NOLINTEND(modernize-use-using,modernize-use-nullptr,readability-identifier-naming)

#ifdef __cplusplus
#pragma GCC diagnostic pop
}
#endif
