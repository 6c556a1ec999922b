#include "desktop/dialogs/number_dialog.h"

#include <QHBoxLayout>
#include <QLabel>

#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 109;
constexpr int kHelpTopic = 53;
// A list may have more rows than four digits can tell; those are not reached by number.
constexpr int kMostDigits = 4;

}  // namespace

NumberDialog::NumberDialog(NumberForm& form, QWidget* parent)
    : FixedDialog(kTemplate, kHelpTopic, parent),
      form_(form),
      number_(new FilteredEdit(196, {FilterClass::kDigits, CaseRule::kNone}, kMostDigits, this)) {
  auto* line = new QHBoxLayout(this);
  auto* label = new QLabel(QStringLiteral("&Numéro"));
  label->setBuddy(number_);
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("OK"));
  QPushButton* cancel = MakeButton(kCommandEscape, QStringLiteral("Annuler"));
  number_->setFixedWidth(number_->fontMetrics().averageCharWidth() * (kMostDigits + 4));
  for (QWidget* widget : std::initializer_list<QWidget*>{label, number_, confirm, cancel}) {
    line->addWidget(widget);
  }
  line->setSizeConstraint(QLayout::SetFixedSize);
  connect(confirm, &QPushButton::clicked, this, &NumberDialog::Confirm);
  connect(cancel, &QPushButton::clicked, this, &NumberDialog::reject);
  number_->setFocus();
}

void NumberDialog::Confirm() {
  if (form_.Confirm(number_->text().toStdString())) {
    accept();
    return;
  }
  beep_();
  // The next number takes the place of the refused one.
  number_->setFocus();
  number_->selectAll();
}

}  // namespace carnetel::desktop
