#include "desktop/dialogs/group_description_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 124;
constexpr int kHelpTopic = 63;
// The group file has room for 32; a longer name that it holds is shown, and kept while nothing is
// typed.
constexpr int kLongestName = 23;

}  // namespace

GroupDescriptionDialog::GroupDescriptionDialog(const GroupDescription& offered, QWidget* parent)
    : FixedDialog(kTemplate, kHelpTopic, parent) {
  const bool members_only = offered.mode == kMembersOnly;
  auto* column = new QVBoxLayout(this);
  column->addLayout(MakeNameLine(offered));
  members_only_ = MakeChoice(229, QStringLiteral("Fiches du &groupe uniquement "), members_only);
  column->addWidget(members_only_);
  column->addWidget(
      MakeChoice(230, QStringLiteral("Fichier &entier plus groupe sélectionné "), !members_only));
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  name_->setFocus();
  name_->selectAll();
}

QLayout* GroupDescriptionDialog::MakeNameLine(const GroupDescription& offered) {
  auto* line = new QHBoxLayout;
  name_ = new FilteredEdit(196, {}, kLongestName, this);
  name_->setText(QString::fromStdString(offered.name));
  name_->setMinimumWidth(name_->fontMetrics().averageCharWidth() * (kLongestName + 3));
  auto* label = new QLabel(QStringLiteral("&Nom"));
  label->setBuddy(name_);
  line->addWidget(label);
  line->addWidget(name_, 1);
  return line;
}

QRadioButton* GroupDescriptionDialog::MakeChoice(int id, const QString& caption, bool chosen) {
  auto* choice = new QRadioButton(caption, this);
  choice->setObjectName(QString::number(id));
  choice->setChecked(chosen);
  // Tab stops at the chosen one from the first time on; the toolkit sees to it only later.
  if (!chosen) choice->setFocusPolicy(Qt::ClickFocus);
  return choice;
}

QLayout* GroupDescriptionDialog::MakeButtons() {
  auto* line = new QHBoxLayout;
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("Valider"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  line->addStretch();
  line->addWidget(confirm);
  line->addWidget(abandon);
  connect(confirm, &QPushButton::clicked, this, &GroupDescriptionDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &GroupDescriptionDialog::reject);
  return line;
}

GroupDescription GroupDescriptionDialog::description() const {
  return {name_->text().toStdString(),
          members_only_->isChecked() ? kMembersOnly : kWholeFileFlagged};
}

}  // namespace carnetel::desktop
