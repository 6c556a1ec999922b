#include "shell/invalid_file.h"

#include <unistd.h>

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

// Three cards behind a header that says nothing; the 100 bytes of a fourth one do not count.
std::string ForeignFile() {
  std::string bytes(768, '?');
  for (const char* company : {"ZORRO", "ALPHA", "MARTIN"}) {
    const CardRecord card = CardWith({{kSte1, company}, {kNom, "Durand"}});
    bytes += AsChars(card.bytes());
  }
  return bytes + std::string(100, 'x');
}

class InvalidFile : public WindowFixture {
 protected:
  // Starts on a default directory of these bytes: CARN001 comes in its place.
  void StartOn(const std::string& contents, const std::string& name = "CARNETEL.DAN") {
    memory.SetContents(home + name, AsBytes(contents));
    StartSession();
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
    ASSERT_EQ(session->current_path(), home + "CARN001");
  }
  // Of a file that a test takes away nothing leads to the guard.
  void TearDown() override {
    session.reset();
    ::unlink(DirectoryGuard::LockFilePath(home + "CARNETEL.ADR").c_str());
  }
  InvalidFileForm Form() {
    return {*session, [this] {
              ++destructions;
              if (while_destroying) while_destroying();
            }};
  }
  std::string Contents(const std::string& name) const {
    return std::string(AsChars(memory.Contents(home + name)));
  }

  int destructions = 0;
  std::function<void()> while_destroying;
};

TEST_F(InvalidFile, OffersToRecoverItFirst) {
  StartOn("no directory");
  const InvalidFileForm form = Form();
  EXPECT_EQ(form.path(), home + "CARNETEL.DAN");
  EXPECT_TRUE(form.may_recover());
  EXPECT_EQ(form.choice(), InvalidFileChoice::kRecover);
}

TEST_F(InvalidFile, RecoversEveryCardMarked) {
  StartOn(ForeignFile());
  EXPECT_EQ(Form().Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(progress.form, ProgressForm::kTransfer);
  EXPECT_EQ(progress.total, 3u);
  EXPECT_EQ(progress.steps, (std::vector<std::string>{"ZORRO", "ALPHA", "MARTIN"}));
  EXPECT_FALSE(progress.open);
  EXPECT_EQ(session->directory()->marked_count(), 3);
  const std::vector<SavedCard> saved = Saved(home + "CARN001");
  ASSERT_EQ(saved.size(), 3u);
  EXPECT_EQ(saved[0].card.FieldText(kSte1).bytes(), "ALPHA");
  EXPECT_EQ(saved[2].card.FieldText(kSte1).bytes(), "ZORRO");
  for (const SavedCard& card : saved) EXPECT_TRUE(card.marked());
  EXPECT_EQ(Contents("CARNETEL.DAN"), ForeignFile());
  EXPECT_EQ(destructions, 0);
}

TEST_F(InvalidFile, RecoversAFileWhoseNameIsInSmallLetters) {
  StartOn(ForeignFile(), "carnetel.dan");
  InvalidFileForm form = Form();
  EXPECT_TRUE(form.may_recover());
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(Saved(home + "CARN001").size(), 3u);
}

TEST_F(InvalidFile, AStoppedRecoveryKeepsWhatItHas) {
  StartOn(ForeignFile());
  progress.stop_at = 2;
  EXPECT_EQ(Form().Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(Saved(home + "CARN001").size(), 2u);
}

TEST_F(InvalidFile, AFileThatCannotBeReadEndsTheRecovery) {
  StartOn(ForeignFile());
  InvalidFileForm form = Form();
  memory.Remove(home + "CARNETEL.DAN");
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(Saved(home + "CARN001").size(), 0u);
  EXPECT_EQ(messages.TakeShown(), std::vector<QueuedMessages::Entry>());
}

TEST_F(InvalidFile, CreateAndLoadEndAndTouchNothing) {
  StartOn(ForeignFile());
  const int changes = files.changes();
  InvalidFileForm form = Form();
  form.set_choice(InvalidFileChoice::kCreate);
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kCreate);
  form.set_choice(InvalidFileChoice::kLoad);
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kLoad);
  EXPECT_EQ(files.changes(), changes);
  EXPECT_EQ(destructions, 0);
  EXPECT_TRUE(progress.steps.empty());
}

TEST_F(InvalidFile, StaysAfterADestruction) {
  StartOn(ForeignFile());
  InvalidFileForm form = Form();
  form.set_choice(InvalidFileChoice::kDestroy);
  while_destroying = [this] { memory.Remove(home + "CARNETEL.DAN"); };
  EXPECT_EQ(form.Confirm(), std::nullopt);
  EXPECT_EQ(destructions, 1);
  EXPECT_EQ(form.path(), "");
  EXPECT_FALSE(form.may_recover());
  EXPECT_EQ(form.choice(), InvalidFileChoice::kCreate);
  form.set_choice(InvalidFileChoice::kRecover);
  EXPECT_EQ(form.choice(), InvalidFileChoice::kCreate);
  form.set_choice(InvalidFileChoice::kLoad);
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kLoad);
}

TEST_F(InvalidFile, ADestructionThatSparedItChangesNothing) {
  StartOn(ForeignFile());
  InvalidFileForm form = Form();
  form.set_choice(InvalidFileChoice::kDestroy);
  EXPECT_EQ(form.Confirm(), std::nullopt);
  EXPECT_EQ(destructions, 1);
  EXPECT_EQ(form.path(), home + "CARNETEL.DAN");
  EXPECT_TRUE(form.may_recover());
  EXPECT_EQ(form.choice(), InvalidFileChoice::kDestroy);
  EXPECT_EQ(form.Confirm(), std::nullopt);
  EXPECT_EQ(destructions, 2);
}

TEST_F(InvalidFile, ThereIsNothingToRecoverWithoutAFile) {
  StartOn(ForeignFile());
  memory.Remove(home + "CARNETEL.DAN");
  const InvalidFileForm gone = Form();
  EXPECT_EQ(gone.path(), "");
  EXPECT_FALSE(gone.may_recover());
  EXPECT_EQ(gone.choice(), InvalidFileChoice::kCreate);
}

TEST_F(InvalidFile, ThereIsNothingToRecoverAfterAGoodStart) {
  StartSession();
  ASSERT_TRUE(session->OpenAtStart(&fell_back));
  const InvalidFileForm form = Form();
  EXPECT_EQ(form.path(), "");
  EXPECT_FALSE(form.may_recover());
  EXPECT_EQ(form.choice(), InvalidFileChoice::kCreate);
}

TEST_F(InvalidFile, RecoversIntoTheDirectoryThatADestructionLeftOpen) {
  StartOn(ForeignFile());
  InvalidFileForm form = Form();
  form.set_choice(InvalidFileChoice::kDestroy);
  while_destroying = [this] { EXPECT_TRUE(session->OpenDirectoryChecked(home + "fresh", false)); };
  EXPECT_EQ(form.Confirm(), std::nullopt);
  form.set_choice(InvalidFileChoice::kRecover);
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(Saved(home + "fresh").size(), 3u);
  EXPECT_EQ(Saved(home + "CARN001").size(), 0u);
}

TEST_F(InvalidFile, ARecoveryWithoutAnOpenDirectoryAddsNothing) {
  StartOn(ForeignFile());
  InvalidFileForm form = Form();
  session->CloseDirectory();
  EXPECT_EQ(form.Confirm(), InvalidFileEnd::kRecovered);
  EXPECT_EQ(Contents("CARNETEL.DAN"), ForeignFile());
  EXPECT_TRUE(progress.steps.empty());
}

}  // namespace
}  // namespace carnetel
