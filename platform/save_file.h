#pragma once

#include <span>
#include <string>
#include <string_view>

namespace varo {

// The whole text of one file to be saved.
struct FileContents {
    std::string path;
    std::string bytes;
};

// Saves `bytes` as the file `path`, whole or not at all: the bytes go into a new file in the same
// folder, which replaces `path` only once every byte is written and flushed to the disk. A failure
// (no permission, disk full, file-size limit) leaves an existing file exactly as it was and no new
// file behind. A symbolic link is followed, so the file it names is replaced and the link kept.
// An existing target that is no regular file (a terminal, /dev/null, a pipe with a reader) cannot
// be replaced and is written in place; a pipe without a reader fails at once instead of waiting.
// Throws FileError naming the path and the system's reason.
void SaveFile(const std::string& path, std::string_view bytes);

// Saves several files as one: every new file is written and flushed before the first of them
// replaces its target, so a failure while writing leaves all the targets as they were.
void SaveFiles(std::span<const FileContents> files);

}  // namespace varo
