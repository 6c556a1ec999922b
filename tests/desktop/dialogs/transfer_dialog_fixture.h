// The dialog of imports and exports over files in memory, for one test, which works on it by mouse
// and by keys. What opens above it, and the run, are the test's.
#pragma once

#include <memory>

#include "desktop/controls/window_messages.h"
#include "desktop/dialogs/transfer_dialog.h"
#include "platform/memory_file_system.h"
#include "storage/main_header.h"
#include "tests/desktop/dialogs/named_controls.h"

namespace carnetel::desktop {

inline constexpr auto kImport = TransferDirection::kImport;
inline constexpr auto kExport = TransferDirection::kExport;
inline constexpr char kDirectory[] = "/home/CARNETEL.DAN";

class TransferDialogTest : public ::testing::Test {
 protected:
  void Open(TransferDirection direction, int32_t workstation = 0) {
    dialog.reset();
    parameters.StartTransfer(direction);
    form =
        std::make_unique<TransferForm>(direction, files, parameters, messages, Callbacks(),
                                       TransferPlace{kDirectory, workstation}, CharacterSet::kOem);
    dialog = std::make_unique<TransferDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    Show(*dialog);
  }
  TransferCallbacks Callbacks() {
    TransferCallbacks callbacks;
    callbacks.browse = [this](TransferCallbacks::Filter filter) {
      filters.push_back(filter);
      return browsed;
    };
    callbacks.set_parameters = [this](TransferForm&) { ++parameters_shown; };
    callbacks.manage_profiles = [this](TransferForm&) { manage(); };
    callbacks.ask_replace = [this] {
      ++replace_questions;
      return replaces;
    };
    callbacks.run = [this](const TransferJob& job) {
      jobs.push_back(job);
      return outcome;
    };
    return callbacks;
  }
  void SetFile(const std::string& path) { files.SetContents(path, std::vector<std::byte>(1)); }
  QPushButton* Button(const QString& name) { return Named<QPushButton>(*dialog, name); }
  QString Path(const QString& name) { return TextOf(*dialog, name); }
  void TypePath(const QString& name, const QString& path) { TypeInto(*dialog, name, path); }
  // What the boxes said, under which title, since the last call.
  QStringList Told() {
    QStringList told;
    for (const SilentMessages::Entry& entry : script.shown) {
      const std::string_view title = MessageTitle(entry.title_id);
      told += QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())) + "|" +
              QString::fromStdString(entry.text);
    }
    script.shown.clear();
    return told;
  }
  // The dialog is open, nothing ran, and the focus is on that path.
  void ExpectStays(const QString& focus) {
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(finished->count(), 0);
    EXPECT_TRUE(jobs.empty());
    EXPECT_EQ(FocusName(), focus);
  }
  void SetOwner(const std::string& path, int16_t owner) {
    MainHeader header;
    header.set_owner(owner);
    std::vector<std::byte> bytes(header.bytes().begin(), header.bytes().end());
    bytes.resize(768);
    files.SetContents(path, bytes);
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  ParameterFile parameters{files, "/CARNETEL.TRS"};
  MessageScript script;
  WindowMessages messages{&script};
  std::unique_ptr<TransferForm> form;
  std::unique_ptr<TransferDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  std::optional<std::string> browsed;
  std::vector<TransferCallbacks::Filter> filters;
  int parameters_shown = 0;
  std::function<void()> manage = [] {};
  int replace_questions = 0;
  std::optional<bool> replaces;
  std::vector<TransferJob> jobs;
  TransferOutcome outcome;
};

}  // namespace carnetel::desktop
