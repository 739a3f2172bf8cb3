#include "platform/textfile.h"

#include <cerrno>
#include <cstring>

namespace varo {

namespace {

std::string FailureText(std::string_view action, const std::string& path) {
    const int error = errno;
    std::string text = "Cannot " + std::string(action) + " " + path;
    if (error != 0) text += ": " + std::string(std::strerror(error));
    return text;
}

}  // namespace

void FileText::Line(std::initializer_list<std::string_view> items) {
    for (std::string_view item : items)
        text_ += item;
    text_ += kFileLineEnd;
}

TextFileWriter::TextFileWriter(const std::string& path) : path_(path) {
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "wb"));
    if (!file_) throw FileError(FailureText("create", path_));
}

void TextFileWriter::Write(std::string_view bytes) {
    if (!file_) throw FileError("File already closed: " + path_);
    errno = 0;
    if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size())
        throw FileError(FailureText("write", path_));
}

void TextFileWriter::Close() {
    if (!file_) return;
    errno = 0;
    const bool flushed = std::fflush(file_.get()) == 0;
    const bool closed = std::fclose(file_.release()) == 0;
    if (!flushed || !closed) throw FileError(FailureText("write", path_));
}

void WriteTextFile(const std::string& path, const std::function<void(FileText&)>& build) {
    TextFileWriter file(path);
    FileText text;
    try {
        build(text);
    } catch (...) {
        file.Write(text.str());
        file.Close();
        throw;
    }
    file.Write(text.str());
    file.Close();
}

TextFileReader::TextFileReader(const std::string& path) {
    errno = 0;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                         &std::fclose);
    if (!file) throw FileError(FailureText("open", path));
    char buffer[4096];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, file.get())) > 0)
        text_.append(buffer, count);
    if (std::ferror(file.get())) throw FileError(FailureText("read", path));
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

}  // namespace varo
