// The chooser's widgets: menus, toolbar, pickers, a list of three columns under their titles, and
// the status line, drawn from the command table. It decides nothing: what the user does goes to
// ChooserLogic as commands, and what is to be seen comes back through ChooserView.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QMap>
#include <QPointer>

#include "desktop/controls/beeper.h"
#include "desktop/controls/bubble_button.h"
#include "desktop/controls/bubble_tip.h"
#include "desktop/controls/busy_state.h"
#include "desktop/controls/card_list_view.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/controls/row_source.h"
#include "desktop/dialogs/window_dialogs.h"
#include "desktop/window/chooser_consultation.h"
#include "desktop/window/command_menus.h"
#include "desktop/window/list_position.h"
#include "shell/chooser.h"

namespace carnetel::desktop {

class ChooserWindow : public QMainWindow, private ChooserView, private RowSource {
  Q_OBJECT

 public:
  // `list_capacity`: rows that the list takes. The session has its directory open.
  ChooserWindow(Session& session, BusyState& busy, ChooserKind kind, int list_capacity);
  ~ChooserWindow() override;

  // Fills the window; call once, before it is shown.
  void Start();
  // Ends without an extraction, as the closing button and a signal of the system do.
  void QuitUnasked();
  // What the caller is told at the end.
  [[nodiscard]] int32_t result() const { return logic_.result(); }

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

  ChooserLogic& logic() { return logic_; }
  WindowDialogs& dialogs() { return dialogs_; }
  // The menu item of a command, null when there is none.
  [[nodiscard]] QAction* MenuAction(int command) const { return menus_->Item(command); }

 Q_SIGNALS:
  // The role has returned.
  void ended();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Building
  void BuildMenus();
  QWidget* BuildTop();
  QWidget* BuildList();
  QLabel* BuildTitle(int id, int width);
  void ConnectList();
  void ConnectPickers();
  void SetTabOrders();
  // Runs a command under the wait cursor; boxes that open meanwhile have the arrow.
  void Run(int command);
  void RowClicked(int row, Qt::KeyboardModifiers keys);
  void FocusMoved(QWidget* to);
  bool HandleKey(QKeyEvent* event);

  // ChooserView
  void SetColumnTitle(int control, const std::string& utf8) override;
  void SetPosition(const std::string& utf8) override;
  void SetMarked(int32_t count) override;
  void SetStatus(const std::string& utf8) override;
  void SetRecents(const std::vector<std::string>& texts) override;
  void SetGroups(const std::vector<std::string>& names, int current) override;
  void SetSets(const std::vector<std::string>& names, int current) override;
  void CheckStyle(int command) override;
  void SetButton(int button, bool enabled) override;
  void ListRefilled() override;
  void ShowCurrentRow() override;
  void RepaintRow(int row) override;
  void FocusList() override;
  void OpenConsultation() override;
  void UpdateConsultation() override;
  void Beep() override;
  void EndWindow() override;

  // RowSource
  int RowCount() override;
  QString Label(int row) override;
  bool IsMarked(int row) override;
  bool ShowsMarkColumn() override;
  bool IsFlagged(int row) override;
  bool ShowsFlagColumn() override;

  Session& session_;
  BusyState& busy_;
  WindowDialogs dialogs_;
  ChooserLogic logic_;
  CommandMenus* menus_ = nullptr;
  QMap<int, BubbleButton*> buttons_;
  QMap<int, QLabel*> titles_;
  PickerCombo* groups_ = nullptr;
  PickerCombo* sets_ = nullptr;
  CardListView* list_ = nullptr;
  ListPosition* list_position_ = nullptr;
  QLabel* position_ = nullptr;
  QLabel* marked_ = nullptr;
  QLabel* status_ = nullptr;
  BubbleTip* tip_ = nullptr;
  QPointer<ChooserConsultation> consultation_;
  Beeper beep_ = SystemBeep;
  bool ended_ = false;
};

}  // namespace carnetel::desktop
