#include "platform/textfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "core/fault.h"
#include "platform/save_file.h"

namespace varo {

std::string SystemReason(int error) {
    return std::strerror(error);
}

void FileText::Line(std::initializer_list<std::string_view> items) {
    for (std::string_view item : items)
        text_ += item;
    text_ += kFileLineEnd;
}

void WriteTextFile(const std::string& path, const std::function<void(FileText&)>& build) {
    FileText text;
    build(text);
    SaveFile(path, text.str());
}

std::optional<std::string> SaveFailure(const std::string& path, const std::function<void()>& save) {
    try {
        save();
        return std::nullopt;
    } catch (const FileError& failure) {
        return failure.what();
    } catch (const ArithmeticFault& fault) {
        return path + ": " + fault.what();
    }
}

InputFile::InputFile(const std::string& path) : path_(path) {
    fd_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ < 0) throw FileError(path_, SystemReason(errno));
    struct stat info {};
    const bool known = ::fstat(fd_, &info) == 0;
    if (known && S_ISREG(info.st_mode)) return;
    const std::string reason = !known                  ? SystemReason(errno)
                               : S_ISDIR(info.st_mode) ? SystemReason(EISDIR)
                                                       : "not a regular file";
    ::close(fd_);
    throw FileError(path_, reason);
}

InputFile::~InputFile() {
    ::close(fd_);
}

std::size_t InputFile::Read(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(fd_, buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw FileError(path_, SystemReason(errno));
    }
}

TextFileReader::TextFileReader(const std::string& path, std::size_t maxBytes) {
    InputFile file(path);
    char buffer[4096];
    while (text_.size() < maxBytes) {
        const std::size_t count =
            file.Read(buffer, std::min(sizeof buffer, maxBytes - text_.size()));
        if (count == 0) break;
        text_.append(buffer, count);
    }
}

bool TextFileReader::ReadLine(std::string& line) {
    line.clear();
    if (AtEnd()) return false;
    const std::size_t end = text_.find_first_of("\r\n", position_);
    if (end == std::string::npos) {
        line = text_.substr(position_);
        position_ = text_.size();
        return true;
    }
    line = text_.substr(position_, end - position_);
    position_ = end + 1;
    if (text_[end] == '\r' && position_ < text_.size() && text_[position_] == '\n') ++position_;
    return true;
}

std::string ReadAtMost(InputFile& file, std::size_t limit) {
    std::string text;
    std::array<char, 16 * 1024> buffer{};
    while (text.size() <= limit) {
        const std::size_t count = file.Read(buffer.data(), buffer.size());
        if (count == 0) break;
        text.append(buffer.data(), count);
    }
    return text;
}

}  // namespace varo
