#include "selection/criteria_form.h"

#include <utility>

#include "base/code_page.h"
#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kAttention = 80;
constexpr int kNoCriteria = 44;
// Characters that are taken from an edit; the value keeps 21 of them.
constexpr size_t kTakenCharacters = 63;

const OfferedField* FieldAt(int place) {
  const std::span<const OfferedField> offered = OfferedFields();
  const bool is_field = place >= 1 && static_cast<size_t>(place) <= offered.size();
  return is_field ? &offered[static_cast<size_t>(place) - 1] : nullptr;
}

int PlaceOf(int16_t code) {
  const OfferedField* field = FindOfferedField(code);
  return field == nullptr ? 0 : static_cast<int>(field - OfferedFields().data()) + 1;
}

CriteriaRow RowOf(const TypedCriterion& typed) {
  const OfferedField* field = FieldAt(typed.field);
  CriteriaRow row;
  row.field_code = field == nullptr ? int16_t{0} : field->code;
  row.comparator = static_cast<char>('0' + typed.comparator);
  row.value = OemText(OemFromUtf8Lossy(typed.value).bytes().substr(0, kTakenCharacters));
  return row;
}

TypedCriterion TypedOf(const CriteriaRow& row) {
  const int comparator = row.comparator < '0' ? 0 : row.comparator - '0';
  return {PlaceOf(row.field_code), comparator, Utf8FromOem(row.value)};
}

}  // namespace

CriteriaForm::CriteriaForm(CriteriaFile& criteria, MessageForm& messages, CriteriaDialogs dialogs)
    : criteria_(criteria), messages_(messages), dialogs_(std::move(dialogs)) {
  (void)criteria_.LoadCriteriaSet(0);
}

std::vector<std::string> CriteriaForm::FieldTexts() {
  std::vector<std::string> texts = {""};
  for (const OfferedField& field : OfferedFields()) {
    std::string text(LoadText(field.code - 1));
    UpperCaseRun(text, text.size());
    texts.push_back(text);
  }
  return texts;
}

int CriteriaForm::LimitOf(int field) {
  const OfferedField* offered = FieldAt(field);
  return ValueLimit(offered == nullptr ? int16_t{0} : offered->code);
}

bool CriteriaForm::TakesNumber(int field) {
  const OfferedField* offered = FieldAt(field);
  return offered != nullptr && offered->number;
}

std::string CriteriaForm::name() const {
  return Utf8FromOem(criteria_.name());
}

TypedCriteria CriteriaForm::Shown() const {
  TypedCriteria typed;
  for (size_t row = 0; row < typed.size(); ++row) typed[row] = TypedOf(criteria_.rows().Row(row));
  return typed;
}

size_t CriteriaForm::Read(const TypedCriteria& typed) {
  for (size_t row = 0; row < typed.size(); ++row) criteria_.rows().SetRow(row, RowOf(typed[row]));
  row_count_ = criteria_.rows().CompactCriteriaRows();
  return row_count_;
}

bool CriteriaForm::Confirm(const TypedCriteria& typed) {
  if (Read(typed) == 0) {
    messages_.ShowMessage(MessageStyle::kInformation, kAttention, kNoCriteria);
    return false;
  }
  (void)criteria_.StoreWorkingSet();
  return true;
}

void CriteriaForm::ManageSets(const TypedCriteria& typed) {
  SavedCriteria saved(criteria_, Read(typed));
  NamedSetsForm form(saved, messages_, dialogs_.ask_name);
  dialogs_.run_sets(form);
}

std::vector<std::string> SavedCriteria::Names() {
  std::vector<std::string> names;
  for (const OemText& name : criteria_.ListCriteriaSets()) names.push_back(Utf8FromOem(name));
  return names;
}

bool SavedCriteria::Add(const std::string& name) {
  return criteria_.AddCriteriaSet(OemFromUtf8Lossy(name));
}

bool SavedCriteria::Replace(size_t position, const std::string& name) {
  return criteria_.ReplaceCriteriaSet(position + 1, OemFromUtf8Lossy(name), false);
}

bool SavedCriteria::Rename(size_t position, const std::string& name) {
  return criteria_.ReplaceCriteriaSet(position + 1, OemFromUtf8Lossy(name), true);
}

}  // namespace carnetel
