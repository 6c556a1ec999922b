// Deleting, recent directories, ending, and what is alive in each state.
#include <QApplication>
#include <QMenuBar>
#include <csignal>
#include <span>

#include "desktop/window/system_signals.h"
#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

constexpr int kCaptionCreate = 247;
constexpr int kCaptionCancel = 246;

class Commands : public WindowTest {
 protected:
  [[nodiscard]] Numbers ActiveButtons() {
    Numbers active;
    for (int id = 1000; id <= 1020; ++id) {
      auto* button = window->findChild<BubbleButton*>(QString::number(id));
      EXPECT_NE(button, nullptr) << id;
      if (button != nullptr && button->IsActive() && button->isVisible()) active.push_back(id);
    }
    return active;
  }
  void ExpectState(const Numbers& grey, const Numbers& active, int caption) {
    EXPECT_EQ(GreyItems(), grey);
    EXPECT_EQ(ActiveButtons(), active);
    EXPECT_EQ(Button(1008)->text().toStdString(), LoadText(caption));
    EXPECT_EQ(Button(1008)->accessibleName(), Button(1008)->text());
    EXPECT_EQ(Button(1008)->face(), caption == kCaptionCancel ? Face::kCancelCard : Face::kNewCard);
  }
};

TEST_F(Commands, DeletingACardAsksWithItsName) {
  BuildCompanies(3);
  Start();
  ClickRow(1);
  Answer(MessageButton::kCancel);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Asked(), Texts{"La fiche BETA \nva être détruite ..."});
  EXPECT_EQ(Rows().size(), 3u);
  Answer(MessageButton::kOk);
  Key(Qt::Key_Delete);
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BRAVO"}));
  EXPECT_EQ(Text(150), "BRAVO");
  EXPECT_EQ(Text(181), "2 / 2");
  Answer(MessageButton::kOk);
  Choose(209);
  EXPECT_EQ(SavedCompanies(), Texts{"ALPHA"});
}

TEST_F(Commands, RunUnderTheWaitCursor) {
  BuildCompanies(1);
  Start();
  const QCursor* during = nullptr;
  Qt::CursorShape shape = Qt::ArrowCursor;
  QObject::connect(window.get(), &MainWindow::ended, window.get(), [&] {
    during = QApplication::overrideCursor();
    if (during != nullptr) shape = during->shape();
  });
  Choose(206);
  EXPECT_NE(during, nullptr);
  EXPECT_EQ(shape, Qt::WaitCursor);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Commands, DeleteInAFieldTakesACharacterOnly) {
  BuildCompanies(1);
  Start();
  TypeInto(156, "Lyon");
  Key(Qt::Key_Home);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Text(156), "yon");
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(Commands, DeletingMarkedCardsStopsWhenAsked) {
  BuildCompanies(5);
  Start();
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Space);
  progress.stop_at = 2;
  Answer(MessageButton::kOk);
  Press(1005);
  EXPECT_EQ(Asked(), Texts{"La totalité des fiches sélectionnées va être supprimée..."});
  EXPECT_EQ(progress.steps, (Texts{"ALPHA", "BETA"}));
  EXPECT_EQ(SavedCompanies(), (Texts{"BRAVO", "CHARLIE", "DELTA"}));
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1}));
  EXPECT_EQ(Text(183), "2");
  progress.stop_at = 0;
  Reactivate();
  Answer(MessageButton::kOk);
  Choose(210);
  Reactivate();
  EXPECT_EQ(SavedCompanies(), Texts{"DELTA"});
  EXPECT_EQ(Focus(), 195);
  EXPECT_FALSE(Button(1005)->IsActive());
}

TEST_F(Commands, RecentDirectoriesAfterFourOpens) {
  const std::string long_name(90, 'x');
  const Texts stems = {home + "A & B", home + long_name, home + "C", home + "D"};
  for (const std::string& stem : stems) Build(stem, {CardWith({{kSte1, "DANS"}})});
  SetProfile("File1", "&1 " + stems[0] + ".DAN");
  SetProfile("File2", "&2 " + stems[1] + ".DAN");
  SetProfile("File3", "&3 " + stems[2] + ".DAN");
  SetProfile("File4", "&4 " + stems[3] + ".DAN");
  Start();
  EXPECT_EQ(RecentTexts(), (Texts{"&1 " + stems[0] + ".DAN", "&2 " + stems[1] + ".DAN",
                                  "&3 " + stems[2] + ".DAN", "&4 " + stems[3] + ".DAN"}));
  const QString shown = window->findChild<QAction*>("225")->text();
  EXPECT_TRUE(shown.startsWith("&1 ")) << shown.toStdString();
  EXPECT_TRUE(shown.contains("A && B")) << shown.toStdString();
  EXPECT_TRUE(window->findChild<QAction*>("226")->text().contains(QChar(0x2026)));
  Choose(228);
  EXPECT_EQ(session->current_path(), stems[3]);
  Choose(226);
  EXPECT_EQ(session->current_path(), stems[0]);
  EXPECT_EQ(window->windowTitle().toStdString(), "Carnetel -  " + stems[0] + ".DAN");
  EXPECT_EQ(Focus(), 655);
  Choose(206);
  ExitSession();
  EXPECT_EQ(Profile("File1"), "&1 " + stems[0] + ".DAN");
  EXPECT_EQ(Profile("File2"), "&2 " + stems[3] + ".DAN");
  EXPECT_EQ(Profile("File3"), "&3 " + stems[1] + ".DAN");
  EXPECT_EQ(Profile("File4"), "&4 " + stems[2] + ".DAN");
}

TEST_F(Commands, ADroppedMainFileOpens) {
  BuildCompanies(2);
  Build(home + "AUTRE", {CardWith({{kSte1, "DANS"}})});
  files.Rename(home + "AUTRE.DAN", home + "AUTRE.dan");
  Start();
  EXPECT_TRUE(Drop({home + "AUTRE.ADR", home + "AUTRE.dan"}));
  EXPECT_EQ(Asked(), Texts{"Carnetel non valide - Choisissez un autre..."});
  EXPECT_EQ(script.shown.back().title_id, 79);
  EXPECT_EQ(Rows().size(), 2u);
  TypeInto(156, "Lyon");
  Answer(MessageButton::kNo);
  EXPECT_TRUE(Drop({home + "AUTRE.dan"}));
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Text(156), "Lyon");
  Answer(MessageButton::kYes);
  EXPECT_TRUE(Drop({home + "AUTRE.dan", home + "CARNETEL.DAN"}));
  EXPECT_EQ(Rows(), Texts{"DANS"});
  EXPECT_EQ(session->current_path(), home + "AUTRE");
  EXPECT_EQ(Focus(), 655);
  EXPECT_EQ(RecentTexts(), (Texts{"&1 " + home + "AUTRE.DAN", "&2 " + home + "CARNETEL.DAN"}));
}

TEST_F(Commands, ADroppedFileThatIsNoDirectoryLeavesTheFormerOneOpen) {
  BuildCompanies(2);
  const std::string text = "no directory";
  files.SetContents(home + "FAUX.DAN", std::as_bytes(std::span(text)));
  Start();
  EXPECT_TRUE(Drop({home + "FAUX.DAN"}));
  EXPECT_EQ(Asked(), Texts{"Carnetel non valide - Choisissez un autre..."});
  EXPECT_EQ(session->current_path(), DefaultPath());
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BETA"}));
}

TEST_F(Commands, FieldsTakeNoDrops) {
  BuildCompanies(1);
  Start();
  for (const int id : {150, 162, 164, 174}) EXPECT_FALSE(Control(id)->acceptDrops()) << id;
  EXPECT_TRUE(window->acceptDrops());
}

TEST_F(Commands, SettingsAreWrittenBackAtStart) {
  SetProfile("Idindex", "10");
  Start();
  EXPECT_EQ(Profile("Idindex"), "10");
  EXPECT_EQ(Profile("ShowRefCor"), "1");
  EXPECT_EQ(Profile("StyleAffList"), "1");
  EXPECT_EQ(Profile("StyleAffSte"), "0");
  EXPECT_EQ(Profile("DebutSaisie"), "0");
  EXPECT_EQ(Profile("Balloons"), "(missing)");
  Press(1008);
  EXPECT_EQ(Focus(), 172);
}

TEST_F(Commands, ClosingTheWindowAsksAndNoStays) {
  BuildCompanies(2);
  Start();
  TypeInto(156, "Lyon");
  Answer(MessageButton::kNo);
  EXPECT_FALSE(window->close());
  Settle();
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Focus(), 156);
  EXPECT_EQ(Text(156), "Lyon");
  EXPECT_EQ(ended, 0);
  Answer(MessageButton::kYes);
  EXPECT_TRUE(window->close());
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(Commands, QuittingByTheToolbarAndByTheMenu) {
  BuildCompanies(1);
  Start();
  Press(1012);
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Commands, ASignalEndsTheWindowWithoutAQuestion) {
  BuildCompanies(2);
  Start();
  const SystemSignals system_signals;
  QObject::connect(&system_signals, &SystemSignals::endRequested, window.get(),
                   &MainWindow::QuitUnasked);
  Key(Qt::Key_Space);
  TypeInto(156, "Lyon");
  ::raise(SIGTERM);
  ASSERT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(session->directory(), nullptr);
  EXPECT_EQ(Saved()[0].Field(kVille), "");
  EXPECT_TRUE(Saved()[0].entry.bit(1));
}

TEST_F(Commands, ClosingWaitsForALongLoop) {
  BuildCompanies(1);
  Start();
  {
    const BusyScope at_work(busy);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(ended, 0);
  }
  Settle();
  EXPECT_EQ(ended, 1);
}

TEST_F(Commands, TheListComesBackWhereItWas) {
  std::vector<CardRecord> cards;
  for (int i = 100; i < 200; ++i) cards.push_back(CardWith({{kSte1, "A" + std::to_string(i)}}));
  Build(cards);
  Start();
  ClickRow(3);
  for (int i = 0; i < 37; ++i) Key(Qt::Key_Down);
  const int top = List()->TopRow();
  ASSERT_GT(top, 5);
  List()->SetTopRow(top + 3);
  Choose(206);
  ExitSession();
  ended = 0;
  Start();
  EXPECT_EQ(List()->CurrentRow(), 40);
  EXPECT_EQ(List()->TopRow(), top + 3);
  EXPECT_EQ(Text(150), "A140");
}

const Numbers kGreyWithoutRows = {203, 205, 208, 209, 210, 211, 212, 213, 215, 216, 218, 219};

TEST_F(Commands, MatrixWithoutCards) {
  Start();
  ExpectState(kGreyWithoutRows, {1008, 1010, 1011, 1012, 1013, 1018}, kCaptionCreate);
  Press(1008);
  ExpectState(kGreyWithoutRows, {1008, 1010, 1011, 1012, 1013, 1018}, kCaptionCancel);
  Type("NEUF");
  ExpectState(kGreyWithoutRows, {1007, 1008, 1010, 1011, 1012, 1013, 1018}, kCaptionCancel);
}

TEST_F(Commands, MatrixWithCards) {
  BuildCompanies(2);
  Start();
  const Numbers rest = {1000, 1001, 1002, 1003, 1004, 1007, 1008,
                        1009, 1010, 1011, 1012, 1013, 1018};
  ExpectState({203, 208, 210, 213, 219}, rest, kCaptionCreate);
  Key(Qt::Key_Space);
  Numbers marked = rest;
  marked.insert(marked.begin() + 5, 1005);
  ExpectState({208}, marked, kCaptionCreate);
  Control(156)->setFocus(Qt::TabFocusReason);
  Settle();
  const Numbers edited = {1000, 1001, 1002, 1003, 1004, 1005, 1006,
                          1007, 1008, 1010, 1011, 1012, 1013, 1018};
  ExpectState({}, edited, kCaptionCancel);
  Type("Lyon");
  ExpectState({}, edited, kCaptionCancel);
  TypeInto(150, "x");
  Key(Qt::Key_Backspace);
  ExpectState({208}, {1000, 1001, 1002, 1003, 1004, 1005, 1008, 1010, 1011, 1012, 1013, 1018},
              kCaptionCancel);
}

TEST_F(Commands, MenuItemsTellThemselvesInTheStatusLine) {
  BuildCompanies(1);
  Start();
  EXPECT_EQ(window->MenuAction(207)->text(), QString::fromUtf8("&Créer...\tInser"));
  EXPECT_EQ(window->MenuAction(209)->text(), QString::fromUtf8("&Détruire Fiche\tSuppr"));
  EXPECT_TRUE(window->MenuAction(207)->shortcut().isEmpty());
  Q_EMIT window->MenuAction(209)->hovered();
  EXPECT_EQ(Text(194).toStdString(), LoadText(68));
  auto* recent = window->findChild<QAction*>(QStringLiteral("225"));
  ASSERT_NE(recent, nullptr);
  Q_EMIT recent->hovered();
  EXPECT_EQ(Text(194).toStdString(), LoadText(59));
  Button(1001)->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(Text(194).toStdString(), LoadText(70));
}

TEST_F(Commands, AMenuOpenedByTheKeyboardTellsItsItem) {
  BuildCompanies(1);
  Start();
  QTest::keyClick(window.get(), Qt::Key_R, Qt::AltModifier);
  Settle();
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(Text(194).toStdString(), LoadText(70));
  QTest::keyClick(menu, Qt::Key_Down);
  EXPECT_EQ(Text(194).toStdString(), LoadText(91));
  QTest::keyClick(menu, Qt::Key_Escape);
  QTest::keyClick(window->menuBar(), Qt::Key_Escape);
  Settle();
  EXPECT_EQ(Text(194).toStdString(), LoadText(59));
  EXPECT_EQ(Focus(), 195);
}

}  // namespace
}  // namespace carnetel::desktop
