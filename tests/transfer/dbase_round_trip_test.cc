#include <random>

#include "base/code_page.h"
#include "tests/transfer/dbase_testing.h"
#include "transfer/dbase_forms.h"

namespace carnetel {
namespace {

// Random cards such as come back from a table: no blank at the end of a text, a key that begins
// with a capital (not Z, whose part of an index holds few cards), numbers that can be dialled.
class RandomCards {
 public:
  explicit RandomCards(unsigned seed) : random_(seed) {}

  CardRecord Next() {
    CardRecord card;
    for (const int field : kDbaseFields) {
      if (field != kSte1 && Below(3) == 0) continue;
      card.SetField(field, OemText(Text(field)));
    }
    return card;
  }

 private:
  size_t Below(size_t limit) { return random_() % limit; }

  std::string Text(int field) {
    static constexpr std::string_view kPlain =
        "ABCXYabcxyz0123456789 ,.\"'()-\x82\x8A\x90\xA5\x85\x93";
    static constexpr std::string_view kNumbers = "0123456789 :-+,@#*ABCDW";
    const bool number = field >= kTel1 && field <= kModem;
    const std::string_view alphabet = number ? kNumbers : kPlain;
    std::string text(1, alphabet[Below(5)]);
    const size_t size = Below(kFieldTable[field].size);
    while (text.size() < size) text += alphabet[Below(alphabet.size())];
    if (text.back() == ' ') text.back() = '7';
    return text;
  }

  std::mt19937 random_;
};

class DbaseRoundTrip : public DbaseTest {
 protected:
  static constexpr int kCards = 2000;

  [[nodiscard]] std::vector<std::string> SortedCards() const {
    std::vector<std::string> cards;
    const std::string main = Contents(kMain);
    for (size_t card = kCardSize; card < main.size(); card += kCardSize) {
      cards.push_back(main.substr(card, CardRecord::kWriteTimeOffset));
    }
    std::ranges::sort(cards);
    return cards;
  }

  // Exports the marked cards, imports them in the place of the directory's and compares.
  void GoRound(TransferFileType type, CharacterSet charset) {
    const std::vector<std::string> before = SortedCards();
    ASSERT_EQ(ExportTable(DefaultExportMapping(), /*replace=*/true, type, charset).cards,
              before.size());
    ParameterFile parameters(files_, "/home/CARNETEL.TRS");
    parameters.StartTransfer(TransferDirection::kImport);
    SilentMessages messages;
    ASSERT_EQ(ReadDbaseHeader(files_, parameters, messages, kTable, &type).result,
              DbaseHeaderOutcome::Result::kRead);
    EXPECT_TRUE(messages.shown().empty());
    DbaseImportForm form(parameters, kTable, type);
    int column = 0;
    for (const int field : kDbaseFields) form.SetPosition(field, column++);
    form.Confirm();
    ImportRequest request = TableRequest(charset);
    request.replace = true;
    const DbaseMapping& mapping = parameters.mapping(TransferDirection::kImport);
    EXPECT_EQ(ImportDbase(Services(), mapping, request).cards, before.size());
    EXPECT_TRUE(SortedCards() == before);
  }
};

TEST_F(DbaseRoundTrip, EveryFieldOfRandomCardsComesBack) {
  RandomCards cards(1);
  Fill(kCards, [&](int /*number*/) { return cards.Next(); });
  ASSERT_EQ(CardCount(), static_cast<uint32_t>(kCards));
  GoRound(TransferFileType::kDbase3, CharacterSet::kOem);
}

TEST_F(DbaseRoundTrip, ThroughAnAnsiTableOfDbase4Too) {
  RandomCards cards(2);
  Fill(kCards, [&](int /*number*/) { return cards.Next(); });
  ASSERT_EQ(CardCount(), static_cast<uint32_t>(kCards));
  GoRound(TransferFileType::kDbase4, CharacterSet::kAnsi);
}

// The header length points at the end of the descriptors, which stands in for the mark of the first
// record as the last byte of each record does for that of the next.
TEST_F(DbaseRoundTrip, ATableOfOneColumnComesBackAsWell) {
  AddCards({MakeCard({{kSte1, "A"}}), MakeCard({{kSte1, "B"}}), MakeCard({{kSte1, "C"}})}, true);
  const DbaseMapping out = ExportMapping({{kSte1, "S", 1}});
  ASSERT_EQ(ExportTable(out).cards, 3u);
  ImportRequest request = TableRequest();
  request.replace = true;
  EXPECT_EQ(ImportDbase(Services(), ImportMapping({1}, {{kSte1, 0}}), request).cards, 3u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "A"}}));
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "B"}}));
  EXPECT_EQ(Card(2), MakeCard({{kSte1, "C"}}));
}

TEST_F(DbaseRoundTrip, AddedRecordsComeBackBehindTheOthers) {
  AddCards({MakeCard({{kSte1, "Avant"}})}, true);
  const DbaseMapping out = ExportMapping({{kSte1, "S", 8}, {kVille, "V", 8}});
  ASSERT_EQ(ExportTable(out).cards, 1u);
  AddCards({MakeCard({{kSte1, "Suite"}, {kVille, "Lyon"}})}, true);
  ASSERT_EQ(ExportTable(out).cards, 2u);
  ImportRequest request = TableRequest();
  request.replace = true;
  const DbaseMapping in = ImportMapping({8, 8}, {{kSte1, 0}, {kVille, 1}});
  EXPECT_EQ(ImportDbase(Services(), in, request).cards, 3u);
  EXPECT_EQ(Card(2), MakeCard({{kSte1, "Suite"}, {kVille, "Lyon"}}));
}

}  // namespace
}  // namespace carnetel
