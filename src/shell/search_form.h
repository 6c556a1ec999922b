// The rules of the search by example: a card form is filled in, the first card that has all of it
// is shown, and from there the next and the previous ones. Only cards that the list shows count: a
// hit that a tab or a group hides is passed over. No mark changes; the card found last becomes the
// list's current one when the dialog ends.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "shell/card_list.h"
#include "shell/form_texts.h"
#include "storage/index_walk.h"

namespace carnetel {

// Characters of a text that fitted: from `start`, `length` of them.
struct TextSpan {
  size_t start = 0;
  size_t length = 0;
  friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

// Every place where the example occurs in the text, left to right, whatever the case of letters,
// accented ones too.
[[nodiscard]] std::vector<TextSpan> MatchSpans(const std::string& text, const std::string& example);

class SearchForm {
 public:
  SearchForm(Directory& directory, CardList& list, MessageForm& messages);

  // The field that must begin with its example; in any other one it fits anywhere.
  [[nodiscard]] int key_field() const { return directory_.key_field(); }
  // The user changed a field.
  void FieldsChanged(const FormTexts& texts);
  [[nodiscard]] bool may_search() const { return filled_ != 0 && !found_any_; }
  [[nodiscard]] bool may_step() const { return found_any_; }

  enum class Outcome {
    kFound,    // card() is the one to show
    kNothing,  // told; the focus goes to the company
    kBeeps,
  };
  Outcome Search(const FormTexts& texts);
  // kNext or kPrevious.
  Outcome Step(WalkDirection direction);

  [[nodiscard]] const CardRecord& card() const { return card_; }
  // The example's text of a field, UTF-8: what MatchSpans looks for in the card's.
  [[nodiscard]] std::string ExampleText(int field) const;
  // The dialog ends.
  void End();

 private:
  bool FindShown(WalkDirection direction);

  Directory& directory_;
  CardList& list_;
  MessageForm& messages_;
  size_t filled_ = 0;
  bool found_any_ = false;
  uint32_t last_found_ = 0;
  CardRecord example_;
  CardRecord card_;
};

// "Recherche par numéro": a place in the list, from 1.
class NumberForm {
 public:
  explicit NumberForm(CardList& list) : list_(list) {}
  // Makes that row the current one; false for anything that is no row.
  bool Confirm(const std::string& text);

 private:
  CardList& list_;
};

}  // namespace carnetel
