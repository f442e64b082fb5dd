#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

namespace LmTool {

/// The most jobs, and threads, that a user may ask for.
inline constexpr unsigned kMostJobs = 256;

/// The processors that this machine has, within 1 and `kMostJobs`.
unsigned Processors();

/// Works on numbered things on several threads. They begin in order, and their messages come out in order, each as soon
/// as all before it are done. So an error is reported by a message, and the others go on.
/// @param count  the things, numbered from 0
/// @param jobs  the most that are worked on at a time, 1 or more
/// @param work  does one, and writes its messages to the stream; called on any thread
/// @param print  prints messages; called on one thread at a time, and with texts that are not empty
/// @throws the first exception that `work` threw; no thing begins after that
void RunInOrder(std::size_t count, unsigned jobs, const std::function<void(std::size_t, std::ostream&)>& work,
                const std::function<void(const std::string&)>& print);

}  // namespace LmTool
