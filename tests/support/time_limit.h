#pragma once

#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>

namespace varo::testing {

// Whether `step`, on a thread of its own, finished within `limit`; a hung step is left behind.
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
