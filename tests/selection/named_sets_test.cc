// The rules of the dialog that keeps sets under names.
#include "selection/named_sets.h"

#include <gtest/gtest.h>

#include "selection/criteria_form.h"
#include "tests/selection/criteria_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

// Keeps what it was asked to do; does it unless it is to fail.
class FakeStore : public SetStore {
 public:
  [[nodiscard]] Texts Names() override { return names_; }
  [[nodiscard]] bool HasContent() const override { return has_content_; }
  bool Load(size_t position) override { return Did("load " + std::to_string(position)); }
  bool Add(const std::string& name) override { return Did("add " + name); }
  bool Replace(size_t position, const std::string& name) override {
    return Did("replace " + std::to_string(position) + ' ' + name);
  }
  bool Rename(size_t position, const std::string& name) override {
    return Did("rename " + std::to_string(position) + ' ' + name);
  }
  bool Delete(size_t position) override { return Did("delete " + std::to_string(position)); }

  Texts names_ = {"A", "B", "C"};
  bool has_content_ = true;
  bool fails_ = false;
  Texts did_;

 private:
  bool Did(const std::string& what) {
    did_.push_back(what);
    return !fails_;
  }
};

using Outcome = NamedSetsForm::Outcome;
using Buttons = NamedSetsForm::Buttons;

class NamedSetsTest : public testing::Test {
 protected:
  NamedSetsForm Form(MessageForm& messages) {
    return {store_, messages, [this](const std::string& offered) {
              offered_.push_back(offered);
              return answer_;
            }};
  }
  NamedSetsForm Form() { return Form(ok_); }
  static void ExpectMessage(const SilentMessages& messages, MessageStyle style, int title_id,
                            const std::string& text) {
    ASSERT_EQ(messages.shown().size(), 1U);
    EXPECT_EQ(messages.shown()[0].style, style);
    EXPECT_EQ(messages.shown()[0].title_id, title_id);
    EXPECT_EQ(messages.shown()[0].text, text);
  }
  void ExpectNothingDone() {
    EXPECT_EQ(store_.did_, Texts{});
    EXPECT_EQ(offered_, Texts{});
  }

  FakeStore store_;
  SilentMessages ok_{MessageButton::kOk};
  SilentMessages cancel_{MessageButton::kCancel};
  std::optional<std::string> answer_;
  Texts offered_;
};

TEST_F(NamedSetsTest, TheFirstSetIsSelected) {
  EXPECT_EQ(Form().names(), (Texts{"A", "B", "C"}));
  EXPECT_EQ(Form().selected(), 0);
  store_.names_.clear();
  EXPECT_EQ(Form().selected(), -1);
}

TEST_F(NamedSetsTest, ButtonsFollowTheListAndTheContent) {
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{true, true, true, true, true}));
  store_.has_content_ = false;
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{true, false, false, true, true}));
  store_.names_.clear();
  EXPECT_EQ(Form().EnabledButtons(), Buttons{});
  store_.has_content_ = true;
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{false, true, false, false, false}));
}

TEST_F(NamedSetsTest, LoadingAsksAndEnds) {
  NamedSetsForm form = Form();
  form.Select(1);
  EXPECT_EQ(form.Load(), Outcome::kLoaded);
  ExpectMessage(ok_, MessageStyle::kOkCancel, 80, "Charger \"B\" en mémoire ?");
  EXPECT_EQ(store_.did_, Texts{"load 1"});
}

TEST_F(NamedSetsTest, LoadingEndsTheDialogWhateverCameOfIt) {
  store_.fails_ = true;
  EXPECT_EQ(Form().Load(), Outcome::kLoaded);
}

TEST_F(NamedSetsTest, LoadingMayBeCancelled) {
  EXPECT_EQ(Form(cancel_).Load(), Outcome::kStays);
  ExpectNothingDone();
}

TEST_F(NamedSetsTest, WithoutASelectionLoadingAsksFirstAndBeepsThen) {
  NamedSetsForm form = Form();
  form.Select(-1);
  EXPECT_EQ(form.Load(), Outcome::kBeeps);
  ExpectMessage(ok_, MessageStyle::kOkCancel, 80, "Charger \"\" en mémoire ?");
  ExpectNothingDone();
  NamedSetsForm cancelled = Form(cancel_);
  cancelled.Select(-1);
  EXPECT_EQ(cancelled.Load(), Outcome::kStays);
}

TEST_F(NamedSetsTest, AddingAppendsAndSelectsTheName) {
  answer_ = "D";
  NamedSetsForm form = Form();
  EXPECT_EQ(form.Add(), Outcome::kStays);
  EXPECT_EQ(offered_, Texts{""});
  EXPECT_EQ(store_.did_, Texts{"add D"});
  EXPECT_EQ(form.names(), (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(form.selected(), 3);
  EXPECT_TRUE(ok_.shown().empty());
}

TEST_F(NamedSetsTest, AddingANameThatIsThereMakesATwin) {
  answer_ = "A";
  NamedSetsForm form = Form();
  form.Add();
  EXPECT_EQ(form.names(), (Texts{"A", "B", "C", "A"}));
}

TEST_F(NamedSetsTest, AddingThatFailsLeavesTheList) {
  answer_ = "D";
  store_.fails_ = true;
  NamedSetsForm form = Form();
  EXPECT_EQ(form.Add(), Outcome::kStays);
  EXPECT_EQ(form.names(), (Texts{"A", "B", "C"}));
  EXPECT_EQ(form.selected(), 0);
}

TEST_F(NamedSetsTest, ANameLeftOrEmptiedAddsReplacesAndRenamesNothing) {
  for (const std::optional<std::string>& name :
       {std::optional<std::string>(), std::optional<std::string>("")}) {
    answer_ = name;
    NamedSetsForm form = Form();
    EXPECT_EQ(form.Add(), Outcome::kStays);
    EXPECT_EQ(form.Replace(), Outcome::kStays);
    EXPECT_EQ(form.Rename(), Outcome::kStays);
    EXPECT_EQ(form.names(), (Texts{"A", "B", "C"}));
    EXPECT_EQ(store_.did_, Texts{});
  }
}

TEST_F(NamedSetsTest, WithoutContentAddingTells) {
  store_.has_content_ = false;
  EXPECT_EQ(Form().Add(), Outcome::kStays);
  ExpectMessage(ok_, MessageStyle::kError, 79, "Aucun critère n'a été crée !");
  ExpectNothingDone();
}

TEST_F(NamedSetsTest, WithoutContentReplacingTellsBeforeItLooksForASelection) {
  store_.has_content_ = false;
  NamedSetsForm form = Form();
  form.Select(-1);
  EXPECT_EQ(form.Replace(), Outcome::kStays);
  ExpectMessage(ok_, MessageStyle::kError, 79, "Aucun critère n'a été crée !");
  ExpectNothingDone();
}

TEST_F(NamedSetsTest, ReplacingOffersTheNameAndChangesTheEntry) {
  answer_ = "new";
  NamedSetsForm form = Form();
  form.Select(2);
  EXPECT_EQ(form.Replace(), Outcome::kStays);
  EXPECT_EQ(offered_, Texts{"C"});
  EXPECT_EQ(store_.did_, Texts{"replace 2 new"});
  EXPECT_EQ(form.names(), (Texts{"A", "B", "new"}));
  EXPECT_EQ(form.selected(), 2);
}

TEST_F(NamedSetsTest, RenamingNeedsNoContent) {
  store_.has_content_ = false;
  answer_ = "new";
  NamedSetsForm form = Form();
  form.Select(1);
  EXPECT_EQ(form.Rename(), Outcome::kStays);
  EXPECT_TRUE(ok_.shown().empty());
  EXPECT_EQ(offered_, Texts{"B"});
  EXPECT_EQ(store_.did_, Texts{"rename 1 new"});
  EXPECT_EQ(form.names(), (Texts{"A", "new", "C"}));
}

TEST_F(NamedSetsTest, ChangesThatFailLeaveTheList) {
  answer_ = "new";
  store_.fails_ = true;
  NamedSetsForm form = Form();
  EXPECT_EQ(form.Replace(), Outcome::kStays);
  EXPECT_EQ(form.Rename(), Outcome::kStays);
  EXPECT_EQ(form.names(), (Texts{"A", "B", "C"}));
}

TEST_F(NamedSetsTest, WithoutASelectionTheOthersBeep) {
  for (const int position : {-1, 3}) {
    NamedSetsForm form = Form();
    form.Select(position);
    EXPECT_EQ(form.Replace(), Outcome::kBeeps);
    EXPECT_EQ(form.Rename(), Outcome::kBeeps);
    EXPECT_EQ(form.Delete(), Outcome::kBeeps);
  }
  EXPECT_TRUE(ok_.shown().empty());
  ExpectNothingDone();
}

TEST_F(NamedSetsTest, DeletingAsks) {
  NamedSetsForm form = Form(cancel_);
  form.Select(1);
  EXPECT_EQ(form.Delete(), Outcome::kStays);
  ExpectMessage(cancel_, MessageStyle::kOkCancel, 80, "Le jeu \"B\" va être supprimé...");
  ExpectNothingDone();
  EXPECT_EQ(form.names(), (Texts{"A", "B", "C"}));
}

TEST_F(NamedSetsTest, AfterADeleteTheSamePlaceIsSelectedOrTheNewLastOne) {
  NamedSetsForm form = Form();
  form.Select(1);
  form.Delete();
  EXPECT_EQ(store_.did_, Texts{"delete 1"});
  EXPECT_EQ(form.names(), (Texts{"A", "C"}));
  EXPECT_EQ(form.selected(), 1);
  form.Delete();
  EXPECT_EQ(form.names(), Texts{"A"});
  EXPECT_EQ(form.selected(), 0);
}

TEST_F(NamedSetsTest, DeletingTheOnlySetDisablesTheButtons) {
  store_.names_ = {"A"};
  NamedSetsForm form = Form();
  form.Delete();
  EXPECT_TRUE(form.names().empty());
  EXPECT_EQ(form.EnabledButtons(), (Buttons{false, true, false, false, false}));
  EXPECT_EQ(form.Delete(), Outcome::kBeeps);
}

TEST_F(NamedSetsTest, ADeleteThatFailsShowsWhatIsThereNow) {
  NamedSetsForm form = Form();
  form.Select(2);
  store_.fails_ = true;
  store_.names_ = {"A"};
  EXPECT_EQ(form.Delete(), Outcome::kStays);
  EXPECT_EQ(form.names(), Texts{"A"});
  EXPECT_EQ(form.selected(), 0);
}

// On a real criteria file, whose disk fails on the second record that moves down.
TEST(NamedSetsOnAFileTest, ADeleteThatFailsHalfWayShowsTheSetsThatAreLeft) {
  FakeClock clock;
  MemoryFileSystem files(clock);
  FaultFileSystem faults(files);
  std::string file = CriteriaHeaderText() + CriteriaRecordText(kWorkingSetOem, "");
  for (const char* name : {"A", "B", "C", "D"}) {
    file += CriteriaRecordText(name, CriteriaRowText(1, '0', "x"));
  }
  files.SetContents("/d/X.CRT", BytesOf(file));
  CriteriaFile criteria(faults, "/d/X.CRT");
  SavedCriteria saved(criteria, 1);
  SilentMessages messages;
  NamedSetsForm form(saved, messages, {});
  faults.FailWrite(2);
  EXPECT_EQ(form.Delete(), Outcome::kStays);
  EXPECT_EQ(form.names(), Texts{"B"});
}

}  // namespace
}  // namespace carnetel
