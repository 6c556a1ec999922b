// The buttons of the sibling programs beside the numbers of the real form: when they are there, how
// the keyboard reaches them, and what a press leaves behind.
#include <QStyle>

#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Numbers = std::vector<int>;
using Texts = std::vector<std::string>;

constexpr int kSiblingIds[] = {1014, 1015, 1016, 1017, 1019};
constexpr size_t kRecordSize = 161;

class SiblingButtonsOfTheWindow : public WindowTest {
 protected:
  SiblingButtonsOfTheWindow() {
    files.MakeFolder("/suite/");
    program_starter = [this](const std::string& line) {
      started.push_back(line);
      return true;
    };
  }
  void SetPrograms(std::initializer_list<std::string_view> keys) {
    for (const std::string_view key : keys) {
      profile.Write("ApplDROV", key, "/suite/" + std::string(key));
    }
    profile.Write("ApplDROV", "TDF", "/suite");
  }
  void SetAllPrograms() {
    SetPrograms({"VoiceAppl", "FaxAppl", "FileAppl", "MinitelAppl", "ISDNAppl"});
  }
  void StartCalled(uint32_t caller = 77) {
    Build({CardWith({{kSte1, "ALPHA"}, {kTel1, "01"}, {kFax, "02"}}),
           CardWith({{kSte1, "BETA"}, {kModem, "03"}, {kMtel, "3614"}})});
    StartupRequest request;
    request.caller_window = caller;
    Start(request);
  }
  Numbers ShownButtons() {
    Numbers shown;
    for (const int id : kSiblingIds) {
      if (Button(id)->isVisible()) shown.push_back(id);
    }
    return shown;
  }
  Numbers On() {
    Numbers on;
    for (const int id : kSiblingIds) {
      if (Button(id)->isVisible() && Button(id)->IsActive()) on.push_back(id);
    }
    return on;
  }
  [[nodiscard]] size_t Records(const std::string& path) {
    return files.Exists(path) ? files.Contents(path).size() / kRecordSize : 0;
  }
  // Where the fields of the numbers stand.
  std::vector<QRect> Places() {
    std::vector<QRect> places;
    for (int id = 158; id <= 162; ++id) {
      places.emplace_back(Control(id)->mapTo(window.get(), QPoint()), Control(id)->size());
    }
    return places;
  }

  Texts started;
};

TEST_F(SiblingButtonsOfTheWindow, AreThereFromTheStart) {
  SetAllPrograms();
  StartCalled();
  EXPECT_EQ(ShownButtons(), (Numbers{1014, 1015, 1016, 1017, 1019}));
  EXPECT_EQ(On(), (Numbers{1014, 1015}));
  ClickRow(1);
  EXPECT_EQ(On(), (Numbers{1016, 1017}));
}

TEST_F(SiblingButtonsOfTheWindow, AreNotThereWithoutACaller) {
  SetAllPrograms();
  StartCalled(0);
  EXPECT_EQ(ShownButtons(), Numbers());
  Control(150)->setFocus(Qt::MouseFocusReason);
  ClickRow(1);
  EXPECT_EQ(ShownButtons(), Numbers());
}

TEST_F(SiblingButtonsOfTheWindow, StandBesideTheirNumbersAtTheSameHeight) {
  SetAllPrograms();
  StartCalled();
  constexpr std::pair<int, int> kPairs[] = {
      {158, 1014}, {159, 1019}, {160, 1015}, {161, 1016}, {162, 1017}};
  for (const auto& [field, button] : kPairs) {
    const QRect edit(Control(field)->mapTo(window.get(), QPoint()), Control(field)->size());
    const QRect face(Button(button)->mapTo(window.get(), QPoint()), Button(button)->size());
    EXPECT_GT(face.left(), edit.right()) << field;
    EXPECT_LT(face.left(), edit.right() + 12) << field;
    EXPECT_NEAR(face.center().y(), edit.center().y(), 1) << field;
    EXPECT_EQ(Button(button)->size(), Button(button)->sizeHint()) << field;
  }
}

TEST_F(SiblingButtonsOfTheWindow, NoFieldMovesWhenTheyGo) {
  SetAllPrograms();
  StartCalled();
  const QSize size = window->size();
  const std::vector<QRect> places = Places();
  Control(150)->setFocus(Qt::MouseFocusReason);
  Settle();
  EXPECT_EQ(ShownButtons(), Numbers());
  EXPECT_EQ(Places(), places);
  EXPECT_EQ(window->size(), size);
  ClickRow(0);
  EXPECT_EQ(ShownButtons().size(), 5u);
  EXPECT_EQ(Places(), places);
}

TEST_F(SiblingButtonsOfTheWindow, LeaveNoGapWhenNoneIsSetUp) {
  StartCalled();
  const std::vector<QRect> with_caller = Places();
  window.reset();
  session.reset();
  StartupRequest alone;
  Start(alone);
  EXPECT_EQ(Places(), with_caller);
  EXPECT_LT(Control(159)->mapTo(window.get(), QPoint()).x() - Places()[0].right(), 120);
}

TEST_F(SiblingButtonsOfTheWindow, ComeBackWithTheCardWhenAnEditIsGivenUp) {
  SetAllPrograms();
  StartCalled();
  TypeInto(161, "99");
  Answer(MessageButton::kYes);
  ClickRow(0);
  EXPECT_EQ(ShownButtons().size(), 5u);
  EXPECT_EQ(On(), (Numbers{1014, 1015}));
}

TEST_F(SiblingButtonsOfTheWindow, FollowASavedNumber) {
  SetAllPrograms();
  StartCalled();
  TypeInto(161, "99");
  Key(Qt::Key_Return);
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(On(), (Numbers{1014, 1015, 1016}));
}

TEST_F(SiblingButtonsOfTheWindow, OfMinitelAloneStaysAndFollowsWhatIsTyped) {
  SetPrograms({"MinitelAppl"});
  StartCalled();
  TypeInto(162, "3615");
  EXPECT_EQ(On(), (Numbers{1017}));
  Press(1017);
  EXPECT_EQ(Asked(), (Texts{"Vous devez d'abord sauver les dernières saisies."}));
  Control(162)->setFocus(Qt::MouseFocusReason);
  Key(Qt::Key_A, Qt::ControlModifier);
  Key(Qt::Key_Delete);
  EXPECT_EQ(ShownButtons(), (Numbers{1017}));
  EXPECT_EQ(On(), Numbers());
}

TEST_F(SiblingButtonsOfTheWindow, AreReachedFromTheListBackwards) {
  SetAllPrograms();
  StartCalled();
  Key(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_EQ(Focus(), 1014);
  Key(Qt::Key_Right);
  EXPECT_EQ(Focus(), 1015);
  EXPECT_EQ(Text(194), QString::fromUtf8(LoadText(225)));
  Key(Qt::Key_Space);
  EXPECT_EQ(started, (Texts{"/suite/FaxAppl /X"}));
  EXPECT_EQ(Focus(), 1015);
}

TEST_F(SiblingButtonsOfTheWindow, TheFaxGetsARecordAPress) {
  SetAllPrograms();
  StartCalled();
  Press(1015);
  Press(1015);
  EXPECT_EQ(started, (Texts{"/suite/FaxAppl /X", "/suite/FaxAppl /X"}));
  ASSERT_EQ(Records("/suite/NUMEMI.DAT"), 2u);
  const auto bytes = files.Contents("/suite/NUMEMI.DAT");
  const auto text = [&bytes](size_t at, size_t size) {
    const std::string whole(reinterpret_cast<const char*>(bytes.data()) + at, size);
    return whole.substr(0, whole.find('\0'));
  };
  EXPECT_EQ(text(0, 30), "02");
  EXPECT_EQ(text(67, 33), "ALPHA");
}

TEST_F(SiblingButtonsOfTheWindow, TheMinitelIsToldTheWindow) {
  SetAllPrograms();
  StartCalled();
  ClickRow(1);
  Press(1017);
  EXPECT_EQ(Records("/suite/MINITNUM.DAT"), 1u);
  EXPECT_FALSE(files.Exists("/suite/NUMEMI.DAT"));
  const std::string number = std::to_string(static_cast<uint32_t>(window->winId()));
  EXPECT_EQ(started, (Texts{"/suite/MinitelAppl /H=" + number}));
}

TEST_F(SiblingButtonsOfTheWindow, OfTheIsdnDoesNothing) {
  SetAllPrograms();
  StartCalled();
  TypeInto(159, "04");
  Key(Qt::Key_Return);
  Press(1019);
  EXPECT_EQ(started, Texts());
  EXPECT_EQ(Asked(), Texts());
}

TEST_F(SiblingButtonsOfTheWindow, Pictures) {
  SetAllPrograms();
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    window.reset();
    session.reset();
    StartCalled();
    EXPECT_TRUE(window->grab().save(QStringLiteral("window_siblings_%1.png").arg(percent)));
  }
}

}  // namespace
}  // namespace carnetel::desktop
