// Look-ups and rewrites. Insertions are in exchange_request_insert_test.cc.
#include "link/exchange_request.h"

#include "platform/fault_file_system.h"
#include "tests/link/exchange_request_testing.h"

namespace carnetel {
namespace {

// `text` at `at` of a reply.
struct Put {
  size_t at;
  std::string_view text;
};

std::string Bytes(size_t size, std::initializer_list<Put> puts) {
  std::string bytes(size, '\0');
  for (const Put& put : puts) bytes.replace(put.at, put.text.size(), put.text);
  return bytes;
}

class ExchangeLookUp : public ExchangeTest {
 protected:
  // The file behind a request that was answered.
  [[nodiscard]] std::string Reply() const { return FileText().substr(288); }
};

TEST_F(ExchangeLookUp, OneCardFillsTheShortReply) {
  Add("ALPHA", "ADAM", "1");
  Add("Soci\x82t\x82", "Dupont", "01 40 00 00 01");
  EXPECT_EQ(LookUp("dupont"), 1);
  const std::string request = ExchangeBytes({{{"dupont", kNom}}});
  EXPECT_EQ(FileText().substr(0, 269), request);
  EXPECT_EQ(FileText().substr(269, 19), std::string(19, '\0'));
  EXPECT_EQ(Reply(), Bytes(149, {{0, "01 40 00 00 01"},
                                 {30, std::string_view("\x00\x06\x00\x00", 4)},
                                 {40, "Soci\xE9t\xE9"},
                                 {88, "/CARNETS/ESSAI.DAN"}}));
  EXPECT_FALSE(directory_->is_open());
  EXPECT_EQ(RepliedCard(files_, kFile), 1536U);
}

TEST_F(ExchangeLookUp, LongRecordsHaveTheSurnameToo) {
  Add("ACME", "L\x82onard", "02");
  EXPECT_EQ(LookUp("L\xE9onard", true), 1);
  EXPECT_EQ(Reply(), Bytes(161, {{0, "02"},
                                 {30, std::string_view("\x00\x03\x00\x00", 4)},
                                 {34, "L\xE9onard"},
                                 {67, "ACME"},
                                 {100, "/CARNETS/ESSAI.DAN"}}));
}

// The offset holds bytes that a conversion would change: 130 x 768 is 018600h.
TEST_F(ExchangeLookUp, TheOffsetIsNotConvertedWithTheTexts) {
  for (int i = 1; i < 130; ++i) Add("AUTRE", "MARTIN");
  ASSERT_EQ(Add("ICI", "ZOLA", "03"), 0x18600U);
  EXPECT_EQ(LookUp("ZOLA"), 1);
  EXPECT_EQ(Reply().substr(30, 4), std::string_view("\x00\x86\x01\x00", 4));
}

TEST_F(ExchangeLookUp, AFieldThatIsFullEndsWhereTheNextBegins) {
  Add(std::string(32, 'C'), std::string(32, 'N'), std::string(24, '9'));
  EXPECT_EQ(LookUp("NNNNNNNNNN", true), 1);
  EXPECT_EQ(Reply(), Bytes(161, {{0, std::string(24, '9')},
                                 {30, std::string_view("\x00\x03\x00\x00", 4)},
                                 {34, std::string(32, 'N')},
                                 {67, std::string(32, 'C')},
                                 {100, "/CARNETS/ESSAI.DAN"}}));
}

TEST_F(ExchangeLookUp, ThePathIsInAnsiCapitalsAndCutAt60) {
  const std::string folder = "/carnets/" + std::string(45, 'x') + "/\xC3\xA9t\xC3\xA9/";
  ASSERT_EQ(Open(kSte1, folder + "essai.DAN"), OpenResult::kCreated);
  Add("ACME", "ADAM", "1");
  EXPECT_EQ(LookUp("ADAM"), 1);
  EXPECT_EQ(Reply().substr(88, 60), "/CARNETS/" + std::string(45, 'X') + "/\xC9T\xC9/E");
  EXPECT_EQ(Reply().size(), 149U);
}

TEST_F(ExchangeLookUp, APathThatIsNotFullIsMadeSo) {
  ASSERT_EQ(Open(kSte1, "ici/ESSAI.DAN"), OpenResult::kCreated);
  Add("ACME", "ADAM", "1");
  EXPECT_EQ(LookUp("ADAM"), 1);
  EXPECT_EQ(Reply().substr(88), Bytes(61, {{0, "/ICI/ESSAI.DAN"}}));
}

TEST_F(ExchangeLookUp, SearchesTheSurnamesWhateverIndexIsActive) {
  Add("ZZZ", "ADAM", "1");
  Add("ADAM", "ZOLA", "2");
  ASSERT_EQ(Open(kNom), OpenResult::kOpened);
  EXPECT_EQ(LookUp("ADAM"), 1);
  EXPECT_EQ(Reply().substr(0, 2), Bytes(2, {{0, "1"}}));
}

TEST_F(ExchangeLookUp, ACardWithoutSurnameGoesByItsCompany) {
  Add("ACME", "", "1");
  EXPECT_EQ(LookUp("acme"), 1);
}

TEST_F(ExchangeLookUp, OnlyTenCharactersOfANameCount) {
  Add("X", "DESCHAMPSLEROY", "1");
  EXPECT_EQ(LookUp("DESCHAMPSLEBRUN"), 1);
}

TEST_F(ExchangeLookUp, ACardWithoutNumberIsPassedOver) {
  Add("A", "DUPONT");
  Add("B", "DUPONT", "5");
  Add("C", "DUPONT");
  EXPECT_EQ(LookUp("DUPONT"), 1);
  EXPECT_EQ(Reply().substr(40, 2), Bytes(2, {{0, "B"}}));
}

TEST_F(ExchangeLookUp, TheSecondHitBecomesTheCurrentRowAndNothingIsAnswered) {
  Add("C", "DUPONT", "1");
  Add("A", "DUPONT");
  Add("B", "DUPONT", "2");
  EXPECT_EQ(LookUp("DUPONT"), 0);
  EXPECT_EQ(FileText(), ExchangeBytes({{{"DUPONT", kNom}}}));
  EXPECT_TRUE(directory_->is_open());
  // By company: A, B, C.
  EXPECT_EQ(SavedRow(), 1);
  directory_->CloseDirectory();
  EXPECT_EQ(SavedRow(), 1);
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(SavedRow(), 1);
}

TEST_F(ExchangeLookUp, WithoutAHitTheNextNameBecomesTheCurrentRow) {
  Add("A", "ZOLA", "1");
  Add("B", "ADAM", "2");
  Add("C", "EIFFEL", "3");
  Add("D", "DURAND", "4");
  EXPECT_EQ(LookUp("DUPONT"), 0);
  EXPECT_EQ(SavedRow(), 3);
  // No card has its letter: the next one that has any.
  EXPECT_EQ(LookUp("FABRE"), 0);
  EXPECT_EQ(SavedRow(), 0);
  EXPECT_TRUE(directory_->is_open());
}

TEST_F(ExchangeLookUp, CardsOfTheNameThatHaveNoNumberAreNotOfferedEither) {
  Add("A", "DUPONT");
  Add("B", "DURAND");
  EXPECT_EQ(LookUp("DUPONT"), 0);
  EXPECT_EQ(SavedRow(), 1);
}

TEST_F(ExchangeLookUp, ANameBehindAllOthersLeavesTheRow) {
  Add("A", "ADAM", "1");
  Add("B", "BLUM", "1");
  EXPECT_EQ(LookUp("AZ"), 0);
  EXPECT_EQ(SavedRow(), 1);
  EXPECT_EQ(LookUp("ZZ"), 0);
  EXPECT_EQ(SavedRow(), 1);
}

TEST_F(ExchangeLookUp, NamesThatNoLetterStandsForAreNotLookedUp) {
  Add("A", "\x90MILE", "1");
  Add("B", " ", "1");
  for (const char* name : {"", " ADAM", "\xC9MILE", "-", "[", "{"}) {
    EXPECT_EQ(LookUp(name), 0) << name;
    EXPECT_EQ(SavedRow(), 0) << name;
  }
  EXPECT_TRUE(directory_->is_open());
}

// The bytes between the digits and the letters have no page: the first letter follows them.
TEST_F(ExchangeLookUp, ASignBehindTheDigitsMeetsTheFirstLetter) {
  Add("B", "9", "1");
  Add("C", "ADAM", "1");
  EXPECT_EQ(LookUp(":"), 0);
  EXPECT_EQ(SavedRow(), 1);
}

// 36 cards fill a page: the last of them is followed by the page of another letter.
TEST_F(ExchangeLookUp, AKeyAtTheEndOfAPage) {
  for (int i = 0; i < 35; ++i) Add("A", "ADAM");
  Add("B", "AZ", "7");
  Add("C", "BLUM", "8");
  EXPECT_EQ(LookUp("AZ"), 1);
  EXPECT_EQ(Reply().substr(0, 2), Bytes(2, {{0, "7"}}));
}

TEST_F(ExchangeLookUp, AKeyAtTheVeryEndOfTheIndex) {
  for (int i = 0; i < 35; ++i) Add("A", "ZA");
  Add("B", "ZZ", "7");
  ASSERT_EQ(directory_->index(2).SlotAt(506 * 35, 35).key[1], 'Z');
  EXPECT_EQ(LookUp("ZZ"), 1);
  EXPECT_EQ(Reply().substr(0, 2), Bytes(2, {{0, "7"}}));
}

TEST_F(ExchangeLookUp, ALetterWithSeveralPages) {
  for (int i = 0; i < 100; ++i) Add("A", "MARTIN");
  Add("B", "MOREAU", "7");
  Add("C", "NADAR", "8");
  ASSERT_GT(directory_->index(2).page_count(), 37U);
  EXPECT_EQ(LookUp("MOREAU"), 1);
  EXPECT_EQ(Reply().substr(0, 2), Bytes(2, {{0, "7"}}));
  ASSERT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(LookUp("MARTIN"), 0);
  EXPECT_EQ(LookUp("NADAR"), 1);
  EXPECT_EQ(Reply().substr(0, 2), Bytes(2, {{0, "8"}}));
}

// Equal keys lie on both sides of a page's end.
TEST_F(ExchangeLookUp, TwoHitsOnTwoPages) {
  for (int i = 0; i < 35; ++i) Add("A", "ADAM");
  Add("B", "AZ", "1");
  Add("C", "AZ", "2");
  EXPECT_EQ(LookUp("AZ"), 0);
  EXPECT_EQ(SavedRow(), 36);
}

TEST_F(ExchangeLookUp, AFileThatCannotBeOpenedIsRefused) {
  EXPECT_EQ(Serve(ExchangeType::kLookUp), -1);
  EXPECT_EQ(Serve(ExchangeType::kRewrite), -1);
  EXPECT_EQ(Serve(ExchangeType::kInsert), -1);
  EXPECT_TRUE(directory_->is_open());
  EXPECT_FALSE(IsExchangeFile(files_, {ExchangeType::kLookUp, kFile}));
}

TEST_F(ExchangeLookUp, MalformedFilesAreLeftAlone) {
  Add("A", "ADAM", "1");
  std::string whole = ExchangeBytes({{{"ADAM", kNom}}});
  for (const size_t size : {size_t{0}, size_t{95}, size_t{96}, size_t{268}, size_t{5'668'788}}) {
    whole.resize(size, '\0');
    SetFile(whole);
    const auto before = AllFiles();
    EXPECT_EQ(Serve(ExchangeType::kLookUp), 0) << size;
    EXPECT_EQ(Serve(ExchangeType::kRewrite), 0) << size;
    EXPECT_EQ(Serve(ExchangeType::kInsert), -1) << size;
    EXPECT_FALSE(IsExchangeFile(files_, {ExchangeType::kLookUp, kFile})) << size;
    EXPECT_EQ(AllFiles(), before) << size;
    whole = ExchangeBytes({{{"ADAM", kNom}}});
  }
  EXPECT_TRUE(directory_->is_open());
  EXPECT_TRUE(messages_.shown().empty());
}

TEST_F(ExchangeLookUp, NoFileOfTheDirectoryIsAnExchangeFile) {
  Add("A", "ADAM", "1");
  const auto before = AllFiles();
  for (const char* file :
       {"/carnets/ESSAI.DAN", "/carnets/ESSAI.I01", "/carnets/../carnets/ESSAI.ADR"}) {
    for (const auto type : {ExchangeType::kLookUp, ExchangeType::kRewrite, ExchangeType::kInsert}) {
      EXPECT_EQ(ServeExchangeRequest(*directory_, {type, file}, messages_), -1) << file;
    }
  }
  EXPECT_EQ(AllFiles(), before);
}

TEST_F(ExchangeLookUp, AReplyThatCannotBeWrittenCountsAsNone) {
  Add("A", "ADAM", "1");
  directory_->CloseDirectory();
  FaultFileSystem disk(files_);
  DirectoryOptions options;
  options.path = "/carnets/ESSAI.DAN";
  Directory directory(DirectoryServices{disk, clock_, progress_}, options);
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  SetFile(ExchangeBytes({{{"ADAM", kNom}}}));
  disk.FillDisk();
  EXPECT_EQ(ServeExchangeRequest(directory, {ExchangeType::kLookUp, kFile}, messages_), 0);
  EXPECT_EQ(ServeExchangeRequest(directory, {ExchangeType::kRewrite, kFile}, messages_), 0);
  EXPECT_TRUE(directory.is_open());
}

TEST_F(ExchangeLookUp, AFileWithoutReplyNamesNoCard) {
  EXPECT_EQ(RepliedCard(files_, kFile), 0U);
  SetFile(ExchangeBytes({{{"ADAM", kNom}}}));
  EXPECT_EQ(RepliedCard(files_, kFile), 0U);
}

class ExchangeRewrite : public ExchangeTest {};

TEST_F(ExchangeRewrite, KeepsTheRecordAndClearsUpToTheReply) {
  std::string file = ExchangeBytes({{{"Dupont", kNom}, {"ACME", kSte1}}});
  const std::string record = file.substr(96);
  file += std::string(19, 'x') + "ce qui suit";
  SetFile(file);
  EXPECT_EQ(Serve(ExchangeType::kRewrite), 1);
  EXPECT_EQ(FileText(), Bytes(96, {{0, "Carnetel V4.00 (C) DROV SOFTWARE\r\n"}}) + record +
                            std::string(19, '\0') + "ce qui suit");
  EXPECT_FALSE(directory_->is_open());
}

TEST_F(ExchangeRewrite, LengthensAShortFileTo288Bytes) {
  SetFile(ExchangeBytes({{{"Dupont", kNom}}}));
  EXPECT_EQ(Serve(ExchangeType::kRewrite), 1);
  EXPECT_EQ(FileText().size(), 288U);
  EXPECT_EQ(FileText().substr(269), std::string(19, '\0'));
  EXPECT_EQ(FileText().substr(0, 36), Bytes(36, {{0, kExchangeBanner}}));
}

}  // namespace
}  // namespace carnetel
