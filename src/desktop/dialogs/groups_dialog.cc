#include "desktop/dialogs/groups_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "base/string_table.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 122;
constexpr int kHelpTopic = 63;
constexpr int kShownRows = 10;
constexpr int kShownCharacters = 26;
// How a group may be displayed.
constexpr int kModeTexts[] = {273, 274};

}  // namespace

GroupsDialog::GroupsDialog(GroupsForm& form, QWidget* parent)
    : FixedDialog(kTemplate, kHelpTopic, parent),
      form_(form),
      list_(new QListWidget(this)),
      mode_(new QLabel(this)) {
  auto* sides = new QHBoxLayout(this);
  sides->addLayout(MakeListSide());
  sides->addLayout(MakeButtonSide());
  sides->setSizeConstraint(QLayout::SetFixedSize);
  connect(list_, &QListWidget::itemSelectionChanged, this, [this] {
    form_.Select(list_->selectedItems().isEmpty() ? -1 : list_->currentRow());
    ShowState();
  });
  ShowGroups();
  list_->setFocus();
}

QLayout* GroupsDialog::MakeListSide() {
  const QFontMetrics metrics = fontMetrics();
  auto* column = new QVBoxLayout;
  list_->setObjectName(QStringLiteral("195"));
  list_->setAccessibleName(QStringLiteral("Groupes"));
  list_->setUniformItemSizes(true);
  list_->setMinimumSize(metrics.averageCharWidth() * kShownCharacters,
                        metrics.lineSpacing() * kShownRows + 2 * list_->frameWidth());
  mode_->setObjectName(QStringLiteral("312"));
  mode_->setTextFormat(Qt::PlainText);
  // Wide enough for either mode from the start, so that the dialog stays as it is.
  int width = 0;
  for (const int text : kModeTexts) {
    width = std::max(width, metrics.horizontalAdvance(QString::fromUtf8(LoadText(text))));
  }
  mode_->setMinimumSize(width, metrics.height());
  column->addWidget(list_, 1);
  column->addWidget(mode_);
  return column;
}

QLayout* GroupsDialog::MakeButtonSide() {
  auto* column = new QVBoxLayout;
  create_ = AddAction(*column, 208, QStringLiteral("&Créer"), &GroupsForm::Create);
  replace_ = AddAction(*column, 209, QStringLiteral("&Remplacer"), &GroupsForm::Replace);
  merge_ = AddAction(*column, 227, QStringLiteral("&Fusionner"), &GroupsForm::Merge);
  rename_ = AddAction(*column, 231, QStringLiteral("Re&nommer"), &GroupsForm::Rename);
  remove_ = AddAction(*column, 210, QStringLiteral("&Supprimer"), &GroupsForm::Delete);
  column->addStretch();
  QPushButton* quit = AddButton(*column, kCommandEscape, QStringLiteral("&Quitter"));
  connect(quit, &QPushButton::clicked, this, &GroupsDialog::reject);
  QPushButton* help = MakeHelpButton();
  help->setAutoDefault(false);
  column->addWidget(help);
  return column;
}

// None of the buttons is the one that Enter presses from afar: it would be the first, which makes a
// group.
QPushButton* GroupsDialog::AddButton(QVBoxLayout& column, int id, const QString& caption) {
  QPushButton* button = MakeButton(id, caption);
  button->setAutoDefault(false);
  column.addWidget(button);
  return button;
}

QPushButton* GroupsDialog::AddAction(QVBoxLayout& column, int id, const QString& caption,
                                     Action action) {
  QPushButton* button = AddButton(column, id, caption);
  connect(button, &QPushButton::clicked, this, [this, action] { Act(action); });
  return button;
}

void GroupsDialog::Act(Action action) {
  if ((form_.*action)() == GroupsForm::Outcome::kBeeps) beep_();
  ShowGroups();
}

void GroupsDialog::ShowGroups() {
  {
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const GroupDescription& group : form_.groups()) {
      list_->addItem(QString::fromStdString(group.name));
    }
    list_->setCurrentRow(form_.selected());
  }
  ShowState();
}

void GroupsDialog::ShowState() {
  mode_->setText(QString::fromStdString(form_.ModeText()));
  const GroupsForm::Buttons enabled = form_.EnabledButtons();
  SetEnabled(create_, enabled.create);
  SetEnabled(replace_, enabled.replace);
  SetEnabled(merge_, enabled.merge);
  SetEnabled(rename_, enabled.rename);
  SetEnabled(remove_, enabled.remove);
}

// A button that goes off under the user leaves the focus to the list.
void GroupsDialog::SetEnabled(QPushButton* button, bool enabled) {
  if (!enabled && button->hasFocus()) list_->setFocus();
  button->setEnabled(enabled);
}

void GroupsDialog::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (enter && button != nullptr) {
    button->click();
    return;
  }
  FixedDialog::keyPressEvent(event);
}

}  // namespace carnetel::desktop
