#include "desktop/dialogs/description_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "desktop/dialogs/path_label.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kHelpTopic = 51;

}  // namespace

DescriptionDialog::DescriptionDialog(DescriptionForm& form, QWidget* parent)
    : FixedDialog(form.template_id(), kHelpTopic, parent), form_(form) {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  column->addLayout(grid);
  AddFields(*grid);
  if (form_.has_seat_lines()) AddSeatLines(*grid);
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  description_->setFocus();
  description_->selectAll();
}

void DescriptionDialog::AddFields(QGridLayout& grid) {
  auto* path = new PathLabel(this);
  path->setObjectName(QStringLiteral("180"));
  path->SetPath(QString::fromStdString(form_.path()));
  grid.addWidget(new QLabel(QStringLiteral("Fichier")), 0, 0, Qt::AlignRight);
  grid.addWidget(path, 0, 1);
  description_ = new FilteredEdit(196, {}, DescriptionForm::kLongest, this);
  description_->setText(QString::fromStdString(form_.description()));
  auto* label = new QLabel(QStringLiteral("&Descriptif"));
  label->setBuddy(description_);
  grid.addWidget(label, 1, 0, Qt::AlignRight);
  grid.addWidget(description_, 1, 1);
}

void DescriptionDialog::AddSeatLines(QGridLayout& grid) {
  private_box_ = new QCheckBox(QStringLiteral("&Carnetel Privé"), this);
  private_box_->setObjectName(QStringLiteral("225"));
  owner_line_ = new QLabel(this);
  owner_line_->setObjectName(QStringLiteral("226"));
  owner_line_->setTextFormat(Qt::PlainText);
  auto* line = new QHBoxLayout;
  line->addWidget(private_box_);
  line->addStretch();
  line->addWidget(owner_line_);
  grid.addLayout(line, 2, 1);
  ShowSeatLines();
  connect(private_box_, &QCheckBox::clicked, this, [this](bool on) {
    form_.SetPrivate(on);
    ShowSeatLines();
  });
}

QLayout* DescriptionDialog::MakeButtons() {
  auto* line = new QHBoxLayout;
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("Valider"));
  QPushButton* restore = MakeButton(197, QStringLiteral("&Restaurer"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  line->addStretch();
  for (QPushButton* button : {confirm, restore, abandon, MakeHelpButton()}) line->addWidget(button);
  connect(confirm, &QPushButton::clicked, this, &DescriptionDialog::Confirm);
  connect(restore, &QPushButton::clicked, this, &DescriptionDialog::Restore);
  connect(abandon, &QPushButton::clicked, this, &DescriptionDialog::reject);
  return line;
}

void DescriptionDialog::ShowSeatLines() {
  if (private_box_ == nullptr) return;
  private_box_->setChecked(form_.is_private());
  owner_line_->setText(QString::fromStdString(form_.owner_line()));
}

void DescriptionDialog::Confirm() {
  if (form_.Accept(description_->text().toStdString())) accept();
}

void DescriptionDialog::Restore() {
  form_.Restore();
  description_->setText(QString::fromStdString(form_.description()));
  ShowSeatLines();
  description_->setFocus();
}

void DescriptionDialog::reject() {
  form_.Abandon();
  FixedDialog::reject();
}

}  // namespace carnetel::desktop
