#include "png_image.h"

#include <stdexcept>

#ifdef LM_HAS_PNG

#include <png.h>

namespace LmTool {

Bytes EncodePng(const Picture& picture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.format = PNG_FORMAT_BGR;
  image.width = static_cast<png_uint_32>(picture.size.width);
  image.height = static_cast<png_uint_32>(picture.size.height);
  png_alloc_size_t size = 0;
  const auto write = [&](void* to) {
    if (png_image_write_to_memory(&image, to, &size, 0, picture.bgr.data(), 0, nullptr) == 0) {
      throw std::runtime_error(std::string("cannot make a PNG image: ") + image.message);
    }
  };
  write(nullptr);  // asks for the size
  Bytes file(size);
  write(file.data());
  return file;
}

}  // namespace LmTool

#else

namespace LmTool {

Bytes EncodePng(const Picture&) {
  throw std::runtime_error("cannot make a PNG image: this lmimaging was built without libpng");
}

}  // namespace LmTool

#endif
