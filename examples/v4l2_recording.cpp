// Makes pictures of the buffers that a driver of Video4Linux delivered, one after the other in a file.
//
//   v4l2-ctl --set-fmt-video width=640,height=480,pixelformat=pRAA --stream-mmap --stream-count 10 --stream-to
//   buffers.raw v4l2_recording buffers.raw pRAA 640 480 BYTESPERLINE pictures-    # the format as `v4l2-ctl
//   --get-fmt-video` shows it
//
// A program that captures takes the v4l2_pix_format of VIDIOC_G_FMT, and the memory and bytesused of each buffer.
#include <LmImagingLib/LmImagingLib.h>
#include <LmImagingLib/V4L2Views.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

using namespace LmImagingLib;

namespace {

constexpr PixelTypeID kRGB24 = 0x420002;

[[noreturn]] void Fail(const std::string& message) {
  std::fprintf(stderr, "v4l2_recording: %s\n", message.c_str());
  std::exit(EXIT_FAILURE);
}

v4l2_pix_format FormatOf(char** arguments) {
  const std::string fourcc = arguments[0];
  if (fourcc.size() != 4) Fail("the fourcc has four characters, blanks included: 'pRAA', 'Y10 '");
  v4l2_pix_format format{};
  format.pixelformat = v4l2_fourcc(fourcc[0], fourcc[1], fourcc[2], fourcc[3]);
  format.width = static_cast<std::uint32_t>(std::strtoul(arguments[1], nullptr, 10));
  format.height = static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10));
  format.bytesperline = static_cast<std::uint32_t>(std::strtoul(arguments[3], nullptr, 10));
  format.sizeimage = format.bytesperline * format.height;
  return format;
}

// The picture of a frame: a mosaic is developed with the white balance of the frame itself.
ConversionResult MakePicture(const V4L2View& frame, const ImageView& picture) {
  if (!PixelTypeFactory::FindPixelType(frame.view.type)->IsBayerPattern()) {
    ConvertOptions options;
    options.flags = frame.flags;
    return ConvertImage(frame.view, picture, options);
  }
  WhiteBalanceOptions measuring;
  measuring.flags = frame.flags;
  DevelopmentSettings settings;
  settings.gains = EstimateWhiteBalance(frame.view, measuring).gains;
  Development development;
  DevelopOptions developing;
  developing.flags = frame.flags;
  if (ConversionResult made = Development::Make(settings, development); !made.IsOK()) return made;
  return Develop(development, frame.view, picture, developing);
}

void WritePPM(const std::string& path, const ImageView& picture) {
  std::ofstream file(path, std::ios::binary);
  file << "P6\n" << picture.width << " " << picture.height << "\n255\n";
  file.write(static_cast<const char*>(picture.data), static_cast<std::streamsize>(picture.size));
  if (!file.flush()) Fail("'" + path + "' cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 7) Fail("usage: v4l2_recording FILE FOURCC WIDTH HEIGHT BYTESPERLINE PREFIX");
  RegisterExtendedFormats();
  const v4l2_pix_format format = FormatOf(argv + 2);
  std::ifstream file(argv[1], std::ios::binary);
  if (!file) Fail(std::string("'") + argv[1] + "' cannot be read");

  std::vector<char> buffer(format.sizeimage);
  std::vector<unsigned char> rgb(3UL * format.width * format.height);
  const ImageView picture = ViewOf(kRGB24, rgb, format.width, format.height);
  int count = 0;
  for (; !buffer.empty() && file.read(buffer.data(), static_cast<std::streamsize>(buffer.size())); ++count) {
    const V4L2View frame = ViewOf(format, buffer.data(), buffer.size());
    if (!frame) Fail(frame.reason);
    if (const ConversionResult made = MakePicture(frame, picture); !made.IsOK()) Fail(made.message);
    WritePPM(argv[6] + std::to_string(count) + ".ppm", picture);
  }
  if (count == 0 || file.gcount() != 0) Fail("the file does not have a whole number of buffers of this format");
  std::printf("%d pictures of %u x %u pixels\n", count, format.width, format.height);
  return EXIT_SUCCESS;
}
