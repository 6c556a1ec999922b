// "Structure du fichier source" for a file of fixed records: where the first card is, the size of a
// card, and position and size of each field. What holds together is said by FixedLayoutForm.
#pragma once

#include "desktop/dialogs/structure_dialog.h"
#include "transfer/fixed_layout_form.h"

class QHBoxLayout;

namespace carnetel::desktop {

class FixedLayoutDialog : public StructureDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  FixedLayoutDialog(FixedLayoutForm& form, QWidget* parent);

 protected:
  void ShowInputs() override;
  void Confirm() override;
  [[nodiscard]] int reference() const override { return form_.reference(); }
  void SelectReference(int reference) override { form_.SelectReference(reference); }

 private:
  QLayout* MakeHead();
  void AddToHead(QHBoxLayout& line, const char* label, FixedInputKind kind);
  QWidget* MakeInput(const QString& label, FixedInput input);

  FixedLayoutForm& form_;
};

}  // namespace carnetel::desktop
