#include "desktop/dialogs/rank_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 113;
constexpr int kRankDigits = 2;
// Free space between the two separators, in characters.
constexpr int kGap = 3;
constexpr int kSeparatorCharacters = static_cast<int>(TransferProfile::kMaxSeparator);

QString RankName(int line) {
  return QStringLiteral("rank_%1").arg(line);
}

}  // namespace

RankDialog::RankDialog(RankForm& form, QWidget* parent)
    : StructureDialog(kDialog, form.direction(), parent), form_(form) {
  const std::string_view title = form.title();
  setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  auto* column = new QVBoxLayout(this);
  column->addLayout(MakeSeparators());
  column->addSpacing(column->spacing());
  column->addLayout(
      MakeLines(kStructureLines, {}, [this](int line) { return QList<QWidget*>{MakeRank(line)}; }));
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowInputs();
  Named(QStringLiteral("field_separator"))->setFocus();
}

QLayout* RankDialog::MakeSeparators() {
  auto* line = new QHBoxLayout;
  AddSeparator(*line, "Séparateur de &champ", "field_separator", SeparatorKind::kField);
  line->addSpacing(fontMetrics().averageCharWidth() * kGap);
  AddSeparator(*line, "Séparateur de &fiche", "card_separator", SeparatorKind::kCard);
  line->addStretch();
  return line;
}

void RankDialog::AddSeparator(QHBoxLayout& line, const char* label, const char* name,
                              SeparatorKind kind) {
  auto* list = new PickerCombo(0, this);
  list->setObjectName(QString::fromLatin1(name));
  list->setAccessibleName(QString::fromUtf8(label).remove(u'&'));
  list->setEditable(true);
  // A text that begins as a row does is not that row.
  list->setDuplicatesEnabled(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  QStringList rows;
  for (const std::string& row : SeparatorProposals(kind)) rows += QString::fromStdString(row);
  list->SetRows(rows, -1);
  list->setMaxVisibleItems(static_cast<int>(rows.size()));
  list->setMinimumContentsLength(kSeparatorCharacters);
  list->setLineEdit(
      MakeEdit(QStringLiteral("edit"), list->accessibleName(), kSeparatorCharacters, {},
               {[this, kind] { return form_.separator_text(kind); },
                [this, kind](const std::string& text) { form_.TypeSeparator(kind, text); },
                [this, kind] { form_.LeaveSeparator(kind); }}));
  list->setCompleter(nullptr);
  connect(list, &QComboBox::activated, this, [this, kind, rows](int row) {
    form_.TypeSeparator(kind, rows.value(row).toStdString());
    ShowInputs();
  });
  auto* text = new QLabel(QString::fromUtf8(label), this);
  text->setBuddy(list);
  line.addWidget(text);
  line.addWidget(list);
}

QWidget* RankDialog::MakeRank(int line) {
  const QString label = line == kReferenceLine ? QStringLiteral("Rang de la référence")
                                               : QStringLiteral("Rang de ") + LineLabel(line);
  return MakeNumber(RankName(line), label, kRankDigits,
                    {[this, line] { return form_.rank_text(line); },
                     [this, line](const std::string& text) { form_.TypeRank(line, text); },
                     [this, line] { form_.LeaveRank(line); }});
}

void RankDialog::Confirm() {
  if (form_.Confirm()) {
    accept();
    return;
  }
  Named(RankName(kSte1))->setFocus();
}

}  // namespace carnetel::desktop
