// The settings store against plain SQLite on the same kind of file, in the same run:
//   reads: SettingsStore::integerForKey / stringForKey, and the units provider's stored switch
//   values, against one prepared SELECT per read;
//   writes: set + synchronize, and a persisting provider setter, against one INSERT OR REPLACE
//   in its own transaction.
// Prints at the end each pair's rates and how many times as fast the store is.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/RatioReporter.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/platform/SqliteSettingsStore.hpp"
#include "qmcore/platform/internal/Sqlite.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"

namespace {

namespace fs = std::filesystem;
using qm::internal::SqliteDatabase;
using qm::internal::SqliteStatement;
using qm::internal::SqliteTransaction;

constexpr int kKeys = 200;

std::string keyFor(int i) { return "QMBenchmarkKey" + std::to_string(i); }

// A folder for this run's files, removed at the end.
class BenchmarkFolder {
 public:
  BenchmarkFolder() {
    std::string pattern = (fs::temp_directory_path() / "qmcore-bench-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~BenchmarkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  fs::path path_;
};

BenchmarkFolder& folder() {
  static BenchmarkFolder instance;
  return instance;
}

// A store file with kKeys integers and kKeys strings.
std::shared_ptr<qm::SettingsStore> filledStore(const std::string& name) {
  auto store = qm::SettingsStore::openFile(folder().file(name));
  for (int i = 0; i < kKeys; ++i) {
    store->setInteger(keyFor(i), i);
    store->setString(keyFor(i) + "s", "value " + std::to_string(i));
  }
  store->synchronize();
  return store;
}

void BM_StoreIntegerRead(benchmark::State& state) {
  const auto store = filledStore("read.sqlite");
  std::vector<std::string> keys;
  for (int i = 0; i < kKeys; ++i) keys.push_back(keyFor(i));
  int i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(store->integerForKey(keys[i]));
    i = (i + 1) % kKeys;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_SqliteIntegerRead(benchmark::State& state) {
  filledStore("read.sqlite");
  SqliteDatabase database = SqliteDatabase::open(folder().file("read.sqlite"));
  SqliteStatement select = database.prepare("SELECT value FROM settings WHERE key = ?");
  std::vector<std::string> keys;
  for (int i = 0; i < kKeys; ++i) keys.push_back(keyFor(i));
  int i = 0;
  for (auto _ : state) {
    select.bind(1, std::string_view(keys[i]));
    if (select.step()) benchmark::DoNotOptimize(select.columnInt64(0));
    select.reset();
    i = (i + 1) % kKeys;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_StoreStringRead(benchmark::State& state) {
  const auto store = filledStore("read.sqlite");
  std::vector<std::string> keys;
  for (int i = 0; i < kKeys; ++i) keys.push_back(keyFor(i) + "s");
  int i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(store->stringForKey(keys[i]));
    i = (i + 1) % kKeys;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_SqliteStringRead(benchmark::State& state) {
  filledStore("read.sqlite");
  SqliteDatabase database = SqliteDatabase::open(folder().file("read.sqlite"));
  SqliteStatement select = database.prepare("SELECT value FROM settings WHERE key = ?");
  std::vector<std::string> keys;
  for (int i = 0; i < kKeys; ++i) keys.push_back(keyFor(i) + "s");
  int i = 0;
  for (auto _ : state) {
    select.bind(1, std::string_view(keys[i]));
    // The store hands out a string of its own; so does this.
    if (select.step()) benchmark::DoNotOptimize(std::string(select.columnText(0)));
    select.reset();
    i = (i + 1) % kKeys;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_StoreSetSynchronize(benchmark::State& state) {
  const auto store = filledStore("write-store.sqlite");
  std::int64_t i = 0;
  for (auto _ : state) {
    store->setInteger(keyFor(static_cast<int>(i % kKeys)), i);
    if (!store->synchronize()) state.SkipWithError("synchronize failed");
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_SqliteInsertOrReplace(benchmark::State& state) {
  // The same kind of file as the store's: same table, write-ahead log, full synchronisation.
  SqliteDatabase database = qm::SqliteSettingsStore::openDatabase(folder().file("write.sqlite"));
  SqliteStatement insert =
      database.prepare("INSERT OR REPLACE INTO settings(key, kind, value) VALUES(?, 1, ?)");
  std::int64_t i = 0;
  for (auto _ : state) {
    SqliteTransaction transaction(database);
    insert.bind(1, std::string_view(keyFor(static_cast<int>(i % kKeys))));
    insert.bind(2, i);
    insert.run();
    insert.reset();
    transaction.commit();
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}

// Reads through the provider: a unit's stored switch value (key built, store read).
void BM_ProviderSwitchValueRead(benchmark::State& state) {
  qm::ProcessEnv env({.settingsPath = folder().file("provider-read.sqlite")});
  qm::EnvironmentSettings environment;
  qm::UnitsProvider provider(env, environment);
  const std::vector<std::shared_ptr<const qm::QMLengthUnit>> units = provider.allLengthUnits();
  for (const auto& unit : units) provider.setAutomaticSwitchValue(1000, *unit);
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(provider.automaticSwitchValueForUnit(*units[i]));
    i = (i + 1) % units.size();
  }
  state.SetItemsProcessed(state.iterations());
}

// A persisting setter: store, synchronise, re-derive the current units, notify.
void BM_ProviderSetSynchronize(benchmark::State& state) {
  qm::ProcessEnv env({.settingsPath = folder().file("provider-write.sqlite")});
  qm::EnvironmentSettings environment;
  qm::UnitsProvider provider(env, environment);
  const auto unit = provider.verticalSpeedUnit();
  std::int64_t i = 0;
  for (auto _ : state) provider.setVerticalSpeedScale(i++ % 3, *unit);
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_StoreIntegerRead);
BENCHMARK(BM_ProviderSwitchValueRead);
BENCHMARK(BM_SqliteIntegerRead);
BENCHMARK(BM_StoreStringRead);
BENCHMARK(BM_SqliteStringRead);
BENCHMARK(BM_StoreSetSynchronize)->UseRealTime();
BENCHMARK(BM_SqliteInsertOrReplace)->UseRealTime();
BENCHMARK(BM_ProviderSetSynchronize)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatio("BM_StoreIntegerRead", "BM_SqliteIntegerRead", "reads");
  reporter.printRatio("BM_StoreStringRead", "BM_SqliteStringRead", "reads");
  reporter.printRatio("BM_ProviderSwitchValueRead", "BM_SqliteIntegerRead", "reads");
  reporter.printRatio("BM_StoreSetSynchronize/real_time", "BM_SqliteInsertOrReplace/real_time",
                      "writes");
  reporter.printRatio("BM_ProviderSetSynchronize/real_time", "BM_SqliteInsertOrReplace/real_time",
                      "writes");
  benchmark::Shutdown();
  return 0;
}
