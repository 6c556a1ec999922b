#include "desktop/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "base/string_table.h"
#include "desktop/controls/focus_reason.h"
#include "desktop/controls/wait_cursor.h"
#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

// How often a check is offered. Much shorter than the time between two checks, or one offered a
// little too early would come that whole time late.
constexpr std::chrono::seconds kSeatTick{1};

}  // namespace

MainWindow::MainWindow(Session& session, BusyState& busy, int list_capacity)
    : session_(session),
      busy_(busy),
      dialogs_(this, busy),
      logic_(session, *this, dialogs_, list_capacity) {
  setObjectName(QStringLiteral("100"));
  BuildMenus();
  auto* central = new QWidget;
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(9, 6, 9, 6);
  layout->setSpacing(0);
  layout->addWidget(BuildTop());
  layout->addSpacing(6);
  tabs_ = new LetterTabs;
  layout->addWidget(tabs_);
  layout->addWidget(BuildBody(), 1);
  layout->addSpacing(6);
  status_ = MakeStatusLine();
  layout->addWidget(status_);
  setCentralWidget(central);
  setAcceptDrops(true);
  tip_ = new BubbleTip(this);
  SetTabOrders();
  ConnectList();
  ConnectForm();
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* to) { FocusMoved(to); });
  qApp->installEventFilter(this);
}

MainWindow::~MainWindow() {
  // It tells its end to this window, which must still be whole then.
  delete consultation_;
  qApp->removeEventFilter(this);
  // Its widgets lose their focus when this is no main window any more.
  qApp->disconnect(this);
}

void MainWindow::Run(int command) {
  const WaitCursor wait;
  logic_.Dispatch(command);
}

// Nothing may change under a dialog, an open menu or a long loop: they count on the directory as it
// is.
bool MainWindow::MayChange() const {
  return !busy_.IsBusy() && QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr;
}

void MainWindow::OfferSeatCheck() {
  if (MayChange()) logic_.ListPainted();
}

void MainWindow::ConnectList() {
  connect(list_, &CardListView::painted, this, &MainWindow::OfferSeatCheck);
  connect(list_, &CardListView::currentRowChanged, this,
          [this](int row) { logic_.list().SetCurrentRow(row); });
  connect(list_, &CardListView::rowClicked, this, [this](int row, Qt::KeyboardModifiers keys) {
    logic_.list().ForgetTypedLetter();
    // With Shift the span that follows turns this row too.
    const bool alone = (keys & Qt::ShiftModifier) == 0;
    if (alone && (keys & Qt::ControlModifier) != 0) logic_.list().ToggleMark(row);
  });
  connect(list_, &CardListView::rowDoubleClicked, this, [this] { logic_.ListDoubleClicked(); });
  connect(list_, &CardListView::markAndStep, this,
          [this](int step) { logic_.list().ToggleAndMove(step); });
  connect(list_, &CardListView::spanMoved, this,
          [this](int from, int to) { logic_.list().ToggleSpan(from, to); });
  connect(list_, &CardListView::letterTyped, this,
          [this](char letter) { logic_.JumpToLetter(letter); });
  connect(list_, &CardListView::focusEntered, this, [this](Qt::FocusReason reason) {
    if (!IsUserFocusChange(reason)) return;
    logic_.form().ListEntered();
    logic_.ListFocused();
  });
  connect(tabs_, &LetterTabs::tabSelected, this, [this](int tab) { Run(tab); });
  list_position_ = new ListPosition(*list_, logic_.list(), this);
  tabs_->SetMayLeave(
      [this] { return logic_.form().mode() == FormMode::kRest || logic_.form().LeaveForm(); });
}

void MainWindow::ConnectForm() {
  connect(panel_, &CardPanel::fieldEdited, this, [this](int control, int row) {
    logic_.form().FieldChanged(control, row);
    if (IsNumberControl(control)) logic_.NumbersChanged();
  });
  connect(panel_, &CardPanel::fieldEntered, this, [this](int control) {
    logic_.form().FieldEntered(control);
    logic_.FieldFocused();
  });
  connect(panel_, &CardPanel::confirmed, this, [this] { Run(kCommandConfirm); });
  connect(groups_, &QComboBox::activated, this, [this](int row) {
    const WaitCursor wait;
    logic_.PickGroup(row);
  });
  connect(sets_, &QComboBox::activated, this, [this](int row) {
    const WaitCursor wait;
    logic_.PickSet(row);
  });
  connect(groups_, &PickerCombo::focusEntered, this, [this](Qt::FocusReason reason) {
    if (!IsUserFocusChange(reason)) return;
    QTimer::singleShot(0, this, [this] {
      if (logic_.form().mode() == FormMode::kChanged) (void)logic_.form().LeaveForm();
    });
  });
}

void MainWindow::Start() {
  SettingsChanged();
  logic_.Start();
  FixAndCentre(*this);
  list_position_->Started();
  if (logic_.list().not_loaded_count() > 0) {
    QTimer::singleShot(0, this, [this] { logic_.TellNotLoaded(); });
  }
  if (!session_.lan_on()) return;
  connect(&seat_timer_, &QTimer::timeout, this, &MainWindow::OfferSeatCheck);
  seat_timer_.start(kSeatTick);
}

bool MainWindow::Quit() {
  if (busy_.PutsOff(this, [this] { close(); })) return false;
  return logic_.RequestQuit();
}

void MainWindow::QuitUnasked() {
  if (busy_.PutsOff(this, [this] { QuitUnasked(); })) return;
  logic_.QuitUnasked();
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  list_position_->Shown();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (ended_ || Quit()) {
    event->accept();
  } else {
    event->ignore();
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls() && MayChange()) event->acceptProposedAction();
}

// The first file counts. It is opened when the program it was dragged from has got its answer.
void MainWindow::dropEvent(QDropEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.isEmpty() || !urls.first().isLocalFile() || !MayChange()) return;
  event->acceptProposedAction();
  const std::string path = urls.first().toLocalFile().toStdString();
  QTimer::singleShot(0, this, [this, path] {
    const WaitCursor wait;
    logic_.OpenDropped(path);
  });
}

void MainWindow::EndWindow() {
  ended_ = true;
  if (consultation_ != nullptr) consultation_->close();
  dialogs_.CloseHelp();
  hide();
  Q_EMIT ended();
}

int MainWindow::FocusedControl() const {
  return FocusedControlOf(*this);
}

void MainWindow::FocusMoved(QWidget* to) {
  // An open menu says itself what the line tells.
  if (to == nullptr || to == menuBar() || to->window() != this) return;
  logic_.ShowStatusOf(FocusedControl());
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* widget = qobject_cast<QWidget*>(watched);
    const bool ours =
        widget != nullptr && widget != menuBar() && widget->window() == this && widget->hasFocus();
    if (ours && HandleKey(static_cast<QKeyEvent*>(event))) return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

// Insert, Delete, Escape and F1 mean what they mean where the focus is, and nothing elsewhere.
bool MainWindow::HandleKey(QKeyEvent* event) {
  const int control = FocusedControl();
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const bool on_toolbar = control >= kButtonPrint && control <= kButtonQuit;
  if (event->key() == Qt::Key_Escape && plain) {
    Run(kCommandEscape);
    return true;
  }
  if (event->key() == Qt::Key_F1) {
    Run(kCommandHelpKey);
    return true;
  }
  if (event->key() == Qt::Key_Insert && plain && (on_toolbar || control == kControlList)) {
    Run(kCommandCreateCard);
    return true;
  }
  if (event->key() == Qt::Key_Delete && plain && control == kControlList) {
    Run(kCommandDeleteCard);
    return true;
  }
  return false;
}

}  // namespace carnetel::desktop
