// "Importation - Paramètres du fichier Dbase": for each card field the column of the table that
// goes into it, or none. What is stored is said by DbaseImportForm.
#pragma once

#include "desktop/controls/beeper.h"
#include "desktop/dialogs/structure_dialog.h"
#include "transfer/dbase_forms.h"

namespace carnetel::desktop {

class DbaseImportDialog : public StructureDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  DbaseImportDialog(DbaseImportForm& form, QWidget* parent);

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 protected:
  void Confirm() override;
  [[nodiscard]] int reference() const override { return form_.reference().chosen(); }
  void SelectReference(int reference) override { form_.reference().Choose(reference); }

 private:
  [[nodiscard]] QStringList Rows() const;
  [[nodiscard]] int FieldOf(int line) const;
  PickerCombo* MakeColumns(int line);
  // Back to the stored columns; beeps when there are none.
  void TakePrevious();

  DbaseImportForm& form_;
  QList<PickerCombo*> columns_;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
