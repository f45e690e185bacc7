#include "qmcore/platform/SqliteSettingsStore.hpp"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/internal/Sqlite.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using Array = SettingsValue::Array;
using Bytes = SettingsValue::Bytes;
using Dictionary = SettingsValue::Dictionary;

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "qmcore-settings-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  fs::path path_;
};

std::string contentsOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeFile(const std::string& path, const std::string& contents) {
  std::ofstream(path, std::ios::binary) << contents;
}

std::vector<std::string> filesStartingWith(const std::string& prefix) {
  std::vector<std::string> found;
  for (const auto& entry : fs::directory_iterator(fs::path(prefix).parent_path())) {
    if (entry.path().string().starts_with(prefix)) found.push_back(entry.path().string());
  }
  std::sort(found.begin(), found.end());
  return found;
}

// Equal kinds and values, with NaN equal to NaN and 0.0 not equal to -0.0.
bool same(const SettingsValue& a, const SettingsValue& b) {
  if (a.storage().index() != b.storage().index()) return false;
  const auto sameDouble = [](double x, double y) {
    return (std::isnan(x) && std::isnan(y)) || (x == y && std::signbit(x) == std::signbit(y));
  };
  if (const auto* x = a.get<double>()) return sameDouble(*x, *b.get<double>());
  if (const auto* x = a.get<Date>()) {
    return sameDouble(x->timeIntervalSince1970(), b.get<Date>()->timeIntervalSince1970());
  }
  if (const auto* x = a.get<Array>()) {
    const Array& y = *b.get<Array>();
    return x->size() == y.size() && std::equal(x->begin(), x->end(), y.begin(), same);
  }
  if (const auto* x = a.get<Dictionary>()) {
    const Dictionary& y = *b.get<Dictionary>();
    return x->size() == y.size() &&
           std::equal(x->begin(), x->end(), y.begin(), [](const auto& p, const auto& q) {
             return p.first == q.first && same(p.second, q.second);
           });
  }
  return a == b;
}

// Runs `body` in a child process and returns its exit status (-1 when it did not exit).
int runInChild(const std::function<int()>& body) {
  const pid_t pid = fork();
  if (pid == 0) _exit(body());
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SqliteSettingsStoreTest, EveryKindReadsBackWithItsKindAfterReopening) {
  const std::vector<std::pair<std::string, SettingsValue>> cases = {
      {"bool true", true},
      {"bool false", false},
      {"integer", 42},
      {"smallest integer", std::numeric_limits<std::int64_t>::min()},
      {"largest integer", std::numeric_limits<std::int64_t>::max()},
      {"double", 1.5},
      {"integral double", 3.0},
      {"negative zero", -0.0},
      {"infinity", -std::numeric_limits<double>::infinity()},
      {"nan", std::numeric_limits<double>::quiet_NaN()},
      {"string", "h\xC3\xA9llo"},
      {"empty string", ""},
      {"string with a zero byte", std::string("a\0b", 3)},
      {"string that is not UTF-8", "\xFF\xFE"},
      {"bytes", Bytes{0, 1, 255}},
      {"empty bytes", Bytes{}},
      {"date", Date::fromUnixSeconds(1.5e9 + 0.25)},
      {"nan date", Date::fromUnixSeconds(std::numeric_limits<double>::quiet_NaN())},
      {"array of every kind", Array{true, 1, 1.0, "s", Bytes{7}, Date::fromReferenceDateSeconds(-1),
                                    Array{}, Dictionary{}}},
      {"array of numbers at the limits",
       Array{std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min(),
             std::numeric_limits<double>::quiet_NaN(), -0.0, 1e300, 0.1f}},
      {"nested dictionary",
       Dictionary{{"a", Array{Dictionary{{"b", false}, {"c", 0}}}}, {"", "empty key"}}},
      {"dictionary with odd keys", Dictionary{{std::string("\0", 1), 1}, {"\xFF", 2}}},
  };
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  {
    SqliteSettingsStore store(path);
    for (const auto& [key, value] : cases) store.setObject(key, value);
    ASSERT_TRUE(store.synchronize());
  }
  SqliteSettingsStore reopened(path);
  EXPECT_EQ(reopened.dictionaryRepresentation().size(), cases.size());
  for (const auto& [key, value] : cases) {
    SCOPED_TRACE(key);
    const auto read = reopened.objectForKey(key);
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(same(*read, value));
  }
}

TEST(SqliteSettingsStoreTest, RemovalsAndReplacementsPersist) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  {
    SqliteSettingsStore store(path);
    store.setInteger("kept", 1);
    store.setInteger("removed", 2);
    store.setInteger("replaced", 3);
    ASSERT_TRUE(store.synchronize());
    store.removeObjectForKey("removed");
    store.setString("replaced", "now a string");
    store.setInteger("set then removed", 4);
    store.removeObjectForKey("set then removed");
    store.removeObjectForKey("never there");
    EXPECT_FALSE(store.hasKey("removed"));
    ASSERT_TRUE(store.synchronize());
  }
  SqliteSettingsStore reopened(path);
  EXPECT_EQ(reopened.dictionaryRepresentation(),
            (Dictionary{{"kept", 1}, {"replaced", "now a string"}}));
}

TEST(SqliteSettingsStoreTest, DestructorWritesWhatWasNotSynchronized) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  { SqliteSettingsStore(path).setDouble("pending", 2.5); }
  EXPECT_EQ(SqliteSettingsStore(path).objectForKey("pending"), SettingsValue(2.5));
}

TEST(SqliteSettingsStoreTest, FileIsDurableAtEveryCommit) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  internal::SqliteDatabase database = SqliteSettingsStore::openDatabase(path);
  EXPECT_EQ(database.queryText("PRAGMA journal_mode"), "wal");
  EXPECT_EQ(database.queryInteger("PRAGMA synchronous"), 2);  // FULL
  EXPECT_EQ(database.queryInteger("PRAGMA user_version"), 1);
}

TEST(SqliteSettingsStoreTest, SynchronizedValueSurvivesTheProcessBeingKilled) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  const pid_t child = fork();
  if (child == 0) {
    close(pipeEnds[0]);
    const auto store = SettingsStore::openFile(path);
    store->setString("written", "before the kill");
    store->setObject("list", Array{1, "two"});
    const char synchronized = store->synchronize() ? '1' : '0';
    if (write(pipeEnds[1], &synchronized, 1) != 1) _exit(1);
    for (;;) pause();
  }
  close(pipeEnds[1]);
  char synchronized = 0;
  ASSERT_EQ(read(pipeEnds[0], &synchronized, 1), 1);
  close(pipeEnds[0]);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(synchronized, '1');

  SqliteSettingsStore store(path);
  EXPECT_EQ(store.stringForKey("written"), "before the kill");
  EXPECT_EQ(store.objectForKey("list"), SettingsValue(Array{1, "two"}));
}

TEST(SqliteSettingsStoreTest, TwoProcessesWritingAtOnceLoseNothing) {
  constexpr int kKeys = 120;
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  std::vector<pid_t> children;
  for (const std::string prefix : {"a", "b"}) {
    const pid_t child = fork();
    if (child == 0) {
      const auto store = SettingsStore::openFile(path);
      for (int i = 0; i < kKeys; ++i) {
        store->setInteger(prefix + std::to_string(i), i);
        store->setString("last writer", prefix);
        if (!store->synchronize()) _exit(1);
      }
      _exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }

  SqliteSettingsStore store(path);
  EXPECT_EQ(store.dictionaryRepresentation().size(), 2u * kKeys + 1);
  for (int i = 0; i < kKeys; ++i) {
    for (const std::string prefix : {"a", "b"}) {
      EXPECT_EQ(store.objectForKey(prefix + std::to_string(i)), SettingsValue(i)) << prefix << i;
    }
  }
}

TEST(SqliteSettingsStoreTest, SynchronizeBringsInOtherWritersWithLocalChangesWinning) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  SqliteSettingsStore first(path);
  SqliteSettingsStore second(path);  // a second connection, as another process has

  first.setInteger("from first", 1);
  first.setString("contested", "first");
  first.setInteger("removed by first", 1);
  ASSERT_TRUE(first.synchronize());
  EXPECT_FALSE(second.hasKey("from first"));  // reads come from memory

  ASSERT_TRUE(second.synchronize());
  EXPECT_EQ(second.integerForKey("from first"), 1);
  EXPECT_EQ(second.integerForKey("removed by first"), 1);

  second.setString("contested", "second");  // pending while first writes
  first.setString("contested", "first again");
  first.removeObjectForKey("removed by first");
  ASSERT_TRUE(first.synchronize());
  ASSERT_TRUE(second.synchronize());
  EXPECT_EQ(second.stringForKey("contested"), "second");
  EXPECT_FALSE(second.hasKey("removed by first"));

  ASSERT_TRUE(first.synchronize());
  EXPECT_EQ(first.stringForKey("contested"), "second");
}

struct DamageCase {
  std::string name;
  std::function<void(const std::string& path)> damage;
};

TEST(SqliteSettingsStoreTest, UnreadableFileIsSetAsideUnchangedAndTheStoreStartsEmpty) {
  const std::vector<DamageCase> cases = {
      {"text file",
       [](const std::string& path) { writeFile(path, std::string(5000, 'x') + "not sqlite"); }},
      {"overwritten pages",
       [](const std::string& path) {
         {
           SqliteSettingsStore store(path);
           for (int i = 0; i < 500; ++i) store.setString("key" + std::to_string(i), "value");
         }
         std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
         file.seekp(4096);  // the table's pages, after the file header's page
         const std::string garbage(8192, '\xA5');
         file.write(garbage.data(), static_cast<std::streamsize>(garbage.size()));
       }},
      {"database of something else",
       [](const std::string& path) {
         internal::SqliteDatabase database = internal::SqliteDatabase::open(path);
         database.execute(
             "CREATE TABLE settings(name TEXT, colour TEXT);"
             "INSERT INTO settings VALUES('theme', 'dark')");
       }},
  };
  for (const DamageCase& c : cases) {
    SCOPED_TRACE(c.name);
    TemporaryFolder folder;
    const std::string path = folder.file("settings.sqlite");
    c.damage(path);
    const std::string damaged = contentsOf(path);

    ::testing::internal::CaptureStderr();
    {
      SqliteSettingsStore store(path);
      EXPECT_TRUE(store.dictionaryRepresentation().empty());
      EXPECT_TRUE(store.isPersistent());
      store.setInteger("fresh", 1);
      EXPECT_TRUE(store.synchronize());
    }
    const std::string messages = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(messages.find("not a readable settings store"), std::string::npos) << messages;

    const auto aside = filesStartingWith(path + ".damaged-");
    ASSERT_EQ(aside.size(), 1u);
    EXPECT_TRUE(contentsOf(aside[0]) == damaged) << "the set-aside file differs";
    EXPECT_NE(messages.find(aside[0]), std::string::npos);
    EXPECT_EQ(SqliteSettingsStore(path).integerForKey("fresh"), 1);
  }
}

TEST(SqliteSettingsStoreTest, SettingAsideNeverReplacesAnEarlierSetAsideFile) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  // Earlier set-aside files for every second the test may run in.
  const long now = static_cast<long>(std::time(nullptr));
  std::vector<std::string> earlier;
  for (long second = now; second < now + 30; ++second) {
    earlier.push_back(path + ".damaged-" + std::to_string(second));
    writeFile(earlier.back(), "earlier " + std::to_string(second));
  }
  writeFile(path, "damaged again");

  ::testing::internal::CaptureStderr();
  { SqliteSettingsStore store(path); }
  ::testing::internal::GetCapturedStderr();

  for (std::size_t i = 0; i < earlier.size(); ++i) {
    EXPECT_EQ(contentsOf(earlier[i]), "earlier " + std::to_string(now + static_cast<long>(i)));
  }
  const auto aside = filesStartingWith(path + ".damaged-");
  ASSERT_EQ(aside.size(), earlier.size() + 1);
  int found = 0;
  for (const std::string& file : aside) found += contentsOf(file) == "damaged again";
  EXPECT_EQ(found, 1);
}

TEST(SqliteSettingsStoreTest, FileThatCannotBeOpenedLeavesTheStoreInMemory) {
  TemporaryFolder folder;
  writeFile(folder.file("blocker"), "a file where a folder should be");
  fs::create_directory(folder.file("folder.sqlite"));
  for (const std::string& path :
       {folder.file("blocker/settings.sqlite"), folder.file("folder.sqlite")}) {
    SCOPED_TRACE(path);
    ::testing::internal::CaptureStderr();
    SqliteSettingsStore store(path);
    const std::string messages = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(messages.find("kept in memory"), std::string::npos) << messages;
    EXPECT_FALSE(store.isPersistent());
    store.setInteger("works", 1);
    EXPECT_EQ(store.integerForKey("works"), 1);
    EXPECT_FALSE(store.synchronize());
  }
  EXPECT_EQ(contentsOf(folder.file("blocker")), "a file where a folder should be");
  EXPECT_TRUE(fs::is_empty(folder.file("folder.sqlite")));
}

TEST(SqliteSettingsStoreTest, RowsThisVersionCannotReadAreAbsentAndLeftInTheFile) {
  // Rows another version or a damaged disk could leave: none may stop the others reading.
  std::string deepArrays = "x'";
  for (int i = 0; i < 100000; ++i) deepArrays += "81";
  deepArrays += "'";
  const struct {
    const char* key;
    int kind;
    std::string value;  // an SQL literal
  } unreadable[] = {
      {"future kind", 99, "'x'"},
      {"bool as text", 0, "'yes'"},
      {"bad array", 6, "x'00'"},
      {"array of huge size", 6, "x'9b9b2f0000002f2f2f2f'"},
      {"dictionary as array", 6, "x'8207a0'"},
      {"deep arrays", 6, deepArrays},  // 100000 nested array heads
  };
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  const Dictionary readable = {
      {"known", 1},
      {"list", Array{1, "two"}},
      {"table", Dictionary{{"a", 2.5}}},
  };
  {
    SqliteSettingsStore store(path);
    for (const auto& [key, value] : readable) store.setObject(key, value);
  }
  {
    internal::SqliteDatabase database = internal::SqliteDatabase::open(path);
    for (const auto& row : unreadable) {
      database.execute(std::string("INSERT INTO settings VALUES('") + row.key + "', " +
                       std::to_string(row.kind) + ", " + row.value + ")");
    }
  }
  const auto rows = static_cast<std::int64_t>(readable.size() + std::size(unreadable));
  ::testing::internal::CaptureStderr();
  {
    SqliteSettingsStore store(path);
    EXPECT_EQ(store.dictionaryRepresentation(), readable);
    // Rows that turn up later, when synchronising reads what another process wrote.
    internal::SqliteDatabase::open(path).execute(
        "INSERT INTO settings VALUES('later', 7, x'9b9b2f0000002f2f2f2f')");
    store.setInteger("another", 2);
    EXPECT_TRUE(store.synchronize());
    Dictionary expected = readable;
    expected.emplace("another", 2);
    EXPECT_EQ(store.dictionaryRepresentation(), expected);
  }
  const std::string messages = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(messages.find(std::to_string(std::size(unreadable)) + " settings"), std::string::npos)
      << messages;
  internal::SqliteDatabase database = internal::SqliteDatabase::open(path);
  EXPECT_EQ(database.queryInteger("SELECT count(*) FROM settings"), rows + 2);
  EXPECT_EQ(database.queryText("SELECT hex(value) FROM settings WHERE key = 'array of huge size'"),
            "9B9B2F0000002F2F2F2F");
}

TEST(SqliteSettingsStoreTest, OpenFileSharesOneStorePerFile) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  const auto store = SettingsStore::openFile(path);
  EXPECT_EQ(SettingsStore::openFile(folder.file("./other/../settings.sqlite")), store);
  EXPECT_NE(SettingsStore::openFile(folder.file("other.sqlite")), store);
  store->setInteger("seen by all", 1);
  EXPECT_EQ(SettingsStore::openFile(path)->integerForKey("seen by all"), 1);
}

TEST(SqliteSettingsStoreTest, StandardAndNamedStoresUseTheirOwnFiles) {
  TemporaryFolder folder;
  const std::string standardPath = folder.file("config/settings.sqlite");
  // The standard store is made once per process, so this runs in a child of its own.
  const int status = runInChild([&] {
    setenv("QM_SETTINGS_PATH", standardPath.c_str(), 1);
    const auto standard = SettingsStore::standard();
    const auto first = SettingsStore::named("first");
    const auto second = SettingsStore::named("second");
    if (SettingsStore::standard() != standard || SettingsStore::named("") != standard) return 2;
    if (SettingsStore::named("first") != first || first == second) return 3;
    standard->setString("store", "standard");
    first->setString("store", "first");
    second->setString("store", "second");
    return standard->synchronize() && first->synchronize() && second->synchronize() ? 0 : 4;
  });
  ASSERT_EQ(status, 0);
  const std::vector<std::pair<std::string, std::string>> files = {
      {"config/settings.sqlite", "standard"},
      {"config/first.sqlite", "first"},
      {"config/second.sqlite", "second"},
  };
  for (const auto& [file, expected] : files) {
    SCOPED_TRACE(file);
    EXPECT_EQ(SqliteSettingsStore(folder.file(file)).stringForKey("store"), expected);
  }
}

TEST(SqliteSettingsStoreTest, ConcurrentThreadsSeeEveryWrite) {
  TemporaryFolder folder;
  SqliteSettingsStore store(folder.file("settings.sqlite"));
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

TEST(SqliteSettingsStoreTest, ThreadsOpeningOneFileShareAStoreAndReadWholeValuesInOrder) {
  TemporaryFolder folder;
  const std::string path = folder.file("settings.sqlite");
  // A reader must see one of the two values, never a mix, and never an older count after a
  // newer one.
  const SettingsValue even = Array{2, "two", Dictionary{{"n", 2.5}}};
  const SettingsValue odd = Array{1, "one", Dictionary{{"n", 1.5}}};
  constexpr int kReaders = 3;
  std::vector<std::shared_ptr<SettingsStore>> opened(kReaders);
  std::atomic<bool> done = false;
  std::atomic<int> failures = 0;
  std::vector<std::thread> readers;
  for (int t = 0; t < kReaders; ++t) {
    readers.emplace_back([&, t] {
      opened[t] = SettingsStore::openFile(path);
      const SettingsStore& store = *opened[t];
      std::int64_t lastCount = -1;
      do {
        const std::optional<SettingsValue> value = store.objectForKey("units");
        if (value && *value != even && *value != odd) ++failures;
        const std::int64_t count = store.integerForKey("count");
        if (count < lastCount) ++failures;
        lastCount = count;
        const Dictionary all = store.dictionaryRepresentation();
        const auto units = all.find("units");
        if (units != all.end() && units->second != even && units->second != odd) ++failures;
      } while (!done);
    });
  }
  const auto writer = SettingsStore::openFile(path);
  for (int i = 0; i < 300; ++i) {
    writer->setObject("units", i % 2 == 0 ? even : odd);
    writer->setInteger("count", i);
    if (i % 100 == 0) writer->synchronize();
  }
  done = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(failures.load(), 0);
  for (const auto& store : opened) EXPECT_EQ(store, writer);
}

}  // namespace
}  // namespace qm
