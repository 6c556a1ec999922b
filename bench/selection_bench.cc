// Jobs about what is shown and marked, on 32767 cards.
#include "bench/bench_world.h"
#include "selection/marks.h"
#include "selection/selection_scan.h"
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

// ---- a selection by six criteria over the whole file, marks written ----

CriteriaRows SixRows() {
  CriteriaRows rows;
  // None of them is about the company in the first row, so that no letter narrows the scan.
  rows.SetRow(0, {kVille + 1, '6', OemText("E")});
  rows.SetRow(1, {kSte1 + 1, '3', OemText("A")});
  rows.SetRow(2, {kNom + 1, '1', OemText("ZZZ")});
  rows.SetRow(3, {kPostalCode + 1, '4', OemText("9")});
  rows.SetRow(4, {kPays + 1, '1', OemText("X")});
  rows.SetRow(5, {kNotes + 1, '1', OemText("X")});
  return rows;
}

void SelectCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  const CriteriaRows rows = SixRows();
  const PeakMemory peak;
  for (auto _ : state) {
    ScanAddressFile(*directory, rows, false);
    if (directory->marked_count() < 1000) state.SkipWithError("marks are missing");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void SelectSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  store.Execute("CREATE TABLE marks (id INTEGER PRIMARY KEY, marked INTEGER)");
  store.Execute("INSERT INTO marks SELECT id, 0 FROM cards");
  const PeakMemory peak;
  for (auto _ : state) {
    store.Execute(
        "UPDATE marks SET marked = (SELECT f6 LIKE '%E%' AND f0 >= 'A' COLLATE NOCASE AND f10 NOT "
        "LIKE 'ZZZ%' AND f25 < '9' AND f7 NOT LIKE 'X%' AND f26 NOT LIKE 'X%' FROM cards WHERE "
        "cards.id = marks.id)");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void SelectPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) benchmark::DoNotOptimize(world.ReadPlainly({"BENCH.DAN"}));
  state.counters["peak_mb"] = peak.Megabytes();
}

CARNETEL_BENCH("select/carnetel", SelectCarnetel, 10);
CARNETEL_BENCH("select/sqlite", SelectSqlite, 10);
CARNETEL_BENCH("select/plain", SelectPlain, 10);
CARNETEL_BENCH("switch/carnetel", SwitchCarnetel, 10);
CARNETEL_BENCH("switch/sqlite", SwitchSqlite, 10);
CARNETEL_BENCH("switch/plain", SwitchPlain, 10);

}  // namespace
}  // namespace carnetel::bench
