#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <set>
#include <thread>
#include <vector>

#include "LmBaseLib/Gate.h"
#include "LmBaseLib/LockScope.h"
#include "LmUserLib/Thread.h"

namespace {

using LmBaseLib::Gate;
using LmBaseLib::LockScope;

TEST(Gate, OpensToTheNextThreadOnlyAfterTheLastHold) {
  Gate gate;
  std::atomic<bool> released{false};
  std::atomic<bool> started{false};
  bool releasedWhenEntered = false;
  std::thread other;
  {
    const LockScope outer(gate);
    {
      const LockScope inner(&gate);
      other = std::thread([&] {
        started = true;
        const LockScope lock(gate);
        releasedWhenEntered = released;
      });
    }
    while (!started) std::this_thread::yield();
    released = true;
  }
  other.join();
  EXPECT_TRUE(releasedWhenEntered);
}

TEST(Gate, KeepsThreadsApart) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 2000;
  Gate gate;
  int count = 0;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kRounds; ++i) {
        const LockScope outer(gate);
        const LockScope inner(gate);
        ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, kThreads * kRounds);
}

class Counter : public LmBaseLib::ILockable {
 public:
  void Lock() override { ++locks; }
  void Unlock() override { ++unlocks; }
  int locks = 0;
  int unlocks = 0;
};

TEST(LockScope, HoldsOnceWhateverItIsGiven) {
  Counter counter;
  {
    const LockScope byReference(counter);
    const LockScope byPointer(&counter);
    const LockScope nothing(static_cast<Counter*>(nullptr));
    EXPECT_EQ(counter.locks, 2);
    EXPECT_EQ(counter.unlocks, 0);
  }
  EXPECT_EQ(counter.locks, 2);
  EXPECT_EQ(counter.unlocks, 2);
}

TEST(Thread, IdsAreStableAndDistinct) {
  constexpr std::size_t kThreads = 8;
  std::vector<std::uint32_t> first(kThreads);
  std::vector<std::uint32_t> second(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      first[t] = LmUserLib::Thread::GetCurrentThreadID();
      second[t] = LmUserLib::Thread::GetCurrentThreadID();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(first, second);
  std::set<std::uint32_t> distinct(first.begin(), first.end());
  distinct.insert(LmUserLib::Thread::GetCurrentThreadID());
  EXPECT_EQ(distinct.size(), kThreads + 1);
}

}  // namespace
