// The two choosers above the list of cards: which group is displayed, with the pair of bits that
// its members and its marks have, and which criteria set is the active one. Main window and chooser
// of numbers share these rules.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "selection/criteria_file.h"
#include "selection/group_file.h"
#include "shell/card_list.h"

namespace carnetel {

class Pickers {
 public:
  explicit Pickers(CardList& list) : list_(list) {}

  // Which position an opened directory starts with: that of its group file, or the one that stands
  // in its address file already.
  enum class Position { kOfGroupFile, kOfAddressFile };
  // The directory was opened, or is closed. An open one shows the whole file.
  void SetDirectory(Directory* directory, Position position = Position::kOfGroupFile);
  [[nodiscard]] bool is_open() const { return directory_ != nullptr; }

  // What the lists show, UTF-8, and their rows.
  [[nodiscard]] const std::vector<std::string>& groups() const { return groups_; }
  [[nodiscard]] int group() const { return group_; }
  [[nodiscard]] const std::vector<std::string>& sets() const { return sets_; }
  [[nodiscard]] int set() const { return set_; }
  // The active set as groups remember it.
  [[nodiscard]] AnsiText SetName() const;
  CriteriaFile& criteria() { return *criteria_; }

  // Fills the lists anew. A displayed group past the end falls back to the whole file. The active
  // set becomes the one that the file has kept.
  void ReloadGroups();
  void ReloadSets();

  // A choice in the list of groups; `refill` fills the list of cards. Nothing when that group is
  // displayed already, as it is to be displayed.
  void PickGroup(int row);
  // A choice in the list of sets: the marks of what is displayed become those of the set. The group
  // remembers it, but for a choice in the chooser.
  enum class Memory { kRemembers, kForgets };
  void PickSet(int row, Memory memory = Memory::kRemembers);

  // Keeps the list's rows in the record of the displayed group; of the whole file in the address
  // file too.
  void StorePosition();
  // Keeps the active set in the criteria file.
  void StoreActiveSet();

 private:
  [[nodiscard]] std::optional<GroupRecord> DisplayedRecord() const;
  bool SwitchGroup(int row);
  void RememberSet();

  CardList& list_;
  Directory* directory_ = nullptr;
  std::unique_ptr<CriteriaFile> criteria_;
  std::vector<std::string> groups_;
  std::vector<std::string> sets_;
  int group_ = 0;
  int set_ = 0;
  // The choice of a set that was carried out last, and for which group.
  int last_set_ = 0;
  int last_group_ = 0;
};

}  // namespace carnetel
