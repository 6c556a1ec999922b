// The main window without its widgets: routes every command to what it does, keeps menus, buttons,
// pickers, tabs, list and form in step with the open directory, and says what the window shows. One
// dispatcher takes the numbers that menu items, buttons and controls share.
#pragma once

#include <string>
#include <vector>

#include "shell/card_form.h"
#include "shell/card_list.h"
#include "shell/command_table.h"
#include "shell/directory_chooser.h"
#include "shell/pickers.h"
#include "shell/recents.h"
#include "shell/session.h"
#include "shell/sibling_panel.h"
#include "transfer/transfer.h"

namespace carnetel {

// How often the window looks, at the most, what other seats have changed.
inline constexpr int64_t kSecondsBetweenSeatChecks = 10;

// What the main window asks of its widgets, besides the form's part.
class MainWindowView : public CardFormView {
 public:
  virtual void SetTitle(const std::string& utf8) = 0;
  // Controls 181 and 183.
  virtual void SetPosition(const std::string& utf8) = 0;
  virtual void SetMarked(int32_t count) = 0;
  virtual void SetStatus(const std::string& utf8) = 0;
  // The recent directories as menu texts, "&1 /path"; the path holds no mnemonics.
  virtual void SetRecents(const std::vector<std::string>& texts) = 0;
  virtual void SetGroups(const std::vector<std::string>& names, int current) = 0;
  virtual void SetSets(const std::vector<std::string>& names, int current) = 0;
  // Number of the control that has the focus.
  [[nodiscard]] virtual int FocusedControl() const = 0;
  // Index, balloons and styles may be other ones.
  virtual void SettingsChanged() = 0;
  // Shows a tab as the selected one without running it.
  virtual void ShowTab(int tab) = 0;
  virtual void ListRefilled() = 0;
  virtual void ShowCurrentRow() = 0;
  virtual void RepaintRow(int row) = 0;
  virtual void OpenConsultation() = 0;
  virtual void UpdateConsultation() = 0;
  // By which other programs know the window.
  [[nodiscard]] virtual uint64_t WindowNumber() const = 0;
  // Ends the window; its role returns.
  virtual void EndWindow() = 0;
};

class MainWindowLogic : private CardList::Observer {
 public:
  MainWindowLogic(Session& session, MainWindowView& view, DialogHost& dialogs, int list_capacity);
  ~MainWindowLogic() override;
  MainWindowLogic(const MainWindowLogic&) = delete;
  MainWindowLogic& operator=(const MainWindowLogic&) = delete;

  // Fills everything as the window opens.
  void Start();

  // A command from a menu, a button, a key or a posted event.
  void Dispatch(int command);
  // A letter tab, 655 to 681: false when the user stays with the form.
  bool ApplyLetterTab(int tab);
  // True when the window may close; the answer to its closing button.
  bool RequestQuit();
  // Ends the window without a question.
  void QuitUnasked();

  CardList& list() { return list_; }
  CardForm& form() { return form_; }
  [[nodiscard]] MenuState menu_state() const;
  [[nodiscard]] const std::vector<std::string>& recents() const { return recents_.paths(); }
  // Help topic of F1 and the help command.
  [[nodiscard]] int HelpTopic(int focused_control) const;

  // Text of the status line for a menu item or a focused control, and for an open popup.
  void ShowStatusOf(int item);
  void ShowStatusText(int text);

  // A file dropped on the window: opened in place of the open directory when it is a main file.
  void OpenDropped(const std::string& path);

  // The list's part of keys and clicks.
  void JumpToLetter(char letter);
  // Counts as a change of marks, whether it made one or not.
  void ListDoubleClicked();

  // The focus went to a field of the form or to the list, or a number of the form is another one,
  // typed or filled in: buttons of sibling programs come, go and turn grey by it.
  void FieldFocused() { siblings_.FieldFocused(); }
  void ListFocused() { siblings_.ListFocused(); }
  void NumbersChanged() { siblings_.NumbersChanged(); }

  // The list was painted, or could be: with several seats, the occasion to look, every ten seconds
  // at the most, what the others have changed.
  void ListPainted();

  // A choice in the two lists above the cards.
  void PickGroup(int row);
  void PickSet(int row);

  // The message that the list is full, when cards had no place in it; posted after the start.
  void TellNotLoaded();

  // The next or previous marked row from `row`, -1 at the ends.
  [[nodiscard]] int NextMarkedRow(int row, int step) const;

 private:
  // CardList::Observer
  void ListRefilled() override;
  void CurrentRowChanged() override;
  void RowRepainted(int row) override;
  void MarksChanged() override;

  // Commands about directories and the program; false when it is none of those.
  bool DispatchDirectoryCommand(int command);
  // Commands about marks, criteria, groups and searches; false when it is none of those.
  bool DispatchSelectionCommand(int command);
  // Everything that follows a change of directory.
  void ReloadAfterOpen();
  void OpenRecent(int command);
  // When that fails, the former directory comes back.
  void OpenInPlace(const std::string& path);
  void ChooseAndReload(ChooserTemplate form);
  void DestroyDirectories();
  void Describe();
  void ChangePreferences();
  void AskInvalidDirectory();
  void LetGoOfDirectory();
  void DeselectListed();
  void BrowseMarked();
  void Transfer(TransferDirection direction);
  void SelectByCriteria();
  void SelectAll();
  void RunSelection(const CriteriaRows& rows, bool add);
  void ManageGroups();
  void Search();
  void GoToNumber();
  void Print();
  void CallSibling(int button);
  void ShowPickers();
  void DeleteCard();
  void TellHeldCard();
  void CheckSeats();
  void StayWith(uint32_t card_offset, const CardRecord& shown);
  [[nodiscard]] bool TakeOverChanges();
  void DeleteMarked();
  void DeleteMarkedEntries();
  void ShowCounts();

  Session& session_;
  MainWindowView& view_;
  DialogHost& dialogs_;
  CardList list_;
  Pickers pickers_;
  CardForm form_;
  Recents recents_;
  SiblingPanel siblings_;
  // Of foreign files, from one transfer to the next.
  CharacterSet charset_ = CharacterSet::kOem;
  int64_t last_seat_check_ = 0;
  bool ended_ = false;
};

}  // namespace carnetel
