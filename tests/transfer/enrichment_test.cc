#include "transfer/enrichment.h"

#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "selection/group_file.h"
#include "tests/transfer/capture_testing.h"
#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kCapture[] = "/capture.dat";
constexpr char kFailure[] =
    "Echec de l'enrichissement.\nVérifiez le format du fichier de capture par l'option Editer.";

class EnrichmentTest : public TransferTest {
 protected:
  EnrichmentTest() {
    files_.SetContents(kCapture, AsBytes(CaptureBytes({.company = "gamma", .town = "LILLE"}) +
                                         CaptureBytes({.company = "alpha"}) +
                                         CaptureBytes({.company = "\x82toile"})));
    OpenOn(files_);
  }
  void OpenOn(FileSystem& files) {
    directory_ =
        std::make_unique<Directory>(DirectoryServices{files, clock_, progress_}, Options());
    ASSERT_GE(directory_->OpenDirectory(), OpenResult::kOpened);
  }
  EnrichmentForm Form(EnrichmentMode mode, const std::string& file = kCapture,
                      const std::string& prefix = {}) {
    return EnrichmentForm(*directory_, messages_, mode, file, prefix);
  }
  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const SilentMessages::Entry& entry : messages_.shown()) {
      EXPECT_EQ(MessageTitle(entry.title_id), "Carnetel ");
      texts.push_back(entry.text);
    }
    return texts;
  }
  [[nodiscard]] std::vector<std::string> Companies() const {
    std::vector<std::string> names;
    for (uint32_t i = 0; i < CardCount(); ++i) names.push_back(Card(i).FieldText(kSte1).bytes());
    return names;
  }

  SilentMessages messages_;
  std::unique_ptr<Directory> directory_;
};

TEST_F(EnrichmentTest, TheSilentRunShowsAndAddsEveryRecord) {
  EnrichmentForm form = Form(EnrichmentMode::kSilent);
  EXPECT_TRUE(form.can_run());
  EXPECT_EQ(form.mode(), EnrichmentMode::kSilent);
  EXPECT_EQ(form.DirectoryText(), kMain);
  std::vector<std::string> shown;
  form.RunSilently([&shown](const std::string& company) {
    shown.push_back(company);
    return false;
  });
  EXPECT_THAT(shown, ElementsAre("GAMMA", "ALPHA", "ATOILE"));
  EXPECT_EQ(form.added(), 3);
  form.Finish();
  EXPECT_THAT(Texts(), ElementsAre("3 fiche(s) créée(s)"));
  EXPECT_EQ(messages_.shown()[0].style, MessageStyle::kInformation);
  EXPECT_FALSE(directory_->is_open());
  EXPECT_FALSE(form.failed());
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "GAMMA"}, {kVille, "LILLE"}}));
  EXPECT_THAT(Companies(), ElementsAre("GAMMA", "ALPHA", "ATOILE"));
}

TEST_F(EnrichmentTest, ACompanyIsShownInUtf8AndStoredAsOem) {
  files_.SetContents(kCapture, AsBytes(CaptureBytes({.company = "h\x82lice", .town = "\x85"})));
  EnrichmentForm form = Form(EnrichmentMode::kSilent);
  std::string shown;
  form.RunSilently([&shown](const std::string& company) {
    shown = company;
    return false;
  });
  form.Finish();
  EXPECT_EQ(shown, "HÉLICE");
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "H\x90LICE"}, {kVille, "\x85"}}));
}

TEST_F(EnrichmentTest, AStopAddsTheCardAtHandAndNoMore) {
  EnrichmentForm form = Form(EnrichmentMode::kSilent);
  int asked = 0;
  form.RunSilently([&asked](const std::string&) { return ++asked == 2; });
  form.Finish();
  EXPECT_EQ(asked, 2);
  EXPECT_THAT(Companies(), ElementsAre("GAMMA", "ALPHA"));
  EXPECT_THAT(Texts(), ElementsAre("2 fiche(s) créée(s)"));
}

// The address file tells the true count, once: no opening builds it anew, and marks and groups
// stay.
TEST_F(EnrichmentTest, MarksAndGroupsAreKept) {
  for (const char* company : {"BETA", "DELTA"}) {
    directory_->context().current = MakeCard({{kSte1, company}});
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(*directory_).Add(company[0] == 'D', &position), 0);
  }
  GroupFile(*directory_).Check();
  ASSERT_TRUE(GroupFile(*directory_).CreateGroup({OemText("Nord"), kMembersOnly}, {}, 0));
  EnrichmentForm form = Form(EnrichmentMode::kSilent);
  form.RunSilently([](const std::string&) { return false; });
  form.Finish();
  const std::string address = Contents("/dir/CLIENTS.ADR");
  EXPECT_EQ(LoadLe16(AsBytes(address), 96), 5);
  OpenOn(files_);
  EXPECT_EQ(Contents("/dir/CLIENTS.ADR"), address);
  EXPECT_EQ(directory_->marked_count(), 1);
  EXPECT_FALSE(GroupFile(*directory_).Check());
  const uint8_t slot = GroupFile(*directory_).Groups().at(0).slot();
  // ALPHA, ATOILE, BETA, DELTA, GAMMA
  for (uint32_t row = 0; row < 5; ++row) {
    EXPECT_EQ(directory_->address().Entry(row).bit(1), row == 3) << row;
    EXPECT_EQ(directory_->address().Entry(row).bit(slot), row == 3) << row;
  }
}

TEST_F(EnrichmentTest, AMissingOrShortFileIsAFailureWithoutCard) {
  files_.SetContents("/court.dat", AsBytes(std::string(155, 'A')));
  for (const char* file : {"/court.dat", "/rien.dat"}) {
    OpenOn(files_);
    EnrichmentForm form = Form(EnrichmentMode::kReview, file);
    EXPECT_FALSE(form.can_run());
    EXPECT_FALSE(form.Next());
    form.RunSilently([](const std::string&) { return false; });
    form.Finish();
    EXPECT_TRUE(form.failed());
    EXPECT_FALSE(directory_->is_open());
  }
  EXPECT_THAT(Texts(), ElementsAre(kFailure, kFailure));
  EXPECT_EQ(messages_.shown()[0].style, MessageStyle::kError);
  EXPECT_EQ(CardCount(), 0U);
}

TEST_F(EnrichmentTest, TheDirectoryIsNoCaptureFile) {
  EnrichmentForm form = Form(EnrichmentMode::kSilent, kMain);
  EXPECT_FALSE(form.can_run());
  form.Finish();
  EXPECT_THAT(Texts(), ElementsAre(kFailure));
}

TEST_F(EnrichmentTest, ThePrefixReachesTheCards) {
  files_.SetContents(kCapture, AsBytes(CaptureBytes({.company = "A", .first_number = "12"})));
  EnrichmentForm form = Form(EnrichmentMode::kSilent, kCapture, "0-");
  form.RunSilently([](const std::string&) { return false; });
  form.Finish();
  EXPECT_EQ(Card(0).FieldText(kTel1).bytes(), "0-12");
}

TEST_F(EnrichmentTest, AReviewAddsWhatTheUserKeeps) {
  EnrichmentForm form = Form(EnrichmentMode::kReview);
  ASSERT_TRUE(form.Next());
  EXPECT_EQ(form.card(), MakeCard({{kSte1, "GAMMA"}, {kVille, "LILLE"}}));
  EXPECT_EQ(form.Company(), "GAMMA");
  form.Add();
  EXPECT_EQ(form.added(), 1);
  ASSERT_TRUE(form.Next());
  EXPECT_EQ(form.card(), MakeCard({{kSte1, "ALPHA"}}));
  ASSERT_TRUE(form.Next());
  form.Add();
  EXPECT_FALSE(form.Next());
  form.Finish();
  EXPECT_THAT(Companies(), ElementsAre("GAMMA", "ATOILE"));
  EXPECT_THAT(Texts(), ElementsAre("2 fiche(s) créée(s)"));
}

TEST_F(EnrichmentTest, AReviewThatKeepsNothingEndsWithoutAWord) {
  EnrichmentForm form = Form(EnrichmentMode::kReview);
  while (form.Next()) continue;
  form.Finish();
  EXPECT_THAT(Texts(), IsEmpty());
  EXPECT_EQ(CardCount(), 0U);
}

TEST_F(EnrichmentTest, AnEditedCardIsAddedAsAFormSavesIt) {
  EnrichmentForm form = Form(EnrichmentMode::kEdit);
  ASSERT_TRUE(form.Next());
  CardRecord edited = form.card();
  edited.SetField(kSte1, OemText(" -gamma"));
  edited.SetField(kNom, OemText(" Dupont"));
  EXPECT_TRUE(form.AddEdited(edited));
  form.Finish();
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "gamma"}, {kNom, "Dupont"}, {kVille, "LILLE"}}));
  EXPECT_THAT(Texts(), ElementsAre("1 fiche(s) créée(s)"));
}

TEST_F(EnrichmentTest, AnEditedCardNeedsACompanyOrASurname) {
  EnrichmentForm form = Form(EnrichmentMode::kEdit);
  ASSERT_TRUE(form.Next());
  EXPECT_FALSE(form.AddEdited(MakeCard({{kVille, "LILLE"}})));
  EXPECT_FALSE(form.AddEdited(MakeCard({{kSte1, " - "}})));
  EXPECT_THAT(Texts(), ElementsAre("Fiche incomplète : le champ d'index est obligatoire ",
                                   "Fiche incomplète : le champ d'index est obligatoire "));
  EXPECT_TRUE(form.AddEdited(MakeCard({{kNom, "Dupont"}})));
  EXPECT_EQ(form.added(), 1);
  form.Finish();
  EXPECT_EQ(CardCount(), 1U);
}

TEST_F(EnrichmentTest, ACardThatCannotBeAddedDoesNotCountAndStopsNothing) {
  directory_->CloseDirectory();
  std::vector<std::byte> main = files_.Contents(kMain);
  main.resize(kCardSize * size_t{kMaxCards}, std::byte{'M'});
  files_.SetContents(kMain, main);
  OpenOn(files_);
  EnrichmentForm form = Form(EnrichmentMode::kSilent);
  int shown = 0;
  form.RunSilently([&shown](const std::string&) { return ++shown == 0; });
  EXPECT_EQ(shown, 3);
  EXPECT_EQ(form.added(), 1);
  EXPECT_THAT(Texts(), IsEmpty());
  form.Finish();
  EXPECT_TRUE(form.failed());
  EXPECT_THAT(Texts(), ElementsAre("1 fiche(s) créée(s)"));
  EXPECT_EQ(CardCount(), kMaxCards);
}

TEST_F(EnrichmentTest, ADiskThatTakesNothingMoreIsAFailure) {
  directory_->CloseDirectory();
  for (const EnrichmentMode mode : {EnrichmentMode::kSilent, EnrichmentMode::kReview}) {
    FaultFileSystem disk(files_);
    OpenOn(disk);
    disk.FillDisk();
    EnrichmentForm form = Form(mode);
    if (mode == EnrichmentMode::kSilent) {
      form.RunSilently([](const std::string&) { return false; });
    } else {
      ASSERT_TRUE(form.Next());
      form.Add();
    }
    EXPECT_EQ(form.added(), 0);
    form.Finish();
    directory_.reset();
  }
  EXPECT_THAT(Texts(), ElementsAre(kFailure, kFailure));
  EXPECT_EQ(CardCount(), 0U);
}

}  // namespace
}  // namespace carnetel
