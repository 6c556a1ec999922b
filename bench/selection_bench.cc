// Jobs about what is shown and marked, on 32767 cards.
#include "bench/bench_world.h"
#include "selection/marks.h"
#include "storage/address_reorder.h"

namespace carnetel::bench {
namespace {

constexpr uint32_t kMarks = 2000;

// ---- the other index, with marks, groups and flags brought along ----

void SwitchCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  for (uint32_t i = 0; i < kMarks; ++i) ChangeMark(*directory, i * 16, true);
  directory->Commit();
  const PeakMemory peak;
  for (auto _ : state) {
    AddressReorder reorder(*directory, directory->key_field() == kNom ? kSte1 : kNom);
    reorder.CarryOver();
    if (directory->address().entry_count() != Cards().size()) {
      state.SkipWithError("cards are missing");
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void SwitchSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  store.Execute("CREATE TABLE marks AS SELECT id, id % 16 = 0 AS marked FROM cards");
  store.Execute("CREATE INDEX marks_by_id ON marks (id)");
  bool by_name = false;
  const PeakMemory peak;
  for (auto _ : state) {
    by_name = !by_name;
    store.Execute("DROP TABLE IF EXISTS shown");
    store.Execute(by_name ? "CREATE TABLE shown AS SELECT id, marked FROM cards JOIN marks USING "
                            "(id) ORDER BY f10"
                          : "CREATE TABLE shown AS SELECT id, marked FROM cards JOIN marks USING "
                            "(id) ORDER BY f0");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void SwitchPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) {
    benchmark::DoNotOptimize(world.ReadPlainly({"BENCH.DAN", "BENCH.I02", "BENCH.ADR"}));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

CARNETEL_BENCH("switch/carnetel", SwitchCarnetel, 10);
CARNETEL_BENCH("switch/sqlite", SwitchSqlite, 10);
CARNETEL_BENCH("switch/plain", SwitchPlain, 10);

}  // namespace
}  // namespace carnetel::bench
