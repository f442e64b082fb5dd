#include "ordered_jobs.h"

#include <algorithm>
#include <exception>
#include <map>
#include <mutex>
#include <sstream>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace LmTool {

namespace {

// What the threads share. Messages are kept until all before them are printed.
class Jobs {
 public:
  Jobs(std::size_t count, const std::function<void(std::size_t, std::ostream&)>& work,
       const std::function<void(const std::string&)>& print)
      : mCount(count), mWork(work), mPrint(print) {}

  void Run() {
    for (std::size_t number = 0; Take(number);) {
      try {
        std::ostringstream messages;
        mWork(number, messages);
        Finish(number, messages.str());
      } catch (...) {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (!mFault) mFault = std::current_exception();
      }
    }
  }

  void Rethrow() const {
    if (mFault) std::rethrow_exception(mFault);
  }

 private:
  bool Take(std::size_t& number) {
    const std::lock_guard<std::mutex> lock(mMutex);
    if (mFault || mBegun == mCount) return false;
    number = mBegun++;
    return true;
  }

  void Finish(std::size_t number, std::string messages) {
    const std::lock_guard<std::mutex> lock(mMutex);
    mDone.emplace(number, std::move(messages));
    for (auto next = mDone.begin(); next != mDone.end() && next->first == mPrinted; next = mDone.erase(next)) {
      if (!next->second.empty()) mPrint(next->second);
      ++mPrinted;
    }
  }

  const std::size_t mCount;
  const std::function<void(std::size_t, std::ostream&)>& mWork;
  const std::function<void(const std::string&)>& mPrint;
  std::mutex mMutex;
  std::size_t mBegun = 0, mPrinted = 0;
  std::map<std::size_t, std::string> mDone;  // but not printed
  std::exception_ptr mFault;
};

}  // namespace

unsigned Processors() { return std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs); }

void RunInOrder(std::size_t count, unsigned jobs, const std::function<void(std::size_t, std::ostream&)>& work,
                const std::function<void(const std::string&)>& print) {
  Jobs shared(count, work, print);
  std::vector<std::thread> others;
  try {
    for (std::size_t i = 1; i < std::min<std::size_t>(jobs, count); ++i) others.emplace_back([&] { shared.Run(); });
  } catch (const std::system_error&) {  // the system has no more threads; those that are there do the work
  }
  shared.Run();
  for (std::thread& thread : others) thread.join();
  shared.Rethrow();
}

}  // namespace LmTool
