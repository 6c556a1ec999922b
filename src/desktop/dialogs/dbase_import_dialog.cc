#include "desktop/dialogs/dbase_import_dialog.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "desktop/dialogs/dbase_lines.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 120;
// The longest name of a column, and a little air.
constexpr int kColumnCharacters = 12;

}  // namespace

DbaseImportDialog::DbaseImportDialog(DbaseImportForm& form, QWidget* parent)
    : StructureDialog(kDialog, TransferDirection::kImport, parent), form_(form) {
  auto* column = new QVBoxLayout(this);
  column->addLayout(
      MakeLines(kDbaseLines, {}, [this](int line) { return QList<QWidget*>{MakeColumns(line)}; }));
  column->addSpacing(column->spacing());
  QPushButton* previous = MakeButton(0, QStringLiteral("&Précédente Config"));
  previous->setObjectName(QStringLiteral("previous"));
  connect(previous, &QPushButton::clicked, this, &DbaseImportDialog::TakePrevious);
  column->addLayout(MakeButtons(previous));
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowInputs();
  columns_.front()->setFocus();
}

QStringList DbaseImportDialog::Rows() const {
  QStringList rows;
  for (const std::string& row : form_.Entries()) rows += QString::fromStdString(row);
  return rows;
}

int DbaseImportDialog::FieldOf(int line) const {
  return line == kReferenceLine ? form_.reference().field() : line;
}

PickerCombo* DbaseImportDialog::MakeColumns(int line) {
  PickerCombo* list = MakeList(
      QStringLiteral("column_%1").arg(line), DbaseLineLabel("Colonne de ", line), Rows(),
      [this, line] { return form_.position(FieldOf(line)); },
      [this, line](int row) { form_.SetPosition(FieldOf(line), row); });
  list->setMinimumContentsLength(kColumnCharacters);
  columns_ += list;
  return list;
}

void DbaseImportDialog::TakePrevious() {
  if (!form_.TakePrevious()) {
    beep_();
    return;
  }
  for (PickerCombo* list : columns_) list->SetRows(Rows(), -1);
  ShowInputs();
}

void DbaseImportDialog::Confirm() {
  form_.Confirm();
  accept();
}

}  // namespace carnetel::desktop
