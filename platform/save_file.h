#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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
// A file with other names (hard links) is overwritten in place once the new bytes have proved to
// fit, so every name shows the new content; should that copy fail, the old content is put back.
// A read-only file (no write permission for anyone) is refused with the system's reason, whoever
// runs the program. SIGTERM, SIGHUP and SIGINT wait for the save to finish or undo itself, and
// temporary files a killed process left beside the target are removed.
// An existing target that is no regular file (a terminal, /dev/null, a pipe with a reader) cannot
// be replaced and is written in place; a pipe without a reader fails at once instead of waiting.
// Throws FileError naming the path and the system's reason.
void SaveFile(const std::string& path, std::string_view bytes);

// Saves several files as one: every new file is written and flushed before the first of them
// replaces its target, so a failure while writing leaves all the targets as they were. The
// replacing holds an advisory lock on each folder, so two programs saving the same files at once
// leave the whole set of one of them.
void SaveFiles(std::span<const FileContents> files);

// Told of every set of files saved whole, by path as given; the desktop names them on its
// screens. One observer for the program; none by default.
using WrittenFilesObserver = std::function<void(const std::vector<std::string>& paths)>;
void ObserveWrittenFiles(WrittenFilesObserver observer);

}  // namespace varo
