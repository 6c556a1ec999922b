// The rules of the dialog in which criteria are typed: six rows of a field, a comparator and a
// value, kept between the screen and the working set in memory.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/messages.h"
#include "selection/criteria_file.h"
#include "selection/named_sets.h"

namespace carnetel {

// A row as the dialog shows it.
struct TypedCriterion {
  int field = 0;       // place in the field list; 0 is the empty entry
  int comparator = 0;  // place in the comparator list
  std::string value;   // UTF-8

  friend bool operator==(const TypedCriterion&, const TypedCriterion&) = default;
};
using TypedCriteria = std::array<TypedCriterion, kCriteriaRowCount>;

// The dialogs that open above this one.
struct CriteriaDialogs {
  // Shows the dialog that keeps sets; returns when it has ended.
  std::function<void(NamedSetsForm& form)> run_sets;
  AskName ask_name;
};

class CriteriaForm {
 public:
  // Loads the working set.
  CriteriaForm(CriteriaFile& criteria, MessageForm& messages, CriteriaDialogs dialogs);

  // The field list: an empty entry, then the offered fields in capitals, UTF-8.
  [[nodiscard]] static std::vector<std::string> FieldTexts();
  // How long a value may be and whether it is a number, by place in the field list.
  [[nodiscard]] static int LimitOf(int field);
  [[nodiscard]] static bool TakesNumber(int field);

  // Name of the set in memory, UTF-8.
  [[nodiscard]] std::string name() const;
  // The rows in memory.
  [[nodiscard]] TypedCriteria Shown() const;
  // Takes what the dialog shows into memory, validated; returns the number of valid rows.
  size_t Read(const TypedCriteria& typed);
  [[nodiscard]] size_t row_count() const { return row_count_; }
  // What both buttons that close the dialog do: the valid rows become the working set of the file.
  // False, after a message, when there is none: the dialog stays.
  bool Confirm(const TypedCriteria& typed);
  // Saves and loads sets; afterwards the rows in memory may be others.
  void ManageSets(const TypedCriteria& typed);

 private:
  CriteriaFile& criteria_;
  MessageForm& messages_;
  CriteriaDialogs dialogs_;
  size_t row_count_ = 0;
};

// The saved sets of a criteria file, for the dialog that keeps them. The working set is never one.
class SavedCriteria : public SetStore {
 public:
  SavedCriteria(CriteriaFile& criteria, size_t row_count)
      : criteria_(criteria), row_count_(row_count) {}

  [[nodiscard]] std::vector<std::string> Names() override;
  [[nodiscard]] bool HasContent() const override { return row_count_ != 0; }
  bool Load(size_t position) override { return criteria_.LoadCriteriaSet(position + 1); }
  bool Add(const std::string& name) override;
  bool Replace(size_t position, const std::string& name) override;
  bool Rename(size_t position, const std::string& name) override;
  bool Delete(size_t position) override { return criteria_.DeleteCriteriaSet(position + 1); }

 private:
  CriteriaFile& criteria_;
  size_t row_count_;
};

}  // namespace carnetel
