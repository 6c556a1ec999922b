// "Saisie des critères de sélection": six rows of a field, a comparator and a value, and the
// buttons that select by them, empty them or keep them under a name. What the rows mean and what
// becomes of them is said by CriteriaForm.
#pragma once

#include <QLabel>
#include <array>

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "selection/criteria_form.h"
#include "shell/dialog_host.h"

class QGridLayout;

namespace carnetel::desktop {

class CriteriaDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  CriteriaDialog(CriteriaForm& form, QWidget* parent);

  // How it ended; quit as long as it has not.
  [[nodiscard]] CriteriaEnd end() const { return end_; }

 private:
  struct Row {
    PickerCombo* field;
    PickerCombo* comparator;
    FilteredEdit* value;
  };

  void AddRow(QGridLayout& grid, size_t row);
  QLayout* MakeButtons();
  QPushButton* MakeCommand(int id, const char* caption, void (CriteriaDialog::*command)());
  [[nodiscard]] TypedCriteria Typed() const;
  // The name and the rows in memory.
  void ShowSet();
  void ShowRow(size_t row, const TypedCriterion& shown);
  // Limit and entry rule of a value are those of its field.
  void ConfigureValue(const Row& row);

  void Replace() { Confirm(CriteriaEnd::kReplace); }
  void Add() { Confirm(CriteriaEnd::kAdd); }
  void Confirm(CriteriaEnd end);
  void ClearCurrentRow();
  void ClearRows();
  void ManageSets();

  CriteriaForm& form_;
  QLabel* name_;
  std::array<Row, kCriteriaRowCount> rows_{};
  TypedCriteria shown_;
  size_t current_row_ = 0;  // the one that had the focus last
  CriteriaEnd end_ = CriteriaEnd::kQuit;
};

}  // namespace carnetel::desktop
