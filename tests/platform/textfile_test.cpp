#include "platform/textfile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

TEST(FileText, WritesItemsBackToBackAndEndsEveryLineInCrLf) {
    FileText text;
    text.Line({"SHEET 1 ", " 1000 "});
    text.Line();
    text.Line({"a", "", "b"});
    EXPECT_EQ(text.str(), "SHEET 1  1000 \r\n\r\nab\r\n");
}

TEST(WriteTextFile, WritesTheBytesAsGivenAndEmptiesALongerFile) {
    TempFolder folder;
    const std::string path = folder.File("out.txt");
    WriteBytes(path, std::string(100, 'x'));
    WriteTextFile(path, [](FileText& text) { text.Line({"one\ttwo"}); });
    EXPECT_EQ(ReadBytes(path), "one\ttwo\r\n");
}

TEST(WriteTextFile, AFaultWhileBuildingStillWritesTheLinesBuiltBeforeIt) {
    TempFolder folder;
    const std::string path = folder.File("partial.txt");
    EXPECT_THROW(WriteTextFile(path,
                               [](FileText& text) {
                                   text.Line({"first"});
                                   throw std::runtime_error("fault");
                               }),
                 std::runtime_error);
    EXPECT_EQ(ReadBytes(path), "first\r\n");
}

TEST(WriteTextFile, FailsToOpenWhereNoFileCanBeCreated) {
    TempFolder folder;
    for (const std::string& path : {folder.File("missing/out.txt"), folder.str()}) {
        bool built = false;
        EXPECT_THROW(WriteTextFile(path, [&](FileText&) { built = true; }), FileError) << path;
        EXPECT_FALSE(built) << "nothing is built when the file cannot be opened";
    }
}

TEST(TextFileWriter, ReportsAFullDisk) {
    // Small writes sit in the buffer and fail only when it is flushed on closing.
    for (const std::size_t size : {std::size_t{10}, std::size_t{100000}}) {
        TextFileWriter file("/dev/full");
        EXPECT_THROW(
            {
                file.Write(std::string(size, 'x'));
                file.Close();
            },
            FileError)
            << size;
    }
}

std::vector<std::string> AllLines(const std::string& bytes) {
    TempFolder folder;
    WriteBytes(folder.File("in.txt"), bytes);
    TextFileReader file(folder.File("in.txt"));
    std::vector<std::string> lines;
    std::string line;
    while (file.ReadLine(line))
        lines.push_back(line);
    EXPECT_TRUE(file.AtEnd());
    EXPECT_FALSE(file.ReadLine(line));
    return lines;
}

TEST(TextFileReader, SplitsOnCrLfAndOnALoneCrOrLf) {
    using Lines = std::vector<std::string>;
    const struct {
        std::string bytes;
        Lines lines;
    } cases[] = {
        {"", {}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\r\nb", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"\r\n", {""}},
        {"a\r\r\nb", {"a", "", "b"}},
        {"a\n\rb", {"a", "", "b"}},
        {" *x: 1 \r\n", {" *x: 1 "}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AllLines(c.bytes), c.lines) << c.bytes;
}

TEST(TextFileReader, IsAtItsEndRightAfterTheLastLineEnd) {
    TempFolder folder;
    WriteBytes(folder.File("in.txt"), "a\r\n\r\n");
    TextFileReader file(folder.File("in.txt"));
    std::string line;
    ASSERT_TRUE(file.ReadLine(line));
    EXPECT_FALSE(file.AtEnd());
    ASSERT_TRUE(file.ReadLine(line));
    EXPECT_EQ(line, "");
    EXPECT_TRUE(file.AtEnd());
}

TEST(TextFileReader, FailsOnAMissingFileOrAFolder) {
    TempFolder folder;
    EXPECT_THROW(TextFileReader(folder.File("none.txt")), FileError);
    EXPECT_THROW(TextFileReader(folder.str()), FileError);
}

}  // namespace
}  // namespace varo
