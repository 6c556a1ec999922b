// Which commands and buttons are alive in each state of the main window, and what button 1008 is.
#include "storage/card_dispatch.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Numbers = std::vector<int>;

// Menu items that are grey, buttons that are enabled (of those that change), the caption of 1008.
struct Expected {
  Numbers grey;
  Numbers enabled;
  std::string caption;
};

const std::string kCreate = "Créer nouvelle fiche";
const std::string kCancel = "Annuler les dernières saisies";

const Numbers kGreyWithoutRows = {203, 205, 208, 209, 210, 211, 212, 213, 215, 216, 218, 219};
const Numbers kGreyWithoutMarks = {203, 210, 213, 219};
const Numbers kGreyWithoutMarksNorChange = {203, 208, 210, 213, 219};

class Matrix : public WindowFixture {
 protected:
  void StartWithCards() {
    Build({CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "BETA"}})});
    Start();
  }
  void Expect(const Expected& expected) {
    Numbers grey;
    MenuState group = window().menu_state();
    group.group_displayed = true;
    for (int command = 200; command <= 230; ++command) {
      const bool is_grey = IsGrey(command, window().menu_state());
      if (is_grey) grey.push_back(command);
      // A displayed group changes one item alone.
      EXPECT_EQ(IsGrey(command, group), is_grey || command == 208) << command;
    }
    EXPECT_EQ(grey, expected.grey);
    EXPECT_EQ(Numbers(view.enabled().begin(), view.enabled().end()), expected.enabled);
    EXPECT_EQ(LoadText(view.cancel_face ? 246 : 247), expected.caption);
    // Button and menu item of the change go together.
    EXPECT_EQ(IsGrey(208, window().menu_state()), !view.IsEnabled(1006));
  }
};

TEST_F(Matrix, NoDirectory) {
  StartSession();
  MainWindowLogic logic(*session, view, dialogs, kCapacity);
  view.Attach(logic);
  logic.Start();
  EXPECT_EQ(view.enabled(), std::set<int>());
  EXPECT_FALSE(view.cancel_face);
}

TEST_F(Matrix, NoCards) {
  Start();
  Expect({kGreyWithoutRows, {1008}, kCreate});
}

TEST_F(Matrix, NoCardsAndANewOne) {
  Start();
  view.Press(1008);
  Expect({kGreyWithoutRows, {1008}, kCancel});
  view.Type(150, "NEUF");
  Expect({kGreyWithoutRows, {1007, 1008}, kCancel});
}

TEST_F(Matrix, Cards) {
  StartWithCards();
  EXPECT_FALSE(window().menu_state().group_displayed);
  Expect({kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1007, 1008, 1009}, kCreate});
}

// The window on screen gets its focus late: a refill alone must set the buttons.
TEST_F(Matrix, FirstCardCameWithARefill) {
  Start();
  session->directory()->context().current = CardWith({{kSte1, "ALPHA"}});
  uint32_t position = 0;
  ASSERT_EQ(CardDispatch(*session->directory()).Add(false, &position), 0);
  window().list().ListRefill();
  EXPECT_TRUE(view.IsEnabled(kButtonSaveNew));
  EXPECT_FALSE(view.IsEnabled(kButtonSaveChange));
}

TEST_F(Matrix, Marks) {
  StartWithCards();
  list().ToggleMark(1);
  Expect({{208}, {1000, 1001, 1002, 1003, 1004, 1005, 1007, 1008, 1009}, kCreate});
  list().ToggleMark(1);
  Expect({kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1007, 1008, 1009}, kCreate});
}

TEST_F(Matrix, FieldEntered) {
  StartWithCards();
  view.Focus(158);
  Expect({kGreyWithoutMarks, {1000, 1001, 1002, 1003, 1004, 1006, 1007, 1008}, kCancel});
}

TEST_F(Matrix, FormChanged) {
  StartWithCards();
  view.Type(158, "01");
  Expect({kGreyWithoutMarks, {1000, 1001, 1002, 1003, 1004, 1006, 1007, 1008}, kCancel});
}

TEST_F(Matrix, FormChangedWithoutKeys) {
  StartWithCards();
  view.Type(150, "");
  Expect({kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1008}, kCancel});
}

TEST_F(Matrix, FormChangedAndMarks) {
  StartWithCards();
  list().ToggleMark(0);
  view.Type(158, "01");
  Expect({{}, {1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008}, kCancel});
}

TEST_F(Matrix, NewCard) {
  StartWithCards();
  view.Press(1008);
  Expect({kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1008}, kCancel});
  view.Type(172, "NEUF");
  Expect({kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1007, 1008}, kCancel});
}

TEST_F(Matrix, BackAtRest) {
  const Expected rest = {
      kGreyWithoutMarksNorChange, {1000, 1001, 1002, 1003, 1004, 1007, 1008, 1009}, kCreate};
  StartWithCards();
  view.Type(158, "01");
  view.Press(1006);
  Expect(rest);
  view.Press(1008);
  view.Press(1008);
  Expect(rest);
  view.Type(158, "02");
  messages.Answer(MessageButton::kYes);
  view.ClickRow(1);
  Expect(rest);
  view.Type(158, "02");
  messages.Answer(MessageButton::kYes);
  view.Run(2);
  Expect(rest);
}

TEST_F(Matrix, EmptyTab) {
  StartWithCards();
  list().ToggleMark(0);
  view.Run(681);
  Expect({kGreyWithoutRows, {1008}, kCreate});
}

}  // namespace
}  // namespace carnetel
