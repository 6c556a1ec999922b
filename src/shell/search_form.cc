#include "shell/search_form.h"

#include <charconv>

#include "base/code_page.h"
#include "base/path.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

constexpr int kAttention = 80;
constexpr int kNoExample = 34;
constexpr int kNothingFound = 35;

// The postal code of an example is the long one alone: cards that have only the short one are
// compared by it, those that have only the long one must not fail for want of the short one.
CardRecord ExampleOf(const FormTexts& texts) {
  CardRecord card;
  for (const FormField& row : kFormFields) {
    const auto text = texts.fields.find(row.control);
    if (text == texts.fields.end()) continue;
    card.SetField(row.field, OemFromUtf8Lossy(WithCrLf(text->second)));
  }
  for (int i = 0; i < kReferenceCount; ++i) {
    card.SetField(kRef1 + i, OemFromUtf8Lossy(texts.references[static_cast<size_t>(i)]));
  }
  StripKeyFields(card);
  return card;
}

// One byte a character, in capitals.
std::string Capitals(const std::string& utf8) {
  return UpperCasePath(AnsiFromUtf8Lossy(utf8)).bytes();
}

}  // namespace

std::vector<TextSpan> MatchSpans(const std::string& text, const std::string& example) {
  std::vector<TextSpan> spans;
  const std::string wanted = Capitals(example);
  const std::string searched = Capitals(text);
  if (wanted.empty()) return spans;
  for (size_t at = searched.find(wanted); at != std::string::npos;
       at = searched.find(wanted, at + wanted.size())) {
    spans.push_back({at, wanted.size()});
  }
  return spans;
}

SearchForm::SearchForm(Directory& directory, CardList& list, MessageForm& messages)
    : directory_(directory), list_(list), messages_(messages) {
  directory_.context().current.Clear();
}

void SearchForm::FieldsChanged(const FormTexts& texts) {
  filled_ = texts.CountFilled();
}

SearchForm::Outcome SearchForm::Search(const FormTexts& texts) {
  if (texts.CountFilled() == 0) {
    messages_.ShowMessage(MessageStyle::kInformation, kAttention, kNoExample);
    return Outcome::kNothing;
  }
  example_ = ExampleOf(texts);
  if (FindShown(WalkDirection::kFirst)) return Outcome::kFound;
  messages_.ShowMessage(MessageStyle::kInformation, kAttention, kNothingFound);
  return Outcome::kNothing;
}

SearchForm::Outcome SearchForm::Step(WalkDirection direction) {
  return FindShown(direction) ? Outcome::kFound : Outcome::kBeeps;
}

bool SearchForm::FindShown(WalkDirection direction) {
  uint32_t offset = last_found_;
  for (;;) {
    directory_.context().current = example_;
    if (CardDispatch(directory_).Find(direction, &offset) != 0) return false;
    if (list_.RowOfCard(offset) >= 0) break;
    if (direction == WalkDirection::kFirst) direction = WalkDirection::kNext;
  }
  found_any_ = true;
  last_found_ = offset;
  card_ = directory_.context().current;
  return true;
}

std::string SearchForm::ExampleText(int field) const {
  return Utf8FromOem(example_.FieldText(field));
}

void SearchForm::End() {
  if (found_any_) (void)list_.FindCardRow(last_found_);
}

bool NumberForm::Confirm(const std::string& text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return false;
  if (number < 1 || number > list_.row_count()) return false;
  list_.SetCurrentRow(number - 1);
  return true;
}

}  // namespace carnetel
