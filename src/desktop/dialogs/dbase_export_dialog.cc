#include "desktop/dialogs/dbase_export_dialog.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "desktop/dialogs/dbase_lines.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 121;
constexpr int kNameCharacters = static_cast<int>(DbaseExportForm::kMaxName);

QStringList TypeRows() {
  QStringList rows;
  for (const std::string_view text : DbaseExportForm::kTypeTexts) {
    rows += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  }
  return rows;
}

}  // namespace

DbaseExportDialog::DbaseExportDialog(DbaseExportForm& form, QWidget* parent)
    : StructureDialog(kDialog, TransferDirection::kExport, parent), form_(form) {
  auto* column = new QVBoxLayout(this);
  const QStringList headings = {QStringLiteral("Nom de colonne"), QStringLiteral("Type")};
  column->addLayout(MakeLines(kDbaseLines, headings, [this](int line) {
    return QList<QWidget*>{MakeName(line), MakeType(line)};
  }));
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowInputs();
  Named(QStringLiteral("name_%1").arg(kDbaseLines.front()))->setFocus();
}

int DbaseExportDialog::FieldOf(int line) const {
  return line == kReferenceLine ? form_.reference().field() : line;
}

QWidget* DbaseExportDialog::MakeName(int line) {
  FilteredEdit* name =
      MakeEdit(QStringLiteral("name_%1").arg(line), DbaseLineLabel("Nom de colonne de ", line),
               kNameCharacters, {},
               {[this, line] { return form_.name(FieldOf(line)); },
                [this, line](const std::string& text) { form_.SetName(FieldOf(line), text); },
                {}});
  name->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kNameCharacters + 1, u'N')));
  return name;
}

QWidget* DbaseExportDialog::MakeType(int line) {
  return MakeList(
      QStringLiteral("type_%1").arg(line), DbaseLineLabel("Type de ", line), TypeRows(),
      [this, line] { return form_.type(FieldOf(line)); },
      [this, line](int row) { form_.SetType(FieldOf(line), row); });
}

void DbaseExportDialog::Confirm() {
  form_.Confirm();
  accept();
}

}  // namespace carnetel::desktop
