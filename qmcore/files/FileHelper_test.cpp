#include "qmcore/files/FileHelper.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::ConsoleCapture;
using ::testing::ElementsAre;
using testing::readFile;
using ::testing::StartsWith;
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

TEST_F(FileHelperTest, DeleteDirectoryAndPatternRemovalTouchOnlyTheirTargets) {
  FileHelper::deleteDirectoryAtPath((root_ / "b.txt").string());  // not a folder: kept
  FileHelper::removeFiles(regex("\\.gpx$"), root());              // at any depth
  EXPECT_EQ(tree(root_), (Files{"b.txt", "sub/"}));
  FileHelper::deleteDirectoryAtPath((root_ / "sub").string());
  EXPECT_EQ(tree(root_), Files{"b.txt"});
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

TEST_F(FileHelperTest, MoveFilesPrintsEachMoveAndEachFailure) {
  const fs::path target = env_.homeDirectory() / "target";
  writeFile(target / "a.gpx", "already there");
  fs::create_directories(target / "sub");
  ConsoleCapture console;
  FileHelper::moveFiles(regex("gpx"), root(), target.string());
  const std::string from = root_.string();
  const std::string to = target.string();
  EXPECT_THAT(console.texts(),
              ElementsAre("Moving file from " + from + "/a.gpx, to " + to + "/a.gpx",
                          StartsWith("Failed to move the file: " + from + "/a.gpx to " + to +
                                     "/a.gpx. Error: Error Domain=NSPOSIXErrorDomain Code=17 "),
                          "Moving file from " + from + "/sub/c.gpx, to " + to + "/sub/c.gpx"));
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
  // A file in the way of the folder: making the folder fails, and so does the move.
  const std::string blocked = (root_ / "b.txt/inner").string();
  EXPECT_FALSE(FileHelper::moveFile((root_ / "sub/c.gpx").string(), blocked, "y"));
  const std::string failed = "oops, error on move file: Error Domain=NSPOSIXErrorDomain Code=";
  EXPECT_THAT(console.texts(),
              ElementsAre(StartsWith(failed + "17 "), StartsWith(failed + "2 "),
                          StartsWith("error creating a directory: " + blocked + ", "),
                          StartsWith(failed + "20 ")));
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

// An attribute holds the value's first UTF-16-length bytes and reads back only as whole UTF-8.
TEST_F(FileHelperTest, AttributesKeepTheUtf16LengthInBytes) {
  const std::string file = (root_ / "a.gpx").string();
  const std::string missing = (root_ / "missing").string();
  EXPECT_EQ(FileHelper::xattrStringValueForKey("never.written", file), std::nullopt);
  EXPECT_EQ(FileHelper::xattrStringValueForKey("k", missing), std::nullopt);
  EXPECT_FALSE(FileHelper::setXAttrStringValue("v", "k", missing));
  if (::setxattr(file.c_str(), "user.bad", "\xFF\xFE", 2, 0) != 0) {
    GTEST_SKIP() << "no user attributes on this file system";
  }
  EXPECT_EQ(FileHelper::xattrStringValueForKey("bad", file), std::nullopt);
  const struct {
    std::string value;
    std::optional<std::string> stored;
  } cases[] = {
      {"", ""},
      {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t"},  // "été": 3 units, 5 bytes
      {"\xE2\x82\xAC"
       "a",
       std::nullopt},                              // "€a": 2 units, keeping a broken "€"
      {"\xF0\x9F\x98\x80xy", "\xF0\x9F\x98\x80"},  // an emoji is 2 units
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(FileHelper::setXAttrStringValue(c.value, "com.app.key", file));
    // Stored in the user namespace, readable with or without its prefix.
    EXPECT_EQ(FileHelper::xattrStringValueForKey("com.app.key", file), c.stored) << c.value;
    EXPECT_EQ(FileHelper::xattrStringValueForKey("user.com.app.key", file), c.stored);
  }
}

}  // namespace
}  // namespace qm
