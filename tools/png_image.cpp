#include "png_image.h"

#include <algorithm>
#include <stdexcept>

#ifdef LM_HAS_PNG

#include <png.h>

namespace LmTool {

namespace {

// The reference decoder, whose errors are jumps: a function that may be left by one has no objects to destroy.
class PngReader {
 public:
  explicit PngReader(const Bytes& file) : mRest(file.data()), mRestBytes(file.size()) {
    mPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, [](png_structp, png_const_charp) {});
    if (mPng != nullptr) mInfo = png_create_info_struct(mPng);
    if (mInfo == nullptr) throw std::bad_alloc();
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() { png_destroy_read_struct(&mPng, &mInfo, nullptr); }

  Picture Read() {
    if (!ReadHeader()) throw std::runtime_error(mMessage);
    Picture picture{{png_get_image_width(mPng, mInfo), png_get_image_height(mPng, mInfo)}, mGray, {}};
    if (!IsAllowed(picture.size)) {
      throw std::runtime_error("it is " + picture.size.Text() + "; allowed: " + AllowedSizes());
    }
    const std::size_t rowBytes = picture.size.width * (mGray ? 1 : 3);
    picture.pixels.resize(rowBytes * picture.size.height);
    if (!ReadPixels(picture.pixels.data(), rowBytes, picture.size.height)) throw std::runtime_error(mMessage);
    return picture;
  }

 private:
  bool ReadHeader() {
    if (setjmp(png_jmpbuf(mPng)) != 0) return false;  // NOLINT(cert-err52-cpp)
    png_set_read_fn(mPng, this, TakeBytes);
    png_set_user_limits(mPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // sizes are checked before memory is taken
    png_read_info(mPng, mInfo);
    mGray = (png_get_color_type(mPng, mInfo) & PNG_COLOR_MASK_COLOR) == 0;
    return true;
  }

  bool ReadPixels(std::uint8_t* pixels, std::size_t rowBytes, std::size_t height) {
    if (setjmp(png_jmpbuf(mPng)) != 0) return false;  // NOLINT(cert-err52-cpp)
    png_set_strip_16(mPng);
    png_set_strip_alpha(mPng);
    if (mGray) {
      png_set_expand_gray_1_2_4_to_8(mPng);
    } else {
      png_set_palette_to_rgb(mPng);
      png_set_bgr(mPng);
    }
    const int passes = png_set_interlace_handling(mPng);
    png_read_update_info(mPng, mInfo);
    if (png_get_rowbytes(mPng, mInfo) != rowBytes) png_error(mPng, "its rows are of no known form");
    for (int pass = 0; pass < passes; ++pass) {
      for (std::size_t y = 0; y < height; ++y) png_read_row(mPng, pixels + y * rowBytes, nullptr);
    }
    png_read_end(mPng, nullptr);  // finds a file that was cut off behind its pixels
    return true;
  }

  static void TakeBytes(png_structp png, png_bytep to, std::size_t count) {
    PngReader& reader = *static_cast<PngReader*>(png_get_io_ptr(png));
    if (count > reader.mRestBytes) png_error(png, "the file ends too early");
    std::copy_n(reader.mRest, count, to);
    reader.mRest += count;
    reader.mRestBytes -= count;
  }

  static void OnError(png_structp png, png_const_charp message) {
    static_cast<PngReader*>(png_get_error_ptr(png))->mMessage = message;
    png_longjmp(png, 1);
  }

  png_structp mPng = nullptr;
  png_infop mInfo = nullptr;
  const std::uint8_t* mRest;
  std::size_t mRestBytes;
  bool mGray = false;
  std::string mMessage;
};

}  // namespace

Bytes EncodePng(const Picture& picture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.format = picture.gray ? PNG_FORMAT_GRAY : PNG_FORMAT_BGR;
  image.width = static_cast<png_uint_32>(picture.size.width);
  image.height = static_cast<png_uint_32>(picture.size.height);
  png_alloc_size_t size = 0;
  const auto write = [&](void* to) {
    if (png_image_write_to_memory(&image, to, &size, 0, picture.pixels.data(), 0, nullptr) == 0) {
      throw std::runtime_error(std::string("cannot make a PNG image: ") + image.message);
    }
  };
  write(nullptr);  // asks for the size
  Bytes file(size);
  write(file.data());
  return file;
}

Picture DecodePng(const Bytes& file) { return PngReader(file).Read(); }

}  // namespace LmTool

#else

namespace LmTool {

Bytes EncodePng(const Picture&) {
  throw std::runtime_error("cannot make a PNG image: this lmimaging was built without libpng");
}

Picture DecodePng(const Bytes&) { throw std::runtime_error("this lmimaging was built without libpng"); }

}  // namespace LmTool

#endif
