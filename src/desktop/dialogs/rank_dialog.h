// "Structure du fichier source" for a file of separated fields: the two separators, chosen from a
// list or typed, and the rank of each field in a line. What counts is said by RankForm.
#pragma once

#include "desktop/dialogs/structure_dialog.h"
#include "transfer/rank_form.h"

class QHBoxLayout;

namespace carnetel::desktop {

class RankDialog : public StructureDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  RankDialog(RankForm& form, QWidget* parent);

 protected:
  void Confirm() override;
  [[nodiscard]] int reference() const override { return form_.reference(); }
  void SelectReference(int reference) override { form_.SelectReference(reference); }

 private:
  QLayout* MakeSeparators();
  void AddSeparator(QHBoxLayout& line, const char* label, const char* name, SeparatorKind kind);
  QWidget* MakeRank(int line);

  RankForm& form_;
};

}  // namespace carnetel::desktop
