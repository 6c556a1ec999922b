// What the benchmarks share: the generated cards, and a folder on the disk with a directory of
// them, in order, that goes when the benchmark ends.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/card_generator.h"
#include "bench/peak_memory.h"
#include "bench/sqlite_store.h"
#include "platform/posix_file_system.h"
#include "storage/card_dispatch.h"

namespace carnetel::bench {

struct World {
  PosixFileSystem files;
  SystemClock clock;
  SilentProgress progress;
  std::string folder = std::filesystem::temp_directory_path() / "carnetel-bench-XXXXXX";

  World() {
    if (mkdtemp(folder.data()) == nullptr) std::abort();
    folder += '/';
  }
  ~World() { std::filesystem::remove_all(folder); }
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  [[nodiscard]] std::string Path(const std::string& name) const { return folder + name; }
  std::unique_ptr<Directory> Open() {
    DirectoryOptions options;
    options.path = Path("BENCH.DAN");
    auto directory =
        std::make_unique<Directory>(DirectoryServices{files, clock, progress}, options);
    if (static_cast<int>(directory->OpenDirectory()) < 0) std::abort();
    return directory;
  }
  void Fill(const std::vector<CardRecord>& cards) {
    auto directory = Open();
    {
      const Directory::Batch batch(*directory);
      for (const CardRecord& card : cards) {
        uint32_t position = 0;
        directory->context().current = card;
        CardDispatch(*directory).Add(false, &position);
      }
    }
    directory->CloseDirectory();
    // Two openings, so that the address file mirrors the index and stays.
    Open()->CloseDirectory();
    Open()->CloseDirectory();
  }
  void FillSqlite(const std::vector<CardRecord>& cards) {
    SqliteStore store(Path("bench.sqlite"));
    store.Execute("BEGIN");
    for (const CardRecord& card : cards) store.Insert(card);
    store.Execute("COMMIT");
  }
  // Reads whole files in blocks of 64 KB; returns their bytes.
  size_t ReadPlainly(const std::vector<std::string>& names) {
    std::vector<std::byte> block(64 * 1024);
    size_t total = 0;
    for (const std::string& name : names) {
      const int fd = open(Path(name).c_str(), O_RDONLY | O_CLOEXEC);
      for (ssize_t got = 0; (got = read(fd, block.data(), block.size())) > 0;) {
        total += static_cast<size_t>(got);
        benchmark::DoNotOptimize(block.data());
      }
      close(fd);
    }
    return total;
  }
};

#define CARNETEL_BENCH(job, function, iterations) \
  BENCHMARK(function)                             \
      ->Name(job)                                 \
      ->Iterations(iterations)                    \
      ->Unit(benchmark::kMillisecond)             \
      ->UseRealTime()

inline const std::vector<CardRecord>& Cards() {
  static const std::vector<CardRecord> cards = GenerateCards(kMaxCards);
  return cards;
}

}  // namespace carnetel::bench
