#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"

// The library at the end of a process, in a child process, and opened and closed. This program does not link it: a
// plugin brings it along.

namespace {

using namespace std::chrono_literals;

/// The plugin, open for the length of a scope.
class Plugin {
 public:
  Plugin() : mHandle(dlopen(LM_PLUGIN, RTLD_NOW | RTLD_LOCAL)) {
    if (mHandle == nullptr) throw std::runtime_error(dlerror());
  }
  ~Plugin() { dlclose(mHandle); }
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  unsigned Convert() const { return reinterpret_cast<unsigned (*)()>(dlsym(mHandle, "ConvertSome"))(); }
  bool UseRegistry() const { return reinterpret_cast<bool (*)()>(dlsym(mHandle, "UseRegistry"))(); }

 private:
  void* mHandle;
};

/// Runs a function in a child process, and returns how that ended; a child that hangs ends with SIGALRM.
int StatusOf(const std::function<void()>& run) {
  std::fflush(nullptr);  // or the child writes it again
  const pid_t child = fork();
  if (child == 0) {
    alarm(30);
    run();
    std::exit(0);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

/// Threads that convert without end.
void StartConverting(const Plugin& plugin) {
  for (int t = 0; t < 3; ++t) {
    std::thread([&plugin] {
      for (;;) plugin.Convert();
    }).detach();
  }
}

bool IsMapped() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find("libLmImagingLib") != std::string::npos) return true;
  }
  return false;
}

TEST(Process, EndsWhileThreadsConvert) {
  for (int round = 0; round < 40; ++round) {
    const int status = StatusOf([round] {
      static const Plugin* const sPlugin = new Plugin;
      StartConverting(*sPlugin);
      std::this_thread::sleep_for(std::chrono::microseconds(round * 200));
    });
    ASSERT_EQ(status, 0) << "round " << round;
  }
}

TEST(Process, ConvertsInDestructorsOfStaticObjects) {
  EXPECT_EQ(StatusOf([] {
              static const Plugin* const sPlugin = new Plugin;
              static const unsigned sExpected = sPlugin->Convert();
              struct Last {
                ~Last() {
                  if (sPlugin->Convert() != sExpected) _exit(1);
                }
              };
              static const Last sLast;
            }),
            0);
}

TEST(Process, ConvertsInAChildWhileTheParentDoes) {
  EXPECT_EQ(StatusOf([] {
              static const Plugin* const sPlugin = new Plugin;
              const unsigned expected = sPlugin->Convert();
              // Threads that are in the registry most of the time.
              for (int t = 0; t < 3; ++t) {
                std::thread([] {
                  for (;;) sPlugin->UseRegistry();
                }).detach();
              }
              for (int round = 0; round < 100; ++round) {
                const pid_t child = fork();
                if (child == 0) {
                  alarm(10);
                  _exit(sPlugin->Convert() == expected ? 0 : 1);
                }
                int status = -1;
                waitpid(child, &status, 0);
                if (status != 0) _exit(1);
              }
              _exit(0);
            }),
            0);
}

TEST(Process, GivesEverythingBackWhenClosed) {
  const auto openAndClose = [] {
    {
      const Plugin plugin;
      plugin.Convert();
      EXPECT_TRUE(plugin.UseRegistry());
    }
    ASSERT_FALSE(IsMapped());
  };
  for (int round = 0; round < 500; ++round) openAndClose();  // the C library's own tables grow at first
  const std::size_t before = mallinfo2().uordblks;
  for (int round = 0; round < 1000; ++round) openAndClose();
  EXPECT_LT(mallinfo2().uordblks, before + 4096);
}

}  // namespace
