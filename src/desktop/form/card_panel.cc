#include "desktop/form/card_panel.h"

#include <QLayout>

#include "desktop/controls/match_notes_edit.h"
#include "desktop/controls/match_reference_combo.h"
#include "desktop/form/card_panel_labels.h"

namespace carnetel::desktop {

CardPanel::CardPanel(Kind kind, QWidget* parent) : QWidget(parent), kind_(kind) {
  Build();
  SetEditLook(IsEntry());
}

QWidget* CardPanel::SetTabOrderAfter(QWidget* from) {
  const auto link = [&from](QWidget* to) {
    if (to == nullptr) return;
    QWidget::setTabOrder(from, to);
    from = to;
  };
  for (const int control :
       {150, 151, 152, 153, 155, 156, 157, 173, 170, 171, 172, 158, 159, 160, 161, 162, 164, 174}) {
    link(Control(control));
  }
  // Last, as the buttons of the sibling programs are gone while the focus is in a field: from the
  // list they are reached backwards.
  for (const int button :
       {int{kButtonShowNotes}, int{kButtonShowReferences}, int{kButtonVoice}, int{kButtonIsdn},
        int{kButtonFax}, int{kButtonFiles}, int{kButtonMinitel}}) {
    const QWidget* place = button_places_.value(button);
    link(place == nullptr ? nullptr : place->findChild<QWidget*>(QString::number(button)));
  }
  return from;
}

void CardPanel::PlaceButton(int button, QWidget* widget) {
  if (QWidget* place = button_places_.value(button)) place->layout()->addWidget(widget);
}

QWidget* CardPanel::Control(int control) const {
  if (control == kControlReferences) return references_;
  if (control == kControlNotes) return notes_;
  if (QLabel* label = labels_.value(control)) return label;
  return edits_.value(control);
}

void CardPanel::SetFieldText(int control, const QString& text) {
  if (control == kControlNotes) {
    if (notes_ != nullptr) notes_->SetText(text);
  } else if (FilteredEdit* edit = edits_.value(control)) {
    edit->setText(text);
    edit->ForgetUndo();
    edit->setCursorPosition(0);
  }
}

QString CardPanel::FieldText(int control) const {
  if (control == kControlNotes && notes_ != nullptr) {
    return notes_->Text().replace('\n', QStringLiteral("\r\n"));
  }
  const FilteredEdit* edit = edits_.value(control);
  return edit == nullptr ? QString() : edit->text();
}

void CardPanel::SetTexts(const FormTexts& texts) {
  for (const auto& [control, text] : texts.fields) {
    SetFieldText(control, QString::fromStdString(text));
  }
  QStringList references;
  for (const std::string& text : texts.references) references += QString::fromStdString(text);
  SetReferences(references);
}

FormTexts CardPanel::Texts() const {
  FormTexts texts;
  for (const FormField& row : kFormFields) {
    texts.fields[row.control] = FieldText(row.control).toStdString();
  }
  const QStringList references = References();
  for (int i = 0; i < kReferenceCount; ++i) {
    texts.references[static_cast<size_t>(i)] = references.value(i).toStdString();
  }
  return texts;
}

void CardPanel::SetReferences(const QStringList& texts) {
  if (references_ != nullptr) references_->SetTexts(texts);
}

QStringList CardPanel::References() const {
  return references_ == nullptr ? QStringList() : references_->Texts();
}

void CardPanel::SetMatches(int control, const QList<TextRun>& matches) {
  if (auto* notes = qobject_cast<MatchNotesEdit*>(Control(control))) notes->SetMatches(matches);
  if (auto* edit = qobject_cast<MatchEdit*>(Control(control))) edit->SetMatches(matches);
}

void CardPanel::SetReferenceMatches(const QList<QList<TextRun>>& matches) {
  auto* references = qobject_cast<MatchReferenceCombo*>(references_);
  if (references != nullptr) references->SetMatches(matches);
}

void CardPanel::UndoChange(int control) {
  if (FilteredEdit* edit = edits_.value(control)) edit->TakeBackEdit();
}

void CardPanel::SetEditLook(bool on) {
  edit_look_ = on;
  if (kind_ == Kind::kMain) person_->setCurrentIndex(on ? 0 : 1);
  for (FilteredEdit* edit : edits_) edit->SetFlat(!on);
  if (notes_ != nullptr) notes_->SetFlat(!on);
  colours_->SetLook(on ? PanelLook::kEdit : PanelLook::kRest);
}

void CardPanel::ShowButton(int button, bool visible) {
  QWidget* place = button_places_.value(button);
  if (place == nullptr) return;
  if (visible) {
    QSizePolicy policy = place->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    place->setSizePolicy(policy);
  }
  place->setVisible(visible);
}

void CardPanel::SetZone(FormZone zone) {
  if (zone_ == nullptr) return;
  zone_->setCurrentIndex(zone == FormZone::kNotes ? 0 : 1);
}

void CardPanel::SetKeyField(int key_field) {
  for (const int label : {kLabelCompany, kLabelPerson, kLabelComposed}) {
    if (!labels_.contains(label)) continue;
    QFont font = labels_[label]->font();
    font.setBold((label == kLabelCompany) == (key_field == kSte1));
    labels_[label]->setFont(font);
  }
}

}  // namespace carnetel::desktop
