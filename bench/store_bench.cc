// The main jobs on 32767 cards, each beside the same job on SQLite and beside plain reading or
// writing of the same bytes. Case names are JOB/WHO; bench/run.sh makes the table of ratios.
#include <benchmark/benchmark.h>

#include "bench/bench_world.h"
#include "selection/marks.h"
#include "transfer/delimited.h"

namespace carnetel::bench {
namespace {

constexpr size_t kSingleOperations = 200;
constexpr size_t kFinds = 2000;

// ---- import: four files of at most 10000 lines ----

constexpr size_t kLinesPerFile = 10000;

void WriteImportFiles(const World& world) {
  for (size_t from = 0, i = 0; from < Cards().size(); from += kLinesPerFile, ++i) {
    const size_t count = std::min(kLinesPerFile, Cards().size() - from);
    const std::string text = DelimitedText(Cards().data() + from, count);
    const std::string path = world.Path("import" + std::to_string(i) + ".csv");
    PosixFileSystem().Open(path, OpenMode::kCreateOrEmpty)->Write(0, AsBytes(text));
  }
}

void ImportCarnetel(benchmark::State& state) {
  World world;
  WriteImportFiles(world);
  const TransferProfile profile = TransferProfile::OfNewInstallation();
  const PeakMemory peak;
  for (auto _ : state) {
    DeleteDirectoryFiles(world.files, world.Path("BENCH.DAN"), {});
    uint32_t cards = 0;
    for (int i = 0; i < 4; ++i) {
      ImportRequest request;
      request.source = world.Path("import" + std::to_string(i) + ".csv");
      request.destination.path = world.Path("BENCH.DAN");
      cards += ImportDelimited({world.files, world.clock, world.progress}, profile, request).cards;
    }
    if (cards != Cards().size()) state.SkipWithError("cards are missing");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Cards().size()));
  state.counters["peak_mb"] = peak.Megabytes();
}

// The same rows, already parsed, in one transaction.
void ImportSqlite(benchmark::State& state) {
  World world;
  const PeakMemory peak;
  for (auto _ : state) {
    world.files.Remove(world.Path("bench.sqlite"));
    SqliteStore store(world.Path("bench.sqlite"));
    store.Execute("BEGIN");
    for (const CardRecord& card : Cards()) store.Insert(card);
    store.Execute("COMMIT");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void ImportPlain(benchmark::State& state) {
  World world;
  const PeakMemory peak;
  for (auto _ : state) {
    const auto file = world.files.Open(world.Path("plain"), OpenMode::kCreateOrEmpty);
    constexpr size_t kBlock = 85;
    for (size_t i = 0; i < Cards().size(); i += kBlock) {
      const size_t count = std::min(kBlock, Cards().size() - i);
      file->Write(kCardSize * (i + 1), std::as_bytes(std::span(Cards()).subspan(i, count)));
    }
    file->Sync();
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- export: every card marked, one text file ----

void ExportCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  SetAllMarks(*directory, true);
  const TransferProfile profile = TransferProfile::OfNewInstallation();
  const PeakMemory peak;
  for (auto _ : state) {
    const ExportRequest request{world.Path("export.csv"), true, CharacterSet::kAnsi};
    if (ExportDelimited(*directory, profile, request).cards != Cards().size()) {
      state.SkipWithError("cards are missing");
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Cards().size()));
  state.counters["peak_mb"] = peak.Megabytes();
}

// The rows in the order of the companies, read column by column; nothing is written.
void ExportSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  const PeakMemory peak;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        store.ReadAll("SELECT * FROM cards INDEXED BY by_company WHERE f0 >= '' ORDER BY f0"));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// Writes the text of the lines, made before.
void ExportPlain(benchmark::State& state) {
  World world;
  const std::string text = DelimitedText(Cards().data(), Cards().size());
  const PeakMemory peak;
  for (auto _ : state) {
    world.files.Open(world.Path("plain"), OpenMode::kCreateOrEmpty)->Write(0, AsBytes(text));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- single adds, each on the disk when it ends ----

void AddCarnetel(benchmark::State& state) {
  World world;
  world.Fill({Cards().begin(), Cards().begin() + 16000});
  auto directory = world.Open();
  size_t next = 16000;
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) {
      uint32_t position = 0;
      directory->context().current = Cards()[next++];
      CardDispatch(*directory).Add(false, &position);
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void AddSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite({Cards().begin(), Cards().begin() + 16000});
  SqliteStore store(world.Path("bench.sqlite"));
  size_t next = 16000;
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) store.Insert(Cards()[next++]);
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void AddPlain(benchmark::State& state) {
  World world;
  const auto file = world.files.Open(world.Path("plain"), OpenMode::kCreateOrEmpty);
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) {
      file->Write(file->Size(), Cards()[i].bytes());
      file->Sync();
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- open and close of a directory in order ----

void OpenCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) world.Open()->CloseDirectory();
  state.counters["peak_mb"] = peak.Megabytes();
}

void OpenSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  const PeakMemory peak;
  for (auto _ : state) {
    SqliteStore store(world.Path("bench.sqlite"));
    benchmark::DoNotOptimize(
        store.ReadAll("SELECT id, f0 FROM cards INDEXED BY by_company "
                      "WHERE f0 >= ''"));
    benchmark::DoNotOptimize(
        store.ReadAll("SELECT id, f10 FROM cards INDEXED BY by_name "
                      "WHERE f10 >= ''"));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void OpenPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) {
    benchmark::DoNotOptimize(world.ReadPlainly({"BENCH.I01", "BENCH.I02", "BENCH.ADR"}));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- everything derived made anew from the main file ----

void RebuildCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) {
    for (const char* name : {"BENCH.I01", "BENCH.I02", "BENCH.ADR"}) {
      world.files.Remove(world.Path(name));
    }
    world.Open()->CloseDirectory();
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void RebuildSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  const PeakMemory peak;
  for (auto _ : state) store.Execute("REINDEX");
  state.counters["peak_mb"] = peak.Megabytes();
}

void RebuildPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) benchmark::DoNotOptimize(world.ReadPlainly({"BENCH.DAN"}));
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- find by key ----

void FindCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kFinds; ++i) {
      directory->context().current.Clear();
      directory->context().current.SetField(kSte1, Cards()[i * 16].FieldText(kSte1));
      uint32_t offset = 0;
      if (CardDispatch(*directory).Find(WalkDirection::kFirst, &offset) != 0) {
        state.SkipWithError("a card is missing");
      }
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void FindSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kFinds; ++i) {
      if (!store.FindCompany(Cards()[i * 16].FieldText(kSte1).bytes())) {
        state.SkipWithError("a card is missing");
      }
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void FindPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const auto file = world.files.Open(world.Path("BENCH.DAN"), OpenMode::kRead);
  CardRecord card;
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kFinds; ++i) {
      benchmark::DoNotOptimize(file->Read(kCardSize * (i * 16 + 1), card.bytes()));
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- a walk over all cards in key order ----

void WalkCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  const PeakMemory peak;
  for (auto _ : state) {
    size_t cards = 0;
    uint32_t offset = 0;
    for (WalkDirection direction = WalkDirection::kFirst;; direction = WalkDirection::kNext) {
      directory->context().current.Clear();
      if (CardDispatch(*directory).Find(direction, &offset) != 0) break;
      ++cards;
    }
    if (cards != Cards().size()) state.SkipWithError("cards are missing");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void WalkSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  const PeakMemory peak;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        store.ReadAll("SELECT * FROM cards INDEXED BY by_company WHERE f0 >= '' ORDER BY f0"));
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

// ---- single deletes, each on the disk when it ends ----

void DeleteCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) {
      uint32_t moved_from = 0;
      DeleteCard(*directory, directory->address().CardOffsetAt(static_cast<uint32_t>(i * 40)),
                 &moved_from);
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void DeleteSqlite(benchmark::State& state) {
  World world;
  world.FillSqlite(Cards());
  SqliteStore store(world.Path("bench.sqlite"));
  int64_t row = 1;
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) store.Delete(row++ * 40);
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void DeletePlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const auto file = world.files.Open(world.Path("BENCH.DAN"), OpenMode::kReadWrite);
  const PeakMemory peak;
  for (auto _ : state) {
    for (size_t i = 0; i < kSingleOperations; ++i) {
      file->Write(kCardSize * (i + 1), Cards()[i].bytes());
      file->Sync();
      file->Truncate(file->Size() - kCardSize);
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

CARNETEL_BENCH("import/carnetel", ImportCarnetel, 3);
CARNETEL_BENCH("import/sqlite", ImportSqlite, 3);
CARNETEL_BENCH("import/plain", ImportPlain, 3);
CARNETEL_BENCH("export/carnetel", ExportCarnetel, 5);
CARNETEL_BENCH("export/sqlite", ExportSqlite, 5);
CARNETEL_BENCH("export/plain", ExportPlain, 5);
CARNETEL_BENCH("add/carnetel", AddCarnetel, 5);
CARNETEL_BENCH("add/sqlite", AddSqlite, 5);
CARNETEL_BENCH("add/plain", AddPlain, 5);
CARNETEL_BENCH("open/carnetel", OpenCarnetel, 20);
CARNETEL_BENCH("open/sqlite", OpenSqlite, 20);
CARNETEL_BENCH("open/plain", OpenPlain, 20);
CARNETEL_BENCH("rebuild/carnetel", RebuildCarnetel, 5);
CARNETEL_BENCH("rebuild/sqlite", RebuildSqlite, 5);
CARNETEL_BENCH("rebuild/plain", RebuildPlain, 5);
CARNETEL_BENCH("find/carnetel", FindCarnetel, 5);
CARNETEL_BENCH("find/sqlite", FindSqlite, 5);
CARNETEL_BENCH("find/plain", FindPlain, 5);
CARNETEL_BENCH("walk/carnetel", WalkCarnetel, 5);
CARNETEL_BENCH("walk/sqlite", WalkSqlite, 5);
CARNETEL_BENCH("walk/plain", RebuildPlain, 5);
CARNETEL_BENCH("delete/carnetel", DeleteCarnetel, 5);
CARNETEL_BENCH("delete/sqlite", DeleteSqlite, 5);
CARNETEL_BENCH("delete/plain", DeletePlain, 5);

}  // namespace
}  // namespace carnetel::bench

BENCHMARK_MAIN();
