// "Rubrique à l'attention de...": what the line of that name in a Viafax job is made of. The
// subject says which of the two sets of compositions is shown; each keeps its own choice.
#pragma once

#include <QStackedWidget>

#include "desktop/dialogs/fixed_dialog.h"
#include "link/viafax_option.h"

class QGroupBox;
class QLayout;

namespace carnetel::desktop {

class ViafaxDialog : public FixedDialog {
  Q_OBJECT

 public:
  // Keeps `form`, which outlives the dialog, up to date while the user chooses.
  ViafaxDialog(ViafaxOptionForm& form, QWidget* parent);

 private:
  QGroupBox* BuildSubjects();
  QGroupBox* BuildCompositions();
  QWidget* BuildSet(ViafaxSubject subject);
  QLayout* BuildButtons();

  ViafaxOptionForm& form_;
  QStackedWidget* sets_ = nullptr;
};

}  // namespace carnetel::desktop
