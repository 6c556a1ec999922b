#include "desktop/dialogs/preferences_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/measure.h"
#include "desktop/controls/radio_box.h"
#include "shell/command_table.h"
#include "shell/form_fields.h"

namespace carnetel::desktop {
namespace {

constexpr int kPreferences = 134;
constexpr int kHelpTopic = 75;
constexpr int kBalloons = 223;
constexpr int kStartsAtKey = 2015;
constexpr int kFirstPersonStyle = 2020;
constexpr int kFirstCompanyStyle = 2024;
constexpr int kStartsAtFirst = 2027;
// Texts of the four person styles, in the order of their numbers.
constexpr int kFirstPersonStyleText = 267;
constexpr int kPersonStyles = 4;
constexpr int kGapBetweenStyles = 8;
constexpr const char* kCompanyStyleTexts[] = {"Société", "Société-Nom", "Nom-Société"};

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void SetEnabled(QButtonGroup* group, bool enabled) {
  for (QAbstractButton* radio : group->buttons()) radio->setEnabled(enabled);
}

}  // namespace

PreferencesDialog::PreferencesDialog(PreferencesForm& form, QWidget* parent)
    : FixedDialog(kPreferences, kHelpTopic, parent), form_(form) {
  // Boxes and buttons are made in the order of the keyboard.
  auto* grid = new QGridLayout(this);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  grid->addWidget(BuildIndexBox(), 0, 0);
  grid->addWidget(BuildStyleBox(), 1, 0, 3, 1);
  grid->addWidget(BuildZoneBox(), 0, 1);
  grid->addWidget(BuildStartBox(), 1, 1);
  BuildBalloons();
  grid->addWidget(balloons_, 2, 1);
  grid->setRowStretch(3, 1);
  grid->addLayout(BuildButtons(), 4, 0, 1, 2);
  EnableStyles();
}

QGroupBox* PreferencesDialog::BuildIndexBox() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Indexer sur"));
  auto* group = new QButtonGroup(this);
  AddRadio(box, group, kControlSte1, QStringLiteral("&Société "));
  AddRadio(box, group, kControlNom, QStringLiteral("&Nom "));
  ChooseRadio(group, form_.key_field() == kNom ? kControlNom : kControlSte1, [this](int id) {
    form_.set_key_field(id == kControlNom ? kNom : kSte1);
    EnableStyles();
  });
  return box;
}

QGroupBox* PreferencesDialog::BuildStyleBox() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Affichage de la liste"));
  company_styles_ = new QButtonGroup(this);
  int id = kFirstCompanyStyle;
  for (const char* text : kCompanyStyleTexts) {
    AddRadio(box, company_styles_, id++, QString::fromUtf8(text));
  }
  ChooseRadio(company_styles_, kFirstCompanyStyle + form_.style_aff_ste(),
              [this](int chosen) { form_.set_style_aff_ste(chosen - kFirstCompanyStyle); });
  box->layout()->addItem(new QSpacerItem(0, Measure(kGapBetweenStyles, fontMetrics())));
  person_styles_ = new QButtonGroup(this);
  for (int style = 0; style < kPersonStyles; ++style) {
    AddRadio(box, person_styles_, kFirstPersonStyle + style,
             Utf8(LoadText(kFirstPersonStyleText + style)));
  }
  ChooseRadio(person_styles_, kFirstPersonStyle + form_.style_aff_list(),
              [this](int chosen) { form_.set_style_aff_list(chosen - kFirstPersonStyle); });
  return box;
}

QGroupBox* PreferencesDialog::BuildZoneBox() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Afficher en priorité"));
  auto* group = new QButtonGroup(this);
  AddRadio(box, group, kControlNotes, QStringLiteral("Notes"));
  AddRadio(box, group, kControlReferences, QStringLiteral("Références"));
  ChooseRadio(group, form_.shows_references() ? kControlReferences : kControlNotes,
              [this](int id) { form_.set_shows_references(id == kControlReferences); });
  return box;
}

QGroupBox* PreferencesDialog::BuildStartBox() {
  QGroupBox* box = MakeRadioBox(QStringLiteral("Commencer la saisie par"));
  auto* group = new QButtonGroup(this);
  AddRadio(box, group, kStartsAtKey, QStringLiteral("Champ Index"));
  AddRadio(box, group, kStartsAtFirst, QStringLiteral("Premier champ de la fiche"));
  ChooseRadio(group, form_.starts_at_first() ? kStartsAtFirst : kStartsAtKey,
              [this](int id) { form_.set_starts_at_first(id == kStartsAtFirst); });
  return box;
}

void PreferencesDialog::BuildBalloons() {
  balloons_ = new QCheckBox(QStringLiteral("Afficher &Infos-Bulles "));
  balloons_->setObjectName(QString::number(kBalloons));
  balloons_->setChecked(form_.balloons());
  balloons_->setEnabled(form_.balloons_enabled());
  connect(balloons_, &QCheckBox::toggled, this, [this](bool on) { form_.set_balloons(on); });
}

QHBoxLayout* PreferencesDialog::BuildButtons() {
  auto* row = new QHBoxLayout;
  QPushButton* ok = MakeButton(kCommandConfirm, QStringLiteral("Ok"));
  QPushButton* abandon = MakeButton(kCommandEscape, QStringLiteral("Abandon"));
  row->addStretch();
  for (QPushButton* button : {ok, abandon, MakeHelpButton()}) row->addWidget(button);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(abandon, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void PreferencesDialog::EnableStyles() {
  SetEnabled(company_styles_, form_.company_styles_enabled());
  SetEnabled(person_styles_, form_.person_styles_enabled());
}

}  // namespace carnetel::desktop
