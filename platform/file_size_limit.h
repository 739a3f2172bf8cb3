#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace varo {

// Test double for a disk that fills up: while it lives, every file this process writes fails once
// it would grow past `bytes` (the system's file-size limit, as `ulimit -f` sets it). Files already
// larger can still be read, renamed and removed.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(std::size_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &saved_);
        rlimit limited = saved_;
        limited.rlim_cur = static_cast<rlim_t>(bytes);
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &saved_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit saved_{};
};

}  // namespace varo
