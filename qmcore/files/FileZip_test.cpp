#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/files/FilesTestSupport.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::ConsoleCapture;
using testing::run;
using testing::tree;
using testing::writeFile;

// Entry names of an archive as Python's zipfile reads them (after checking every CRC).
std::string pythonNames(const fs::path& archive) {
  return run(
      "python3 -c 'import sys, zipfile\n"
      "z = zipfile.ZipFile(sys.argv[1])\n"
      "assert z.testzip() is None\n"
      "print(\" \".join(z.namelist()))' '" +
      archive.string() + "'");
}

struct ZipCase {
  const char* name;
  bool folder;           // zip the folder "data" instead of the file "a.log"
  bool giveDestination;  // else the default, source + ".zip"
  std::string names;     // the archive's entries
};

class ZipTest : public ::testing::TestWithParam<ZipCase> {
 protected:
  testing::FakeEnv env_;
};

TEST_P(ZipTest, WritesTheArchiveAndCleansUp) {
  const fs::path tmp = env_.temporaryDirectory();
  const fs::path work = env_.homeDirectory();
  writeFile(work / "a.log", "line\n");
  writeFile(work / "data/x.txt", "x");
  writeFile(work / "data/sub/y.txt", "yy");
  const fs::path source = GetParam().folder ? work / "data" : work / "a.log";
  const std::optional<fs::path> destination =
      GetParam().giveDestination ? std::optional(work / "out/archive.zip") : std::nullopt;
  if (destination) fs::create_directories(destination->parent_path());

  ConsoleCapture console;
  const fs::path written = QMFileHelper::zip(source, destination, "MyZipDir", env_);
  EXPECT_TRUE(console.texts().empty());

  EXPECT_EQ(written, destination.value_or(fs::path(source.string() + ".zip")));
  EXPECT_EQ(pythonNames(written), GetParam().names + "\n");
  EXPECT_EQ(run("unzip -tq '" + written.string() + "' >/dev/null"), "");
  // Neither the scratch folder nor the archive in the making is left behind.
  EXPECT_EQ(tree(tmp), std::vector<std::string>{});
  // The source is untouched.
  EXPECT_TRUE(fs::exists(source));
}

INSTANTIATE_TEST_SUITE_P(
    Items, ZipTest,
    ::testing::Values(ZipCase{"FileUnderZipDirName", false, true, "MyZipDir/ MyZipDir/a.log"},
                      ZipCase{"FileToDefaultDestination", false, false, "MyZipDir/ MyZipDir/a.log"},
                      ZipCase{"FolderKeepsItsStructure", true, true,
                              "data/ data/sub/ data/sub/y.txt data/x.txt"},
                      ZipCase{"FolderToDefaultDestination", true, false,
                              "data/ data/sub/ data/sub/y.txt data/x.txt"}),
    [](const auto& info) { return std::string(info.param.name); });

// Each way the zip can fail: the text printed, and that nothing is left in the temporary folder.
struct ZipFaultCase {
  const char* name;
  std::string source;       // relative to the home folder
  std::string destination;  // relative to the home folder
  std::string zipDirName;
  std::vector<std::string> printed;
};

class ZipFaultTest : public ::testing::TestWithParam<ZipFaultCase> {
 protected:
  testing::FakeEnv env_;
};

TEST_P(ZipFaultTest, ThrowsAndRemovesTheScratchFolder) {
  const fs::path work = env_.homeDirectory();
  writeFile(work / "a.log", "line\n");
  writeFile(work / "plain", "a file where a folder should be");
  ConsoleCapture console;
  EXPECT_THROW(QMFileHelper::zip(work / GetParam().source, work / GetParam().destination,
                                 GetParam().zipDirName, env_),
               ErrorException);
  EXPECT_EQ(console.texts(), GetParam().printed);
  EXPECT_EQ(tree(env_.temporaryDirectory()), std::vector<std::string>{});
  EXPECT_FALSE(fs::exists(work / GetParam().destination));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, ZipFaultTest,
    ::testing::Values(
        // The archive is made but cannot be put where it was asked for.
        ZipFaultCase{"UnwritableDestination",
                     "a.log",
                     "plain/out.zip",
                     "Scratch",
                     {"zipping succeeded but copying the zip file failed"}},
        ZipFaultCase{"DestinationInMissingFolder",
                     "a.log",
                     "nowhere/out.zip",
                     "Scratch",
                     {"zipping succeeded but copying the zip file failed"}},
        // The source cannot be copied into the scratch folder: thrown before any zipping.
        ZipFaultCase{"MissingSource", "missing.log", "out.zip", "Scratch", {}},
        ZipFaultCase{"EmptyZipDirName", "a.log", "out.zip", "", {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ZipFaultTest, ScratchFolderThatCannotBeMadeIsThrown) {
  testing::FakeEnv env;
  writeFile(env.homeDirectory() / "a.log", "x");
  writeFile(env.temporaryDirectory() / "taken", "a file named like the scratch folder");
  EXPECT_THROW(QMFileHelper::zip(env.homeDirectory() / "a.log", std::nullopt, "taken/inner", env),
               ErrorException);
  EXPECT_EQ(tree(env.temporaryDirectory()), std::vector<std::string>{"taken"});
}

}  // namespace
}  // namespace qm
