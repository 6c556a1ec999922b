// "Exportation - Paramètres du fichier Dbase": for each card field the name and the type of its
// column in the table. What is stored is said by DbaseExportForm.
#pragma once

#include "desktop/dialogs/structure_dialog.h"
#include "transfer/dbase_forms.h"

namespace carnetel::desktop {

class DbaseExportDialog : public StructureDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  DbaseExportDialog(DbaseExportForm& form, QWidget* parent);

 protected:
  void Confirm() override;
  [[nodiscard]] int reference() const override { return form_.reference().chosen(); }
  void SelectReference(int reference) override { form_.reference().Choose(reference); }

 private:
  [[nodiscard]] int FieldOf(int line) const;
  QWidget* MakeName(int line);
  QWidget* MakeType(int line);

  DbaseExportForm& form_;
};

}  // namespace carnetel::desktop
