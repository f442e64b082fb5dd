// OpenCV, whose images are views of the buffers. It is limited to AVX2 by the environment, OPENCV_CPU_DISABLE.
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

cv::Mat View(const std::uint8_t* data, const Image& image, int type) {
  return {image.height, image.width, type, const_cast<std::uint8_t*>(data)};
}

Conversion Color(int sourceType, int destinationType, int code) {
  return [=](const Image& image) {
    cv::Mat destination = View(image.destination, image, destinationType);
    cv::cvtColor(View(image.source, image, sourceType), destination, code);
  };
}

// Values are rounded where ours are cut.
Conversion Scale(int sourceType, int destinationType, double scale) {
  return [=](const Image& image) {
    cv::Mat destination = View(image.destination, image, destinationType);
    View(image.source, image, sourceType).convertTo(destination, CV_MAT_DEPTH(destinationType), scale);
  };
}

std::vector<cv::Mat> Planes(const std::uint8_t* data, const Image& image, int type) {
  const auto bytes = static_cast<std::size_t>(CV_ELEM_SIZE(type)) * static_cast<std::size_t>(image.Pixels());
  return {View(data, image, type), View(data + bytes, image, type), View(data + 2 * bytes, image, type)};
}

void Split(const Image& image) {
  std::vector<cv::Mat> planes = Planes(image.destination, image, CV_8UC1);
  cv::split(View(image.source, image, CV_8UC3), planes);
}

// cv::split wants a fourth plane.
Conversion SplitFour() {
  return [fourth = cv::Mat()](const Image& image) mutable {
    std::vector<cv::Mat> planes = Planes(image.destination, image, CV_8UC1);
    fourth.create(image.height, image.width, CV_8UC1);
    std::swap(planes[0], planes[2]);
    planes.push_back(fourth);
    cv::split(View(image.source, image, CV_8UC4), planes);
  };
}

Conversion Merge(int type) {
  return [=](const Image& image) {
    cv::Mat destination = View(image.destination, image, CV_MAKETYPE(type, 3));
    cv::merge(Planes(image.source, image, type), destination);
  };
}

}  // namespace

Peer OpenCV() {
  cv::setNumThreads(1);
  const Conversion topBytes = Scale(CV_16UC1, CV_8UC1, 1.0 / 256);
  return {"OpenCV",
          {
              {"Mono8 to RGB24", Color(CV_8UC1, CV_8UC3, cv::COLOR_GRAY2RGB)},
              {"Mono8 to BGR32", Color(CV_8UC1, CV_8UC4, cv::COLOR_GRAY2BGRA)},
              {"Mono8 to Mono16", Scale(CV_8UC1, CV_16UC1, 256)},
              {"Mono12 to Mono8", Scale(CV_16UC1, CV_8UC1, 1.0 / 16)},
              {"Mono12 to Mono16", Scale(CV_16UC1, CV_16UC1, 16)},
              {"Mono16 to Mono8", topBytes},

              {"RGB24 to Mono8", Color(CV_8UC3, CV_8UC1, cv::COLOR_RGB2GRAY)},
              {"BGR32 to Mono8", Color(CV_8UC4, CV_8UC1, cv::COLOR_BGRA2GRAY)},
              {"RGB48 to Mono8", Twice(Color(CV_16UC3, CV_16UC1, cv::COLOR_RGB2GRAY), 2, topBytes)},
              {"RGB48 to Mono16", Color(CV_16UC3, CV_16UC1, cv::COLOR_RGB2GRAY)},
              {"YUYV to Mono8, full range", Color(CV_8UC2, CV_8UC1, cv::COLOR_YUV2GRAY_YUY2)},

              {"YUYV to BGR32", Color(CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_YUY2)},
              {"UYVY to BGR32", Color(CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY)},
              {"YUYV to BGR24", Color(CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_YUY2)},
              {"YCrCb 4:4:4 to RGB24, full range", Color(CV_8UC3, CV_8UC3, cv::COLOR_YCrCb2RGB)},

              {"RGB24 to BGR24", Color(CV_8UC3, CV_8UC3, cv::COLOR_RGB2BGR)},
              {"RGB24 to BGR32", Color(CV_8UC3, CV_8UC4, cv::COLOR_RGB2BGRA)},
              {"BGR32 to RGB24", Color(CV_8UC4, CV_8UC3, cv::COLOR_BGRA2RGB)},
              {"RGB32 to BGR32", Color(CV_8UC4, CV_8UC4, cv::COLOR_RGBA2BGRA)},
              {"RGB24 to planar", Split},
              {"BGR32 to planar", SplitFour()},
              {"planar to RGB24", Merge(CV_8UC1)},
              {"BGR32 to RGB16 (5-6-5)", Color(CV_8UC4, CV_8UC2, cv::COLOR_BGRA2BGR565)},
              {"RGB16 (5-6-5) to RGB24", Color(CV_8UC2, CV_8UC3, cv::COLOR_BGR5652RGB)},
              {"RGB16 (5-6-5) to BGR32", Color(CV_8UC2, CV_8UC4, cv::COLOR_BGR5652BGRA)},

              {"RGB24 to RGB48", Scale(CV_8UC3, CV_16UC3, 256)},
              {"RGB48 to RGB24", Scale(CV_16UC3, CV_8UC3, 1.0 / 256)},
              {"RGB48 to BGR48", Color(CV_16UC3, CV_16UC3, cv::COLOR_RGB2BGR)},
              {"16-bit planar to RGB48", Merge(CV_16UC1)},

              {"bilinear Bayer8 to RGB24", Color(CV_8UC1, CV_8UC3, cv::COLOR_BayerBG2RGB)},
              {"bilinear Bayer8 to BGR32", Color(CV_8UC1, CV_8UC4, cv::COLOR_BayerBG2BGRA)},
              {"bilinear Bayer8 to Mono8", Color(CV_8UC1, CV_8UC1, cv::COLOR_BayerBG2GRAY)},
              {"bilinear Bayer16 to RGB24", Twice(topBytes, 1, Color(CV_8UC1, CV_8UC3, cv::COLOR_BayerBG2RGB))},
              {"bilinear Bayer12 to RGB48", Color(CV_16UC1, CV_16UC3, cv::COLOR_BayerBG2RGB)},
          },
          {}};
}

}  // namespace LmImagingLib::Bench
