#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varo {

// Line end of every file the program writes.
inline constexpr std::string_view kFileLineEnd = "\r\n";

// A file could not be opened, read or written. what() is "path: reason", the detail a failure
// report shows beside the program's own sentence. The writers and readers catch it at their own
// boundary and take their failure path.
class FileError : public std::runtime_error {
  public:
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error(path + ": " + reason) {}
};

// The system's text for an error number ("No space left on device").
std::string SystemReason(int error);

// The text of a file built in memory before it is written: the items of a line are written back
// to back with nothing between them, and every line ends in CR LF.
class FileText {
  public:
    void Line(std::initializer_list<std::string_view> items = {});
    const std::string& str() const { return text_; }

  private:
    std::string text_;
};

// Lets `build` fill the file's text and saves it whole with SaveFile. When `build` throws, nothing
// is written and the previous file stays. Throws FileError.
void WriteTextFile(const std::string& path, const std::function<void(FileText&)>& build);

// Runs `save`, which builds a file's text and saves it to `path`; returns the failure's detail
// ("path: reason"), or nothing when the file was saved. An arithmetic fault raised while building
// the text is a failure too, and nothing is written then.
std::optional<std::string> SaveFailure(const std::string& path, const std::function<void()>& save);

// A file opened for reading that can never hang the program: only a regular file is accepted, and
// the open itself never waits (a pipe or a device is refused at once). Throws FileError.
class InputFile {
  public:
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Up to `size` bytes into `buffer`; 0 at the end of the file. Throws FileError.
    std::size_t Read(char* buffer, std::size_t size);

  private:
    std::string path_;
    int fd_ = -1;
};

// What the file holds, but no more than one byte past `limit`: enough to tell a file that is
// too large without reading it all. Throws FileError.
std::string ReadAtMost(InputFile& file, std::size_t limit);

// A text file read whole on opening, at most `maxBytes` of it, and then taken line by line. A
// line ends at CR LF, and also at a lone LF or a lone CR, so files edited on any system read
// alike. The file itself is closed before the constructor returns. Throws FileError.
class TextFileReader {
  public:
    TextFileReader(const std::string& path, std::size_t maxBytes);
    bool AtEnd() const { return position_ >= text_.size(); }
    // The next line without its line end; false (and `line` emptied) at the end of the text.
    bool ReadLine(std::string& line);

  private:
    std::string text_;
    std::size_t position_ = 0;
};

}  // namespace varo
