#include "desktop/print/print_layout_page.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace carnetel::desktop {
namespace {

constexpr size_t kRowsOfAColumn = kMaxColumns / 2;
// Number, field and width, and the gap to the next ones.
constexpr int kCellsOfARow = 4;
constexpr int kGap = 3;
constexpr int kDigits = static_cast<int>(LayoutForm::kWidthDigits);
// Free space beside the digits, in characters.
constexpr int kAir = 3;

}  // namespace

PrintLayoutPage::PrintLayoutPage(LayoutForm& form, QWidget* parent)
    : QWidget(parent), form_(form), total_(new QLabel(this)) {
  setObjectName(QStringLiteral("802"));
  total_->setObjectName(QStringLiteral("total"));
  total_->setTextFormat(Qt::PlainText);
  QStringList fields;
  for (const std::string& field : LayoutForm::Choices()) fields += QString::fromStdString(field);
  auto* grid = new QGridLayout;
  for (size_t row = 0; row < kMaxColumns; ++row) AddRow(*grid, row, fields);
  grid->setColumnMinimumWidth(kCellsOfARow - 1, fontMetrics().averageCharWidth() * kGap);
  grid->setColumnStretch(kCellsOfARow - 1, 1);
  QPushButton* standard = MakeButton("default", "Déf&aut");
  save_ = MakeButton("save", "&Sauver");
  connect(standard, &QPushButton::clicked, this, [this] {
    form_.Default();
    ShowForm();
  });
  connect(save_, &QPushButton::clicked, this, [this] {
    form_.Save();
    ShowForm();
    Q_EMIT saved();
  });
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(total_, 1);
  bottom->addWidget(standard);
  bottom->addWidget(save_);
  auto* column = new QVBoxLayout(this);
  column->addLayout(grid);
  column->addStretch();
  column->addSpacing(column->spacing());
  column->addLayout(bottom);
  ShowForm();
}

void PrintLayoutPage::AddRow(QGridLayout& grid, size_t row, const QStringList& fields) {
  const auto line = static_cast<int>(row % kRowsOfAColumn);
  const int cell = row < kRowsOfAColumn ? 0 : kCellsOfARow;
  rows_[row] = {MakeField(row, fields), MakeWidth(row)};
  auto* number = new QLabel(QString::number(row + 1), this);
  number->setBuddy(rows_[row].field);
  grid.addWidget(number, line, cell, Qt::AlignRight | Qt::AlignVCenter);
  grid.addWidget(rows_[row].field, line, cell + 1);
  grid.addWidget(rows_[row].width, line, cell + 2);
}

PickerCombo* PrintLayoutPage::MakeField(size_t row, const QStringList& fields) {
  auto* field = new PickerCombo(0, this);
  field->setObjectName(QStringLiteral("field_%1").arg(row + 1));
  field->setAccessibleName(QStringLiteral("Champ %1").arg(row + 1));
  field->SetRows(fields, 0);
  field->setMaxVisibleItems(static_cast<int>(fields.size()));
  field->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  connect(field, &QComboBox::activated, this, [this, row](int choice) {
    form_.Choose(row, static_cast<uint32_t>(choice));
    ShowWidth();
  });
  return field;
}

FilteredEdit* PrintLayoutPage::MakeWidth(size_t row) {
  auto* width = new FilteredEdit(0, {FilterClass::kDigits, CaseRule::kNone}, kDigits, this);
  width->setObjectName(QStringLiteral("width_%1").arg(row + 1));
  width->setAccessibleName(QStringLiteral("Largeur %1").arg(row + 1));
  width->setAlignment(Qt::AlignRight);
  width->setFixedWidth(fontMetrics().averageCharWidth() * (kDigits + kAir));
  connect(width, &QLineEdit::textEdited, this, [this, row](const QString& text) {
    form_.TypeWidth(row, text.toStdString());
    ShowWidth();
  });
  return width;
}

QPushButton* PrintLayoutPage::MakeButton(const char* name, const char* caption) {
  auto* button = new QPushButton(QString::fromUtf8(caption), this);
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

void PrintLayoutPage::ShowForm() {
  for (size_t row = 0; row < kMaxColumns; ++row) {
    rows_[row].field->setCurrentIndex(static_cast<int>(form_.choice(row)));
    rows_[row].width->setText(QString::fromStdString(form_.width_text(row)));
  }
  ShowWidth();
}

}  // namespace carnetel::desktop
