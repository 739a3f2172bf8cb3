#include "platform/save_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <set>
#include <vector>

#include "platform/textfile.h"
#include "platform/write_signals.h"

namespace varo {

namespace {

class Descriptor {
  public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }

    int get() const { return fd_; }
    // Closes now, so that a failure of the close itself is seen. False (errno set) on failure.
    bool Close() {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }

  private:
    int fd_;
};

[[noreturn]] void Fail(const std::string& path) {
    throw FileError(path, SystemReason(errno));
}

void WriteAll(const Descriptor& file, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) Fail(path);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The file a path names once symbolic links are followed; the path itself when it names nothing
// yet (or a dangling link, which the new file then replaces).
std::string ResolvedTarget(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return path;
    std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                         &std::free);
    return resolved ? std::string(resolved.get()) : path;
}

// A target that exists but cannot be replaced by renaming: written in place instead.
bool IsSpecialFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && !S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode);
}

// A file the user made read-only is not replaced, even where the folder would allow it (or the
// program runs as root): refused with the reason writing into it would give.
void RefuseReadOnly(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return;
    if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
        throw FileError(path, SystemReason(EACCES));
    if (::access(path.c_str(), W_OK) != 0) Fail(path);
}

bool HasOtherNames(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink > 1;
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// The process number in a temporary file's name ".NAME.PID-SERIAL.tmp" made for `name`; 0 when
// `entry` is no such name.
pid_t TemporaryOwner(std::string_view entry, const std::string& name) {
    const std::string prefix = "." + name + ".";
    constexpr std::string_view kSuffix = ".tmp";
    if (entry.size() <= prefix.size() + kSuffix.size() || !entry.starts_with(prefix) ||
        !entry.ends_with(kSuffix))
        return 0;
    const char* const stop = entry.data() + entry.size() - kSuffix.size();
    pid_t pid = 0;
    const auto [dash, pidError] = std::from_chars(entry.data() + prefix.size(), stop, pid);
    if (pidError != std::errc() || dash == stop || *dash != '-') return 0;
    unsigned serial = 0;
    const auto [end, serialError] = std::from_chars(dash + 1, stop, serial);
    return serialError == std::errc() && end == stop ? pid : 0;
}

bool ProcessIsGone(pid_t pid) {
    return ::kill(pid, 0) != 0 && errno == ESRCH;
}

// Temporary files a killed process left beside `name` go the next time that file is saved.
void ClearStaleTemporaries(const std::string& folder, const std::string& name) {
    const auto close = [](DIR* open) { ::closedir(open); };
    std::unique_ptr<DIR, decltype(close)> entries(::opendir(folder.c_str()), close);
    if (!entries) return;
    while (const dirent* entry = ::readdir(entries.get())) {
        const pid_t owner = TemporaryOwner(entry->d_name, name);
        if (owner > 0 && owner != ::getpid() && ProcessIsGone(owner))
            ::unlinkat(::dirfd(entries.get()), entry->d_name, 0);
    }
}

std::string ReadWhole(const std::string& path) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.get() < 0) Fail(path);
    std::string bytes;
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) Fail(path);
        if (count == 0) return bytes;
        bytes.append(buffer, static_cast<std::size_t>(count));
    }
}

// Overwrites the file's content in place, so every name of it sees the new bytes.
void RewriteInPlace(const std::string& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.get() < 0) Fail(path);
    WriteAll(file, bytes, path);
    if (::ftruncate(file.get(), static_cast<off_t>(bytes.size())) != 0 ||
        ::fsync(file.get()) != 0 || !file.Close())
        Fail(path);
}

// Exclusive hold on the folders a set of files is saved into, so that two programs saving the
// same set at once leave the set of one of them. Advisory: only savers that ask for it wait.
class FolderLocks {
  public:
    explicit FolderLocks(const std::set<std::string>& folders) {
        for (const std::string& folder : folders) {
            Descriptor held(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            // A folder that cannot be locked (some network file systems) is saved into unlocked.
            if (held.get() < 0) continue;
            while (::flock(held.get(), LOCK_EX) != 0 && errno == EINTR) {
            }
            held_.push_back(std::move(held));
        }
    }

  private:
    std::vector<Descriptor> held_;
};

void WriteInPlace(const std::string& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.get() < 0) Fail(path);
    // Non-blocking only for the open, so a pipe without a reader fails instead of waiting.
    const int flags = ::fcntl(file.get(), F_GETFL);
    if (flags < 0 || ::fcntl(file.get(), F_SETFL, flags & ~O_NONBLOCK) < 0) Fail(path);
    WriteAll(file, bytes, path);
    if (!file.Close()) Fail(path);
}

// A new file beside its target, filled and flushed, waiting to replace the target. Removed again
// unless Commit ran.
class PendingFile {
  public:
    PendingFile(const std::string& target, std::string_view bytes)
        : target_(target), bytes_(bytes) {
        ClearStaleTemporaries(FolderOf(target_), NameOf(target_));
        Descriptor file = CreateBeside();
        try {
            TakeOverMode(file);
            WriteAll(file, bytes, target_);
            if (::fsync(file.get()) != 0 || !file.Close()) Fail(target_);
        } catch (...) {
            ::unlink(temporary_.c_str());
            throw;
        }
    }
    ~PendingFile() {
        if (!committed_) ::unlink(temporary_.c_str());
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    void Commit() {
        if (HasOtherNames(target_)) {
            CopyOverLinkedTarget();
            return;
        }
        if (::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(target_);
        committed_ = true;
        SyncFolder();
    }

  private:
    // A file with other names (hard links) is overwritten in place so that they all see the new
    // content. The new file written beside it first proved that the bytes fit on the disk and
    // under the size limit; it goes before the copy to leave room for it. A copy that fails
    // anyway puts the previous content back.
    void CopyOverLinkedTarget() {
        const std::string previous = ReadWhole(target_);
        ::unlink(temporary_.c_str());
        committed_ = true;
        try {
            RewriteInPlace(target_, bytes_);
        } catch (const FileError&) {
            try {
                RewriteInPlace(target_, previous);
            } catch (const FileError&) {
                // The first failure is the one to report.
            }
            throw;
        }
    }

    // A hidden name of our own in the target's folder; created exclusively so that no other file
    // is ever touched.
    Descriptor CreateBeside() {
        static std::atomic<unsigned> serial{0};
        const std::string folder = FolderOf(target_);
        const std::string name = NameOf(target_);
        for (int attempt = 0; attempt < 100; ++attempt) {
            temporary_ = folder + "/." + name + "." + std::to_string(::getpid()) + "-" +
                         std::to_string(serial++) + ".tmp";
            const int fd =
                ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd >= 0) return Descriptor(fd);
            if (errno != EEXIST) break;
        }
        Fail(target_);
    }

    // A replaced file keeps its permissions; a new one gets what the user's umask allows.
    void TakeOverMode(const Descriptor& file) {
        struct stat info {};
        if (::stat(target_.c_str(), &info) != 0) return;
        if (S_ISDIR(info.st_mode)) throw FileError(target_, SystemReason(EISDIR));
        ::fchmod(file.get(), info.st_mode & 07777);
    }

    // The rename itself reaches the disk only with its folder.
    void SyncFolder() const {
        Descriptor folder(::open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.get() >= 0) ::fsync(folder.get());
    }

    std::string target_;
    std::string_view bytes_;
    std::string temporary_;
    bool committed_ = false;
};

WrittenFilesObserver& Observer() {
    static WrittenFilesObserver observer;
    return observer;
}

}  // namespace

void ObserveWrittenFiles(WrittenFilesObserver observer) {
    Observer() = std::move(observer);
}

void SaveFile(const std::string& path, std::string_view bytes) {
    const FileContents file{path, std::string(bytes)};
    SaveFiles(std::span<const FileContents>(&file, 1));
}

void SaveFiles(std::span<const FileContents> files) {
    std::vector<const FileContents*> special;
    {
        // A signal to end waits until every new file has replaced its target or is gone again.
        const HeldEndingSignals held;
        std::vector<std::unique_ptr<PendingFile>> pending;
        std::set<std::string> folders;
        for (const FileContents& file : files) {
            const std::string target = ResolvedTarget(file.path);
            if (IsSpecialFile(target)) {
                special.push_back(&file);
                continue;
            }
            RefuseReadOnly(target);
            pending.push_back(std::make_unique<PendingFile>(target, file.bytes));
            folders.insert(FolderOf(target));
        }
        const FolderLocks locks(pending.size() > 1 ? folders : std::set<std::string>{});
        for (const auto& file : pending)
            file->Commit();
    }
    // Outside the hold: a pipe whose reader never reads must not keep the program from ending.
    for (const FileContents* file : special)
        WriteInPlace(file->path, file->bytes);
    if (Observer()) {
        std::vector<std::string> written;
        for (const FileContents& file : files)
            written.push_back(file.path);
        Observer()(written);
    }
}

}  // namespace varo
