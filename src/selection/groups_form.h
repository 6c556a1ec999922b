// The rules of the dialog that keeps groups. A group is always made from the marks of what is
// displayed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "selection/group_file.h"

namespace carnetel {

// Name (UTF-8) and display mode of a group, as its own dialog shows them.
struct GroupDescription {
  std::string name;
  uint8_t mode = kMembersOnly;

  friend bool operator==(const GroupDescription&, const GroupDescription&) = default;
};
// Asks for them, offering some; nothing, or an empty name, when the user leaves or empties it.
using AskGroup = std::function<std::optional<GroupDescription>(const GroupDescription& offered)>;

class GroupsForm {
 public:
  struct Place {
    size_t displayed = 0;  // row of the displayed group, 0 for the whole file
    AnsiText set_name;     // the entry of the list of active criteria sets
  };
  GroupsForm(Directory& directory, MessageForm& messages, AskGroup ask_group, Place place);

  struct Buttons {
    bool create = false;
    bool replace = false;
    bool merge = false;
    bool rename = false;
    bool remove = false;
    friend bool operator==(const Buttons&, const Buttons&) = default;
  };
  enum class Outcome { kStays, kBeeps };

  [[nodiscard]] const std::vector<GroupDescription>& groups() const { return groups_; }
  [[nodiscard]] int selected() const { return selected_; }
  void Select(int position) { selected_ = position; }
  [[nodiscard]] Buttons EnabledButtons() const;
  // How the selected group is displayed; empty without one.
  [[nodiscard]] std::string ModeText() const;

  Outcome Create();
  Outcome Replace();
  Outcome Rename();
  Outcome Merge();
  Outcome Delete();

 private:
  void ListGroups();
  [[nodiscard]] bool HasSelection() const;
  [[nodiscard]] bool TellNoMarks();
  [[nodiscard]] std::optional<GroupDescription> Ask(const GroupDescription& offered);
  // Asks on the selected group's name and mode.
  [[nodiscard]] std::optional<GroupDescription> AskAboutSelected();
  [[nodiscard]] size_t SelectedRow() const { return static_cast<size_t>(selected_) + 1; }

  Directory& directory_;
  GroupFile file_;
  MessageForm& messages_;
  AskGroup ask_group_;
  Place place_;
  std::vector<GroupDescription> groups_;
  int selected_ = -1;
};

}  // namespace carnetel
