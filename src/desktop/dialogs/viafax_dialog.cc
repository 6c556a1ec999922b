#include "desktop/dialogs/viafax_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <array>

#include "desktop/controls/radio_box.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kDialog = 1049;
constexpr int kNoHelpTopic = 0;
constexpr int kCompany = 1040;
constexpr int kName = 1041;
// The radio of option 0; those of the others follow.
constexpr int kFirstOption = 1042;

struct OptionSet {
  int first;
  int count;
};
constexpr std::array<OptionSet, 2> kSets = {{{0, 3}, {3, 4}}};
constexpr std::array<const char*, kViafaxOptions> kCaptions = {
    "Société",    "Société-Nom",        "Nom-Société", "Qualité-Prénom-Nom",
    "Prénom-Nom", "Qualité-Nom-Prénom", "Nom-Prénom"};

}  // namespace

ViafaxDialog::ViafaxDialog(ViafaxOptionForm& form, QWidget* parent)
    : FixedDialog(kDialog, kNoHelpTopic, parent), form_(form) {
  auto* column = new QVBoxLayout(this);
  auto* boxes = new QHBoxLayout;
  QGroupBox* subjects = BuildSubjects();
  boxes->addWidget(subjects);
  boxes->addWidget(BuildCompositions(), 1);
  column->addLayout(boxes);
  column->addLayout(BuildButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  for (auto* radio : subjects->findChildren<QRadioButton*>()) {
    if (radio->isChecked()) radio->setFocus();
  }
}

QGroupBox* ViafaxDialog::BuildSubjects() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Sujet"));
  auto* group = new QButtonGroup(this);
  AddRadio(box, group, kCompany, QStringLiteral("&Société"));
  AddRadio(box, group, kName, QStringLiteral("&Nom"));
  static_cast<QVBoxLayout*>(box->layout())->addStretch();
  ChooseRadio(group, form_.subject() == ViafaxSubject::kCompany ? kCompany : kName, [this](int id) {
    form_.set_subject(id == kCompany ? ViafaxSubject::kCompany : ViafaxSubject::kName);
    sets_->setCurrentIndex(static_cast<int>(form_.subject()));
  });
  return box;
}

QGroupBox* ViafaxDialog::BuildCompositions() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Composition"));
  sets_ = new QStackedWidget;
  for (const ViafaxSubject subject : {ViafaxSubject::kCompany, ViafaxSubject::kName}) {
    sets_->addWidget(BuildSet(subject));
  }
  sets_->setCurrentIndex(static_cast<int>(form_.subject()));
  box->layout()->addWidget(sets_);
  return box;
}

QWidget* ViafaxDialog::BuildSet(ViafaxSubject subject) {
  auto* page = new QWidget;
  auto* rows = new QVBoxLayout(page);
  rows->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(this);
  const OptionSet& set = kSets[static_cast<size_t>(subject)];
  for (int option = set.first; option < set.first + set.count; ++option) {
    AddRadio(page, group, kFirstOption + option,
             QString::fromUtf8(kCaptions[static_cast<size_t>(option)]));
  }
  rows->addStretch();
  ChooseRadio(group, kFirstOption + form_.option(subject),
              [this](int id) { form_.Choose(id - kFirstOption); });
  return page;
}

QLayout* ViafaxDialog::BuildButtons() {
  auto* line = new QHBoxLayout;
  QPushButton* confirm = MakeButton(kCommandConfirm, QStringLiteral("OK"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Annuler"));
  line->addStretch();
  line->addWidget(confirm);
  line->addWidget(abandon);
  connect(confirm, &QPushButton::clicked, this, &ViafaxDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &ViafaxDialog::reject);
  return line;
}

}  // namespace carnetel::desktop
