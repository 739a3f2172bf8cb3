#pragma once

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varo {

// Line end of every file the program writes.
inline constexpr std::string_view kFileLineEnd = "\r\n";

// A file could not be opened, read, written or closed. The writers and readers catch it at their
// own boundary and take their failure path.
class FileError : public std::runtime_error {
  public:
    explicit FileError(const std::string& what) : std::runtime_error(what) {}
};

// The text of a file built in memory before it is written: the items of a line are written back
// to back with nothing between them, and every line ends in CR LF.
class FileText {
  public:
    void Line(std::initializer_list<std::string_view> items = {});
    const std::string& str() const { return text_; }

  private:
    std::string text_;
};

// A file opened for output: created, or emptied if it exists. Bytes are written as given (8-bit
// text, no translation of line ends). The destructor closes the file, so every way out of a
// writer, a fault included, leaves no file open: that is how "close all open files" holds on
// every path.
class TextFileWriter {
  public:
    explicit TextFileWriter(const std::string& path);  // throws FileError
    void Write(std::string_view bytes);                // throws FileError
    // Flushes and closes; a failure here (disk full) is a write failure. Throws FileError.
    void Close();

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> file_;
    std::string path_;
};

// Opens `path` for output, lets `build` fill the file's text, writes it and closes the file.
// When `build` throws, the text built so far is written before the exception goes on, so a fault
// in the middle leaves the same partial file that writing line by line would have left.
// Throws FileError when the file cannot be opened or written; the file is closed on every path.
void WriteTextFile(const std::string& path, const std::function<void(FileText&)>& build);

// A text file opened for input, read whole on opening and then taken line by line. A line ends
// at CR LF, and also at a lone LF or a lone CR, so files edited on any system read alike. The
// file itself is closed before the constructor returns.
class TextFileReader {
  public:
    explicit TextFileReader(const std::string& path);  // throws FileError
    bool AtEnd() const { return position_ >= text_.size(); }
    // The next line without its line end; false (and `line` emptied) at the end of the file.
    bool ReadLine(std::string& line);
    // The whole text as read.
    const std::string& text() const { return text_; }

  private:
    std::string text_;
    std::size_t position_ = 0;
};

}  // namespace varo
