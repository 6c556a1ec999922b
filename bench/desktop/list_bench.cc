// The list of the main window with 32767 cards: the refill behind it, and the painting of 1000 rows
// on a window that is drawn off screen. Each beside plain reading of the same bytes.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>

#include "bench/bench_world.h"
#include "desktop/controls/card_list_view.h"
#include "shell/card_list.h"

namespace carnetel::bench {
namespace {

constexpr int kPaintedRows = 1000;

class QuietObserver : public CardList::Observer {
 public:
  void ListRefilled() override {}
  void CurrentRowChanged() override {}
  void RowRepainted(int /*row*/) override {}
  void MarksChanged() override {}
};

class ListRows : public desktop::RowSource {
 public:
  explicit ListRows(const CardList& list) : list_(list) {}
  int RowCount() override { return list_.row_count(); }
  QString Label(int row) override { return QString::fromStdString(list_.Label(row)); }
  bool IsMarked(int row) override { return list_.IsMarked(row); }
  bool IsFlagged(int /*row*/) override { return false; }
  bool ShowsFlagColumn() override { return false; }

 private:
  const CardList& list_;
};

void RefillCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  QuietObserver observer;
  CardList list(observer, static_cast<int>(kMaxCards));
  list.SetDirectory(directory.get());
  const PeakMemory peak;
  for (auto _ : state) {
    list.ListRefill(kAllLetters);
    if (list.row_count() != static_cast<int>(Cards().size())) state.SkipWithError("rows missing");
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void RefillPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const PeakMemory peak;
  for (auto _ : state) benchmark::DoNotOptimize(world.ReadPlainly({"BENCH.DAN"}));
  state.counters["peak_mb"] = peak.Megabytes();
}

// Every row comes into view once, by page steps through the list.
void PaintCarnetel(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  auto directory = world.Open();
  QuietObserver observer;
  CardList list(observer, static_cast<int>(kMaxCards));
  list.SetDirectory(directory.get());
  list.ListRefill(kAllLetters);
  ListRows rows(list);
  desktop::CardListView view(195, rows);
  view.resize(300, 600);
  view.Reload();
  QImage image(view.size(), QImage::Format_RGB32);
  int top = 0;
  const PeakMemory peak;
  for (auto _ : state) {
    for (int painted = 0; painted < kPaintedRows; painted += view.PageRows()) {
      top = (top + view.PageRows()) % (list.row_count() - view.PageRows());
      view.SetTopRow(top);
      view.viewport()->render(&image);
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

void PaintPlain(benchmark::State& state) {
  World world;
  world.Fill(Cards());
  const auto file = world.files.Open(world.Path("BENCH.DAN"), OpenMode::kRead);
  CardRecord card;
  const PeakMemory peak;
  for (auto _ : state) {
    for (uint32_t i = 0; i < kPaintedRows; ++i) {
      benchmark::DoNotOptimize(file->Read(kCardSize * (i + 1), card.bytes()));
    }
  }
  state.counters["peak_mb"] = peak.Megabytes();
}

BENCHMARK(RefillCarnetel)->Name("refill/carnetel")->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(RefillPlain)->Name("refill/plain")->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(PaintCarnetel)
    ->Name("paint-1000/carnetel")
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(PaintPlain)->Name("paint-1000/plain")->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace carnetel::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
