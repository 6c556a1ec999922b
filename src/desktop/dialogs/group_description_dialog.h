// "Descriptif du Groupe": name and display mode of one group. A name that was emptied counts as
// abandoned with whoever asked.
#pragma once

#include <QRadioButton>

#include "desktop/controls/filtered_edit.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "selection/groups_form.h"

namespace carnetel::desktop {

class GroupDescriptionDialog : public FixedDialog {
  Q_OBJECT

 public:
  GroupDescriptionDialog(const GroupDescription& offered, QWidget* parent);

  // As it is typed and chosen now.
  [[nodiscard]] GroupDescription description() const;

 private:
  QLayout* MakeNameLine(const GroupDescription& offered);
  QRadioButton* MakeChoice(int id, const QString& caption, bool chosen);
  QLayout* MakeButtons();

  FilteredEdit* name_ = nullptr;
  QRadioButton* members_only_ = nullptr;
};

}  // namespace carnetel::desktop
