#pragma once

#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>

namespace varo::testing {

// Runs `step` on a thread of its own and reports whether it finished within `limit`. A step that
// hangs (a read that waits forever) makes the test fail instead of hanging the suite: the thread
// is left behind and ends with the process.
inline bool FinishesWithin(std::chrono::milliseconds limit, std::function<void()> step) {
    std::packaged_task<void()> task(std::move(step));
    std::future<void> done = task.get_future();
    std::thread(std::move(task)).detach();
    if (done.wait_for(limit) != std::future_status::ready) return false;
    done.get();  // lets an exception of the step reach the test
    return true;
}

// A named pipe with no writer: opening it for reading the ordinary way waits forever.
inline void MakePipe(const std::string& path) {
    ::mkfifo(path.c_str(), 0600);
}

}  // namespace varo::testing
