#include "desktop/dialogs/transfer_mode_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 112;
constexpr int kImportTopic = 58;
constexpr int kExportTopic = 59;
constexpr int kExportTitle = 108;

}  // namespace

TransferModeDialog::TransferModeDialog(bool imports, QWidget* parent)
    : FixedDialog(kDialog, imports ? kImportTopic : kExportTopic, parent) {
  if (!imports) {
    const std::string_view title = LoadText(kExportTitle);
    setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  }
  auto* column = new QVBoxLayout(this);
  column->addWidget(new QLabel(QStringLiteral("Le fichier de destination existe déjà !"), this));
  column->addSpacing(column->spacing());
  column->addWidget(new QLabel(QStringLiteral("Vous pouvez :"), this));
  QRadioButton* add = MakeChoice("add", "&Ajouter aux fiches existantes");
  replace_ = MakeChoice("replace", "&Remplacer toutes les fiches existantes");
  add->setChecked(true);
  // Tab stops at the chosen one from the first time on; the toolkit sees to it only later.
  replace_->setFocusPolicy(Qt::ClickFocus);
  column->addWidget(add);
  column->addWidget(replace_);
  column->addSpacing(column->spacing());
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  add->setFocus();
}

QRadioButton* TransferModeDialog::MakeChoice(const char* name, const char* caption) {
  auto* choice = new QRadioButton(QString::fromUtf8(caption), this);
  choice->setObjectName(QString::fromLatin1(name));
  return choice;
}

QLayout* TransferModeDialog::MakeButtons() {
  auto* line = new QHBoxLayout;
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("OK"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandonner"));
  line->addStretch();
  line->addWidget(confirm);
  line->addWidget(abandon);
  connect(confirm, &QPushButton::clicked, this, &TransferModeDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &TransferModeDialog::reject);
  return line;
}

}  // namespace carnetel::desktop
