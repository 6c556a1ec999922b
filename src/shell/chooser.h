// "Choix du correspondant" without its widgets: a sibling program has started this one so that the
// user picks correspondents. It lists the members of the displayed group that have a number of the
// wanted kind, cannot change a card, and ends by leaving records in the caller's file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "link/chooser_extract.h"
#include "link/viafax_option.h"
#include "shell/card_list.h"
#include "shell/chooser_commands.h"
#include "shell/dialog_host.h"
#include "shell/pickers.h"
#include "shell/recents.h"

namespace carnetel {

// The three columns of a row.
struct ChooserRow {
  std::string first;
  std::string second;
  std::string number;
};

// What the chooser asks of its widgets.
class ChooserView {
 public:
  virtual ~ChooserView() = default;
  // Titles of the columns, by the control that shows them.
  virtual void SetColumnTitle(int control, const std::string& utf8) = 0;
  virtual void SetPosition(const std::string& utf8) = 0;
  virtual void SetMarked(int32_t count) = 0;
  virtual void SetStatus(const std::string& utf8) = 0;
  virtual void SetRecents(const std::vector<std::string>& texts) = 0;
  virtual void SetGroups(const std::vector<std::string>& names, int current) = 0;
  virtual void SetSets(const std::vector<std::string>& names, int current) = 0;
  // The checked item among the styles, 231 to 234.
  virtual void CheckStyle(int command) = 0;
  virtual void SetButton(int button, bool enabled) = 0;
  virtual void ListRefilled() = 0;
  virtual void ShowCurrentRow() = 0;
  virtual void RepaintRow(int row) = 0;
  virtual void FocusList() = 0;
  // Opens the window of single cards on the current row, or brings it to the front.
  virtual void OpenConsultation() = 0;
  // The current row is another one, or its card; the window is open or not.
  virtual void UpdateConsultation() = 0;
  virtual void Beep() = 0;
  // Ends the window; its role returns.
  virtual void EndWindow() = 0;
};

class ChooserLogic : private CardList::Observer {
 public:
  // The session has its directory open. `list_capacity`: rows that the list takes.
  ChooserLogic(Session& session, ChooserView& view, DialogHost& dialogs, ChooserKind kind,
               int list_capacity);
  ~ChooserLogic() override;
  ChooserLogic(const ChooserLogic&) = delete;
  ChooserLogic& operator=(const ChooserLogic&) = delete;

  // Fills everything as the window opens.
  void Start();
  // A command from a menu, a button or a key.
  void Dispatch(int command);
  // Ends without an extraction.
  void Quit();
  // What the caller is told at the end: 0 without an extraction.
  [[nodiscard]] int32_t result() const { return result_; }

  [[nodiscard]] ChooserKind kind() const { return kind_; }
  [[nodiscard]] bool viafax_output() const { return session_.role().viafax_output; }
  CardList& list() { return list_; }
  [[nodiscard]] ChooserRow Row(int row) const;
  // Whether a mark image stands at the row's edge.
  [[nodiscard]] bool ShowsMark(int row) const {
    return kind_ == ChooserKind::kMany && list_.IsMarked(row);
  }
  // The current row's card for the window of single cards; false without one.
  [[nodiscard]] bool CurrentCard(CardRecord* card) const;
  [[nodiscard]] ChooserState state() const;

  // Clicks and keys that mark; where one card is picked they have no effect.
  void ToggleRow(int row);
  // The current row, then one row on (1) or back (-1).
  void ToggleAndMove(int step);
  void ToggleSpan(int from, int to);
  // Makes the next (1) or previous (-1) row current, unless there is none.
  void Step(int step);
  void JumpToLetter(char letter);
  void PickGroup(int row);
  void PickSet(int row);

  void ShowStatusOf(int item);
  void ShowStatusText(int text);
  // The message that the list is full, when cards had no place in it; posted after the start.
  void TellNotLoaded();

 private:
  // CardList::Observer
  void ListRefilled() override;
  void CurrentRowChanged() override;
  void RowRepainted(int row) override;
  void MarksChanged() override;

  void ReloadAfterOpen();
  void LetGoOfDirectory();
  void ShowTitles();
  void ShowPickers();
  void ShowCounts();
  void SetStyle(int style);
  void OpenRecent(int command);
  void ChooseAndReload();
  void Describe();
  void Search();
  void AskToDeselect();
  void ChooseViafaxOption();
  void Extract(ExtractScope scope);
  [[nodiscard]] ExtractRequest MakeRequest() const;
  [[nodiscard]] ChooserRows Rows() const;
  void End(int32_t result);

  Session& session_;
  ChooserView& view_;
  DialogHost& dialogs_;
  ChooserKind kind_;
  NumberKind number_;
  CardList list_;
  Pickers pickers_;
  Recents recents_;
  int viafax_option_ = 0;
  // The choices of both sets of the dialog, from one time to the next.
  ViafaxOptionForm viafax_form_{0};
  int32_t result_ = 0;
  bool ended_ = false;
};

}  // namespace carnetel
