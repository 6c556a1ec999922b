// An open directory in memory, a profile and printers that keep their pages, for tests of what is
// printed; and how to compare a printout with the one that was approved.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "printing/page_loop.h"
#include "storage/directory.h"
#include "tests/support/fake_printers.h"
#include "tests/support/same_bytes.h"

namespace carnetel {

// Fields of a card; texts are OEM bytes.
using Fields = std::initializer_list<std::pair<int, std::string_view>>;

// Choices and widths, closed by an empty one.
Composition CompositionOf(std::initializer_list<ColumnSpec> columns);

// What the printer got: each line with LF behind it, a form feed between pages.
std::string PagesText(const RecordedPages& pages);

// Whether these are the bytes of that file of tests/printing/approved/. They were worked out from
// the rules, not printed: a difference is an error of the program.
::testing::AssertionResult IsApproved(const std::string& name, std::string_view printed);

class PrintingTest : public ::testing::Test {
 protected:
  static constexpr char kMain[] = "/dir/CLIENTS.DAN";
  static constexpr char kLayout[] = "/dir/CLIENTS.LST";
  static constexpr char kOutput[] = "/out/liste.txt";

  PrintingTest();

  void AddCard(Fields fields, bool marked = false);
  // Cards with these companies and nothing else.
  void AddCompanies(std::initializer_list<const char*> companies);
  // Six cards with texts beyond ASCII, as the approved printouts show them.
  void AddSampleCards();
  // Sets or clears a bit of the entry at a row of the whole file.
  void SetBit(uint32_t row, uint8_t bit, bool on = true);

  [[nodiscard]] std::string Contents(const std::string& path) const {
    return std::string(AsChars(files.Contents(path)));
  }
  // The whole file as a list of companies, ten characters wide, without margins.
  [[nodiscard]] static PrintRun CompanyList();
  // The whole file as cards, without margins.
  [[nodiscard]] static PrintRun Cards();
  // What a run writes into a file that was not there.
  std::string PrintToText(const PrintRun& run);
  // What it puts on pages of so many lines.
  RecordedPages PrintOnPages(const PrintRun& run, int lines_per_page);

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
  SilentProgress progress;
  UserProfile profile{faults, "/profile.ini"};
  std::unique_ptr<Directory> directory;
};

}  // namespace carnetel
