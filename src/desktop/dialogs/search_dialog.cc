#include "desktop/dialogs/search_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "base/key_alphabet.h"
#include "desktop/controls/wait_cursor.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 102;
constexpr int kHelpTopic = 53;
constexpr int kNext = 216;
constexpr int kPrevious = 217;

// One character a line break, as the notes field counts them.
QString WithLineFeeds(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

}  // namespace

SearchDialog::SearchDialog(SearchForm& form, QWidget* parent)
    : FixedDialog(kTemplate, kHelpTopic, parent),
      form_(form),
      panel_(new CardPanel(CardPanel::Kind::kSearch, this)) {
  auto* column = new QVBoxLayout(this);
  column->addWidget(panel_);
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  panel_->SetKeyField(form_.key_field());
  panel_->SetReferences(QStringList(kReferenceCount));
  connect(panel_, &CardPanel::fieldEdited, this, &SearchDialog::FieldEdited);
  // Enter in the notes is the command itself, not a press of its button: an empty form is told so.
  auto* notes = qobject_cast<FilteredNotesEdit*>(panel_->Control(kControlNotes));
  connect(notes, &FilteredNotesEdit::returnPressed, this, [this] {
    if (!form_.may_step()) Search();
  });
  EnableButtons();
  panel_->Control(kControlPrenom)->setFocus();
}

QLayout* SearchDialog::MakeButtons() {
  auto* line = new QHBoxLayout;
  search_ = MakeButton(kCommandConfirm, QStringLiteral("&Chercher"));
  next_ = MakeButton(kNext, QStringLiteral("&Suiv"));
  previous_ = MakeButton(kPrevious, QStringLiteral("&Préc"));
  QPushButton* quit = MakeButton(kCommandEscape, QStringLiteral("&Quitter"));
  for (QPushButton* button : {search_, next_, previous_}) line->addWidget(button);
  line->addStretch();
  line->addWidget(quit);
  QPushButton* help = MakeHelpButton();
  line->addWidget(help);
  // In a ring: from the last button to the first field.
  panel_->SetTabOrderAfter(help);
  connect(search_, &QPushButton::clicked, this, &SearchDialog::Search);
  connect(next_, &QPushButton::clicked, this, [this] { Step(WalkDirection::kNext); });
  connect(previous_, &QPushButton::clicked, this, [this] { Step(WalkDirection::kPrevious); });
  connect(quit, &QPushButton::clicked, this, &SearchDialog::reject);
  return line;
}

void SearchDialog::FieldEdited(int control) {
  if (control == kControlSte1 && !MayStartKey(panel_->FieldText(control).toStdString())) {
    beep_();
    panel_->UndoChange(control);
  }
  form_.FieldsChanged(panel_->Texts());
  EnableButtons();
}

void SearchDialog::Search() {
  const WaitCursor wait;
  if (form_.Search(panel_->Texts()) == SearchForm::Outcome::kNothing) {
    panel_->Control(kControlSte1)->setFocus();
    return;
  }
  ShowCard();
  next_->setEnabled(true);
  next_->setFocus();
  EnableButtons();
}

void SearchDialog::Step(WalkDirection direction) {
  const WaitCursor wait;
  if (form_.Step(direction) == SearchForm::Outcome::kFound) {
    ShowCard();
  } else {
    beep_();
  }
}

void SearchDialog::EnableButtons() {
  search_->setEnabled(form_.may_search());
  for (QPushButton* step : {next_, previous_}) step->setEnabled(form_.may_step());
}

QList<TextRun> SearchDialog::Matches(const QString& text, int field) const {
  const QString example = WithLineFeeds(QString::fromStdString(form_.ExampleText(field)));
  QList<TextRun> runs;
  for (const TextSpan& span : MatchSpans(text.toStdString(), example.toStdString())) {
    runs += {static_cast<qsizetype>(span.start), static_cast<qsizetype>(span.length)};
  }
  return runs;
}

void SearchDialog::ShowCard() {
  panel_->SetTexts(TextsOfCard(form_.card()));
  for (const FormField& row : kFormFields) {
    const QString shown = WithLineFeeds(panel_->FieldText(row.control));
    panel_->SetMatches(row.control, Matches(shown, row.field));
  }
  QList<QList<TextRun>> matches;
  const QStringList references = panel_->References();
  for (int i = 0; i < kReferenceCount; ++i) matches += Matches(references.value(i), kRef1 + i);
  panel_->SetReferenceMatches(matches);
}

}  // namespace carnetel::desktop
