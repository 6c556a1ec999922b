#include "desktop/dialogs/invalid_file_dialog.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kHelpTopic = 48;

struct Choice {
  InvalidFileChoice choice;
  const char* caption;
};
constexpr std::array kChoices = {
    Choice{InvalidFileChoice::kRecover, "&Récupérer et charger le fichier"},
    Choice{InvalidFileChoice::kCreate, "&Créer un nouveau fichier"},
    Choice{InvalidFileChoice::kLoad, "C&harger un fichier existant"},
    Choice{InvalidFileChoice::kDestroy, "&Détruire le fichier non reconnu"},
};

}  // namespace

InvalidFileDialog::InvalidFileDialog(InvalidFileForm& form, QWidget* parent)
    : FixedDialog(136, kHelpTopic, parent),
      form_(form),
      path_(new PathLabel(this)),
      choices_(new QButtonGroup(this)) {
  auto* column = new QVBoxLayout(this);
  auto* line = new QHBoxLayout;
  line->addWidget(new QLabel(QStringLiteral("Fichier non reconnu :")));
  line->addWidget(path_, 1);
  column->addLayout(line);
  AddChoices(*column);
  auto* buttons = new QHBoxLayout;
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("OK"));
  QPushButton* close = MakeButton(kCommandEscape, QStringLiteral("&Fermer"));
  buttons->addStretch();
  buttons->addWidget(confirm);
  buttons->addWidget(close);
  column->addSpacing(column->spacing());
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  connect(confirm, &QPushButton::clicked, this, &InvalidFileDialog::Confirm);
  connect(close, &QPushButton::clicked, this, &InvalidFileDialog::reject);
  ShowState();
}

void InvalidFileDialog::AddChoices(QVBoxLayout& column) {
  for (const Choice& choice : kChoices) {
    const int id = static_cast<int>(choice.choice);
    auto* button = new QRadioButton(QString::fromUtf8(choice.caption), this);
    button->setObjectName(QString::number(id));
    choices_->addButton(button, id);
    column.addWidget(button);
  }
  connect(choices_, &QButtonGroup::idToggled, this, [this](int id, bool on) {
    if (on) form_.set_choice(static_cast<InvalidFileChoice>(id));
  });
}

void InvalidFileDialog::ShowState() {
  path_->SetPath(QString::fromStdString(form_.path()));
  QAbstractButton* chosen = choices_->button(static_cast<int>(form_.choice()));
  chosen->setChecked(true);
  chosen->setFocus();
  choices_->button(static_cast<int>(InvalidFileChoice::kRecover))->setEnabled(form_.may_recover());
}

void InvalidFileDialog::Confirm() {
  const std::optional<InvalidFileEnd> end = form_.Confirm();
  if (!end) {
    ShowState();
    return;
  }
  end_ = *end;
  accept();
}

}  // namespace carnetel::desktop
