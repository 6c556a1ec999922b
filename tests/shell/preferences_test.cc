// What "Ok" in the preferences does.
#include "shell/preferences.h"

#include <functional>

#include "selection/group_list.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

// Shows no dialog; remembers when the box that asks for patience came and went.
class PatienceDialogs : public DialogHost {
 public:
  bool RunFilePicker(FilePicker& /*picker*/) override { return false; }
  bool RunDescription(DescriptionForm& /*form*/) override { return false; }
  bool RunPreferences(PreferencesForm& /*form*/) override { return false; }
  InvalidFileEnd RunInvalidFile(InvalidFileForm& /*form*/) override {
    return InvalidFileEnd::kClosed;
  }
  void ShowAbout() override {}
  void ShowPatience(bool is_shown) override {
    patience.push_back(is_shown);
    if (on_patience) on_patience();
  }
  void ShowHelp(int /*topic*/) override {}

  std::vector<bool> patience;
  std::function<void()> on_patience;
};

using Patience = std::vector<bool>;
using Told = QueuedMessages::Entry;
using Names = std::vector<std::string>;

class PreferencesTest : public WindowFixture {
 protected:
  void TearDown() override { session.reset(); }
  // Three cards whose names are in the reverse order of their companies, and the run on them.
  // Faults of the disk are those of the directory: the profile lies on a sound one.
  void Open(const StartupRequest& request = {}) {
    Build({CardWith({{kSte1, "ALPHA"}, {kNom, "Zola"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "Martin"}}),
           CardWith({{kSte1, "GAMMA"}, {kNom, "Adam"}})});
    StartOn(request);
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
  }
  void StartOn(const StartupRequest& request = {}) {
    session = std::make_unique<Session>(
        SessionServices{files, clock, progress, messages, sound_profile}, request, home);
    session->Start();
  }
  PreferencesForm Form() { return {session->settings(), session->request().caller_window != 0}; }
  PreferencesResult Ok(const PreferencesForm& changed) {
    return ApplyPreferences(*session, dialogs, changed);
  }
  PreferencesResult ChooseIndex(int key_field) {
    PreferencesForm changed = Form();
    changed.set_key_field(key_field);
    return Ok(changed);
  }
  Directory& directory() { return *session->directory(); }
  std::string FieldAt(uint32_t row, int field) {
    CardRecord card;
    EXPECT_TRUE(directory().main().ReadCard(directory().address().CardOffsetAt(row), card));
    return card.FieldText(field).bytes();
  }
  Names Companies() {
    Names companies;
    for (uint32_t row = 0; row < directory().address().entry_count(); ++row) {
      companies.push_back(FieldAt(row, kSte1));
    }
    return companies;
  }
  void SetBit(uint32_t row, uint8_t bit) {
    EntrySlot entry = directory().address().Entry(row);
    entry.set_bit(bit, true);
    directory().address().SetEntry(row, entry);
  }
  void Mark(uint32_t row) {
    SetBit(row, directory().selection_bit());
    directory().set_marked_count(directory().marked_count() + 1);
  }
  bool HasBit(uint32_t row, uint8_t bit) { return directory().address().Entry(row).bit(bit); }
  // Every file of the directory as it is on the disk.
  std::vector<std::vector<std::byte>> FamilyBytes() {
    std::vector<std::vector<std::byte>> bytes;
    for (const std::string_view extension : kFamilyExtensions) {
      bytes.push_back(memory.Contents(DefaultPath() + std::string(extension)));
    }
    return bytes;
  }
  void ExpectNothingShown() {
    EXPECT_EQ(dialogs.patience, Patience());
    EXPECT_EQ(progress.total, 0u);
    EXPECT_TRUE(messages.TakeShown().empty());
  }

  UserProfile sound_profile{memory, "/profile.ini"};
  PatienceDialogs dialogs;
};

TEST_F(PreferencesTest, UnchangedWritesAllSixSettingsAndAnswersNothing) {
  Open();
  EXPECT_EQ(Profile("Balloons"), "(missing)");
  const auto bytes = FamilyBytes();
  EXPECT_EQ(Ok(Form()), PreferencesResult::kNothing);
  EXPECT_EQ(AsChars(memory.Contents("/profile.ini")),
            "[PhoneBook-DROV]\nIdindex=0\nShowRefCor=1\nStyleAffList=1\nStyleAffSte=0\n"
            "DebutSaisie=0\nBalloons=1\n");
  EXPECT_EQ(FamilyBytes(), bytes);
  ExpectNothingShown();
}

TEST_F(PreferencesTest, AllChoicesReachSettingsAndProfile) {
  Open();
  PreferencesForm changed = Form();
  changed.set_key_field(kNom);
  changed.set_style_aff_list(3);
  changed.set_shows_references(false);
  changed.set_starts_at_first(true);
  changed.set_balloons(false);
  EXPECT_EQ(Ok(changed), PreferencesResult::kIndexChanged);
  EXPECT_EQ(AsChars(memory.Contents("/profile.ini")),
            "[PhoneBook-DROV]\nIdindex=10\nShowRefCor=0\nStyleAffList=3\nStyleAffSte=0\n"
            "DebutSaisie=1\nBalloons=0\n");
  EXPECT_EQ(session->settings().key_field, kNom);
  EXPECT_EQ(session->settings().Labels().active_index, 2);
  EXPECT_FALSE(session->settings().shows_references);
  EXPECT_TRUE(session->settings().starts_at_first);
  EXPECT_FALSE(session->settings().balloons);
}

TEST_F(PreferencesTest, ChangingOnlyTheStyleRebuildsNothing) {
  Open();
  const auto bytes = FamilyBytes();
  const int changes = files.changes();
  PreferencesForm changed = Form();
  changed.set_style_aff_ste(2);
  EXPECT_EQ(Ok(changed), PreferencesResult::kStyleChanged);
  EXPECT_EQ(Profile("StyleAffSte"), "2");
  EXPECT_EQ(session->settings().style_aff_ste, 2);
  EXPECT_EQ(FamilyBytes(), bytes);
  EXPECT_EQ(files.changes(), changes);
  ExpectNothingShown();
}

TEST_F(PreferencesTest, TheStyleOfTheNameIndexCountsWithTheNameIndex) {
  SetProfile("Idindex", "10");
  Open();
  PreferencesForm changed = Form();
  changed.set_style_aff_ste(2);
  EXPECT_EQ(Ok(changed), PreferencesResult::kNothing);
  EXPECT_EQ(Profile("StyleAffSte"), "0");
  changed = Form();
  changed.set_style_aff_list(0);
  EXPECT_EQ(Ok(changed), PreferencesResult::kStyleChanged);
  EXPECT_EQ(Profile("StyleAffList"), "0");
  EXPECT_EQ(Names({"GAMMA", "BETA", "ALPHA"}), Companies());
}

TEST_F(PreferencesTest, ZoneStartAndTooltipsAnswerNothing) {
  Open();
  const auto bytes = FamilyBytes();
  PreferencesForm changed = Form();
  changed.set_shows_references(false);
  changed.set_starts_at_first(true);
  changed.set_balloons(false);
  EXPECT_EQ(Ok(changed), PreferencesResult::kNothing);
  EXPECT_EQ(Profile("ShowRefCor"), "0");
  EXPECT_EQ(Profile("DebutSaisie"), "1");
  EXPECT_EQ(Profile("Balloons"), "0");
  EXPECT_EQ(FamilyBytes(), bytes);
}

TEST_F(PreferencesTest, AStyleThatDoesNotExistIsKept) {
  SetProfile("StyleAffSte", "9");
  Open();
  EXPECT_EQ(Ok(Form()), PreferencesResult::kNothing);
  EXPECT_EQ(Profile("StyleAffSte"), "9");
  PreferencesForm changed = Form();
  changed.set_style_aff_ste(0);
  EXPECT_EQ(Ok(changed), PreferencesResult::kStyleChanged);
  EXPECT_EQ(Profile("StyleAffSte"), "0");
}

TEST_F(PreferencesTest, AnotherIndexOrdersTheListAndTheLetters) {
  Open();
  EXPECT_EQ(ChooseIndex(kNom), PreferencesResult::kIndexChanged);
  EXPECT_EQ(directory().key_field(), kNom);
  EXPECT_EQ(directory().active_index_number(), 2);
  EXPECT_EQ(Companies(), Names({"GAMMA", "BETA", "ALPHA"}));
  EXPECT_EQ(directory().address().letters().Start('Z'), EntryPosition(2));
  EXPECT_TRUE(messages.TakeShown().empty());
  // On the disk too, and back.
  EXPECT_EQ(Saved(kNom)[0].card.FieldText(kNom).bytes(), "Adam");
  EXPECT_EQ(ChooseIndex(kSte1), PreferencesResult::kIndexChanged);
  EXPECT_EQ(Profile("Idindex"), "0");
  EXPECT_EQ(directory().active_index_number(), 1);
  EXPECT_EQ(Companies(), Names({"ALPHA", "BETA", "GAMMA"}));
}

TEST_F(PreferencesTest, AnotherIndexAndAnotherStyleIsAChangeOfIndex) {
  Open();
  PreferencesForm changed = Form();
  changed.set_key_field(kNom);
  changed.set_style_aff_list(2);
  EXPECT_EQ(Ok(changed), PreferencesResult::kIndexChanged);
  EXPECT_EQ(Profile("StyleAffList"), "2");
}

TEST_F(PreferencesTest, MarksGroupsAndRowsStayOverAChangeOfIndex) {
  constexpr uint8_t kGroupSlot = 4;
  Open();
  Mark(0);
  Mark(1);
  SetBit(2, kGroupSlot);
  directory().address().header().set_current_row(2);
  directory().address().header().set_top_row(1);
  std::string groups(kGroupHeaderSize + 2 * kGroupRowSize, '\0');
  groups[kGroupCountOffset] = 2;
  groups[kGroupRowSizeOffset] = kGroupRowSize;
  groups.replace(kGroupHeaderSize + kGroupRowSize, 4, "Lyon");
  groups[kGroupHeaderSize + kGroupRowSize + kGroupSlotOffset] = kGroupSlot;
  memory.SetContents(DefaultPath() + ".GRP", AsBytes(groups));
  const auto criteria = memory.Contents(DefaultPath() + ".CRT");
  ASSERT_FALSE(criteria.empty());

  EXPECT_EQ(ChooseIndex(kNom), PreferencesResult::kIndexChanged);

  EXPECT_EQ(Companies(), Names({"GAMMA", "BETA", "ALPHA"}));
  EXPECT_EQ(directory().marked_count(), 2);
  EXPECT_FALSE(HasBit(0, directory().selection_bit()));
  EXPECT_TRUE(HasBit(1, directory().selection_bit()));
  EXPECT_TRUE(HasBit(2, directory().selection_bit()));
  EXPECT_TRUE(HasBit(0, kGroupSlot));
  EXPECT_FALSE(HasBit(2, kGroupSlot));
  EXPECT_EQ(directory().address().header().current_row(), 2);
  EXPECT_EQ(directory().address().header().top_row(), 1);
  EXPECT_EQ(AsChars(memory.Contents(DefaultPath() + ".GRP")), groups);
  ASSERT_EQ(ReadGroups(files, DefaultPath() + ".GRP").size(), 1u);
  EXPECT_EQ(memory.Contents(DefaultPath() + ".CRT"), criteria);
  // What the next opening finds.
  const auto saved = Saved(kNom);
  ASSERT_EQ(saved.size(), 3u);
  EXPECT_FALSE(saved[0].marked());
  EXPECT_TRUE(saved[1].marked());
  EXPECT_TRUE(saved[2].marked());
}

TEST_F(PreferencesTest, PatienceIsAskedForOnceTheProgressHasGone) {
  Open();
  Mark(0);
  std::vector<int32_t> marks;
  std::vector<bool> progress_open;
  std::vector<std::string> index;
  dialogs.on_patience = [&] {
    marks.push_back(directory().marked_count());
    progress_open.push_back(progress.open);
    index.push_back(Profile("Idindex"));
  };
  ChooseIndex(kNom);
  EXPECT_EQ(dialogs.patience, Patience({true, false}));
  EXPECT_EQ(progress.form, ProgressForm::kBuildIndex);
  EXPECT_EQ(progress.total, 3u);
  EXPECT_EQ(progress_open, std::vector<bool>({false, false}));
  // The marks are brought along while the box is there; the settings have been written before.
  EXPECT_EQ(marks, std::vector<int32_t>({0, 1}));
  EXPECT_EQ(index, Names({"10", "10"}));
}

TEST_F(PreferencesTest, WithoutADirectoryTheSettingsAreKept) {
  StartOn();
  EXPECT_EQ(session->directory(), nullptr);
  EXPECT_EQ(ChooseIndex(kNom), PreferencesResult::kIndexChanged);
  EXPECT_EQ(Profile("Idindex"), "10");
  EXPECT_EQ(session->settings().key_field, kNom);
  EXPECT_FALSE(memory.Exists(DefaultPath() + ".ADR"));
  ExpectNothingShown();
}

TEST_F(PreferencesTest, AnAddressFileThatCannotBeMadeIsToldAndMadeAtTheNextOpening) {
  Open();
  files.StopAfter(0);
  EXPECT_EQ(ChooseIndex(kNom), PreferencesResult::kIndexChanged);
  const Told told = {MessageStyle::kError, 79,
                     "Accès au fichier " + DefaultPath() + ".ADR impossible"};
  EXPECT_EQ(messages.TakeShown(), std::vector<Told>{told});
  EXPECT_EQ(dialogs.patience, Patience());
  EXPECT_EQ(Profile("Idindex"), "10");
  files.Heal();
  ASSERT_TRUE(session->OpenDirectoryChecked(DefaultPath(), false));
  EXPECT_EQ(Companies(), Names({"GAMMA", "BETA", "ALPHA"}));
}

TEST_F(PreferencesTest, WithACallerTheSuitesTooltipsAreLeftAlone) {
  StartupRequest request;
  request.caller_window = 7;
  sound_profile.Write("ApplDROV", "Balloons", "0");
  SetProfile("Balloons", "1");
  Open(request);
  EXPECT_FALSE(Form().balloons_enabled());
  PreferencesForm changed = Form();
  changed.set_balloons(true);
  changed.set_starts_at_first(true);
  EXPECT_EQ(Ok(changed), PreferencesResult::kNothing);
  EXPECT_FALSE(session->settings().balloons);
  EXPECT_EQ(Profile("Balloons"), "1");
  EXPECT_EQ(sound_profile.Text("ApplDROV", "Balloons", ""), "0");
  EXPECT_EQ(Profile("DebutSaisie"), "1");
}

TEST_F(PreferencesTest, ADirectoryNamedDirectlyKeepsTheChoiceForTheRunAlone) {
  Build(home + "direct",
        {CardWith({{kSte1, "A"}, {kNom, "Z"}}), CardWith({{kSte1, "B"}, {kNom, "Y"}})});
  StartupRequest request;
  request.direct_open = true;
  request.direct_path = home + "direct";
  StartOn(request);
  ASSERT_TRUE(session->OpenAtStart(&fell_back));
  EXPECT_EQ(ChooseIndex(kNom), PreferencesResult::kIndexChanged);
  EXPECT_EQ(Companies(), Names({"B", "A"}));
  EXPECT_EQ(session->settings().key_field, kNom);
  EXPECT_EQ(Profile("Idindex"), "(missing)");
}

TEST(PreferencesResult, HasTheNumbersOfTheDialog) {
  EXPECT_EQ(static_cast<int>(PreferencesResult::kNothing), 0);
  EXPECT_EQ(static_cast<int>(PreferencesResult::kIndexChanged), 1);
  EXPECT_EQ(static_cast<int>(PreferencesResult::kStyleChanged), 2);
}

}  // namespace
}  // namespace carnetel
