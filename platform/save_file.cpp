#include "platform/save_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/textfile.h"

namespace varo {

namespace {

// A file-size limit is a failed write like a full disk, not a reason for the program to die: the
// writer then reports it and the previous file stays.
void TreatFileSizeLimitAsWriteFailure() {
    static const bool ignored = std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR;
    (void)ignored;
}

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
    PendingFile(const std::string& target, std::string_view bytes) : target_(target) {
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
        if (::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(target_);
        committed_ = true;
        SyncFolder();
    }

  private:
    // A hidden name of our own in the target's folder; created exclusively so that no other file
    // is ever touched.
    Descriptor CreateBeside() {
        static std::atomic<unsigned> serial{0};
        const std::string folder = FolderOf(target_);
        const std::string name = target_.substr(target_.rfind('/') + 1);
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
    std::string temporary_;
    bool committed_ = false;
};

}  // namespace

void SaveFile(const std::string& path, std::string_view bytes) {
    const FileContents file{path, std::string(bytes)};
    SaveFiles(std::span<const FileContents>(&file, 1));
}

void SaveFiles(std::span<const FileContents> files) {
    TreatFileSizeLimitAsWriteFailure();
    std::vector<std::unique_ptr<PendingFile>> pending;
    std::vector<const FileContents*> special;
    for (const FileContents& file : files) {
        const std::string target = ResolvedTarget(file.path);
        if (IsSpecialFile(target)) {
            special.push_back(&file);
            continue;
        }
        pending.push_back(std::make_unique<PendingFile>(target, file.bytes));
    }
    for (const auto& file : pending)
        file->Commit();
    for (const FileContents* file : special)
        WriteInPlace(file->path, file->bytes);
}

}  // namespace varo
