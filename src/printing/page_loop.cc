#include "printing/page_loop.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/format_text.h"
#include "printing/list_layout.h"

namespace carnetel {
namespace {

// The fixed scale of hundredths of the unit, whatever the unit is.
constexpr int kHundredthsPerLine = 60;
constexpr int kHundredthsPerCharacter = 40;

// The rows of a card, in their order: every field but the short postal code and the service ones.
constexpr std::array<int, 22> kCardRows = {
    kQualite, kPrenom, kNom,   kSte1, kSte2, kAdr1, kAdr2, kPostalCode, kVille, kPays, kTel1,
    kTel2,    kFax,    kModem, kMtel, kRef1, 13,    14,    15,          16,     kRef6, kNotes};
constexpr int kBlankRows = 2;
constexpr int kCardHeight = static_cast<int>(kCardRows.size()) + kBlankRows;
constexpr size_t kLongestLabel = 9;
constexpr size_t kMaxCardLine = 70;
constexpr size_t kLabelWidth = 5;
constexpr size_t kCardTextStart = kLabelWidth + 1;

int LeftBlanks(const PageSetup& setup) {
  return setup.left_margin / kHundredthsPerCharacter;
}

class PagePrinter {
 public:
  PagePrinter(const PrintRun& run, PrintTarget& target)
      : run_(run), target_(target), layout_(run.composition) {}

  void PrintCard(CardRecord& card) {
    if (target_.text() == PrintText::kAnsi) OemToCharBuff(card.bytes());
    const int height = IsList() ? 1 : kCardHeight;
    if (lines_used_ + height > run_.setup.lines) {
      lines_used_ = 0;
      ++pages_;
      target_.NewPage();
    }
    if (lines_used_ == 0) BeginPage();
    if (IsList()) {
      PrintIndented(layout_.Line(card));
    } else {
      PrintRows(card);
    }
  }

  [[nodiscard]] uint32_t pages() const { return pages_; }

 private:
  [[nodiscard]] bool IsList() const { return run_.setup.presentation == Presentation::kList; }

  void Print(std::string_view line) {
    target_.PrintLine(line);
    ++lines_used_;
  }

  void PrintIndented(const std::string& text) {
    Print(FormatPrintf("%*s%s", {LeftBlanks(run_.setup), "", text}));
  }

  void BeginPage() {
    for (int line = run_.setup.top_margin / kHundredthsPerLine; line > 0; --line) Print("");
    if (IsList()) PrintIndented(layout_.Heading());
  }

  void PrintRows(const CardRecord& card) {
    for (const int field : kCardRows) {
      const int size = kFieldTable[field].size;
      const std::string row = FormatPrintf(
          "%*s%-5.5s %-*.*s", {LeftBlanks(run_.setup), "", LoadText(field).substr(0, kLongestLabel),
                               size, size, card.FieldText(field).bytes()});
      Print(std::string_view(row).substr(0, kMaxCardLine));
    }
    for (int blank = 0; blank < kBlankRows && lines_used_ < run_.setup.lines; ++blank) Print("");
  }

  const PrintRun& run_;
  PrintTarget& target_;
  ListLayout layout_;
  int lines_used_ = 0;
  uint32_t pages_ = 1;
};

bool BelongsToRun(const Directory& directory, const EntrySlot& entry, PrintScope scope) {
  // Every card belongs to the whole file, whether its entry says so or not.
  const bool member = directory.group_bit() == kWholeFileBit || entry.bit(directory.group_bit());
  return member && (scope != PrintScope::kSelection || entry.bit(directory.selection_bit()));
}

}  // namespace

PrintOutcome PrintCards(Directory& directory, const PrintRun& run, PrintTarget& target) {
  const AddressFile& address = directory.address();
  const uint32_t entries = std::min<uint32_t>(address.header().count(), address.entry_count());
  const bool only_one = run.setup.scope == PrintScope::kCurrent;
  PagePrinter printer(run, target);
  PrintOutcome outcome;
  for (uint32_t row = only_one ? run.current_entry : 0; row < entries && !target.Ended(); ++row) {
    const EntrySlot entry = address.Entry(row);
    if (!BelongsToRun(directory, entry, run.setup.scope)) continue;
    CardRecord card;
    outcome.read_failed = !directory.main().ReadCard(entry.card_offset(), card);
    if (outcome.read_failed) break;
    printer.PrintCard(card);
    ++outcome.cards;
    if (only_one) break;
  }
  outcome.pages = printer.pages();
  return outcome;
}

size_t PrintColumns(const PrintRun& run) {
  const auto margin = static_cast<size_t>(LeftBlanks(run.setup));
  if (run.setup.presentation == Presentation::kList) {
    return margin + ListLayout(run.composition).Width();
  }
  const size_t longest = *std::ranges::max_element(kFieldSizes);
  return std::min(margin + kCardTextStart + longest, kMaxCardLine);
}

}  // namespace carnetel
