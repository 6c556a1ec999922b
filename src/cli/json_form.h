// The JSON forms of everything the tool prints and reads, one object a line. The only place that
// knows the JSON library; all texts are UTF-8, and bytes that are not come out as U+FFFD.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace carnetel {

using NamedText = std::pair<std::string, std::string>;

// A card as it is shown.
struct CardView {
  uint32_t row = 0;  // from 1
  uint32_t offset = 0;
  bool marked = false;
  std::vector<std::string> groups;
  std::string label;
  std::vector<NamedText> fields;  // those that hold text, in their order
};
[[nodiscard]] std::string CardLine(const CardView& card);

struct DirectoryInfo {
  std::string path;
  std::string version;
  std::string description;
  int owner = 0;
  uint32_t cards = 0;
  std::string key;  // "societe" or "nom"
  int32_t marked = 0;
  size_t groups = 0;
  std::vector<std::pair<std::string, uint64_t>> files;  // extension and size
};
[[nodiscard]] std::string InfoLine(const DirectoryInfo& info);

// {"marked": 3}, {"cards": 12}
[[nodiscard]] std::string CountLine(const std::string& name, int64_t count);
[[nodiscard]] std::string FindingLine(const std::string& file, const std::string& text,
                                      std::optional<uint32_t> offset);
[[nodiscard]] std::string ConsistentLine(bool consistent);
[[nodiscard]] std::string ErrorLine(const std::string& text);

// {"name": "Nord"}, and the same with "criteria": ["Ville=LILLE"].
[[nodiscard]] std::string NameLine(const std::string& name);
[[nodiscard]] std::string CriteriaLine(const std::string& name,
                                       const std::vector<std::string>& criteria);

struct GroupView {
  std::string name;
  int slot = 0;
  int mode = 0;
  uint32_t members = 0;
};
[[nodiscard]] std::string GroupLine(const GroupView& group);

// {"name": …, "kind": "plain"}
[[nodiscard]] std::string ProfileLine(const std::string& name, const std::string& kind);

// {"cards": 12, "pages": 1}
[[nodiscard]] std::string PrintedLine(uint32_t cards, uint32_t pages);

// {"columns": [{"field": "Ste1", "width": 30}], "width": 30}
struct LayoutView {
  std::vector<std::pair<std::string, int64_t>> columns;
  int width = 0;
};
[[nodiscard]] std::string LayoutLine(const LayoutView& layout);

// What an import would do: {"cards": 2, "cut": 1, …, "lines": [{"line": 3, "finding": "cut",
// "field": "Nom"}]}; the lines that are refused have a "reason" and no "field".
struct TrialView {
  struct Line {
    uint32_t line = 0;
    std::string finding;
    std::string field;
    std::string reason;
  };
  uint32_t cards = 0;
  std::vector<std::pair<std::string, int64_t>> counts;
  std::vector<Line> lines;
};
[[nodiscard]] std::string TrialLine(const TrialView& trial);

// How an exchange request ended: {"result": 1, "name": …, "number": …, "row": 3} for a look-up that
// was answered, {"result": 1, "cards": 2} for cards inserted.
struct ExchangeView {
  struct Reply {
    std::string name;
    std::string number;
    uint32_t row = 0;
  };
  int result = 0;
  std::optional<Reply> reply = {};
  std::optional<uint32_t> cards = {};
};
[[nodiscard]] std::string ExchangeLine(const ExchangeView& exchange);

// A card to add: its "fields", and whether it is "marked". What else a card object holds (row,
// offset, groups, label) says where a card was and is not looked at.
struct CardInput {
  std::vector<NamedText> fields;
  bool marked = false;
  std::string error;  // French, empty when the line is a card
};
[[nodiscard]] CardInput ParseCardLine(std::string_view line);

}  // namespace carnetel
