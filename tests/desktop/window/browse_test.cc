// Keys and clicks on the list and the letter tabs.
#include <QElapsedTimer>
#include <iostream>

#include "storage/card_dispatch.h"
#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

class Browsing : public WindowTest {
 protected:
  void StartWithNine() {
    BuildCompanies(9);
    Start();
  }
};

TEST_F(Browsing, StartsOnTheListWithTheFirstCardShown) {
  StartWithNine();
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(window->windowTitle().toStdString(), "Carnetel -  " + DefaultPath() + ".DAN");
  EXPECT_EQ(Text(181), "1 / 9");
  EXPECT_EQ(Text(183), "0");
  EXPECT_EQ(Text(150), "ALPHA");
  EXPECT_EQ(Text(194), "Alt=menu, Tab=boutons, Barre espace=sélection/désélection");
  Key(Qt::Key_End);
  EXPECT_EQ(Text(181), "9 / 9");
  EXPECT_EQ(Text(150), "ZORRO");
}

TEST_F(Browsing, TheWindowStandsInTheMiddleOfTheScreen) {
  StartWithNine();
  const QPoint off = QRect(window->pos(), window->size()).center() -
                     window->screen()->availableGeometry().center();
  EXPECT_LE(std::abs(off.x()), 1);
  EXPECT_LE(std::abs(off.y()), 1);
}

TEST_F(Browsing, ARepeatedLetterWalksForward) {
  StartWithNine();
  Type("b");
  EXPECT_EQ(Text(150), "BETA");
  Type("b");
  EXPECT_EQ(Text(150), "BRAVO");
  Type("M");
  EXPECT_EQ(Text(150), "MARTIN");
  ClickRow(0);
  Type("m");
  EXPECT_EQ(Text(150), "MARTIN");
}

TEST_F(Browsing, ALetterWithoutCardsBeeps) {
  StartWithNine();
  int beeps = 0;
  window->SetBeeper([&beeps] { ++beeps; });
  Type("x");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(List()->CurrentRow(), 0);
}

TEST_F(Browsing, TheTopRowOfAFrenchKeyboardCountsAsDigits) {
  Build({CardWith({{kSte1, "2A"}}), CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "ETE"}})});
  Start();
  Key(Qt::Key_End);
  // The key of 2 gives é there; 11 is its place on the keyboard.
  QKeyEvent second(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, 11, 0xe9, 0, "é");
  QApplication::sendEvent(List(), &second);
  EXPECT_EQ(Text(150), "2A");
  Type("a");
  EXPECT_EQ(Text(150), "ALPHA");
}

TEST_F(Browsing, SpaceMarksAndGoesOn) {
  StartWithNine();
  Key(Qt::Key_Space);
  Key(Qt::Key_Space);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1}));
  EXPECT_EQ(List()->CurrentRow(), 2);
  Key(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1, 2}));
  EXPECT_EQ(List()->CurrentRow(), 1);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 2}));
  Key(Qt::Key_End);
  Key(Qt::Key_Space);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 2, 8}));
  EXPECT_EQ(List()->CurrentRow(), 8);
  EXPECT_EQ(Text(183), "3");
  EXPECT_TRUE(Saved()[8].entry.bit(1));
  EXPECT_FALSE(Saved()[1].entry.bit(1));
}

TEST_F(Browsing, ControlClickAndShiftClickMark) {
  StartWithNine();
  ClickRow(2, Qt::ControlModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{2}));
  ClickRow(2, Qt::ControlModifier);
  EXPECT_EQ(MarkedRows(), Numbers{});
  ClickRow(1);
  EXPECT_EQ(MarkedRows(), Numbers{});
  QTest::keyPress(List(), Qt::Key_Shift);
  ClickRow(4, Qt::ShiftModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(List()->CurrentRow(), 4);
}

TEST_F(Browsing, ShiftClickWithControlTurnsTheClickedRowOnce) {
  StartWithNine();
  ClickRow(1);
  QTest::keyPress(List(), Qt::Key_Shift);
  ClickRow(3, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{1, 2, 3}));
}

TEST_F(Browsing, ADoubleClickCountsAsAChangeOfMarks) {
  StartWithNine();
  const auto time = [this] {
    return files.Open(DefaultPath() + ".DAN", OpenMode::kRead)->ModificationTime();
  };
  const int64_t before = time();
  clock.Advance(100);
  const QPoint second_row = List()->RowRect(1).center();
  QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, second_row);
  EXPECT_EQ(MarkedRows(), Numbers{});
  Choose(206);
  EXPECT_EQ(time(), before + 100);
}

TEST_F(Browsing, ShiftEndInvertsUpToTheEnd) {
  StartWithNine();
  ClickRow(6);
  QTest::keyPress(List(), Qt::Key_Shift);
  Key(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(MarkedRows(), (Numbers{6, 7, 8}));
  EXPECT_EQ(Text(183), "3");
}

TEST_F(Browsing, KeysOfTheToolkitsListsDoNothing) {
  StartWithNine();
  ClickRow(4);
  Key(Qt::Key_A, Qt::ControlModifier);
  Key(Qt::Key_F2);
  Key(Qt::Key_Return);
  Key(Qt::Key_Escape);
  EXPECT_EQ(List()->CurrentRow(), 4);
  EXPECT_EQ(MarkedRows(), Numbers{});
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(ended, 0);
}

TEST_F(Browsing, TheMarkButtonIsSpaceWithoutTheStep) {
  StartWithNine();
  ClickRow(3);
  Press(1009);
  EXPECT_EQ(MarkedRows(), Numbers{3});
  EXPECT_EQ(List()->CurrentRow(), 3);
  Choose(213);
  EXPECT_EQ(MarkedRows(), Numbers{});
}

TEST_F(Browsing, TabsByMouse) {
  StartWithNine();
  Click(Control(657));
  EXPECT_EQ(Rows(), (Texts{"BETA", "BRAVO"}));
  EXPECT_EQ(Text(181), "1 / 2");
  Click(Control(681));
  EXPECT_EQ(Rows(), Texts{"ZORRO"});
  Click(Control(656));
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
  EXPECT_EQ(Text(150), "ALPHA");
  Click(Control(680));
  EXPECT_EQ(Rows(), Texts{});
  EXPECT_EQ(Text(181), "1 / 0");
  EXPECT_EQ(Text(150), "");
  Click(Control(655));
  EXPECT_EQ(Rows().size(), 9u);
}

TEST_F(Browsing, TabsByKeyboard) {
  StartWithNine();
  Key(Qt::Key_Tab);
  EXPECT_EQ(Focus(), 655);
  Key(Qt::Key_Right);
  EXPECT_EQ(Focus(), 656);
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
  Key(Qt::Key_End);
  EXPECT_EQ(Rows(), Texts{"ZORRO"});
  Key(Qt::Key_Home);
  EXPECT_EQ(Focus(), 655);
  EXPECT_EQ(Rows().size(), 9u);
}

TEST_F(Browsing, ATabAsksForTheFormOnceAndARefusalKeepsTheFormerOne) {
  StartWithNine();
  TypeInto(156, "Lyon");
  Answer(MessageButton::kNo);
  Click(Control(681));
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Rows().size(), 9u);
  EXPECT_EQ(Focus(), 156);
  EXPECT_EQ(Text(156), "Lyon");
  Answer(MessageButton::kYes);
  Click(Control(681));
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Rows(), Texts{"ZORRO"});
  EXPECT_EQ(Text(150), "ZORRO");
}

TEST_F(Browsing, AFullListCountsWhatItRefused) {
  BuildCompanies(5);
  Start({}, 3);
  EXPECT_EQ(Asked(), Texts{"Liste de fiches saturée: [ 2 ] fiches non chargées. \n Actionnez les "
                           "onglets des lettres pour les visualiser !"});
  EXPECT_EQ(script.shown[0].title_id, 80);
  EXPECT_EQ(Text(181), "1 / 5");
  Key(Qt::Key_Space);
  EXPECT_EQ(Text(181), "2 / 5");
  EXPECT_EQ(List()->RowCount(), 3);
}

TEST_F(Browsing, AFamilyInSmallLettersOpens) {
  Build(home + "petit", {CardWith({{kSte1, "ALPHA"}})});
  for (const std::string& name : files.List(home)) {
    std::string lower = name;
    std::ranges::transform(lower, lower.begin(), [](char c) {
      return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    });
    files.Rename(home + name, home + lower);
  }
  const size_t count = files.List(home).size();
  StartupRequest request;
  request.direct_open = true;
  request.direct_path = home + "petit.dan";
  Start(request);
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
  TypeInto(156, "Lyon");
  Key(Qt::Key_Return);
  // The window has made the group file.
  EXPECT_EQ(files.List(home).size(), count + 1);
}

TEST_F(Browsing, ALargeListFillsAtOnceAndReadsTheCardsThatAreSeenOnce) {
  constexpr int kCards = 32767;
  {
    DirectoryOptions options;
    options.path = DefaultPath();
    SilentProgress silent;
    Directory directory({files, clock, silent}, options);
    ASSERT_GE(static_cast<int>(directory.OpenDirectory()), 0);
    const Directory::Batch batch(directory);
    for (int i = 0; i < kCards; ++i) {
      // Up to Y: the last letter of an index has room for one page only.
      const std::string name = static_cast<char>('A' + i % 25) + std::to_string(100000 + i);
      directory.context().current = CardWith({{kSte1, name}});
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
    }
  }
  Start();
  QElapsedTimer timer;
  timer.start();
  window->logic().list().ListRefill();
  std::cout << "refill of " << kCards << " cards in this build: " << timer.elapsed() << " ms\n";
  EXPECT_EQ(Text(181), "1 / 32767");
  Settle();
  files.ResetCounts();
  const int page = List()->PageRows();
  for (int row = 0; row + page <= 1000; row += page) {
    List()->SetTopRow(row);
    List()->repaint();
    Settle();
  }
  // Each row once, and rows in part below the last whole one.
  EXPECT_LE(files.counts().reads, 1000 + 1000 / page);
}

}  // namespace
}  // namespace carnetel::desktop
