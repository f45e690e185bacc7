#include "qmcore/platform/SettingsStore.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/SqliteSettingsStore.hpp"
#include "qmcore/platform/internal/SettingsValueCoding.hpp"
#include "qmcore/platform/internal/Sqlite.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"
#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using Array = SettingsValue::Array;
using Bytes = SettingsValue::Bytes;
using Dictionary = SettingsValue::Dictionary;
using testing::kNaN;
using testing::readFile;
using testing::writeFile;
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

struct ConversionCase {
  std::string name;
  std::optional<SettingsValue> stored;  // absent: nothing stored
  bool asBool;
  std::int64_t asInteger;
  double asDouble;
  std::optional<std::string> asString;
};

TEST(SettingsStoreTest, TypedGettersConvertLikeThePlatform) {
  const std::vector<ConversionCase> cases = {
      {"missing", std::nullopt, false, 0, 0.0, std::nullopt},
      {"true", true, true, 1, 1.0, "1"},
      {"zero", 0, false, 0, 0.0, "0"},
      {"negative double", -1.9, true, -1, -1.9, "-1.9"},
      {"huge double", 1e20, true, kMax, 1e20, "1e+20"},
      {"nan", kNaN, false, 0, kNaN, "nan"},
      {"decimal text with spaces", " -1.5 ", true, -1, -1.5, " -1.5 "},
      {"plus sign", "+7", true, 7, 7.0, "+7"},
      {"smallest integer text", "-9223372036854775808", true, kMin, -9223372036854775808.0,
       "-9223372036854775808"},
      {"integer text beyond 64 bits", "99999999999999999999", true, kMax, 1e20,
       "99999999999999999999"},
      {"YES", "YES", true, 1, 1.0, "YES"},
      {"trailing garbage", "12abc", false, 0, 0.0, "12abc"},
      {"inf text", "inf", false, 0, 0.0, "inf"},
      {"bytes", Bytes{1}, false, 0, 0.0, std::nullopt},
  };
  const auto store = SettingsStore::inMemory();
  for (const ConversionCase& c : cases) {
    SCOPED_TRACE(c.name);
    if (c.stored) {
      store->setObject("key", *c.stored);
    } else {
      store->removeObjectForKey("key");
    }
    EXPECT_EQ(store->hasKey("key"), c.stored.has_value());
    EXPECT_EQ(store->boolForKey("key"), c.asBool);
    EXPECT_EQ(store->integerForKey("key"), c.asInteger);
    EXPECT_THAT(store->doubleForKey("key"), ::testing::NanSensitiveDoubleEq(c.asDouble));
    EXPECT_EQ(store->stringForKey("key"), c.asString);
  }
}

struct PathCase {
  std::string name;
  std::optional<std::string> settingsPath, configHome;
  std::string suite, expected;
};

TEST(SettingsStoreTest, FilesComeFromTheEnvironmentAndNamesStayDistinctInItsFolder) {
  const std::vector<PathCase> cases = {
      {"explicit path wins", "/x/s.sqlite", "/cfg", "", "/x/s.sqlite"},
      {"empty explicit path is ignored", "", "/cfg", "", "/cfg/qmcore/settings.sqlite"},
      {"relative config home is ignored", std::nullopt, "cfg", "",
       "/home/u/.config/qmcore/settings.sqlite"},
      {"plain name", "/x/s.sqlite", std::nullopt, "group.app", "/x/group.app.sqlite"},
      {"slashes", "/x/s.sqlite", std::nullopt, "/etc/passwd", "/x/%2Fetc%2Fpasswd.sqlite"},
      {"leading dot", "/x/s.sqlite", std::nullopt, "..", "/x/%2E..sqlite"},
      {"percent sign", "/x/s.sqlite", std::nullopt, "%2F", "/x/%252F.sqlite"},
  };
  const auto put = [](const char* name, const std::optional<std::string>& value) {
    value ? setenv(name, value->c_str(), 1) : unsetenv(name);
  };
  std::vector<std::pair<const char*, std::optional<std::string>>> saved;  // put back at the end
  for (const char* name : {"QM_SETTINGS_PATH", "XDG_CONFIG_HOME", "HOME"}) {
    const char* value = std::getenv(name);
    saved.emplace_back(name, value != nullptr ? std::optional<std::string>(value) : std::nullopt);
  }
  put("HOME", "/home/u");
  for (const PathCase& c : cases) {
    put("QM_SETTINGS_PATH", c.settingsPath);
    put("XDG_CONFIG_HOME", c.configHome);
    EXPECT_EQ(SettingsStore::namedFilePath(c.suite), c.expected) << c.name;
  }
  for (const auto& [name, value] : saved) put(name, value);
}

// Runs `body` in a child process, which exits with what it returns; the child's id.
pid_t spawn(const std::function<int()>& body) {
  const pid_t pid = fork();
  if (pid == 0) _exit(body());
  return pid;
}

// The exit status of the child `pid` once it has ended; -1 when it did not exit.
int exitStatus(pid_t pid) {
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SqliteSettingsStoreTest, EveryKindAndEveryChangeReadsBackAfterReopening) {
  const std::vector<std::pair<std::string, SettingsValue>> cases = {
      {"bool", false},
      {"smallest integer", kMin},
      {"integral double", 3.0},
      {"nan", kNaN},
      {"string with a zero byte", std::string("a\0b", 3)},
      {"string that is not UTF-8", "\xFF\xFE"},
      {"empty bytes", Bytes{}},
      {"date", Date::fromUnixSeconds(1.5e9 + 0.25)},
      {"nan date", Date::fromUnixSeconds(kNaN)},
      {"array of every kind", Array{true, kMax, kMin, kNaN, -0.0, 0.1f, "s", Bytes{7},
                                    Date::fromReferenceDateSeconds(-1), Array{}, Dictionary{}}},
      {"nested dictionary with odd keys",
       Dictionary{{"a", Array{Dictionary{{"b", false}}}}, {"", 1}, {std::string("\0", 1), 2}}},
  };
  testing::FakeEnv env;
  const std::string path = env.settingsPath();
  {
    SqliteSettingsStore store(path);
    for (const auto& [key, value] : cases) store.setObject(key, value);
    store.setInteger("removed", 2);
    store.setInteger("replaced", 3);
    ASSERT_TRUE(store.synchronize());
    store.removeObjectForKey("removed");
    store.setString("replaced", "now a string");
    store.setDouble("pending", 2.5);  // written by the destructor
  }
  SqliteSettingsStore reopened(path);
  EXPECT_EQ(reopened.dictionaryRepresentation().size(), cases.size() + 2);
  EXPECT_FALSE(reopened.hasKey("removed"));
  EXPECT_EQ(reopened.stringForKey("replaced"), "now a string");
  EXPECT_EQ(reopened.doubleForKey("pending"), 2.5);
  for (const auto& [key, value] : cases) {
    SCOPED_TRACE(key);
    const auto read = reopened.objectForKey(key);
    ASSERT_TRUE(read.has_value());
    // Compared by their encodings, in which NaN equals NaN and -0.0 differs from 0.0.
    EXPECT_EQ(internal::encodeSettingsValue(*read), internal::encodeSettingsValue(value));
  }
  // The file is durable at every commit, and says which format it has.
  internal::SqliteDatabase database = SqliteSettingsStore::openDatabase(path);
  EXPECT_EQ(database.queryText("PRAGMA journal_mode"), "wal");
  EXPECT_EQ(database.queryInteger("PRAGMA synchronous"), 2);  // FULL
  EXPECT_EQ(database.queryInteger("PRAGMA user_version"), 1);
}

TEST(SqliteSettingsStoreTest, SynchronizedValueSurvivesTheProcessBeingKilled) {
  testing::FakeEnv env;
  const std::string path = env.settingsPath();
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  const pid_t child = spawn([&] {
    const auto store = SettingsStore::openFile(path);
    store->setString("written", "before the kill");
    const char synchronized = store->synchronize() ? '1' : '0';
    if (write(pipeEnds[1], &synchronized, 1) != 1) return 1;
    for (;;) pause();
  });
  close(pipeEnds[1]);  // so that the read below ends if the child dies before writing
  char synchronized = 0;
  ASSERT_EQ(read(pipeEnds[0], &synchronized, 1), 1);
  close(pipeEnds[0]);
  kill(child, SIGKILL);
  ASSERT_EQ(exitStatus(child), -1);
  EXPECT_EQ(synchronized, '1');

  EXPECT_EQ(SqliteSettingsStore(path).stringForKey("written"), "before the kill");
}

TEST(SqliteSettingsStoreTest, TwoProcessesWritingAtOnceLoseNothing) {
  constexpr int kKeys = 120;
  testing::FakeEnv env;
  const std::string path = env.settingsPath();
  std::vector<pid_t> children;
  for (const std::string prefix : {"a", "b"}) {
    children.push_back(spawn([&] {
      const auto store = SettingsStore::openFile(path);
      for (int i = 0; i < kKeys; ++i) {
        store->setInteger(prefix + std::to_string(i), i);
        store->setString("last writer", prefix);
        if (!store->synchronize()) return 1;
      }
      return 0;
    }));
  }
  for (const pid_t child : children) EXPECT_EQ(exitStatus(child), 0);

  SqliteSettingsStore store(path);
  EXPECT_EQ(store.dictionaryRepresentation().size(), 2u * kKeys + 1);
  for (int i = 0; i < kKeys; ++i) {
    EXPECT_EQ(store.integerForKey("a" + std::to_string(i)), i);
    EXPECT_EQ(store.integerForKey("b" + std::to_string(i)), i);
  }
}

TEST(SqliteSettingsStoreTest, SynchronizeBringsInOtherWritersWithLocalChangesWinning) {
  testing::FakeEnv env;
  SqliteSettingsStore first(env.settingsPath());
  SqliteSettingsStore second(env.settingsPath());  // a second connection, as another process has

  first.setString("contested", "first");
  first.setInteger("removed by first", 1);
  ASSERT_TRUE(first.synchronize());
  EXPECT_FALSE(second.hasKey("removed by first"));  // reads come from memory
  ASSERT_TRUE(second.synchronize());
  EXPECT_EQ(second.integerForKey("removed by first"), 1);

  second.setString("contested", "second");  // pending while first writes
  first.setString("contested", "first again");
  first.removeObjectForKey("removed by first");
  ASSERT_TRUE(first.synchronize());
  ASSERT_TRUE(second.synchronize());
  EXPECT_EQ(second.stringForKey("contested"), "second");
  EXPECT_FALSE(second.hasKey("removed by first"));
}

TEST(SqliteSettingsStoreTest, DamagedFileIsSetAsideBesideEarlierOnesAndTheStoreStartsEmpty) {
  const std::pair<const char*, void (*)(const std::string&)> cases[] = {
      {"text file", [](const std::string& path) { writeFile(path, std::string(5000, 'x')); }},
      {"overwritten pages",
       [](const std::string& path) {
         {
           SqliteSettingsStore store(path);
           for (int i = 0; i < 500; ++i) store.setString("key" + std::to_string(i), "value");
         }
         std::string bytes = readFile(path);
         bytes.replace(4096, 8192, 8192, '\xA5');  // the table's pages, after the header's page
         writeFile(path, bytes);
       }},
      {"database of something else",
       [](const std::string& path) {
         internal::SqliteDatabase::open(path).execute("CREATE TABLE settings(name, colour)");
       }},
  };
  for (const auto& [name, damage] : cases) {
    SCOPED_TRACE(name);
    testing::FakeEnv env;
    const std::string path = env.settingsPath();
    damage(path);
    const std::string damaged = readFile(path);
    // Earlier set-aside files for every second the test may run in: none may be replaced.
    const long now = static_cast<long>(std::time(nullptr));
    for (long second = now; second < now + 30; ++second) {
      writeFile(path + ".damaged-" + std::to_string(second), "earlier");
    }
    ::testing::internal::CaptureStderr();
    {
      SqliteSettingsStore store(path);
      EXPECT_TRUE(store.dictionaryRepresentation().empty());
      store.setInteger("fresh", 1);
      EXPECT_TRUE(store.synchronize());
    }
    const std::string messages = ::testing::internal::GetCapturedStderr();
    std::vector<std::string> added;
    for (const auto& entry : fs::directory_iterator(fs::path(path).parent_path())) {
      const std::string file = entry.path().string();
      if (file.starts_with(path + ".damaged-") && readFile(file) != "earlier") {
        added.push_back(file);
      }
    }
    ASSERT_EQ(added.size(), 1u);
    EXPECT_TRUE(readFile(added[0]) == damaged) << "the set-aside file differs";
    EXPECT_NE(messages.find("moved it to " + added[0]), std::string::npos) << messages;
    EXPECT_EQ(SqliteSettingsStore(path).integerForKey("fresh"), 1);
  }
}

TEST(SqliteSettingsStoreTest, FileThatCannotBeOpenedLeavesTheStoreInMemory) {
  testing::FakeEnv env;
  const fs::path blocker = env.temporaryDirectory() / "blocker";
  writeFile(blocker, "a file where a folder should be");
  ::testing::internal::CaptureStderr();
  SqliteSettingsStore store((blocker / "settings.sqlite").string());
  const std::string messages = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(messages.find("kept in memory"), std::string::npos) << messages;
  EXPECT_FALSE(store.isPersistent());
  store.setInteger("kept in memory", 1);
  EXPECT_FALSE(store.synchronize());
  EXPECT_EQ(readFile(blocker), "a file where a folder should be");
}

TEST(SqliteSettingsStoreTest, RowsThisVersionCannotReadAreAbsentAndLeftInTheFile) {
  // Rows another version or a damaged disk could leave: none may stop the others reading.
  const char* const unreadable[] = {
      "('future kind', 99, 'x')",
      "('bool as text', 0, 'yes')",
      "('bad array', 6, x'00')",
  };
  testing::FakeEnv env;
  const std::string path = env.settingsPath();
  const Dictionary readable = {{"known", 1}, {"list", Array{1, "two"}}};
  {
    SqliteSettingsStore store(path);
    for (const auto& [key, value] : readable) store.setObject(key, value);
  }
  for (const char* row : unreadable) {
    internal::SqliteDatabase::open(path).execute(std::string("INSERT INTO settings VALUES") + row);
  }
  ::testing::internal::CaptureStderr();
  {
    SqliteSettingsStore store(path);
    EXPECT_EQ(store.dictionaryRepresentation(), readable);
    // A row that turns up later, when synchronising reads what another process wrote.
    internal::SqliteDatabase::open(path).execute("INSERT INTO settings VALUES('later', 99, 1)");
    store.setInteger("another", 2);
    EXPECT_TRUE(store.synchronize());
    Dictionary expected = readable;
    expected.emplace("another", 2);
    EXPECT_EQ(store.dictionaryRepresentation(), expected);
  }
  const std::string messages = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(messages.find("3 settings"), std::string::npos) << messages;
  EXPECT_EQ(internal::SqliteDatabase::open(path).queryInteger("SELECT count(*) FROM settings"), 7);
}

TEST(SqliteSettingsStoreTest, ConcurrentThreadsSeeEveryWrite) {
  testing::FakeEnv env;
  SqliteSettingsStore store(env.settingsPath());
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&store, t] {
      for (int i = 0; i < 50; ++i) {
        const std::string key = std::to_string(t) + "-" + std::to_string(i);
        store.setInteger(key, i);
        if (store.integerForKey(key) != i) ADD_FAILURE() << key;
        if (i % 10 == 0) store.synchronize();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(store.synchronize());
  EXPECT_EQ(store.dictionaryRepresentation().size(), 200u);
}

TEST(SettingsStoreTest, ThreadsOpeningOneFileByAnySpellingShareAStoreAndReadWholeValues) {
  testing::FakeEnv env;
  // A reader must see one of the two values, never a mix.
  const SettingsValue even = Array{2, "two", Dictionary{{"n", 2.5}}};
  const SettingsValue odd = Array{1, "one", Dictionary{{"n", 1.5}}};
  std::vector<std::shared_ptr<SettingsStore>> opened(3);
  std::atomic<bool> done = false;
  std::atomic<int> failures = 0;
  std::vector<std::thread> readers;
  for (auto& store : opened) {
    readers.emplace_back([&] {
      store = SettingsStore::openFile(env.settingsPath());
      do {
        const std::optional<SettingsValue> value = store->objectForKey("units");
        if (value && *value != even && *value != odd) ++failures;
      } while (!done);
    });
  }
  const auto writer = SettingsStore::openFile(env.settingsPath());
  for (int i = 0; i < 300; ++i) {
    writer->setObject("units", i % 2 == 0 ? even : odd);
    if (i % 100 == 0) writer->synchronize();
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(failures.load(), 0);
  for (const auto& store : opened) EXPECT_EQ(store, writer);
  // Other spellings of the path give the same store; another file another.
  const fs::path folder = env.settingsPath().parent_path();
  EXPECT_EQ(SettingsStore::openFile(folder / "./other/../settings.sqlite"), writer);
  EXPECT_NE(SettingsStore::openFile(folder / "other.sqlite"), writer);
}

// An array holding an array ... `depth` levels deep, around the integer 1.
SettingsValue nestedArrays(int depth) {
  SettingsValue value(1);
  for (int i = 0; i < depth; ++i) {
    SettingsValue::Array array;  // not Array{...}: an initializer list would copy
    array.push_back(std::move(value));
    value = SettingsValue(std::move(array));
  }
  return value;
}

TEST(SettingsValueCodingTest, DamagedOrForeignBytesReadAsAbsentWithoutThrowing) {
  const std::pair<const char*, Bytes> cases[] = {
      {"empty", {}},
      // An array head declaring 2^63 and more elements: nlohmann throws for it on its own.
      {"huge array size", {0x9b, 0x9b, 0x2f, 0x00, 0x00, 0x00, 0x2f, 0x2f, 0x2f, 0x2f}},
      {"more elements than bytes", {0x9a, 0x00, 0x01, 0x00, 0x00, 0x06}},
      // 100000 container heads: read by recursion, they would overflow the stack.
      {"deep indefinite arrays", Bytes(100000, 0x9f)},
      {"tagged", {0xc1, 0x82, 0x01, 0x01}},
      {"trailing bytes", {0x82, 0x01, 0x01, 0x00}},
      {"not a kind pair", {0x01}},
      {"unknown kind", {0x82, 0x18, 0x63, 0x00}},
      {"bool that is null", {0x82, 0x00, 0xf6}},
      {"integer above int64", {0x82, 0x01, 0x1b, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}},
  };
  for (const auto& [name, bytes] : cases) {
    std::optional<SettingsValue> decoded;
    EXPECT_NO_THROW(decoded = internal::decodeSettingsValue(bytes)) << name;
    EXPECT_FALSE(decoded.has_value()) << name;
  }
}

TEST(SettingsValueCodingTest, NestingReadsBackUpToTheLimit) {
  for (const auto& [depth, readsBack] : {std::pair{1, true}, {255, true}, {256, false}}) {
    const SettingsValue value = nestedArrays(depth);
    const std::optional<SettingsValue> decoded =
        internal::decodeSettingsValue(internal::encodeSettingsValue(value));
    EXPECT_EQ(decoded, readsBack ? std::optional(value) : std::nullopt) << depth;
  }
}

}  // namespace
}  // namespace qm
