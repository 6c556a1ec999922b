// The second page of the print form: the twelve columns of the list, each a field and a width.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/picker_combo.h"
#include "printing/layout_form.h"

class QGridLayout;

namespace carnetel::desktop {

class PrintLayoutPage : public QWidget {
  Q_OBJECT

 public:
  // `form` outlives the page.
  PrintLayoutPage(LayoutForm& form, QWidget* parent);

  [[nodiscard]] QPushButton* save_button() const { return save_; }

 Q_SIGNALS:
  // The composition that is printed is another now.
  void saved();

 private:
  struct Row {
    PickerCombo* field = nullptr;
    FilteredEdit* width = nullptr;
  };
  void AddRow(QGridLayout& grid, size_t row, const QStringList& fields);
  PickerCombo* MakeField(size_t row, const QStringList& fields);
  FilteredEdit* MakeWidth(size_t row);
  QPushButton* MakeButton(const char* name, const char* caption);
  // Everything as the form has it.
  void ShowForm();
  void ShowWidth() { total_->setText(QString::fromStdString(form_.WidthText())); }

  LayoutForm& form_;
  std::array<Row, kMaxColumns> rows_;
  QLabel* total_;
  QPushButton* save_ = nullptr;
};

}  // namespace carnetel::desktop
