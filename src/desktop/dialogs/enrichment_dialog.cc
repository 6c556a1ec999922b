#include "desktop/dialogs/enrichment_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "base/key_alphabet.h"
#include "desktop/controls/wait_cursor.h"
#include "shell/command_table.h"

namespace carnetel::desktop {
namespace {

constexpr int kReviewTemplate = 116;
constexpr int kEditTemplate = 117;
constexpr int kReviewTopic = 81;
constexpr int kEditTopic = 80;

}  // namespace

EnrichmentDialog::EnrichmentDialog(EnrichmentReview& review, QWidget* parent)
    : FixedDialog(review.edits() ? kEditTemplate : kReviewTemplate,
                  review.edits() ? kEditTopic : kReviewTopic, parent),
      review_(review),
      panel_(new CardPanel(review.edits() ? CardPanel::Kind::kEntry : CardPanel::Kind::kReview,
                           this)) {
  SetMainWindowFrame();
  auto* column = new QVBoxLayout(this);
  column->addWidget(panel_);
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  ShowCard();
  if (review_.edits()) {
    WatchFields();
    panel_->Control(kControlSte1)->setFocus();
  } else {
    save_->setFocus();
  }
}

QLayout* EnrichmentDialog::MakeButtons() {
  auto* line = new QHBoxLayout;
  save_ = MakeButton(kCommandConfirm, QStringLiteral("&Enregistrer"));
  skip_ = MakeButton(0, QStringLiteral("&Ignorer"));
  skip_->setObjectName(QStringLiteral("skip"));
  end_ = MakeButton(kCommandEscape, QStringLiteral("&Terminer"));
  line->addStretch();
  for (QPushButton* button : {save_, skip_, end_}) line->addWidget(button);
  QPushButton* help = MakeHelpButton();
  line->addWidget(help);
  if (review_.edits()) panel_->SetTabOrderAfter(help);
  connect(save_, &QPushButton::clicked, this, [this] {
    const WaitCursor wait;
    Take(review_.Save(panel_->Texts()));
  });
  connect(skip_, &QPushButton::clicked, this, [this] { Take(review_.Skip()); });
  connect(end_, &QPushButton::clicked, this, &EnrichmentDialog::reject);
  return line;
}

void EnrichmentDialog::WatchFields() {
  connect(panel_, &CardPanel::fieldEdited, this, &EnrichmentDialog::FieldEdited);
  // In the other fields Enter is the dialog's.
  auto* notes = qobject_cast<FilteredNotesEdit*>(panel_->Control(kControlNotes));
  connect(notes, &FilteredNotesEdit::returnPressed, save_, &QPushButton::click);
}

void EnrichmentDialog::FieldEdited(int control) {
  const bool key = control == kControlSte1 || control == kControlNom;
  if (!key || MayStartKey(panel_->FieldText(control).toStdString())) return;
  beep_();
  panel_->UndoChange(control);
}

void EnrichmentDialog::ShowCard() {
  panel_->SetTexts(review_.Texts());
}

void EnrichmentDialog::Take(EnrichmentReview::Outcome outcome) {
  switch (outcome) {
    case EnrichmentReview::Outcome::kNext:
      ShowCard();
      // The next card is typed from its beginning; whoever presses buttons stays there.
      if (panel_->isAncestorOf(focusWidget())) panel_->Control(kControlSte1)->setFocus();
      break;
    case EnrichmentReview::Outcome::kIncomplete:
      panel_->Control(kControlSte1)->setFocus();
      break;
    case EnrichmentReview::Outcome::kStays:
      end_->setFocus();
      save_->setEnabled(review_.may_save());
      skip_->setEnabled(review_.may_skip());
      break;
    case EnrichmentReview::Outcome::kEnds:
      reject();
      break;
  }
}

}  // namespace carnetel::desktop
