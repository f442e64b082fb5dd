// OpenCV, whose images are views of the buffers. It is limited to AVX2 by the environment, OPENCV_CPU_DISABLE.
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "peer.h"

namespace LmImagingLib::Bench {

namespace {

cv::Mat View(const std::uint8_t* data, const Image& image, int type) {
  return {image.height, image.width, type, const_cast<std::uint8_t*>(data)};
}

PeerConversion Color(const char* name, int sourceType, int destinationType, int code) {
  return {name, [=](const Image& image) {
            cv::Mat destination = View(image.destination, image, destinationType);
            cv::cvtColor(View(image.source, image, sourceType), destination, code);
          }};
}

// Values are rounded where ours are cut.
PeerConversion WordsToBytes(const char* name, int samples, double scale) {
  return {name, [=](const Image& image) {
            cv::Mat destination = View(image.destination, image, CV_8UC(samples));
            View(image.source, image, CV_16UC(samples)).convertTo(destination, CV_8U, scale);
          }};
}

std::vector<cv::Mat> Planes(const std::uint8_t* data, const Image& image) {
  std::vector<cv::Mat> planes;
  for (int i = 0; i < 3; ++i) planes.push_back(View(data + i * image.Pixels(), image, CV_8UC1));
  return planes;
}

void Split(const Image& image) {
  std::vector<cv::Mat> planes = Planes(image.destination, image);
  cv::split(View(image.source, image, CV_8UC3), planes);
}

void Merge(const Image& image) {
  cv::Mat destination = View(image.destination, image, CV_8UC3);
  cv::merge(Planes(image.source, image), destination);
}

}  // namespace

Peer OpenCV() {
  cv::setNumThreads(1);
  return {"OpenCV",
          {
              Color("RGB24 to BGR24", CV_8UC3, CV_8UC3, cv::COLOR_RGB2BGR),
              Color("RGB24 to BGR32", CV_8UC3, CV_8UC4, cv::COLOR_RGB2BGRA),
              Color("BGR32 to RGB24", CV_8UC4, CV_8UC3, cv::COLOR_BGRA2RGB),
              Color("RGB32 to BGR32", CV_8UC4, CV_8UC4, cv::COLOR_RGBA2BGRA),
              Color("YUYV to BGR32", CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_YUY2),
              Color("UYVY to BGR32", CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY),
              Color("YUYV to BGR24", CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_YUY2),
              Color("Mono8 to RGB24", CV_8UC1, CV_8UC3, cv::COLOR_GRAY2RGB),
              Color("Mono8 to BGR32", CV_8UC1, CV_8UC4, cv::COLOR_GRAY2BGRA),
              Color("RGB16 (5-6-5) to RGB24", CV_8UC2, CV_8UC3, cv::COLOR_BGR5652RGB),
              Color("bilinear Bayer8 to RGB24", CV_8UC1, CV_8UC3, cv::COLOR_BayerBG2RGB),
              {"RGB24 to planar", Split},
              {"planar to RGB24", Merge},
              WordsToBytes("RGB48 to RGB24", 3, 1.0 / 256),
              WordsToBytes("Mono12 to Mono8", 1, 1.0 / 16),
          },
          {}};
}

}  // namespace LmImagingLib::Bench
