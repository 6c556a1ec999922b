#include "desktop/dialogs/named_sets_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "base/dialog_template.h"
#include "base/string_table.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 114;
constexpr int kHelpTopic = 57;
constexpr int kAdd = 208;
constexpr int kReplace = 209;
constexpr int kRemove = 210;
constexpr int kRename = 228;
constexpr int kImportTitle = 101;
constexpr int kExportTitle = 110;
// The longest name in the widest letters, with a little air.
constexpr int kShownCharacters = 24;
constexpr int kShownRows = 12;

std::string_view Title(SetsDialog dialog) {
  if (dialog == SetsDialog::kCriteria) return DialogTitle(kDialog);
  return LoadText(dialog == SetsDialog::kImport ? kImportTitle : kExportTitle);
}

}  // namespace

NamedSetsDialog::NamedSetsDialog(SetsDialog dialog, NamedSetsForm& form, QWidget* parent)
    : FixedDialog(kDialog, kHelpTopic, parent), form_(form), list_(new QListWidget(this)) {
  const std::string_view title = Title(dialog);
  setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  auto* line = new QHBoxLayout(this);
  line->addLayout(MakeListColumn());
  line->addLayout(MakeButtons());
  line->setSizeConstraint(QLayout::SetFixedSize);
  ShowNames();
  connect(list_, &QListWidget::itemSelectionChanged, this, [this] {
    form_.Select(SelectedPosition());
    EnableButtons();
  });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Act(&NamedSetsForm::Load); });
  list_->setFocus();
}

QLayout* NamedSetsDialog::MakeListColumn() {
  list_->setObjectName(QString::number(kControlList));
  list_->setAccessibleName(QStringLiteral("Jeux enregistrés"));
  const int frames =
      list_->frameWidth() * 2 + list_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  list_->setFixedWidth(fontMetrics().horizontalAdvance(QString(kShownCharacters, u'W')) + frames);
  list_->setFixedHeight(fontMetrics().height() * kShownRows + list_->frameWidth() * 2);
  auto* label = new QLabel(QStringLiteral("&Jeux enregistrés"), this);
  label->setBuddy(list_);
  auto* column = new QVBoxLayout;
  column->addWidget(label);
  column->addWidget(list_);
  return column;
}

QPushButton* NamedSetsDialog::MakeAction(int id, const char* caption, Action action) {
  QPushButton* button = MakeButton(id, QString::fromUtf8(caption));
  connect(button, &QPushButton::clicked, this, [this, action] { Act(action); });
  return button;
}

QLayout* NamedSetsDialog::MakeButtons() {
  load_ = MakeAction(kCommandConfirm, "&Charger", &NamedSetsForm::Load);
  add_ = MakeAction(kAdd, "&Ajouter", &NamedSetsForm::Add);
  replace_ = MakeAction(kReplace, "&Remplacer", &NamedSetsForm::Replace);
  rename_ = MakeAction(kRename, "Re&nommer", &NamedSetsForm::Rename);
  remove_ = MakeAction(kRemove, "&Supprimer", &NamedSetsForm::Delete);
  QPushButton* quit = MakeButton(kCommandEscape, QStringLiteral("&Quitter"));
  connect(quit, &QPushButton::clicked, this, &NamedSetsDialog::reject);
  auto* grid = new QGridLayout;
  grid->addWidget(load_, 0, 0);
  grid->addWidget(add_, 0, 1);
  grid->addWidget(replace_, 1, 0);
  grid->addWidget(rename_, 1, 1);
  grid->addWidget(remove_, 2, 0);
  grid->setRowStretch(3, 1);
  grid->addWidget(quit, 4, 0);
  grid->addWidget(MakeHelpButton(), 4, 1);
  return grid;
}

void NamedSetsDialog::Act(Action action) {
  const size_t former_count = form_.names().size();
  const NamedSetsForm::Outcome outcome = (form_.*action)();
  if (outcome == NamedSetsForm::Outcome::kLoaded) {
    accept();
    return;
  }
  if (outcome == NamedSetsForm::Outcome::kBeeps) beep_();
  ShowNames();
  if (form_.names().size() > former_count) list_->setFocus();
}

void NamedSetsDialog::ShowNames() {
  const QSignalBlocker quiet(list_);
  list_->clear();
  for (const std::string& name : form_.names()) list_->addItem(QString::fromStdString(name));
  list_->setCurrentRow(form_.selected());
  EnableButtons();
}

void NamedSetsDialog::EnableButtons() {
  const NamedSetsForm::Buttons enabled = form_.EnabledButtons();
  load_->setEnabled(enabled.load);
  add_->setEnabled(enabled.add);
  replace_->setEnabled(enabled.replace);
  rename_->setEnabled(enabled.rename);
  remove_->setEnabled(enabled.remove);
}

int NamedSetsDialog::SelectedPosition() const {
  return list_->selectedItems().isEmpty() ? -1 : list_->currentRow();
}

}  // namespace carnetel::desktop
