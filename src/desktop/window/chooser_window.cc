#include "desktop/window/chooser_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QTimer>

#include "desktop/controls/wait_cursor.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

constexpr int kConsultationTopic = 11;

}  // namespace

ChooserWindow::~ChooserWindow() {
  // It tells its end to this window, which must still be whole then.
  delete consultation_;
  qApp->removeEventFilter(this);
  // Its widgets lose their focus when this is no main window any more.
  qApp->disconnect(this);
}

void ChooserWindow::Run(int command) {
  const WaitCursor wait;
  logic_.Dispatch(command);
}

void ChooserWindow::Start() {
  tip_->SetAllowed(session_.settings().balloons);
  logic_.Start();
  FixAndCentre(*this);
  list_position_->Started();
  QTimer::singleShot(0, this, [this] { logic_.TellNotLoaded(); });
}

void ChooserWindow::QuitUnasked() {
  if (busy_.PutsOff(this, [this] { QuitUnasked(); })) return;
  logic_.Quit();
}

void ChooserWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  list_position_->Shown();
}

void ChooserWindow::closeEvent(QCloseEvent* event) {
  QuitUnasked();
  event->setAccepted(ended_);
}

// A click marks its row at once where several cards are picked. With Shift the span that follows
// turns this row too.
void ChooserWindow::RowClicked(int row, Qt::KeyboardModifiers keys) {
  logic_.list().ForgetTypedLetter();
  if ((keys & Qt::ShiftModifier) == 0) logic_.ToggleRow(row);
  // A click with Ctrl takes the row's colour away, so that its mark is seen: here it has none.
  if (logic_.kind() == ChooserKind::kSingle) list_->SetCurrentRow(row);
}

void ChooserWindow::FocusMoved(QWidget* to) {
  // An open menu says itself what the line tells.
  if (to == nullptr || to == menuBar() || to->window() != this) return;
  logic_.ShowStatusOf(FocusedControlOf(*this));
}

bool ChooserWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* widget = qobject_cast<QWidget*>(watched);
    const bool ours =
        widget != nullptr && widget != menuBar() && widget->window() == this && widget->hasFocus();
    if (ours && HandleKey(static_cast<QKeyEvent*>(event))) return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

// Enter picks the row that the focus is on; Escape leaves from anywhere.
bool ChooserWindow::HandleKey(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && plain && list_->hasFocus()) {
    if (!event->isAutoRepeat()) Run(kCommandConfirm);
    return true;
  }
  if (event->key() == Qt::Key_Escape && plain) {
    Run(kCommandEscape);
    return true;
  }
  if (event->key() == Qt::Key_F1) {
    Run(kCommandHelpKey);
    return true;
  }
  return false;
}

void ChooserWindow::SetColumnTitle(int control, const std::string& utf8) {
  titles_[control]->setText(Utf8(utf8));
}

void ChooserWindow::SetPosition(const std::string& utf8) {
  position_->setText(Utf8(utf8));
}

void ChooserWindow::SetMarked(int32_t count) {
  marked_->setText(QString::number(count));
}

void ChooserWindow::SetStatus(const std::string& utf8) {
  status_->setText(Utf8(utf8));
}

void ChooserWindow::SetRecents(const std::vector<std::string>& texts) {
  menus_->SetRecents(texts);
}

void ChooserWindow::SetGroups(const std::vector<std::string>& names, int current) {
  groups_->SetRows(ToList(names), current);
}

void ChooserWindow::SetSets(const std::vector<std::string>& names, int current) {
  sets_->SetRows(ToList(names), current);
}

void ChooserWindow::CheckStyle(int command) {
  menus_->CheckRadio(kCommandFirstStyle, kCommandLastStyle, command);
}

void ChooserWindow::SetButton(int button, bool enabled) {
  if (BubbleButton* widget = buttons_.value(button)) widget->SetActive(enabled);
}

void ChooserWindow::ListRefilled() {
  list_position_->Refilled();
}

void ChooserWindow::ShowCurrentRow() {
  list_->SetCurrentRow(logic_.list().current_row());
}

void ChooserWindow::RepaintRow(int row) {
  list_->ReloadRow(row);
}

void ChooserWindow::FocusList() {
  list_->setFocus(Qt::OtherFocusReason);
}

void ChooserWindow::OpenConsultation() {
  if (consultation_ == nullptr) {
    consultation_ = new ChooserConsultation(this);
    connect(consultation_, &Consultation::stepped, this, [this](int step) { logic_.Step(step); });
    connect(consultation_, &Consultation::helpWanted, this,
            [this] { dialogs_.ShowHelp(kConsultationTopic); });
    connect(consultation_, &ChooserConsultation::extractWanted, this,
            [this] { Run(kCommandConfirm); });
    connect(consultation_, &QObject::destroyed, this, [this] {
      if (!ended_ && isVisible()) FocusList();
    });
    UpdateConsultation();
  }
  consultation_->show();
  consultation_->activateWindow();
}

void ChooserWindow::UpdateConsultation() {
  if (consultation_ == nullptr) return;
  CardRecord card;
  // An empty list leaves an empty card.
  (void)logic_.CurrentCard(&card);
  consultation_->Show(card);
}

void ChooserWindow::Beep() {
  beep_();
}

void ChooserWindow::EndWindow() {
  ended_ = true;
  if (consultation_ != nullptr) consultation_->close();
  dialogs_.CloseHelp();
  hide();
  Q_EMIT ended();
}

int ChooserWindow::RowCount() {
  return logic_.list().row_count();
}

// A tab within a text would part it in two columns.
QString ChooserWindow::Label(int row) {
  const ChooserRow texts = logic_.Row(row);
  QStringList columns = {Utf8(texts.first), Utf8(texts.second), Utf8(texts.number)};
  for (QString& column : columns) column.replace(u'\t', u' ');
  return columns.join(u'\t');
}

bool ChooserWindow::IsMarked(int row) {
  return logic_.ShowsMark(row);
}

bool ChooserWindow::ShowsMarkColumn() {
  return logic_.kind() == ChooserKind::kMany;
}

bool ChooserWindow::IsFlagged(int /*row*/) {
  return false;
}

bool ChooserWindow::ShowsFlagColumn() {
  return false;
}

}  // namespace carnetel::desktop
