// The dialog in which criteria are typed, over a criteria file in memory, for one test, which works
// on it by mouse and by keys. What the user does in the dialogs above it is the test's.
#pragma once

#include <memory>

#include "base/code_page.h"
#include "desktop/controls/window_messages.h"
#include "desktop/dialogs/criteria_dialog.h"
#include "platform/memory_file_system.h"
#include "tests/desktop/dialogs/dialog_testing.h"

namespace carnetel::desktop {

struct SavedSet {
  std::string name;  // UTF-8, as the values
  std::vector<CriteriaRow> rows;
};

inline CriteriaRow Row(int code, char comparator, const std::string& value) {
  return {static_cast<int16_t>(code), comparator, OemFromUtf8Lossy(value)};
}

class CriteriaDialogTest : public ::testing::Test {
 protected:
  static constexpr const char* kPath = "/CARNETEL.CRT";

  // A file of these sets, the working set first.
  void Build(const std::vector<SavedSet>& sets) {
    const auto empty = DefaultCriteriaFile();
    std::vector<std::byte> bytes(empty.begin(), empty.begin() + kCriteriaHeaderSize);
    for (const SavedSet& set : sets) {
      CriteriaRows rows;
      for (size_t row = 0; row < set.rows.size(); ++row) rows.SetRow(row, set.rows[row]);
      std::array<std::byte, kCriteriaNameSize> name{};
      StorePadded(name, 0, name.size(), OemFromUtf8Lossy(set.name).bytes());
      bytes.insert(bytes.end(), name.begin(), name.end());
      bytes.insert(bytes.end(), rows.bytes().begin(), rows.bytes().end());
    }
    memory.SetContents(kPath, bytes);
  }
  void Open() {
    dialog.reset();
    form = std::make_unique<CriteriaForm>(
        criteria, messages,
        CriteriaDialogs{[this](NamedSetsForm& sets) { manage_sets(sets); },
                        [this](const std::string& offered) { return ask_name(offered); }});
    dialog = std::make_unique<CriteriaDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    for (int row = 0; row < 6; ++row) Value(row)->SetBeeper([this] { ++beeps; });
    Show(*dialog);
  }
  QComboBox* Field(int row) { return Find<QComboBox>(*dialog, 520 + row); }
  QComboBox* ComparatorOf(int row) { return Find<QComboBox>(*dialog, 510 + row); }
  FilteredEdit* Value(int row) { return Find<FilteredEdit>(*dialog, 540 + row); }
  QString Name() { return Find<QLabel>(*dialog, 196)->text(); }
  void Fill(int row, const QString& field, const QString& comparator, const QString& value) {
    Field(row)->setCurrentText(field);
    ComparatorOf(row)->setCurrentText(comparator);
    Value(row)->setText(value);
  }
  // A row as the user sees it.
  QString Seen(int row) {
    return Field(row)->currentText() + "|" + ComparatorOf(row)->currentText() + "|" +
           Value(row)->text();
  }
  QStringList SeenRows() {
    QStringList rows;
    for (int row = 0; row < 6; ++row) rows += Seen(row);
    return rows;
  }
  // A row of a set in the file, as field code, comparator and OEM value.
  std::string Saved(size_t set, size_t row) {
    CriteriaFile file(memory, kPath);
    EXPECT_TRUE(file.LoadCriteriaSet(set));
    const CriteriaRow saved = file.rows().Row(row);
    return std::to_string(saved.field_code) + saved.comparator + saved.value.bytes();
  }
  QList<int> Ends() {
    QList<int> ends;
    for (const auto& arguments : *finished) ends += arguments.at(0).toInt();
    return ends;
  }
  void ExpectOpenAndUnsaved(const std::vector<std::byte>& former) {
    EXPECT_EQ(Ends(), QList<int>());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(memory.Contents(kPath), former);
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem memory{clock};
  CriteriaFile criteria{memory, kPath};
  MessageScript script;
  WindowMessages messages{&script};
  // What the user does in the dialogs above.
  std::function<void(NamedSetsForm&)> manage_sets;
  AskName ask_name;
  std::unique_ptr<CriteriaForm> form;
  std::unique_ptr<CriteriaDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  int beeps = 0;
};

inline const QStringList kEmptyRows = {"|=|", "|=|", "|=|", "|=|", "|=|", "|=|"};

}  // namespace carnetel::desktop
