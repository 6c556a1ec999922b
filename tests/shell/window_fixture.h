// A whole program without its widgets, for one test: a home folder in memory, a profile, a session
// and the main window's logic on a FakeWindowView. What was saved is looked at by opening a copy of
// the files through the stores.
#pragma once

#include <initializer_list>
#include <memory>
#include <utility>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "tests/shell/fake_dialogs.h"
#include "tests/shell/fake_window_view.h"

namespace carnetel {

// A card with these fields; texts are OEM bytes.
CardRecord CardWith(std::initializer_list<std::pair<int, std::string_view>> fields);

// Asks for an abort at a step, counted from 1; 0 never.
class StoppingProgress : public ProgressBox {
 public:
  void Open(ProgressForm form, uint32_t total) override;
  [[nodiscard]] bool Step(std::string_view text) override;
  void Close() override { open = false; }

  int stop_at = 0;
  bool open = false;
  ProgressForm form = ProgressForm::kBuildIndex;
  uint32_t total = 0;
  std::vector<std::string> steps;
};

class WindowFixture : public ::testing::Test {
 protected:
  static constexpr int kCapacity = 32767;

  WindowFixture();
  ~WindowFixture() override;

  // Adds cards to the default directory (or another one), made when missing, before the start.
  void Build(const std::vector<CardRecord>& cards) { Build(DefaultPath(), cards); }
  void Build(const std::string& stem, const std::vector<CardRecord>& cards);
  // Session, opening and window, as the program does it. False when the opening failed.
  bool Start(const StartupRequest& request = {}, int capacity = kCapacity);
  // Session alone, before anything is opened.
  void StartSession(const StartupRequest& request = {});
  // Quits the window and ends the run; both files and profile stay for the next start.
  void Quit();

  // A card of the files as they are on the disk now, found by company and name.
  struct SavedCard {
    CardRecord card;
    EntrySlot entry;
    [[nodiscard]] bool marked() const { return entry.bit(1); }
  };
  // All cards in the order of the address file.
  [[nodiscard]] std::vector<SavedCard> Saved(int key_field = kSte1) {
    return Saved(DefaultPath(), key_field);
  }
  [[nodiscard]] std::vector<SavedCard> Saved(const std::string& stem, int key_field = kSte1);
  // Their companies.
  [[nodiscard]] std::vector<std::string> SavedCompanies();
  // Companies and names of the rows, as the list shows them.
  [[nodiscard]] std::vector<std::string> Rows();
  // Numbers of the marked rows.
  [[nodiscard]] std::vector<int> MarkedRows();

  [[nodiscard]] std::string DefaultPath() const { return home + "CARNETEL"; }
  [[nodiscard]] std::string Profile(std::string_view key);
  void SetProfile(std::string_view key, std::string_view text);
  MainWindowLogic& window() { return *window_; }
  CardList& list() { return window_->list(); }
  CardForm& form() { return window_->form(); }

  // Of this test alone, as other tests run beside it and open directories are known by their path.
  std::string home;
  FakeClock clock{1'000'000'000};
  MemoryFileSystem memory{clock};
  FaultFileSystem files{memory};
  UserProfile profile{files, "/profile.ini"};
  StoppingProgress progress;
  QueuedMessages messages;
  FakeWindowView view;
  FakeDialogs dialogs;
  std::unique_ptr<Session> session;
  bool fell_back = false;
  // Starts programs in place of the system; none can be started without it.
  std::function<bool(const std::string& command_line)> program_starter;

 private:
  void RemoveLockFiles();

  std::unique_ptr<MainWindowLogic> window_;
};

}  // namespace carnetel
