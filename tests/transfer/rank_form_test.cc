#include "transfer/rank_form.h"

#include <gmock/gmock.h>

#include <memory>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kParameters[] = "/home/CARNETEL.TRS";
constexpr auto kField = SeparatorKind::kField;
constexpr auto kCard = SeparatorKind::kCard;

class RankFormTest : public testing::Test {
 protected:
  RankForm& Open(const TransferProfile& profile = TransferProfile::OfNewInstallation()) {
    parameters_.profile() = profile;
    form_ = std::make_unique<RankForm>(parameters_, messages_, TransferDirection::kExport);
    return *form_;
  }
  // What a separator shows after the user typed `text` and left it.
  static std::string Shown(RankForm& form, SeparatorKind kind, std::string_view text) {
    form.TypeSeparator(kind, text);
    form.LeaveSeparator(kind);
    return form.separator_text(kind);
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
  ParameterFile parameters_{files_, kParameters};
  SilentMessages messages_;
  std::unique_ptr<RankForm> form_;
};

TEST_F(RankFormTest, ListsTheFieldsInTheOrderOfATransfer) {
  const RankForm& form = Open();
  std::vector<std::string> lines;
  for (const int line : kStructureLines) {
    lines.push_back(std::string(form.label(line)) + " " + form.rank_text(line));
  }
  EXPECT_THAT(lines,
              ElementsAre("Société1 4", "Société2 5", "Adresse1 6", "Adresse2 7", "Cde postal 8",
                          "Ville 9", "Pays 10", "Tél1 11", "Tél2 12", "N° Fax 13", "N° Modem 15",
                          "Minitel 14", "Réf. 1 16", "Qualité 1", "Prénom 2", "Nom 3"));
}

TEST_F(RankFormTest, TheTitleFollowsTheDirection) {
  EXPECT_EQ(Open().title(), "Structure du fichier de destination");
  EXPECT_EQ(RankForm(parameters_, messages_, TransferDirection::kImport).title(),
            "Structure du fichier source");
}

TEST_F(RankFormTest, TheReferencesShareOneLine) {
  RankForm& form = Open();
  form.TypeRank(kReferenceLine, "31");
  form.SelectReference(5);
  EXPECT_EQ(form.label(kReferenceLine), "Réf. 6");
  EXPECT_EQ(form.rank_text(kReferenceLine), "21");
  form.TypeRank(kReferenceLine, "");
  form.LeaveRank(kReferenceLine);
  form.SelectReference(0);
  EXPECT_EQ(form.rank_text(kReferenceLine), "31");
  form.SelectReference(5);
  EXPECT_EQ(form.rank_text(kReferenceLine), "0");
}

TEST_F(RankFormTest, RanksTakeTwoDigits) {
  RankForm& form = Open();
  form.TypeRank(kNom, "123");
  EXPECT_EQ(form.rank_text(kNom), "12");
  form.TypeRank(kNom, "a-7");
  EXPECT_EQ(form.rank_text(kNom), "7");
}

TEST_F(RankFormTest, ARankLeftEmptyBecomesZeroAndThatOfTheCompanyOne) {
  RankForm& form = Open();
  form.TypeRank(kNom, "");
  form.LeaveRank(kNom);
  EXPECT_EQ(form.rank_text(kNom), "0");
  form.TypeRank(kNom, "0");
  form.LeaveRank(kNom);
  EXPECT_EQ(form.rank_text(kNom), "0");
  for (const char* text : {"", "0", "00"}) {
    form.TypeRank(kSte1, text);
    form.LeaveRank(kSte1);
    EXPECT_EQ(form.rank_text(kSte1), "1") << text;
  }
  form.TypeRank(kSte1, "9");
  form.LeaveRank(kSte1);
  EXPECT_EQ(form.rank_text(kSte1), "9");
}

TEST_F(RankFormTest, TheSeparatorListsProposeNamesAndPairs) {
  EXPECT_THAT(SeparatorProposals(kField),
              ElementsAre("\" ,", "\" ;", ";", "NUL", "BEL", "TAB", "LF", "FF", "CR", "SUB", "ESC",
                          "CRLF", "LFCR", "CRFF", "FFCR"));
  EXPECT_THAT(SeparatorProposals(kCard), ElementsAre("NUL", "BEL", "TAB", "LF", "FF", "CR", "SUB",
                                                     "ESC", "CRLF", "LFCR", "CRFF", "FFCR"));
}

TEST_F(RankFormTest, ASeparatorThatIsLeftShowsCharactersWhereThereAreSuch) {
  RankForm& form = Open();
  EXPECT_EQ(Shown(form, kField, "22h 2Ch"), "\" ,");
  EXPECT_EQ(Shown(form, kField, "59"), ";");
  EXPECT_EQ(Shown(form, kField, "TAB"), "TAB");
  EXPECT_EQ(Shown(form, kField, "9"), "9");
  EXPECT_EQ(Shown(form, kField, "09"), "09h");
  EXPECT_EQ(Shown(form, kCard, "13 10"), "0Dh 0Ah");
  EXPECT_EQ(Shown(form, kCard, ""), "00h");
}

TEST_F(RankFormTest, WhileItIsTypedASeparatorStays) {
  RankForm& form = Open();
  form.TypeSeparator(kField, "22h 2Ch");
  EXPECT_EQ(form.separator_text(kField), "22h 2Ch");
}

TEST_F(RankFormTest, OfASeparatorEightCharactersCount) {
  RankForm& form = Open();
  EXPECT_EQ(Shown(form, kField, "; ; ; ; ; ;"), "; ; ; ;");
  form.TypeSeparator(kField, "123456789");
  EXPECT_EQ(form.separator_text(kField), "12345678");
}

TEST_F(RankFormTest, ASeparatorThatItsCodesWouldCutStaysAsTyped) {
  RankForm& form = Open();
  EXPECT_EQ(Shown(form, kCard, "13 10 09"), "13 10 09") << "0Dh 0Ah 09h has 11 characters";
}

TEST_F(RankFormTest, AnAccentedSeparatorIsOneAnsiByte) {
  RankForm& form = Open();
  form.TypeSeparator(kField, "§");
  EXPECT_EQ(form.separator_text(kField), "§");
  form.LeaveSeparator(kField);
  EXPECT_EQ(form.separator_text(kField), "A7h");
  EXPECT_EQ(Shown(form, kField, "; 漢"), ";") << "no byte stands for it";
}

TEST_F(RankFormTest, TheRowOfASeparatorFollowsItsText) {
  RankForm& form = Open();
  EXPECT_EQ(form.separator_row(kField), 2) << "a semicolon";
  EXPECT_EQ(form.separator_row(kCard), 8) << "CRLF";
  form.TypeSeparator(kField, "22h 2Ch");
  EXPECT_EQ(form.separator_row(kField), RankForm::kNoRow);
  form.LeaveSeparator(kField);
  EXPECT_EQ(form.separator_row(kField), 0);
  form.TypeSeparator(kField, "TAB");
  EXPECT_EQ(form.separator_row(kField), 5);
  form.TypeSeparator(kCard, "TAB");
  EXPECT_EQ(form.separator_row(kCard), 2);
}

TEST_F(RankFormTest, ConfirmStoresSeparatorsRowsAndRanksAndWritesThem) {
  RankForm& form = Open();
  form.TypeSeparator(kField, "TAB");
  form.TypeSeparator(kCard, "0Ah 0Ah");
  form.TypeRank(kSte1, "2");
  form.TypeRank(kMtel, "");
  form.SelectReference(4);
  form.TypeRank(kReferenceLine, "33");
  form.SelectReference(1);
  ASSERT_TRUE(form.Confirm());
  EXPECT_THAT(messages_.shown(), IsEmpty());
  TransferProfile expected = TransferProfile::OfNewInstallation();
  expected.set_field_separator("TAB");
  expected.set_field_separator_row(5);
  expected.set_card_separator("0Ah 0Ah");
  expected.set_card_separator_row(255);
  expected.set_rank(kSte1, 2);
  expected.set_rank(kMtel, 0);
  expected.set_rank(kRef1 + 4, 33);
  EXPECT_EQ(parameters_.profile(), expected) << "all else stays";
  ParameterFile stored(files_, kParameters);
  ASSERT_EQ(stored.AccessParameterFile(ParameterFile::Access::kRead, TransferFileType::kDelimited,
                                       TransferDirection::kExport),
            0);
  EXPECT_EQ(stored.profile(), expected);
}

TEST_F(RankFormTest, RanksWithoutALineAndThoseThatCannotBeTypedStay) {
  TransferProfile profile;
  for (const int field : {kAdr3, kShortPostalCode, kSparePerson, kServiceType, kNinit, kNotes}) {
    profile.set_rank(field, 77);
  }
  profile.set_rank(kNom, 1999);
  profile.set_rank(kRef6, -123);
  profile.set_field_separator_row(0);
  profile.set_card_separator_row(RankForm::kNoRow);
  RankForm& form = Open(profile);
  EXPECT_EQ(form.rank_text(kNom), "1999");
  profile.set_field_separator_row(RankForm::kNoRow);
  ASSERT_TRUE(form.Confirm());
  EXPECT_EQ(parameters_.profile(), profile);
}

TEST_F(RankFormTest, ACompanyWithoutARankIsRefused) {
  RankForm& form = Open();
  const TransferProfile before = parameters_.profile();
  form.TypeRank(kNom, "9");
  for (const char* text : {"0", ""}) {
    form.TypeRank(kSte1, text);
    EXPECT_FALSE(form.Confirm());
    ASSERT_FALSE(messages_.shown().empty());
    const SilentMessages::Entry& told = messages_.shown().back();
    EXPECT_EQ(told.style, MessageStyle::kError);
    EXPECT_EQ(told.title_id, 79);
    EXPECT_EQ(told.text, "Fiche incomplète : le champ d'index est obligatoire ");
  }
  EXPECT_EQ(messages_.shown().size(), 2u);
  EXPECT_EQ(parameters_.profile(), before);
  EXPECT_FALSE(files_.Exists(kParameters));
}

}  // namespace
}  // namespace carnetel
