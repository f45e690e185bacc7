#include "qmcore/files/FileHelper.hpp"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/files/FilesTestSupport.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::ConsoleCapture;
using testing::readFile;
using testing::tree;
using testing::writeFile;
using Files = std::vector<std::string>;

RegularExpression regex(std::string_view pattern) { return *RegularExpression::create(pattern); }

class FileHelperTest : public ::testing::Test {
 protected:
  FileHelperTest() : root_(env_.homeDirectory() / "root") {
    writeFile(root_ / "a.gpx", "a");
    writeFile(root_ / "b.txt", "b");
    writeFile(root_ / "sub/c.gpx", "c");
  }
  std::string root() const { return root_.string(); }

  testing::FakeEnv env_;
  const fs::path root_;
};

TEST_F(FileHelperTest, DeleteAllFilesKeepsSubFoldersUnlessAsked) {
  FileHelper::deleteAllFilesAtPath(root());
  EXPECT_EQ(tree(root_), (Files{"sub/", "sub/c.gpx"}));
  FileHelper::deleteAllFilesAtPath(root(), true);
  EXPECT_EQ(tree(root_), Files{});
  EXPECT_TRUE(fs::is_directory(root_));
}

TEST_F(FileHelperTest, DeleteDirectoryRemovesOnlyFolders) {
  FileHelper::deleteDirectoryAtPath((root_ / "a.gpx").string());
  EXPECT_TRUE(fs::exists(root_ / "a.gpx"));
  FileHelper::deleteDirectoryAtPath((root_ / "sub").string());
  EXPECT_EQ(tree(root_), (Files{"a.gpx", "b.txt"}));
}

TEST_F(FileHelperTest, RenameDirectoryReplacesWhatIsThere) {
  writeFile(env_.homeDirectory() / "renamed/old.txt", "old");
  FileHelper::ifExistsRenameDirectoryAtPath(root(), "renamed");
  EXPECT_FALSE(fs::exists(root_));
  EXPECT_EQ(tree(env_.homeDirectory() / "renamed"), (Files{"a.gpx", "b.txt", "sub/", "sub/c.gpx"}));
  // Not a folder: nothing happens.
  FileHelper::ifExistsRenameDirectoryAtPath((env_.homeDirectory() / "renamed/a.gpx").string(), "z");
  EXPECT_FALSE(fs::exists(env_.homeDirectory() / "renamed/z"));
}

TEST_F(FileHelperTest, PatternWalksSeeRelativePathsAtAnyDepth) {
  FileHelper::removeFiles(regex("\\.gpx$"), root());
  EXPECT_EQ(tree(root_), (Files{"b.txt", "sub/"}));
}

TEST_F(FileHelperTest, MoveFilesPrintsEachMoveAndEachFailure) {
  const fs::path target = env_.homeDirectory() / "target";
  writeFile(target / "a.gpx", "already there");
  fs::create_directories(target / "sub");
  ConsoleCapture console;
  FileHelper::moveFiles(regex("gpx"), root(), target.string());
  const std::string from = root_.string();
  const std::string to = target.string();
  const std::vector<std::string> texts = console.texts();
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_EQ(texts[0], "Moving file from " + from + "/a.gpx, to " + to + "/a.gpx");
  EXPECT_EQ(texts[1].rfind("Failed to move the file: " + from + "/a.gpx to " + to +
                               "/a.gpx. Error: Error Domain=NSPOSIXErrorDomain Code=17 ",
                           0),
            0u)
      << texts[1];
  EXPECT_EQ(texts[2], "Moving file from " + from + "/sub/c.gpx, to " + to + "/sub/c.gpx");
  EXPECT_EQ(readFile(target / "sub/c.gpx"), "c");
  EXPECT_EQ(readFile(target / "a.gpx"), "already there");
}

TEST_F(FileHelperTest, MoveFileCreatesTheFolderAndNeverReplaces) {
  const std::string destination = (env_.homeDirectory() / "new/deeper").string();
  EXPECT_TRUE(FileHelper::moveFile((root_ / "a.gpx").string(), destination, "x.gpx"));
  EXPECT_EQ(readFile(fs::path(destination) / "x.gpx"), "a");
  ConsoleCapture console;
  EXPECT_FALSE(FileHelper::moveFile((root_ / "b.txt").string(), destination, "x.gpx"));
  EXPECT_FALSE(FileHelper::moveFile((root_ / "gone").string(), destination, "y"));
  const std::vector<std::string> texts = console.texts();
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0].rfind("oops, error on move file: Error Domain=NSPOSIXErrorDomain Code=17 ", 0),
            0u);
  EXPECT_EQ(texts[1].rfind("oops, error on move file: Error Domain=NSPOSIXErrorDomain Code=2 ", 0),
            0u);
}

TEST_F(FileHelperTest, CopyAllFilesCarriesFoldersAlongAndReportsTheirEntries) {
  const fs::path target = env_.homeDirectory() / "copy";
  ConsoleCapture console;
  FileHelper::copyAllFilesFromDir(root(), target.string());
  // "sub" is copied with its contents, so its own entry then finds "sub/c.gpx" taken.
  EXPECT_EQ(console.texts().size(), 1u);
  EXPECT_EQ(tree(target), (Files{"a.gpx", "b.txt", "sub/", "sub/c.gpx"}));
  EXPECT_EQ(tree(root_), (Files{"a.gpx", "b.txt", "sub/", "sub/c.gpx"}));
}

TEST_F(FileHelperTest, CreateDirectoryPathReportsAFileInTheWay) {
  ConsoleCapture console;
  FileHelper::createDirectoryPath((root_ / "a.gpx/inner").string());
  const std::vector<std::string> texts = console.texts();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(
      texts[0].rfind("error creating a directory: " + (root_ / "a.gpx/inner").string() + ", ", 0),
      0u);
}

// Whether the file system of the test folder keeps user attributes at all.
bool userXattrsWork(const fs::path& file) {
  return ::setxattr(file.c_str(), "user.qmcore.probe", "1", 1, 0) == 0;
}

struct XattrCase {
  const char* name;
  std::string value;
  // What reads back: the first UTF-16-length bytes of the value, absent when they are not
  // whole UTF-8.
  std::optional<std::string> stored;
};

class XattrTest : public FileHelperTest, public ::testing::WithParamInterface<XattrCase> {};

TEST_P(XattrTest, WritesTheUtf16LengthInBytes) {
  const std::string file = (root_ / "a.gpx").string();
  if (!userXattrsWork(file)) GTEST_SKIP() << "no user attributes on this file system";
  ASSERT_TRUE(FileHelper::setXAttrStringValue(GetParam().value, "com.app.key", file));
  // Stored in the user namespace, readable with or without its prefix.
  EXPECT_EQ(FileHelper::xattrStringValueForKey("com.app.key", file), GetParam().stored);
  EXPECT_EQ(FileHelper::xattrStringValueForKey("user.com.app.key", file), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Values, XattrTest,
    ::testing::Values(XattrCase{"Ascii", "v1.2", "v1.2"}, XattrCase{"Empty", "", ""},
                      // "é" is 2 bytes, 1 unit: "été" is 3 units of 5 bytes, keeping "ét".
                      XattrCase{"TwoByteCut", "\xC3\xA9t\xC3\xA9", "\xC3\xA9t"},
                      // "€" is 3 bytes, 1 unit: "€a" is 2 units, keeping only a broken "€".
                      XattrCase{"CutMidCharacterReadsAsAbsent",
                                "\xE2\x82\xAC"
                                "a",
                                std::nullopt},
                      // An emoji is 4 bytes and 2 units.
                      XattrCase{"Astral", "\xF0\x9F\x98\x80xy", "\xF0\x9F\x98\x80"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FileHelperTest, MissingOrUnreadableAttributesAreAbsent) {
  const std::string file = (root_ / "a.gpx").string();
  EXPECT_EQ(FileHelper::xattrStringValueForKey("never.written", file), std::nullopt);
  EXPECT_EQ(FileHelper::xattrStringValueForKey("k", (root_ / "missing").string()), std::nullopt);
  EXPECT_FALSE(FileHelper::setXAttrStringValue("v", "k", (root_ / "missing").string()));
  if (!userXattrsWork(file)) GTEST_SKIP() << "no user attributes on this file system";
  // Bytes that are not UTF-8 read as absent.
  ASSERT_EQ(::setxattr(file.c_str(), "user.bad", "\xFF\xFE", 2, 0), 0);
  EXPECT_EQ(FileHelper::xattrStringValueForKey("bad", file), std::nullopt);
}

}  // namespace
}  // namespace qm
