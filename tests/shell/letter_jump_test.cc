// The jump to the next card of a letter that is typed on the list.
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

CardRecord Company(std::string_view name) {
  return CardWith({{kSte1, name}});
}

class LetterJump : public WindowFixture {
 protected:
  void SetUp() override {
    Build({Company("ALPHA"), Company("9NEUF"), Company("Beta"), Company("BRUN"), Company("BZ"),
           Company("CESAR")});
    Start();
  }
};

TEST_F(LetterJump, GoesToTheFirstCardOfTheLetter) {
  window().JumpToLetter('C');
  EXPECT_EQ(list().current_row(), 5);
  window().JumpToLetter('9');
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(view.beeps, 0);
}

TEST_F(LetterJump, GoesOnWhenRepeatedAndBeepsAtTheEnd) {
  for (const int row : {2, 3, 4}) {
    window().JumpToLetter('B');
    EXPECT_EQ(list().current_row(), row);
  }
  EXPECT_EQ(view.beeps, 0);
  window().JumpToLetter('B');
  EXPECT_EQ(view.beeps, 1);
  EXPECT_EQ(list().current_row(), 4);
}

TEST_F(LetterJump, StartsAnewBehindAnotherLetterOrAClick) {
  window().JumpToLetter('B');
  window().JumpToLetter('B');
  window().JumpToLetter('A');
  window().JumpToLetter('B');
  EXPECT_EQ(list().current_row(), 2);
  view.ClickRow(5);
  window().JumpToLetter('B');
  EXPECT_EQ(list().current_row(), 2);
}

TEST_F(LetterJump, BeepsWithoutAMatchInTheList) {
  window().JumpToLetter('Q');
  EXPECT_EQ(view.beeps, 1);
  EXPECT_EQ(list().current_row(), 0);
  // The card is there, its tab is not.
  window().Dispatch(656);
  window().JumpToLetter('C');
  EXPECT_EQ(view.beeps, 2);
  EXPECT_EQ(list().current_row(), 0);
}

using LetterJumpByName = WindowFixture;

TEST_F(LetterJumpByName, LooksAtTheActiveKeyAlone) {
  SetProfile("Idindex", "10");
  Build({CardWith({{kSte1, "ZETA"}, {kNom, "ALBERT"}}),
         CardWith({{kSte1, "ALPHA"}, {kNom, "ZOLA"}})});
  Start();
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALBERT ", "ZOLA "}));
  window().JumpToLetter('Z');
  EXPECT_EQ(list().current_row(), 1);
  window().JumpToLetter('A');
  EXPECT_EQ(list().current_row(), 0);
  window().JumpToLetter('A');
  EXPECT_EQ(view.beeps, 1);
}

}  // namespace
}  // namespace carnetel
