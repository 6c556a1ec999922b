// How the card panel is put together: which controls each kind of it has.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/focus_reason.h"
#include "desktop/controls/match_notes_edit.h"
#include "desktop/controls/match_reference_combo.h"
#include "desktop/controls/nice_frame.h"
#include "desktop/form/card_panel.h"
#include "desktop/form/card_panel_labels.h"

namespace carnetel::desktop {
namespace {

constexpr int kReferenceTyped = 32;
constexpr int kNotesLines = 3;
constexpr int kNotesMargin = 4;
constexpr int kGapBehindButton = 14;

QString Text(int id) {
  return QString::fromUtf8(LoadText(id));
}

EntryRule RuleOf(int field) {
  const bool number = field == kTel1 || field == kTel2 || field == kFax || field == kModem;
  return number ? EntryRule{FilterClass::kNumber, CaseRule::kUpper} : EntryRule{};
}

int FieldOf(int control) {
  for (const FormField& row : kFormFields) {
    if (row.control == control) return row.field;
  }
  return kSparePerson;
}

}  // namespace

void CardPanel::Build() {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  company_panel_ = BuildCompany();
  person_panel_ = BuildPerson();
  layout->addWidget(company_panel_);
  layout->addWidget(person_panel_);
  AlignFirstColumn();
  colours_ = new PanelColours(this);
  RegisterColours();
}

// Both panels and every page of theirs share one grid line between labels and fields.
void CardPanel::AlignFirstColumn() {
  const int person = kind_ == Kind::kSearch ? kLabelFirstName : kLabelTitle;
  const std::array<int, 10> first_column = {
      kLabelCompany, kLabelAddress, kLabelCode, person,      kLabelComposed,
      2158,          2160,          2162,       kLabelNotes, kLabelReferences};
  int width = 0;
  for (const int label : first_column) {
    if (labels_.contains(label)) width = std::max(width, labels_[label]->sizeHint().width());
  }
  // Room for the bold label of the field that names cards.
  width += fontMetrics().averageCharWidth() * 2;
  for (const int label : first_column) {
    if (labels_.contains(label)) labels_[label]->setFixedWidth(width);
  }
}

QLabel* CardPanel::AddLabel(int id, const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setObjectName(QString::number(id));
  label->setBuddy(buddy);
  labels_[id] = label;
  return label;
}

void CardPanel::WatchEdit(FilteredEdit* edit, int control) {
  connect(edit, &QLineEdit::textEdited, this, [this, control] {
    // The line of the references belongs to whichever of them is picked.
    Q_EMIT fieldEdited(control, control == kControlReferences ? references_->currentIndex() : 0);
  });
  connect(edit, &QLineEdit::returnPressed, this, &CardPanel::confirmed);
  connect(edit, &FilteredEdit::focusEntered, this, [this, control](Qt::FocusReason reason) {
    if (IsUserFocusChange(reason)) Q_EMIT fieldEntered(control);
  });
}

void CardPanel::WatchNotes() {
  connect(notes_, &FilteredNotesEdit::textEdited, this,
          [this] { Q_EMIT fieldEdited(kControlNotes, 0); });
  connect(notes_, &FilteredNotesEdit::returnPressed, this, &CardPanel::confirmed);
  connect(notes_, &FilteredNotesEdit::focusEntered, this, [this](Qt::FocusReason reason) {
    if (IsUserFocusChange(reason)) Q_EMIT fieldEntered(kControlNotes);
  });
}

FilteredEdit* CardPanel::AddEdit(int control, const QString& name, int shown_characters) {
  const int field = FieldOf(control);
  const int size = kFieldTable[field].size;
  FilteredEdit* edit = kind_ == Kind::kSearch ? new MatchEdit(control, RuleOf(field), size)
                                              : new FilteredEdit(control, RuleOf(field), size);
  edit->setAccessibleName(name);
  edit->setReadOnly(!IsEditable());
  if (kind_ == Kind::kReview) edit->setFocusPolicy(Qt::ClickFocus);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * shown_characters + 12);
  edits_[control] = edit;
  if (IsEditable()) WatchEdit(edit, control);
  return edit;
}

QWidget* CardPanel::AddButtonPlace(int button) {
  auto* place = new QWidget;
  (new QHBoxLayout(place))->setContentsMargins(0, 0, 0, 0);
  button_places_[button] = place;
  return place;
}

QWidget* CardPanel::BuildCompany() {
  auto* panel = new NiceFrame(kPanelCompany, NiceFrame::Kind::kPanel, this);
  auto* grid = new QGridLayout(panel);
  grid->setSpacing(6);
  const auto add = [&](int row, int label, const QString& text, int control) {
    auto* edit = AddEdit(control, text, 32);
    if (label != 0) grid->addWidget(AddLabel(label, text, edit), row, 0);
    grid->addWidget(edit, row, 1, 1, 5);
  };
  add(0, kLabelCompany, Text(254), 150);
  add(1, 0, QStringLiteral("Société, suite"), 151);
  add(2, kLabelAddress, QStringLiteral("Adresse"), 152);
  add(3, 0, QStringLiteral("Adresse, suite"), 153);
  auto* code = AddEdit(155, QStringLiteral("Code postal"), kind_ == Kind::kSearch ? 16 : 10);
  auto* town = AddEdit(156, QStringLiteral("Ville"), 20);
  auto* country = AddEdit(157, QStringLiteral("Pays"), 14);
  grid->addWidget(AddLabel(kLabelCode, QStringLiteral("CP"), code), 4, 0);
  grid->addWidget(code, 4, 1);
  grid->addWidget(AddLabel(2010, QStringLiteral("Ville"), town), 4, 2);
  grid->addWidget(town, 4, 3);
  grid->addWidget(AddLabel(2011, QStringLiteral("Pays"), country), 4, 4);
  grid->addWidget(country, 4, 5);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(3, 4);
  grid->setColumnStretch(5, 3);
  return panel;
}

QWidget* CardPanel::BuildPersonLine() {
  auto* fields = new QWidget;
  auto* row = new QHBoxLayout(fields);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(6);
  constexpr std::array<int, 3> kTitles = {117, 118, 119};
  constexpr std::array<int, 3> kLabels = {kLabelTitle, kLabelFirstName, kLabelPerson};
  constexpr std::array<int, 3> kWidths = {8, 14, 18};
  for (size_t i = kind_ == Kind::kSearch ? 1 : 0; i < kTitles.size(); ++i) {
    const QString text = Text(kTitles[i]);
    auto* edit = AddEdit(kControlQualite + static_cast<int>(i), text, kWidths[i]);
    const bool has_letter = kind_ == Kind::kMain || kind_ == Kind::kEntry;
    row->addWidget(AddLabel(kLabels[i], has_letter ? '&' + text : text, edit));
    row->addWidget(edit, kWidths[i]);
  }
  person_ = new QStackedWidget;
  person_->addWidget(fields);
  if (kind_ == Kind::kMain) {
    auto* line = new QWidget;
    auto* composed = new QHBoxLayout(line);
    composed->setContentsMargins(0, 0, 0, 0);
    auto* edit = AddEdit(kControlComposedName, QStringLiteral("Correspondant"), 40);
    edit->setReadOnly(true);
    edit->setMaxLength(32767);
    composed->addWidget(AddLabel(kLabelComposed, QStringLiteral("Correspondant"), edit));
    composed->addWidget(edit, 1);
    person_->addWidget(line);
  }
  return person_;
}

void CardPanel::BuildReferences() {
  references_ = kind_ == Kind::kSearch
                    ? new MatchReferenceCombo(kControlReferences, kReferenceTyped)
                    : new ReferenceCombo(kControlReferences, kReferenceTyped);
  references_->setAccessibleName(QStringLiteral("Références"));
  references_->edit()->setAccessibleName(references_->accessibleName());
  references_->edit()->setReadOnly(!IsEditable());
  if (IsEditable()) WatchEdit(references_->edit(), kControlReferences);
}

void CardPanel::BuildNotes() {
  const int size = kFieldTable[kNotes].size;
  notes_ = kind_ == Kind::kSearch ? new MatchNotesEdit(kControlNotes, size)
                                  : new FilteredNotesEdit(kControlNotes, size);
  notes_->setAccessibleName(QStringLiteral("Notes"));
  notes_->setFixedHeight(notes_->fontMetrics().lineSpacing() * kNotesLines + 12);
  notes_->setEnabled(IsEditable());
  if (IsEditable()) WatchNotes();
}

QWidget* CardPanel::BuildZone() {
  BuildReferences();
  BuildNotes();
  // One at a time where there is a choice, else one below the other.
  auto* both = new QWidget;
  auto* rows = new QVBoxLayout(both);
  rows->setContentsMargins(0, 0, 0, 0);
  if (kind_ == Kind::kMain) {
    zone_ = new QStackedWidget;
    rows->addWidget(zone_);
  }
  const auto add_page = [&](int label, const QString& text, QWidget* control, int button) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(AddLabel(label, text, control));
    row->addWidget(control, 1);
    if (kind_ == Kind::kMain) row->addWidget(AddButtonPlace(button), 0, Qt::AlignTop);
    column->addLayout(row);
    column->addStretch();
    if (zone_ != nullptr) {
      zone_->addWidget(page);
    } else {
      rows->insertWidget(0, page);
    }
  };
  add_page(kLabelNotes, QStringLiteral("Notes"), notes_, kButtonShowReferences);
  // Beside the first of the lines.
  labels_[kLabelNotes]->setAlignment(Qt::AlignRight | Qt::AlignTop);
  labels_[kLabelNotes]->setContentsMargins(0, notes_->frameWidth() + kNotesMargin, 0, 0);
  add_page(kLabelReferences, QStringLiteral("Références"), references_, kButtonShowNotes);
  return both;
}

QWidget* CardPanel::BuildPerson() {
  auto* panel = new NiceFrame(kPanelPerson, NiceFrame::Kind::kPanel, this);
  auto* layout = new QVBoxLayout(panel);
  layout->setSpacing(6);
  layout->addWidget(BuildPersonLine());
  auto* grid = new QGridLayout;
  grid->setSpacing(6);
  const auto add = [&](int row, int column, const QString& text, int control, int button) {
    auto* edit = AddEdit(control, text, 18);
    grid->addWidget(AddLabel(control + 2000, text, edit), row, column);
    grid->addWidget(edit, row, column + 1);
    if (kind_ != Kind::kMain) return;
    QWidget* place = AddButtonPlace(button);
    // A button is seen to belong to the number before it, not to the label behind it.
    if (column == 0) place->layout()->setContentsMargins(0, 0, kGapBehindButton, 0);
    grid->addWidget(place, row, column + 2);
  };
  add(0, 0, QStringLiteral("Tél. 1"), 158, kButtonVoice);
  add(0, 3, QStringLiteral("Tél. 2"), 159, kButtonIsdn);
  add(1, 0, QStringLiteral("Fax"), 160, kButtonFax);
  add(1, 3, QStringLiteral("Modem"), 161, kButtonFiles);
  add(2, 0, QStringLiteral("Minitel"), 162, kButtonMinitel);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(4, 1);
  layout->addLayout(grid);
  if (kind_ != Kind::kReview) layout->addWidget(BuildZone());
  return panel;
}

void CardPanel::RegisterColours() {
  for (QWidget* panel : {company_panel_, person_panel_}) colours_->Add(panel, PanelRole::kPanel);
  const auto role = [](int control) {
    return IsNumberControl(control) ? PanelRole::kReference : PanelRole::kText;
  };
  for (auto edit = edits_.cbegin(); edit != edits_.cend(); ++edit) {
    colours_->Add(edit.value(), role(edit.key()));
  }
  for (auto label = labels_.cbegin(); label != labels_.cend(); ++label) {
    const bool zone = label.key() == kLabelReferences || label.key() == kLabelNotes;
    colours_->Add(label.value(), zone ? PanelRole::kReference : PanelRole::kText);
  }
  if (references_ != nullptr) colours_->Add(references_, PanelRole::kReference);
  if (notes_ != nullptr) colours_->Add(notes_, PanelRole::kReference);
}

}  // namespace carnetel::desktop
