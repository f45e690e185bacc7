#include "qmcore/platform/ZipArchive.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "qmcore/platform/Error.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

// Empty folders and files, UTF-8 names, entries in name order, as Python's zipfile reads them.
TEST(ZipArchiveTest, FolderReadsBackUnderItsOwnNameInAnotherReader) {
  testing::FakeEnv env;
  const fs::path root = env.temporaryDirectory() / "src";
  for (const auto& [path, content] :
       {std::pair{"logs/b.txt", "bb"}, {"logs/\xC3\xA4.txt", ""}, {"logs/sub/c.txt", "ccc"}}) {
    testing::writeFile(root / path, content);
  }
  fs::create_directories(root / "logs/empty");
  const fs::path archive = env.temporaryDirectory() / "out.zip";
  writeZipArchive(root / "logs", archive);
  EXPECT_EQ(
      testing::run("python3 -c 'import sys, zipfile\n"
                   "z = zipfile.ZipFile(sys.argv[1])\n"
                   "assert z.testzip() is None\n"
                   "for i in z.infolist(): print(i.filename, i.file_size)' '" +
                   archive.string() + "'"),
      "logs/ 0\nlogs/b.txt 2\nlogs/empty/ 0\nlogs/sub/ 0\nlogs/sub/c.txt 3\nlogs/\xC3\xA4.txt 0\n");
}

TEST(ZipArchiveTest, FileIsCompressedLikeZipSix) {
  testing::FakeEnv env;
  const fs::path log = env.temporaryDirectory() / "big.log";
  std::string text;
  for (int i = 0; text.size() < 200000; ++i) text += "line " + std::to_string(i) + " of the log\n";
  testing::writeFile(log, text);
  const fs::path archive = env.temporaryDirectory() / "big.zip";
  writeZipArchive(log, archive);
  EXPECT_LT(fs::file_size(archive), text.size() / 4);
  EXPECT_EQ(testing::zipContents(archive), text);
  EXPECT_EQ(testing::run("unzip -Z1 '" + archive.string() + "'"), "big.log\n");  // its own name
}

TEST(ZipArchiveTest, FailureThrowsAndLeavesNoArchive) {
  // A missing item, and a destination under a file.
  for (const auto& [item, archive] :
       {std::pair{"missing.txt", "out.zip"}, std::pair{"item.txt", "plain/out.zip"}}) {
    SCOPED_TRACE(archive);
    testing::FakeEnv env;
    const fs::path tmp = env.temporaryDirectory();
    testing::writeFile(tmp / "item.txt", "x");
    testing::writeFile(tmp / "plain", "a file, not a folder");
    try {
      writeZipArchive(tmp / item, tmp / archive);
      ADD_FAILURE() << "no error";
    } catch (const ErrorException& e) {
      EXPECT_EQ(e.error().domain(), kZipErrorDomain);
    }
    // Neither the archive nor libzip's temporary file beside it is left.
    EXPECT_EQ(testing::tree(tmp), (std::vector<std::string>{"item.txt", "plain"}));
  }
}

}  // namespace
}  // namespace qm
