// What the dialogs in which a user lays out a foreign file have in common: a line for each card
// field, in two columns; the six references on one line behind a list; the inputs, which show what
// the rules make of the text typed; the buttons that confirm and leave.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "transfer/transfer.h"

class QGridLayout;

namespace carnetel::desktop {

class StructureDialog : public FixedDialog {
  Q_OBJECT

 public:
  ~StructureDialog() override;
  StructureDialog(const StructureDialog&) = delete;
  StructureDialog& operator=(const StructureDialog&) = delete;

 protected:
  // The page of the help is that of the direction.
  StructureDialog(int number, TransferDirection direction, QWidget* parent);

  // The rules of an input: what it shows, and what becomes of a text typed and of leaving it.
  struct Input {
    std::function<std::string()> text;
    std::function<void(const std::string& utf8)> type;
    std::function<void()> leave;
  };
  // `label` is what the input is called where no text stands beside it.
  FilteredEdit* MakeEdit(const QString& name, const QString& label, int characters,
                         const EntryRule& rule, Input input);
  FilteredEdit* MakeNumber(const QString& name, const QString& label, int digits, Input input);
  // A drop-down that shows the row at `position`.
  PickerCombo* MakeList(const QString& name, const QString& label, const QStringList& rows,
                        std::function<int()> position, std::function<void(int)> choose);
  // Shows what the rules have now, everywhere.
  virtual void ShowInputs();

  // A line for each of `lines`: its label, which is a list for that of the references, and the
  // widgets that `make` answers. `headings` stand above the inputs of both columns.
  QGridLayout* MakeLines(std::span<const int> lines, const QStringList& headings,
                         const std::function<QList<QWidget*>(int line)>& make);
  // With `first`, if any, in front.
  QLayout* MakeButtons(QPushButton* first = nullptr);
  [[nodiscard]] QPushButton* confirm_button() const { return confirm_; }
  [[nodiscard]] QWidget* Named(const QString& name) const { return findChild<QWidget*>(name); }

  virtual void Confirm() = 0;
  [[nodiscard]] virtual int reference() const = 0;
  virtual void SelectReference(int reference) = 0;

 private:
  struct ShownEdit {
    FilteredEdit* edit;
    std::function<std::string()> text;
  };
  struct ShownList {
    PickerCombo* list;
    std::function<int()> position;
  };

  QWidget* MakeLabel(int line, QWidget* input);
  PickerCombo* MakeReferences();

  std::vector<ShownEdit> edits_;
  std::vector<ShownList> lists_;
  QPushButton* confirm_ = nullptr;
};

// What a line is called, also one that has no name of its own.
[[nodiscard]] QString LineLabel(int line);

}  // namespace carnetel::desktop
