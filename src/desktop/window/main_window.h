// The main window's widgets: menus, toolbar, pickers, letter tabs, list, form and status line,
// drawn from the command table. It decides nothing: what the user does goes to MainWindowLogic as
// commands, and what is to be seen comes back through MainWindowView.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QTimer>

#include "desktop/controls/beeper.h"
#include "desktop/controls/bubble_button.h"
#include "desktop/controls/bubble_tip.h"
#include "desktop/controls/busy_state.h"
#include "desktop/controls/card_list_view.h"
#include "desktop/controls/letter_tabs.h"
#include "desktop/controls/panel_colours.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/controls/row_source.h"
#include "desktop/dialogs/window_dialogs.h"
#include "desktop/form/card_panel.h"
#include "desktop/window/command_menus.h"
#include "desktop/window/consultation.h"
#include "desktop/window/list_position.h"
#include "shell/main_window.h"

namespace carnetel::desktop {

class MainWindow : public QMainWindow, private MainWindowView, private RowSource {
  Q_OBJECT

 public:
  // `list_capacity`: rows that the list takes. The session has its directory open, or none.
  MainWindow(Session& session, BusyState& busy, int list_capacity);
  ~MainWindow() override;

  // Fills the window; call once, before it is shown.
  void Start();
  // What the closing button, a signal of the system and command 206 do; false when the user stays.
  bool Quit();
  // The same without the question: what was typed and not saved is lost.
  void QuitUnasked();

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

  MainWindowLogic& logic() { return logic_; }
  WindowDialogs& dialogs() { return dialogs_; }
  // The menu item of a command, null when there is none.
  [[nodiscard]] QAction* MenuAction(int command) const { return menus_->Item(command); }

 Q_SIGNALS:
  // The role has returned.
  void ended();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Building
  void BuildMenus();
  QWidget* BuildTop();
  QWidget* BuildToolbar();
  QWidget* BuildBody();
  QWidget* BuildListColumn();
  QWidget* BuildFormColumn();
  BubbleButton* MakeButton(const ButtonInfo& info, ButtonSize size);
  void PlaceZoneButtons();
  void SetTabOrders();
  // Runs a command or a tab under the wait cursor; boxes that open meanwhile have the arrow.
  void Run(int command);
  void OfferSeatCheck();
  void ConnectList();
  void ConnectForm();
  void FocusMoved(QWidget* to);
  bool HandleKey(QKeyEvent* event);
  [[nodiscard]] bool MayChange() const;

  // MainWindowView
  void SetFieldText(int control, const std::string& utf8) override;
  [[nodiscard]] std::string FieldText(int control) const override;
  void SetReferences(const std::array<std::string, kReferenceCount>& utf8) override;
  [[nodiscard]] std::array<std::string, kReferenceCount> References() override;
  void UndoChange(int control) override;
  void SetEditLook(bool on) override;
  void SetZone(FormZone zone) override;
  void SetButton(int button, bool enabled) override;
  void SetCancelFace(bool cancel) override;
  void SetSiblingButton(int button, bool visible, bool enabled) override;
  void FocusControl(int control) override;
  void FocusList() override;
  void Beep() override;
  void PostCommand(int command) override;
  void PostLeaveQuestion() override;
  void SetTitle(const std::string& utf8) override;
  void SetPosition(const std::string& utf8) override;
  void SetMarked(int32_t count) override;
  void SetStatus(const std::string& utf8) override;
  void SetRecents(const std::vector<std::string>& texts) override;
  void SetGroups(const std::vector<std::string>& names, int current) override;
  void SetSets(const std::vector<std::string>& names, int current) override;
  [[nodiscard]] int FocusedControl() const override;
  void SettingsChanged() override;
  void ShowTab(int tab) override;
  void ListRefilled() override;
  void ShowCurrentRow() override;
  void RepaintRow(int row) override;
  void OpenConsultation() override;
  void UpdateConsultation() override;
  [[nodiscard]] uint64_t WindowNumber() const override;
  void EndWindow() override;

  // RowSource
  int RowCount() override;
  QString Label(int row) override;
  bool IsMarked(int row) override;
  bool IsFlagged(int row) override;
  bool ShowsFlagColumn() override;

  Session& session_;
  BusyState& busy_;
  WindowDialogs dialogs_;
  MainWindowLogic logic_;
  CommandMenus* menus_ = nullptr;
  QMap<int, BubbleButton*> buttons_;
  PickerCombo* groups_ = nullptr;
  PickerCombo* sets_ = nullptr;
  LetterTabs* tabs_ = nullptr;
  CardListView* list_ = nullptr;
  ListPosition* list_position_ = nullptr;
  CardPanel* panel_ = nullptr;
  QLabel* position_ = nullptr;
  QLabel* marked_ = nullptr;
  QLabel* status_ = nullptr;
  BubbleTip* tip_ = nullptr;
  QPointer<Consultation> consultation_;
  Beeper beep_ = SystemBeep;
  // With several seats: the list of a window that nobody touches is not painted by itself.
  QTimer seat_timer_;
  bool ended_ = false;
};

}  // namespace carnetel::desktop
