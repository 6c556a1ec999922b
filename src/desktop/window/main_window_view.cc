// What MainWindowLogic asks of the window.
#include <QTimer>

#include "desktop/window/main_window.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
void MainWindow::SetFieldText(int control, const std::string& utf8) {
  panel_->SetFieldText(control, Utf8(utf8));
  if (IsNumberControl(control)) logic_.NumbersChanged();
}

std::string MainWindow::FieldText(int control) const {
  return panel_->FieldText(control).toStdString();
}

void MainWindow::SetReferences(const std::array<std::string, kReferenceCount>& utf8) {
  panel_->SetReferences(ToList({utf8.begin(), utf8.end()}));
}

std::array<std::string, kReferenceCount> MainWindow::References() {
  std::array<std::string, kReferenceCount> texts;
  const QStringList list = panel_->References();
  for (qsizetype i = 0; i < std::min<qsizetype>(list.size(), kReferenceCount); ++i) {
    texts[static_cast<size_t>(i)] = list[i].toStdString();
  }
  return texts;
}

void MainWindow::UndoChange(int control) {
  panel_->UndoChange(control);
}

void MainWindow::SetEditLook(bool on) {
  // Nothing is typed in a form at rest. First, as a field that goes would pass the focus on to the
  // next one, and the look would come back.
  if (!on && panel_->isAncestorOf(focusWidget())) FocusList();
  panel_->SetEditLook(on);
}

void MainWindow::SetZone(FormZone zone) {
  panel_->SetZone(zone);
}

void MainWindow::SetButton(int button, bool enabled) {
  if (BubbleButton* widget = buttons_.value(button)) widget->SetActive(enabled);
}

void MainWindow::SetCancelFace(bool cancel) {
  BubbleButton* button = buttons_[kButtonCreateOrCancel];
  button->SetFace(cancel ? Face::kCancelCard : Face::kNewCard);
  const QString caption = QString::fromUtf8(LoadText(cancel ? 246 : 247));
  button->setText(caption);
  button->setAccessibleName(caption);
}

void MainWindow::SetSiblingButton(int button, bool visible, bool enabled) {
  buttons_[button]->SetActive(enabled);
  panel_->ShowButton(button, visible);
}

// Labels stand for the control that they name.
void MainWindow::FocusControl(int control) {
  QWidget* widget = panel_->Control(control);
  if (control == kLabelNotes) widget = panel_->Control(kControlNotes);
  if (control == kLabelReferences) widget = panel_->Control(kControlReferences);
  if (widget == nullptr) widget = tabs_->Tab(control);
  if (widget != nullptr) widget->setFocus(Qt::OtherFocusReason);
}

void MainWindow::FocusList() {
  list_->setFocus(Qt::OtherFocusReason);
}

void MainWindow::Beep() {
  beep_();
}

void MainWindow::PostCommand(int command) {
  QTimer::singleShot(0, this, [this, command] {
    // A dialog may have opened meanwhile; there is a next check.
    if (command != kEventCheckSeats || MayChange()) Run(command);
  });
}

void MainWindow::PostLeaveQuestion() {
  QTimer::singleShot(0, this, [this] {
    list_->SetFrozen(true);
    logic_.form().LeaveQuestion();
    list_->SetFrozen(false);
  });
}

void MainWindow::SetTitle(const std::string& utf8) {
  setWindowTitle(Utf8(utf8));
}

void MainWindow::SetPosition(const std::string& utf8) {
  position_->setText(Utf8(utf8));
}

void MainWindow::SetMarked(int32_t count) {
  marked_->setText(QString::number(count));
}

void MainWindow::SetStatus(const std::string& utf8) {
  status_->setText(Utf8(utf8));
}

void MainWindow::SetRecents(const std::vector<std::string>& texts) {
  menus_->SetRecents(texts);
}

void MainWindow::SetGroups(const std::vector<std::string>& names, int current) {
  groups_->SetRows(ToList(names), current);
}

void MainWindow::SetSets(const std::vector<std::string>& names, int current) {
  sets_->SetRows(ToList(names), current);
}

void MainWindow::SettingsChanged() {
  panel_->SetKeyField(session_.settings().key_field);
  tip_->SetAllowed(session_.settings().balloons);
}

void MainWindow::ShowTab(int tab) {
  tabs_->Select(tab, false);
}

void MainWindow::ListRefilled() {
  list_position_->Refilled();
}

void MainWindow::ShowCurrentRow() {
  list_->SetCurrentRow(logic_.list().current_row());
}

void MainWindow::RepaintRow(int row) {
  list_->ReloadRow(row);
}

void MainWindow::OpenConsultation() {
  if (consultation_ != nullptr) return;
  consultation_ = new Consultation(this);
  connect(consultation_, &Consultation::stepped, this, [this](int step) {
    const int row = logic_.NextMarkedRow(logic_.list().current_row(), step);
    // The main window's form may hold changes of the card that is left here.
    if (row >= 0 && logic_.form().LeaveForm()) logic_.list().SetCurrentRow(row);
  });
  connect(consultation_, &Consultation::helpWanted, this,
          [this] { dialogs_.ShowHelp(HelpTopicOfCommand(kCommandBrowseMarked)); });
  connect(consultation_, &QObject::destroyed, this, [this] {
    if (!ended_ && isVisible()) FocusList();
  });
  const int first = logic_.NextMarkedRow(-1, 1);
  logic_.list().SetCurrentRow(first >= 0 ? first : logic_.list().row_count() - 1);
  UpdateConsultation();
  consultation_->show();
}

void MainWindow::UpdateConsultation() {
  if (consultation_ == nullptr) return;
  CardPanel& shown = consultation_->panel();
  for (const FormField& row : kFormFields) {
    shown.SetFieldText(row.control, panel_->FieldText(row.control));
  }
  shown.SetReferences(panel_->References());
}

uint64_t MainWindow::WindowNumber() const {
  return winId();
}

int MainWindow::RowCount() {
  return logic_.list().row_count();
}

QString MainWindow::Label(int row) {
  return Utf8(logic_.list().Label(row));
}

bool MainWindow::IsMarked(int row) {
  return logic_.list().IsMarked(row);
}

bool MainWindow::IsFlagged(int row) {
  return logic_.list().IsMember(row);
}

bool MainWindow::ShowsFlagColumn() {
  return logic_.list().displayed_group().whole_file;
}

}  // namespace carnetel::desktop
