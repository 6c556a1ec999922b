// Insertions of cards that an exchange file holds.
#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "selection/group_file.h"
#include "selection/marks.h"
#include "tests/link/exchange_request_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Answers questions one after the other, the last one for good, and keeps all texts.
class AnsweringMessages : public MessageForm {
 public:
  std::vector<MessageButton> answers = {MessageButton::kCancel};
  std::vector<std::string> texts;
  std::vector<MessageStyle> styles;

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override {
    EXPECT_EQ(MessageTitle(title_id), "Carnetel ");
    texts.push_back(text);
    styles.push_back(style);
    if (style != MessageStyle::kYesNoCancel) return MessageButton::kOk;
    const MessageButton answer = answers.front();
    if (answers.size() > 1) answers.erase(answers.begin());
    return answer;
  }
};

class ExchangeInsert : public ExchangeTest {
 protected:
  int Insert(const std::vector<RequestRows>& requests) {
    SetFile(ExchangeBytes(requests));
    return ServeExchangeRequest(*directory_, {ExchangeType::kInsert, kFile}, answering_);
  }
  int InsertAnswering(MessageButton answer, const std::vector<RequestRows>& requests) {
    answering_.answers = {answer};
    return Insert(requests);
  }
  [[nodiscard]] uint32_t CardCount() const {
    return static_cast<uint32_t>(files_.Contents("/carnets/ESSAI.DAN").size() / kCardSize - 1);
  }
  // The bytes of card `number`, from 1, up to its time of writing.
  [[nodiscard]] std::string CardBytes(uint32_t number) const {
    return FileText("/carnets/ESSAI.DAN").substr(kCardSize * number, 764);
  }
  static std::string Card(std::initializer_list<std::pair<size_t, std::string_view>> texts) {
    std::string card(764, '\0');
    for (const auto& [at, text] : texts) card.replace(at, text.size(), text);
    return card;
  }
  static std::string Refused(const std::string& name) {
    return "Insertion de la fiche " + name + " dans l'carnetel /carnets/ESSAI.DAN refusée.";
  }
  static std::string Accepted(const std::string& name) {
    return "Insertion de la fiche " + name + " dans l'carnetel /carnets/ESSAI.DAN acceptée.";
  }
  static std::string Exists(const std::string& name) {
    return "Une fiche: " + name + " existe déjà.\nVoulez-vous insérer une nouvelle entrée ?";
  }

  AnsweringMessages answering_;
};

const RequestRows kDupont = {{"Ren\xE9", kNom},
                             {"Soci\xE9t\xE9", kSte1},
                             {"01 40", kTel1},
                             {"perdu", 0},
                             {"Orl\xE9"
                              "ans",
                              kVille}};

TEST_F(ExchangeInsert, ANewCardTakesTheRowsAsOemText) {
  EXPECT_EQ(Insert({kDupont}), 1);
  EXPECT_EQ(CardCount(), 1U);
  EXPECT_EQ(CardBytes(1), Card({{0, "Soci\x82t\x82"},
                                {277, "Ren\x82"},
                                {469, "01 40"},
                                {165,
                                 "Orl\x82"
                                 "ans"}}));
  EXPECT_THAT(answering_.texts, ElementsAre(Accepted("Société")));
  EXPECT_THAT(answering_.styles, ElementsAre(MessageStyle::kInformation));
  EXPECT_FALSE(directory_->is_open());
  EXPECT_FALSE(files_.Exists(kFile));
}

TEST_F(ExchangeInsert, TheActiveIndexChoosesTheNameOfTheCard) {
  ASSERT_EQ(Open(kNom), OpenResult::kOpened);
  EXPECT_EQ(Insert({kDupont}), 1);
  EXPECT_THAT(answering_.texts, ElementsAre(Accepted("René")));
}

TEST_F(ExchangeInsert, TheOtherNameStandsInForAMissingOne) {
  EXPECT_EQ(Insert({{{"Dupont", kNom}}}), 1);
  EXPECT_EQ(CardBytes(1), Card({{277, "Dupont"}}));
  ASSERT_EQ(Open(kNom), OpenResult::kOpened);
  EXPECT_EQ(Insert({{{"", kNom}, {"ACME", kSte1}}}), 1);
  EXPECT_EQ(CardBytes(2), Card({{0, "ACME"}}));
  EXPECT_THAT(answering_.texts, ElementsAre(Accepted("Dupont"), Accepted("ACME")));
}

TEST_F(ExchangeInsert, TextsAreCutAtTheirFieldAndAtTheirRow) {
  const std::string full(32, 'x');
  EXPECT_EQ(Insert({{{full, kNom}, {full, kSte1}, {full, kShortPostalCode}}}), 1);
  EXPECT_EQ(CardBytes(1), Card({{0, full}, {277, full}, {160, "xxxxx"}}));
}

TEST_F(ExchangeInsert, YesAddsACardOfTheRequestAlone) {
  Add("ACME", "Blum", "0102030405");
  EXPECT_EQ(InsertAnswering(MessageButton::kYes, {{{"Cohn", kNom}, {"acme", kSte1}}}), 1);
  EXPECT_EQ(CardCount(), 2U);
  EXPECT_EQ(CardBytes(2), Card({{0, "acme"}, {277, "Cohn"}}));
  EXPECT_THAT(answering_.texts, ElementsAre(Exists("acme"), Accepted("acme")));
  EXPECT_EQ(answering_.styles[0], MessageStyle::kYesNoCancel);
}

// The card that was there stays, with its bytes; the new one begins as its copy.
TEST_F(ExchangeInsert, NoAddsACopyOfTheCardWithTheNewTexts) {
  Add("ACME et fils", "L\x82onard", "0102030405");
  const std::string found = CardBytes(1);
  EXPECT_EQ(
      InsertAnswering(MessageButton::kNo, {{{"", kNom}, {"ACME", kSte1}, {"\xE9t\xE9", kTel1}}}),
      1);
  EXPECT_EQ(CardCount(), 2U);
  EXPECT_EQ(CardBytes(1), found);
  EXPECT_EQ(CardBytes(2), Card({{0, "ACME"}, {277, "L\x82onard"}, {469, "\x82t\x82"}}));
}

TEST_F(ExchangeInsert, CancelLeavesTheCardOut) {
  Add("ACME", "Blum");
  EXPECT_EQ(InsertAnswering(MessageButton::kCancel, {{{"", kNom}, {"ACME", kSte1}}}), 0);
  EXPECT_EQ(CardCount(), 1U);
  EXPECT_THAT(answering_.texts, ElementsAre(Exists("ACME")));
  EXPECT_FALSE(files_.Exists(kFile));
}

TEST_F(ExchangeInsert, SeveralRecordsAreCountedAtTheEnd) {
  Add("BETA", "Blum");
  answering_.answers = {MessageButton::kCancel, MessageButton::kYes};
  EXPECT_EQ(Insert({{{"", kNom}, {"ALPHA", kSte1}},
                    {{"", kNom}, {"BETA", kSte1}},
                    {{"", kNom}, {"BETA", kSte1}},
                    {{"", kNom}, {"GAMMA", kSte1}}}),
            1);
  EXPECT_EQ(CardCount(), 4U);
  EXPECT_THAT(answering_.texts, ElementsAre(Exists("BETA"), Exists("BETA"), "3 fiche(s) créée(s)"));
  EXPECT_EQ(answering_.styles[2], MessageStyle::kInformation);
  EXPECT_FALSE(files_.Exists(kFile));
}

// The second record is looked for among the cards that the first one made.
TEST_F(ExchangeInsert, ARecordMeetsTheOneInFrontOfIt) {
  EXPECT_EQ(InsertAnswering(MessageButton::kCancel,
                            {{{"", kNom}, {"ALPHA", kSte1}}, {{"", kNom}, {"ALPHA", kSte1}}}),
            1);
  EXPECT_THAT(answering_.texts, ElementsAre(Exists("ALPHA"), "1 fiche(s) créée(s)"));
}

TEST_F(ExchangeInsert, AllLeftOutKeepsTheDirectoryOpen) {
  Add("ALPHA", "");
  EXPECT_EQ(Insert({{{"", kNom}, {"ALPHA", kSte1}}, {{"", kNom}, {"ALPHA", kSte1}}}), 0);
  EXPECT_TRUE(directory_->is_open());
  EXPECT_EQ(answering_.texts.back(), "0 fiche(s) créée(s)");
}

TEST_F(ExchangeInsert, ARecordWithoutNameEndsTheRun) {
  EXPECT_EQ(Insert({{{"", kNom}, {"ALPHA", kSte1}}, {{"", kNom}, {"", kSte1}, {"01", kTel1}}}), -1);
  EXPECT_EQ(CardCount(), 1U);
  EXPECT_THAT(answering_.texts, ElementsAre(Refused("")));
  EXPECT_THAT(answering_.styles, ElementsAre(MessageStyle::kError));
  EXPECT_FALSE(directory_->is_open());
  EXPECT_TRUE(files_.Exists(kFile));
  EXPECT_EQ(Open(), OpenResult::kOpened);
}

TEST_F(ExchangeInsert, FieldNumbersBeyondTheTableRefuseTheWholeFile) {
  const RequestRows good = {{"", kNom}, {"ALPHA", kSte1}};
  for (const uint8_t field : {uint8_t{31}, uint8_t{255}}) {
    const auto before = AllFiles();
    EXPECT_EQ(Insert({good, {{"Dupont", kNom}, {"", kSte1}, {"x", field}}}), -1);
    EXPECT_FALSE(IsExchangeFile(files_, {ExchangeType::kInsert, kFile}));
    const auto after = AllFiles();
    EXPECT_TRUE(std::equal(before.begin() + 1, before.end(), after.begin() + 1));
  }
  EXPECT_TRUE(directory_->is_open());
  EXPECT_THAT(answering_.texts, IsEmpty());
}

TEST_F(ExchangeInsert, TheLastFieldIsTakenAndThatOfAnEmptyRowNeverLookedAt) {
  EXPECT_EQ(Insert({{{"", 200}, {"ALPHA", kSte1}, {"fin", kSpare30}, {"", 99}}}), 1);
  EXPECT_EQ(CardBytes(1), Card({{0, "ALPHA"}, {719, "fin"}}));
}

// What lies behind the last whole record, such as the zeros of a rewrite, is no record.
TEST_F(ExchangeInsert, OnlyWholeRecordsCount) {
  SetFile(ExchangeBytes({{{"", kNom}, {"ALPHA", kSte1}}}) + std::string(172, 'x'));
  EXPECT_EQ(Serve(ExchangeType::kInsert), 1);
  EXPECT_EQ(CardCount(), 1U);
}

TEST_F(ExchangeInsert, ANameThatNoKeyCanBeginWithLosesItsFirstCharacters) {
  EXPECT_EQ(Insert({{{"", kNom}, {"[ALPHA]", kSte1}}}), 1);
  EXPECT_EQ(CardBytes(1), Card({{0, "ALPHA]"}}));
  ASSERT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(Insert({{{"{|}", kNom}}}), -1);
  EXPECT_EQ(CardCount(), 1U);
  EXPECT_EQ(answering_.texts.back(), Refused("{|}"));
}

// Every other name is taken as it stands.
TEST_F(ExchangeInsert, ANameMayBeginWithABlankOrASign) {
  EXPECT_EQ(Insert({{{"", kNom}, {" (ALPHA)", kSte1}}}), 1);
  EXPECT_EQ(CardBytes(1), Card({{0, " (ALPHA)"}}));
}

TEST_F(ExchangeInsert, ACardWithoutAnyKeyFieldIsRefused) {
  EXPECT_EQ(Insert({{{"Paris", kVille}}}), -1);
  EXPECT_EQ(CardCount(), 0U);
  EXPECT_THAT(answering_.texts, ElementsAre(Refused("Paris")));
  EXPECT_FALSE(files_.Exists(kFile));
}

TEST_F(ExchangeInsert, AFullDirectoryRefusesTheCard) {
  directory_->CloseDirectory();
  std::vector<std::byte> main = files_.Contents("/carnets/ESSAI.DAN");
  main.resize(kCardSize * (size_t{kMaxCards} + 1), std::byte{'A'});
  files_.SetContents("/carnets/ESSAI.DAN", main);
  ASSERT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(Insert({{{"", kNom}, {"BETA", kSte1}}}), -1);
  EXPECT_THAT(answering_.texts, ElementsAre(Refused("BETA")));
  EXPECT_EQ(CardCount(), kMaxCards);
  // Of several, none stops the run.
  ASSERT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(Insert({{{"", kNom}, {"BETA", kSte1}}, {{"", kNom}, {"GAMMA", kSte1}}}), -1);
  EXPECT_EQ(answering_.texts.back(), "0 fiche(s) créée(s)");
}

// Whichever write of the stores it is.
TEST_F(ExchangeInsert, AWriteThatFailsIsNoSuccess) {
  directory_->CloseDirectory();
  const MemoryFileSystem before = files_.Snapshot();
  int failed = 0;
  for (int result = -1; result == -1; ++failed) {
    MemoryFileSystem copy(before);
    FaultFileSystem disk(copy);
    DirectoryOptions options;
    options.path = "/carnets/ESSAI.DAN";
    Directory directory(DirectoryServices{disk, clock_, progress_}, options);
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    copy.SetContents(kFile, AsBytes(ExchangeBytes({{{"", kNom}, {"ALPHA", kSte1}}})));
    disk.FailWrite(failed + 1);
    result = ServeExchangeRequest(directory, {ExchangeType::kInsert, kFile}, answering_);
  }
  EXPECT_GT(failed, 5);
}

TEST_F(ExchangeInsert, MarksAndGroupsAreKept) {
  Add("ALPHA", "Blum");
  Add("DELTA", "Cohn", "", true);
  Directory& directory = *directory_;
  GroupFile(directory).Check();
  ASSERT_TRUE(GroupFile(directory).CreateGroup({OemText("Nord"), kMembersOnly}, {}, 0));
  EXPECT_EQ(Insert({{{"", kNom}, {"BETA", kSte1}}, {{"", kNom}, {"GAMMA", kSte1}}}), 1);
  const std::string address = FileText("/carnets/ESSAI.ADR");
  ASSERT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(FileText("/carnets/ESSAI.ADR"), address);
  EXPECT_EQ(directory_->marked_count(), 1);
  EXPECT_FALSE(GroupFile(*directory_).Check());
  const uint8_t slot = GroupFile(*directory_).Groups().at(0).slot();
  ASSERT_EQ(directory_->address().entry_count(), 4U);
  for (uint32_t row = 0; row < 4; ++row) {
    const EntrySlot entry = directory_->address().Entry(row);
    EXPECT_EQ(entry.bit(1), row == 2) << row;
    EXPECT_EQ(entry.bit(slot), row == 2) << row;
  }
}

}  // namespace
}  // namespace carnetel
