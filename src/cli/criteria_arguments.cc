#include "cli/criteria_arguments.h"

#include "base/code_page.h"
#include "selection/card_test.h"
#include "shell/field_names.h"

namespace carnetel {
namespace {

constexpr int kNoCriteria = 44;

// Longest texts first, so that "<=" is not taken for "<".
constexpr std::array<std::pair<std::string_view, Comparator>, 7> kSigns = {{
    {"<>", Comparator::kDifferent},
    {"<=", Comparator::kLowerOrEqual},
    {">=", Comparator::kGreaterOrEqual},
    {"=", Comparator::kEqual},
    {"<", Comparator::kLower},
    {">", Comparator::kGreater},
    {"~", Comparator::kContains},
}};

std::optional<CriteriaRow> ParseCriterion(CliSession& session, const std::string& word,
                                          int* status) {
  *status = kWrongUsage;
  const size_t at = word.find_first_of("=<>~");
  if (at == std::string::npos) {
    session.WrongUsage("« " + word + " » n'est pas un critère, tel que Ste1=DU ou Fax<>");
    return {};
  }
  const std::string_view rest = std::string_view(word).substr(at);
  const auto* const sign = std::ranges::find_if(
      kSigns, [rest](const auto& candidate) { return rest.starts_with(candidate.first); });
  const std::string name = word.substr(0, at);
  const std::optional<int> field = FindField(name);
  const auto code = static_cast<int16_t>(field ? *field + 1 : 0);
  if (FindOfferedField(code) == nullptr) {
    session.WrongUsage("« " + name + " » n'est pas un champ des critères de sélection");
    return {};
  }
  const auto limit = std::min(static_cast<size_t>(ValueLimit(code)), kCriteriaValueSize);
  const std::optional<OemText> value = ToOem(session, std::string(rest.substr(sign->first.size())),
                                             "critère " + FieldName(*field), limit);
  if (!value) {
    *status = kRefused;
    return {};
  }
  return CriteriaRow{code, static_cast<char>(sign->second), *value};
}

// Tells of a criterion that the validation takes out: it would be missing without a word.
void WarnOfNoTest(CliSession& session, const std::string& word, const CriteriaRow& criterion) {
  CriteriaRows alone;
  alone.SetRow(0, criterion);
  if (alone.CompactCriteriaRows() != 0) return;
  session.messages().Warn("critère " + word + " ignoré : seuls = et <> admettent une valeur vide");
}

}  // namespace

bool IsSelectAll(const std::vector<std::string>& words) {
  return words.size() == 1 && words.front() == "*";
}

std::optional<CriteriaRows> ParseCriteria(CliSession& session,
                                          const std::vector<std::string>& words, int* status) {
  if (IsSelectAll(words)) return RowsForAll({});
  if (words.size() > kCriteriaRowCount) {
    *status = session.WrongUsage("six critères au plus");
    return {};
  }
  CriteriaRows rows;
  for (size_t row = 0; row < words.size(); ++row) {
    const std::optional<CriteriaRow> criterion = ParseCriterion(session, words[row], status);
    if (!criterion) return {};
    rows.SetRow(row, *criterion);
    WarnOfNoTest(session, words[row], *criterion);
  }
  if (rows.CompactCriteriaRows() == 0) {
    *status = session.Fail(std::string(LoadText(kNoCriteria)));
    return {};
  }
  return rows;
}

std::string CriterionText(const CriteriaRow& row) {
  const auto sign = static_cast<size_t>(row.comparator - '0');
  const std::string text(sign < kComparatorTexts.size() ? kComparatorTexts[sign] : "=");
  return FieldName(row.field_code - 1) + text + Utf8FromOem(row.value);
}

}  // namespace carnetel
