// The first page of the print form: presentation, cards, page and destination.
#pragma once

#include <QCheckBox>
#include <QWidget>

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/unit_spin.h"
#include "printing/print_form.h"

class QGridLayout;

namespace carnetel::desktop {

class PrintSetupPage : public QWidget {
  Q_OBJECT

 public:
  // `form` outlives the page.
  PrintSetupPage(PrintForm& form, QWidget* parent);

  // Reads a text that was typed and not left yet.
  void TakeTypedTexts();

 Q_SIGNALS:
  // Something that the printed pages depend on.
  void changed();

 private:
  struct Choice {
    const char* name;
    const char* caption;
  };
  // A group of radio buttons; `choose` is told the place of the one that is pressed.
  QWidget* MakeChoices(const char* title, std::initializer_list<Choice> choices, int chosen,
                       std::function<void(int)> choose);
  QLayout* MakeMeasures();
  void AddSpin(QGridLayout& grid, const char* label, UnitSpin* spin, int value,
               std::function<void(int)> take);
  UnitSpin* MakeMargin(const char* name);
  QLayout* MakeDestination();

  PrintForm& form_;
  QCheckBox* to_file_;
  FilteredEdit* path_;
};

}  // namespace carnetel::desktop
