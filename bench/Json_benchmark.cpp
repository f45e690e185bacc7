// Encoding and decoding a record of a few dozen fields through JsonHelper, against nlohmann/json
// used directly on the same record (the same to_json and from_json). The helpers should add no
// copies: goal at least 0.9x.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/persistence/JsonHelper.hpp"

namespace bench_json {

struct Waypoint {
  std::string name, symbol, comment, description, source, link, type, country;
  double latitude = 0, longitude = 0, elevation = 0, accuracy = 0, speed = 0, course = 0;
  double pressure = 0, temperature = 0;
  std::int64_t id = 0, track = 0, segment = 0, index = 0, satellites = 0, fix = 0, flags = 0;
  std::int64_t color = 0;
  bool visible = true, locked = false, synced = false, favourite = false;
  qm::Date created, modified;
};

void to_json(nlohmann::json& j, const Waypoint& w) {
  j = {{"name", w.name},
       {"symbol", w.symbol},
       {"comment", w.comment},
       {"description", w.description},
       {"source", w.source},
       {"link", w.link},
       {"type", w.type},
       {"country", w.country},
       {"latitude", w.latitude},
       {"longitude", w.longitude},
       {"elevation", w.elevation},
       {"accuracy", w.accuracy},
       {"speed", w.speed},
       {"course", w.course},
       {"pressure", w.pressure},
       {"temperature", w.temperature},
       {"id", w.id},
       {"track", w.track},
       {"segment", w.segment},
       {"index", w.index},
       {"satellites", w.satellites},
       {"fix", w.fix},
       {"flags", w.flags},
       {"color", w.color},
       {"visible", w.visible},
       {"locked", w.locked},
       {"synced", w.synced},
       {"favourite", w.favourite},
       {"created", w.created},
       {"modified", w.modified}};
}

void from_json(const nlohmann::json& j, Waypoint& w) {
  qm::decodeField(j, "name", w.name);
  qm::decodeField(j, "symbol", w.symbol);
  qm::decodeField(j, "comment", w.comment);
  qm::decodeField(j, "description", w.description);
  qm::decodeField(j, "source", w.source);
  qm::decodeField(j, "link", w.link);
  qm::decodeField(j, "type", w.type);
  qm::decodeField(j, "country", w.country);
  qm::decodeField(j, "latitude", w.latitude);
  qm::decodeField(j, "longitude", w.longitude);
  qm::decodeField(j, "elevation", w.elevation);
  qm::decodeField(j, "accuracy", w.accuracy);
  qm::decodeField(j, "speed", w.speed);
  qm::decodeField(j, "course", w.course);
  qm::decodeField(j, "pressure", w.pressure);
  qm::decodeField(j, "temperature", w.temperature);
  qm::decodeField(j, "id", w.id);
  qm::decodeField(j, "track", w.track);
  qm::decodeField(j, "segment", w.segment);
  qm::decodeField(j, "index", w.index);
  qm::decodeField(j, "satellites", w.satellites);
  qm::decodeField(j, "fix", w.fix);
  qm::decodeField(j, "flags", w.flags);
  qm::decodeField(j, "color", w.color);
  qm::decodeField(j, "visible", w.visible);
  qm::decodeField(j, "locked", w.locked);
  qm::decodeField(j, "synced", w.synced);
  qm::decodeField(j, "favourite", w.favourite);
  qm::decodeField(j, "created", w.created);
  qm::decodeField(j, "modified", w.modified);
}

}  // namespace bench_json

template <>
struct qm::JsonTypeName<bench_json::Waypoint> {
  static constexpr std::string_view value = "Waypoint";
};

namespace {

using bench_json::Waypoint;

Waypoint sample() {
  Waypoint w;
  w.name = "Summit cross";
  w.symbol = "flag";
  w.comment = "Reached at noon";
  w.description = "The cross on the main summit, with a visitor book";
  w.source = "gps";
  w.link = "https://example.org/summits/42";
  w.type = "peak";
  w.country = "CH";
  w.latitude = 46.5586;
  w.longitude = 7.9932;
  w.elevation = 3454.2;
  w.accuracy = 4.5;
  w.speed = 0.8;
  w.course = 271.5;
  w.pressure = 662.3;
  w.temperature = -4.25;
  w.id = 123456;
  w.track = 17;
  w.segment = 2;
  w.index = 1834;
  w.satellites = 11;
  w.fix = 3;
  w.flags = 0x55;
  w.color = 0xFF8800;
  w.created = qm::Date::fromUnixSeconds(1763900000);
  w.modified = qm::Date::fromUnixSeconds(1763903600);
  return w;
}

void BM_EncodeJsonHelper(benchmark::State& state) {
  const Waypoint w = sample();
  for (auto _ : state) benchmark::DoNotOptimize(qm::JsonHelper::jsonStringFromObject(w));
  state.SetItemsProcessed(state.iterations());
}
void BM_EncodeNlohmann(benchmark::State& state) {
  const Waypoint w = sample();
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json(w).dump());
  state.SetItemsProcessed(state.iterations());
}
void BM_DecodeJsonHelper(benchmark::State& state) {
  const std::string text = *qm::JsonHelper::jsonStringFromObject(sample());
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::JsonHelper::objectFromJsonString<Waypoint>(text));
  }
  state.SetItemsProcessed(state.iterations());
}
void BM_DecodeNlohmann(benchmark::State& state) {
  const std::string text = *qm::JsonHelper::jsonStringFromObject(sample());
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(text).get<Waypoint>());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_EncodeJsonHelper);
BENCHMARK(BM_EncodeNlohmann);
BENCHMARK(BM_DecodeJsonHelper);
BENCHMARK(BM_DecodeNlohmann);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nRecords per second and ratios (goal: at least 0.9x):\n");
  reporter.printRatio("BM_EncodeJsonHelper", "BM_EncodeNlohmann", "records");
  reporter.printRatio("BM_DecodeJsonHelper", "BM_DecodeNlohmann", "records");
  benchmark::Shutdown();
  return 0;
}
