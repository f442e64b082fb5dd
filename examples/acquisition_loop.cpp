// An acquisition loop: a camera fills a ring of buffers, workers turn them into pictures. Each worker keeps its own
// filter, options and picture for all frames.
#include <LmImagingLib/LmImagingLib.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

using namespace LmImagingLib;

namespace {

constexpr unsigned kFrames = 60;
constexpr unsigned kWorkers = 3;
constexpr unsigned kBuffers = 2 * kWorkers;  // while a worker converts one, the camera fills its next

constexpr PixelTypeID kPicture = 0x20007;  // BGR32, what most windows show

struct Frame {
  unsigned number = 0;
  std::vector<std::uint8_t> bytes;
};

// Buffers that wait, for the camera to fill them or for a worker to convert them.
class Queue {
 public:
  void Push(Frame* frame) {
    {
      const std::lock_guard lock(mMutex);
      mFrames.push_back(frame);
    }
    mChanged.notify_one();
  }

  // Blocks until there is a frame, or returns null once the queue is closed and empty.
  Frame* Pop() {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return !mFrames.empty() || mClosed; });
    if (mFrames.empty()) return nullptr;
    Frame* const frame = mFrames.front();
    mFrames.pop_front();
    return frame;
  }

  void Close() {
    {
      const std::lock_guard lock(mMutex);
      mClosed = true;
    }
    mChanged.notify_all();
  }

 private:
  std::mutex mMutex;
  std::condition_variable mChanged;
  std::deque<Frame*> mFrames;
  bool mClosed = false;
};

// Stands for the camera: what a real one reports of its frames, and frames whose brightness is their number.
struct Camera {
  const char* pixelFormat = "BayerRG12Packed";
  unsigned long width = 640;
  unsigned long height = 480;

  // Two pixels in three bytes: the top 8 bits of the first, the low bits of both, the top 8 bits of the second.
  void Grab(unsigned number, std::vector<std::uint8_t>& bytes) const {
    const auto top = static_cast<std::uint8_t>(number);
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
      bytes[i] = top;
      bytes[i + 1] = 0x5A;
      bytes[i + 2] = top;
    }
  }
};

class Worker {
 public:
  Worker(const PFNCFormat& format, const Camera& camera)
      : mFormat(format), mCamera(camera), mPicture(RequiredSize(kPicture, camera.width, camera.height).value()) {
    mGains.SetMultipliers(1.5, 1.0, 2.0);
    mOptions.filter = &mGains;
    mOptions.flags = format.flags | ConversionFlags::kBilinear;
  }

  bool Convert(const Frame& frame) {
    const ConstImageView source{mFormat.type, frame.bytes.data(), frame.bytes.size(), mCamera.width, mCamera.height};
    const ImageView destination{kPicture, mPicture.data(), mPicture.size(), mCamera.width, mCamera.height};
    const ConversionResult result = ConvertImage(source, destination, mOptions);
    if (!result.IsOK()) std::fprintf(stderr, "Frame %u: %s\n", frame.number, result.message.c_str());
    return result.IsOK() && ShowsTheFrame(frame.number);
  }

 private:
  // Here a program would show the picture, or measure it. This one looks whether it is the right one.
  bool ShowsTheFrame(unsigned number) const {
    const unsigned expected[] = {2 * number, number, number * 3 / 2};  // blue, green, red
    for (std::size_t i = 0; i < mPicture.size(); ++i) {
      if (i % 4 != 3 && mPicture[i] != expected[i % 4]) {
        std::fprintf(stderr, "Frame %u: byte %zu is %u, not %u\n", number, i, mPicture[i], expected[i % 4]);
        return false;
      }
    }
    return true;
  }

  const PFNCFormat& mFormat;
  const Camera& mCamera;
  RGBFilter mGains{8};
  ConvertOptions mOptions;
  std::vector<std::uint8_t> mPicture;
};

}  // namespace

int main() {
  const Camera camera;
  const PFNCResult found = FindPFNC(camera.pixelFormat);
  if (!found) {
    std::fprintf(stderr, "%s: %s\n", camera.pixelFormat, found.reason);
    return EXIT_FAILURE;
  }
  const PFNCFormat& format = *found.format;
  const std::optional<std::size_t> frameSize = RequiredSize(format.type, camera.width, camera.height);

  std::vector<Frame> ring(kBuffers);
  Queue empty;
  Queue filled;
  for (Frame& frame : ring) {
    frame.bytes.resize(frameSize.value());
    empty.Push(&frame);
  }

  std::atomic<unsigned> shown{0};
  std::vector<std::thread> workers;
  for (unsigned i = 0; i < kWorkers; ++i) {
    workers.emplace_back([&] {
      Worker worker(format, camera);
      while (Frame* const frame = filled.Pop()) {
        if (worker.Convert(*frame)) ++shown;
        empty.Push(frame);
      }
    });
  }

  // This camera waits for an empty buffer; one that cannot would drop the frame here.
  for (unsigned number = 1; number <= kFrames; ++number) {
    Frame* const frame = empty.Pop();
    frame->number = number;
    camera.Grab(number, frame->bytes);
    filled.Push(frame);
  }
  filled.Close();
  for (std::thread& worker : workers) worker.join();

  std::printf("%u of %u frames converted by %u threads through %u buffers\n", shown.load(), kFrames, kWorkers,
              kBuffers);
  return shown == kFrames ? EXIT_SUCCESS : EXIT_FAILURE;
}
