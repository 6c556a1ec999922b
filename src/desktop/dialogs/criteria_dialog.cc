#include "desktop/dialogs/criteria_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 107;
constexpr int kHelpTopic = 56;
constexpr int kName = 196;
constexpr int kClearRow = 211;
constexpr int kClearRows = 212;
constexpr int kManageSets = 213;
constexpr int kFirstComparator = 510;
constexpr int kFirstField = 520;
constexpr int kFirstValue = 540;
// Characters of the longest field that are seen without scrolling.
constexpr int kValueCharacters = 32;

QStringList FieldRows() {
  QStringList rows;
  for (const std::string& text : CriteriaForm::FieldTexts()) rows += QString::fromStdString(text);
  return rows;
}

QStringList ComparatorRows() {
  QStringList rows;
  for (const std::string_view text : kComparatorTexts) {
    rows += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  }
  return rows;
}

PickerCombo* MakeList(int id, const QStringList& rows, QWidget* parent) {
  auto* list = new PickerCombo(id, parent);
  list->SetRows(rows, 0);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  list->setMaxVisibleItems(static_cast<int>(rows.size()));
  return list;
}

}  // namespace

CriteriaDialog::CriteriaDialog(CriteriaForm& form, QWidget* parent)
    : FixedDialog(kDialog, kHelpTopic, parent), form_(form), name_(new QLabel(this)) {
  name_->setObjectName(QString::number(kName));
  name_->setTextFormat(Qt::PlainText);
  auto* column = new QVBoxLayout(this);
  column->addWidget(name_);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(3, 1);
  for (size_t row = 0; row < rows_.size(); ++row) AddRow(*grid, row);
  column->addLayout(grid);
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowSet();
  rows_.front().field->setFocus();
}

void CriteriaDialog::AddRow(QGridLayout& grid, size_t row) {
  const int place = static_cast<int>(row);
  const QString number = QString::number(place + 1);
  Row& made = rows_[row];
  made.field = MakeList(kFirstField + place, FieldRows(), this);
  made.field->setAccessibleName(QStringLiteral("Champ ") + number);
  made.comparator = MakeList(kFirstComparator + place, ComparatorRows(), this);
  made.comparator->setAccessibleName(QStringLiteral("Comparateur ") + number);
  made.value = new FilteredEdit(kFirstValue + place, {}, 0, this);
  made.value->setAccessibleName(QStringLiteral("Valeur ") + number);
  made.value->setMinimumWidth(fontMetrics().averageCharWidth() * kValueCharacters);
  grid.addWidget(new QLabel(number), place, 0);
  grid.addWidget(made.field, place, 1);
  grid.addWidget(made.comparator, place, 2);
  grid.addWidget(made.value, place, 3);
  const auto enter = [this, row] { current_row_ = row; };
  connect(made.field, &PickerCombo::focusEntered, this, enter);
  connect(made.comparator, &PickerCombo::focusEntered, this, enter);
  connect(made.value, &FilteredEdit::focusEntered, this, enter);
  connect(made.field, &QComboBox::currentIndexChanged, this,
          [this, row] { ConfigureValue(rows_[row]); });
}

QPushButton* CriteriaDialog::MakeCommand(int id, const char* caption,
                                         void (CriteriaDialog::*command)()) {
  QPushButton* button = MakeButton(id, QString::fromUtf8(caption));
  connect(button, &QPushButton::clicked, this, command);
  return button;
}

QLayout* CriteriaDialog::MakeButtons() {
  QPushButton* replace = MakeCommand(static_cast<int>(CriteriaEnd::kReplace),
                                     "&Remplacer sél. courante", &CriteriaDialog::Replace);
  replace->setDefault(true);
  auto* grid = new QGridLayout;
  grid->addWidget(replace, 0, 0);
  grid->addWidget(MakeCommand(static_cast<int>(CriteriaEnd::kAdd), "&Ajouter  à sél. courante",
                              &CriteriaDialog::Add),
                  0, 1);
  grid->addWidget(MakeCommand(kClearRow, "Effacer &Ligne", &CriteriaDialog::ClearCurrentRow), 1, 0);
  grid->addWidget(MakeCommand(kClearRows, "Effacer &Tout", &CriteriaDialog::ClearRows), 1, 1);
  grid->addWidget(MakeCommand(kManageSets, "&Sauver/Charger critères", &CriteriaDialog::ManageSets),
                  2, 0);
  auto* end = new QHBoxLayout;
  end->addWidget(MakeCommand(kCommandEscape, "&Quitter", &CriteriaDialog::reject));
  end->addWidget(MakeHelpButton());
  grid->addLayout(end, 2, 1);
  return grid;
}

// A comparator from elsewhere that the list does not have shows as none, and is kept until the user
// chooses one.
TypedCriteria CriteriaDialog::Typed() const {
  TypedCriteria typed;
  for (size_t row = 0; row < rows_.size(); ++row) {
    const int chosen = rows_[row].comparator->currentIndex();
    typed[row].field = rows_[row].field->currentIndex();
    typed[row].comparator = chosen < 0 ? shown_[row].comparator : chosen;
    typed[row].value = rows_[row].value->text().toStdString();
  }
  return typed;
}

void CriteriaDialog::ShowSet() {
  name_->setText(QString::fromStdString(form_.name()));
  shown_ = form_.Shown();
  for (size_t row = 0; row < rows_.size(); ++row) ShowRow(row, shown_[row]);
}

void CriteriaDialog::ShowRow(size_t row, const TypedCriterion& shown) {
  const Row& widgets = rows_[row];
  widgets.field->setCurrentIndex(shown.field);
  widgets.comparator->setCurrentIndex(shown.comparator);
  widgets.value->setText(QString::fromStdString(shown.value));
  widgets.value->setCursorPosition(0);
  ConfigureValue(widgets);
}

void CriteriaDialog::ConfigureValue(const Row& row) {
  const int field = row.field->currentIndex();
  const EntryRule number = {FilterClass::kNumber, CaseRule::kUpper};
  row.value->SetEntryRule(CriteriaForm::TakesNumber(field) ? number : EntryRule{},
                          CriteriaForm::LimitOf(field));
}

void CriteriaDialog::Confirm(CriteriaEnd end) {
  if (!form_.Confirm(Typed())) return;
  end_ = end;
  accept();
}

void CriteriaDialog::ClearCurrentRow() {
  ShowRow(current_row_, {});
  rows_[current_row_].field->setFocus();
}

void CriteriaDialog::ClearRows() {
  for (size_t row = 0; row < rows_.size(); ++row) ShowRow(row, {});
  rows_.front().field->setFocus();
}

void CriteriaDialog::ManageSets() {
  form_.ManageSets(Typed());
  ShowSet();
}

}  // namespace carnetel::desktop
