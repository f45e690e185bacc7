#include "qmcore/platform/ZipArchive.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "qmcore/platform/Error.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

// "name size crc-ok" for every entry, read back by Python's zipfile, one a line.
std::string pythonListing(const fs::path& archive) {
  return testing::run(
      "python3 -c 'import sys, zipfile\n"
      "z = zipfile.ZipFile(sys.argv[1])\n"
      "assert z.testzip() is None\n"
      "for i in z.infolist(): print(i.filename, i.file_size)' '" +
      archive.string() + "'");
}

void writeFile(const fs::path& path, const std::string& content) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

struct TreeCase {
  const char* name;
  std::vector<std::pair<std::string, std::string>> files;  // relative path, content
  std::vector<std::string> folders;                        // extra empty folders
  std::string item;                                        // what is zipped
  std::string listing;
};

class ZipArchiveTreeTest : public ::testing::TestWithParam<TreeCase> {
 protected:
  testing::FakeEnv env_;
};

TEST_P(ZipArchiveTreeTest, ZipFileReadsBackTheItemUnderItsOwnName) {
  const fs::path root = env_.temporaryDirectory() / "src";
  for (const auto& [path, content] : GetParam().files) writeFile(root / path, content);
  for (const std::string& folder : GetParam().folders) fs::create_directories(root / folder);
  const fs::path archive = env_.temporaryDirectory() / "out.zip";
  writeZipArchive(root / GetParam().item, archive);
  EXPECT_EQ(pythonListing(archive), GetParam().listing);
  EXPECT_EQ(testing::run("unzip -tq '" + archive.string() + "' >/dev/null"), "");
}

INSTANTIATE_TEST_SUITE_P(
    Trees, ZipArchiveTreeTest,
    ::testing::Values(TreeCase{"SingleFile", {{"a.txt", "hello"}}, {}, "a.txt", "a.txt 5\n"},
                      TreeCase{"EmptyFile", {{"e.log", ""}}, {}, "e.log", "e.log 0\n"},
                      TreeCase{
                          "NestedFolder",
                          {{"logs/b.txt", "bb"}, {"logs/a.txt", "a"}, {"logs/sub/c.txt", "ccc"}},
                          {"logs/empty"},
                          "logs",
                          "logs/ 0\nlogs/a.txt 1\nlogs/b.txt 2\nlogs/empty/ 0\nlogs/sub/ 0\n"
                          "logs/sub/c.txt 3\n"},
                      TreeCase{"EmptyFolder", {}, {"none"}, "none", "none/ 0\n"},
                      TreeCase{"Utf8Name",
                               {{"d\xC3\xBC/\xC3\xA4.txt", "x"}},
                               {},
                               "d\xC3\xBC",
                               "d\xC3\xBC/ 0\nd\xC3\xBC/\xC3\xA4.txt 1\n"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ZipArchiveTest, CompressesLikeZipSix) {
  testing::FakeEnv env;
  const fs::path log = env.temporaryDirectory() / "big.log";
  std::string text;
  for (int i = 0; text.size() < 200000; ++i) text += "line " + std::to_string(i) + " of the log\n";
  writeFile(log, text);
  writeZipArchive(log, env.temporaryDirectory() / "big.zip");
  EXPECT_LT(fs::file_size(env.temporaryDirectory() / "big.zip"), text.size() / 4);
  EXPECT_EQ(testing::run("unzip -p '" + (env.temporaryDirectory() / "big.zip").string() + "'"),
            text);
}

struct FaultCase {
  const char* name;
  bool missingItem;
  bool destinationUnderAFile;
};

class ZipArchiveFaultTest : public ::testing::TestWithParam<FaultCase> {};

TEST_P(ZipArchiveFaultTest, ThrowsAndLeavesNoArchive) {
  testing::FakeEnv env;
  const fs::path tmp = env.temporaryDirectory();
  writeFile(tmp / "item.txt", "x");
  writeFile(tmp / "plain", "a file, not a folder");
  const fs::path item = GetParam().missingItem ? tmp / "missing.txt" : tmp / "item.txt";
  const fs::path archive =
      GetParam().destinationUnderAFile ? tmp / "plain" / "out.zip" : tmp / "out.zip";
  try {
    writeZipArchive(item, archive);
    FAIL() << "no error";
  } catch (const ErrorException& e) {
    EXPECT_EQ(e.error().domain(), kZipErrorDomain);
    EXPECT_FALSE(e.error().localizedDescription().empty());
  }
  EXPECT_FALSE(fs::exists(archive));
  // libzip's temporary file beside the archive is gone too.
  std::vector<std::string> left;
  for (const auto& entry : fs::directory_iterator(tmp)) left.push_back(entry.path().filename());
  std::sort(left.begin(), left.end());
  EXPECT_EQ(left, (std::vector<std::string>{"item.txt", "plain"}));
}

INSTANTIATE_TEST_SUITE_P(Faults, ZipArchiveFaultTest,
                         ::testing::Values(FaultCase{"MissingItem", true, false},
                                           FaultCase{"DestinationUnderAFile", false, true}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace qm
