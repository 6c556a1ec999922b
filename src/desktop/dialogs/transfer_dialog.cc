#include "desktop/dialogs/transfer_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/wait_cursor.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kImportDialog = 110;
constexpr int kExportDialog = 127;
constexpr int kImportTopic = 58;
constexpr int kExportTopic = 59;
constexpr int kLongestPath = 260;
// Characters of a path that are seen without scrolling.
constexpr int kPathCharacters = 48;
// In the order of TransferFileType.
constexpr int kTypeTexts[] = {113, 114, 115, 116, 195};

QString TextOf(int id) {
  const std::string_view text = LoadText(id);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

TransferSide OtherThan(TransferSide side) {
  return side == TransferSide::kSource ? TransferSide::kDestination : TransferSide::kSource;
}

void AddLine(QGridLayout& grid, const char* label, QWidget* input) {
  const int row = grid.rowCount();
  auto* text = new QLabel(QString::fromUtf8(label), input->parentWidget());
  text->setBuddy(input);
  text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grid.addWidget(text, row, 0);
  grid.addWidget(input, row, 1);
}

}  // namespace

TransferDialog::TransferDialog(TransferForm& form, QWidget* parent)
    : FixedDialog(form.imports() ? kImportDialog : kExportDialog,
                  form.imports() ? kImportTopic : kExportTopic, parent),
      form_(form),
      focused_(form.foreign_side()),
      edited_(form.foreign_side()) {
  setWindowTitle(TextOf(form.title_id()));
  auto* column = new QVBoxLayout(this);
  column->addLayout(MakeGrid());
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowForm();
  PathOf(form.foreign_side())->setFocus();
}

FilteredEdit* TransferDialog::PathOf(TransferSide side) const {
  return side == TransferSide::kSource ? source_ : destination_;
}

// The directory's side takes the focus, so that another directory can be chosen for it, but no
// text.
FilteredEdit* TransferDialog::MakePath(const char* name, TransferSide side) {
  auto* path = new FilteredEdit(0, {FilterClass::kNativePath, CaseRule::kNone}, kLongestPath, this);
  path->setObjectName(QString::fromLatin1(name));
  path->setMinimumWidth(fontMetrics().averageCharWidth() * kPathCharacters);
  connect(path, &FilteredEdit::focusEntered, this, [this, side] { focused_ = side; });
  if (side == form_.directory_side()) {
    path->setReadOnly(true);
    QPalette colours = path->palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    path->setPalette(colours);
    return path;
  }
  connect(path, &QLineEdit::textEdited, this, [this, side](const QString& text) {
    edited_ = side;
    form_.SetForeignPath(text.toStdString());
    ShowForm();
  });
  return path;
}

PickerCombo* TransferDialog::MakeList(const char* name, const QStringList& rows) {
  auto* list = new PickerCombo(0, this);
  list->setObjectName(QString::fromLatin1(name));
  list->SetRows(rows, 0);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  return list;
}

QPushButton* TransferDialog::MakeNamed(const char* name, const QString& caption) {
  QPushButton* button = MakeButton(0, caption);
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

QGridLayout* TransferDialog::MakeGrid() {
  source_ = MakePath("source", TransferSide::kSource);
  destination_ = MakePath("destination", TransferSide::kDestination);
  QPushButton* browse = MakeNamed("browse", QStringLiteral("P&arcourir"));
  QStringList types;
  for (const int text : kTypeTexts) types += TextOf(text);
  type_ = MakeList("type", types);
  charset_ = MakeList("charset", {QStringLiteral(" ASCII"), QStringLiteral(" ANSI")});
  connect(browse, &QPushButton::clicked, this, &TransferDialog::Browse);
  connect(type_, &QComboBox::activated, this, [this](int row) {
    form_.set_type(static_cast<TransferFileType>(row));
    ShowForm();
  });
  connect(charset_, &QComboBox::activated, this,
          [this](int row) { form_.set_charset(static_cast<CharacterSet>(row)); });
  auto* grid = new QGridLayout;
  AddLine(*grid, "Fichier s&ource", source_);
  AddLine(*grid, "Fichier &destination", destination_);
  grid->addWidget(browse, grid->rowCount() - 2, 2, 2, 1, Qt::AlignVCenter);
  AddLine(*grid, "&Type de fichier", type_);
  AddLine(*grid, "&Jeu de caractères", charset_);
  grid->setColumnStretch(1, 1);
  return grid;
}

QLayout* TransferDialog::MakeButtons() {
  parameters_ = MakeNamed("parameters", QStringLiteral("&Paramètres"));
  QPushButton* profiles = MakeNamed("profiles", QStringLiteral("&Sauver/Charger"));
  action_ = MakeNamed("action", QString::fromStdString(form_.ActionCaption()));
  action_->setDefault(true);
  QPushButton* quit = MakeButton(kCommandEscape, QStringLiteral("&Quitter"));
  connect(parameters_, &QPushButton::clicked, this, &TransferDialog::SetParameters);
  connect(profiles, &QPushButton::clicked, this, &TransferDialog::ManageProfiles);
  connect(action_, &QPushButton::clicked, this, &TransferDialog::Act);
  connect(quit, &QPushButton::clicked, this, &TransferDialog::reject);
  auto* line = new QHBoxLayout;
  line->addWidget(parameters_);
  line->addWidget(profiles);
  line->addSpacing(fontMetrics().averageCharWidth() * 4);
  line->addStretch();
  line->addWidget(action_);
  line->addWidget(quit);
  line->addWidget(MakeHelpButton());
  return line;
}

void TransferDialog::ShowForm() {
  for (const TransferSide side : {TransferSide::kSource, TransferSide::kDestination}) {
    const std::string& path = side == TransferSide::kSource ? form_.source() : form_.destination();
    const QString text = QString::fromStdString(path);
    if (PathOf(side)->text() != text) PathOf(side)->setText(text);
  }
  type_->setCurrentIndex(static_cast<int>(form_.type()));
  charset_->setCurrentIndex(static_cast<int>(form_.charset()));
  parameters_->setEnabled(form_.may_set_parameters());
  action_->setEnabled(form_.may_act());
}

void TransferDialog::Browse() {
  const TransferSide side = focused_;
  if (!form_.Browse(side)) return;
  edited_ = side;
  ShowForm();
  PathOf(OtherThan(side))->setFocus();
}

void TransferDialog::SetParameters() {
  form_.SetParameters();
  ShowForm();
}

void TransferDialog::ManageProfiles() {
  form_.ManageProfiles();
  ShowForm();
}

// After a transfer that was made the dialog stays for a further one.
void TransferDialog::Act() {
  const WaitCursor wait;
  const TransferForm::Outcome outcome = form_.Act();
  if (outcome == TransferForm::Outcome::kFailed) {
    reject();
    return;
  }
  ShowForm();
  if (outcome == TransferForm::Outcome::kStays) PathOf(edited_)->setFocus();
}

}  // namespace carnetel::desktop
