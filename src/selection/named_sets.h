// The rules of the dialog that keeps sets under names: criteria of a selection, parameters of a
// transfer. It lists them, loads one, and adds, replaces, renames and deletes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"

namespace carnetel {

// Where the sets are kept. Positions are those of the list, from 0; names are UTF-8.
class SetStore {
 public:
  virtual ~SetStore() = default;
  [[nodiscard]] virtual std::vector<std::string> Names() = 0;
  // True when there is something to store.
  [[nodiscard]] virtual bool HasContent() const = 0;
  virtual bool Load(size_t position) = 0;
  virtual bool Add(const std::string& name) = 0;
  virtual bool Replace(size_t position, const std::string& name) = 0;
  virtual bool Rename(size_t position, const std::string& name) = 0;
  virtual bool Delete(size_t position) = 0;

  // What differs between the kinds of sets.
  [[nodiscard]] virtual bool MayLoad(size_t /*position*/) { return true; }
  // Offered as the name of a new one.
  [[nodiscard]] virtual std::string NameForNew() const { return {}; }
  // The dialog ends after the question whether to load, whatever the answer.
  [[nodiscard]] virtual bool LoadQuestionEnds() const { return false; }
  // The first one is selected after a deletion, not the one that came into its place.
  [[nodiscard]] virtual bool DeletionSelectsFirst() const { return false; }
};

// Asks for a name, offering one; nothing, or an empty one, when the user leaves or
// empties it.
using AskName = std::function<std::optional<std::string>(const std::string& offered)>;

class NamedSetsForm {
 public:
  NamedSetsForm(SetStore& store, MessageForm& messages, AskName ask_name);

  struct Buttons {
    bool load = false;
    bool add = false;
    bool replace = false;
    bool rename = false;
    bool remove = false;
    friend bool operator==(const Buttons&, const Buttons&) = default;
  };
  enum class Outcome {
    kStays,
    kBeeps,
    kLoaded,  // the dialog ends: a set was loaded
  };

  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
  // -1 without a selection.
  [[nodiscard]] int selected() const { return selected_; }
  void Select(int position) { selected_ = position; }
  [[nodiscard]] Buttons EnabledButtons() const;

  Outcome Load();
  Outcome Add();
  Outcome Replace();
  Outcome Rename();
  Outcome Delete();

 private:
  [[nodiscard]] bool HasSelection() const;
  [[nodiscard]] std::string SelectedName() const;
  [[nodiscard]] std::optional<std::string> Ask(const std::string& offered);
  bool TellNothingToStore();
  Outcome ChangeSelected(bool rename);

  SetStore& store_;
  MessageForm& messages_;
  AskName ask_name_;
  std::vector<std::string> names_;
  int selected_;
};

}  // namespace carnetel
