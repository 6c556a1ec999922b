// The window at one of several seats: what another seat adds comes into view, a card that one of
// them edits is left alone by the other, marks stay apart, and what belongs to a seat is refused to
// the others.
#include <QMessageBox>
#include <sstream>

#include "desktop/roles/run_windows.h"
#include "selection/marks.h"
#include "shell/roles.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"
#include "tests/desktop/window/dialog_user.h"
#include "tests/support/gated_file_system.h"

namespace carnetel::desktop {
namespace {

constexpr const char* kHeld = "Fiche en cours de modification par un autre poste";
constexpr const char* kAllGo = "La totalité des fiches sélectionnées va être supprimée...";
constexpr int kErrorTitle = 79;

class Seats : public DialogWindowTest {
 protected:
  // ALPHA, BETA, BRAVO and CHARLIE in the window of seat 3; another seat has them open too.
  void StartBoth() {
    BuildCompanies(4);
    StartWithSeats();
    files.MakeFolder(home + "poste4/");
    DirectoryOptions options;
    options.path = DefaultPath();
    options.shared_dir = home + "poste4/";
    options.lock_wait = std::chrono::milliseconds(0);
    other_ = std::make_unique<Directory>(DirectoryServices{files, clock, silent_}, options);
    ASSERT_EQ(other_->OpenDirectory(), OpenResult::kOpened);
  }
  void TearDown() override { other_.reset(); }
  Directory& other() { return *other_; }

  uint32_t OffsetOf(std::string_view company) {
    CardRecord card;
    for (uint32_t offset = 768; other().main().ReadCard(offset, card); offset += 768) {
      if (card.FieldText(kSte1).bytes() == company) return offset;
    }
    ADD_FAILURE() << "no " << company;
    return 0;
  }
  void OtherAdds(std::string_view company) {
    other().context().current = CardWith({{kSte1, company}});
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(other()).Add(false, &position), 0);
  }
  void OtherDeletes(std::string_view company) {
    uint32_t moved_from = 0;
    ASSERT_TRUE(DeleteCard(other(), OffsetOf(company), &moved_from));
  }
  void OtherSets(std::string_view company, int field, std::string_view text) {
    const uint32_t offset = OffsetOf(company);
    CardRecord card;
    ASSERT_TRUE(other().main().ReadCard(offset, card));
    card.SetField(field, OemText(std::string(text)));
    ASSERT_NE(ChangeCard(other(), offset, card).result, ChangeResult::kNotPossible);
  }
  bool OtherMayEdit(std::string_view company) { return other().TestCardLock(OffsetOf(company)); }

  void Paint() {
    List()->viewport()->repaint();
    Settle();
  }
  void PaintAfter(int64_t seconds) {
    clock.Advance(seconds);
    Paint();
  }
  void ExpectHeldBox() {
    EXPECT_EQ(Asked(), Texts{kHeld});
    EXPECT_EQ(script.shown.back().style, MessageStyle::kError);
    EXPECT_EQ(script.shown.back().title_id, kErrorTitle);
  }

 private:
  SilentProgress silent_;
  std::unique_ptr<Directory> other_;
};

// ---- what others add and delete comes into view ----

TEST_F(Seats, ACardOfAnotherSeatComesIntoViewAtThePaintTenSecondsAfterTheLastLook) {
  StartBoth();
  OtherAdds("BERNARD");
  PaintAfter(9);
  EXPECT_EQ(Text(181), "1 / 4");
  PaintAfter(1);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BERNARD", "BETA", "BRAVO", "CHARLIE"}));
  EXPECT_EQ(Text(181), "1 / 5");
  OtherDeletes("BETA");
  PaintAfter(9);
  EXPECT_EQ(Text(181), "1 / 5");
  PaintAfter(1);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BERNARD", "BRAVO", "CHARLIE"}));
}

TEST_F(Seats, AWindowThatNobodyTouchesFollowsToo) {
  StartBoth();
  OtherAdds("BERNARD");
  clock.Advance(10);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Rows().size() == 5; }));
}

TEST_F(Seats, WithoutSeatsNothingIsLookedFor) {
  BuildCompanies(3);
  Start();
  Build({CardWith({{kSte1, "BERNARD"}})});
  PaintAfter(60);
  EXPECT_EQ(Rows().size(), 3U);
}

TEST_F(Seats, TheUserStaysWithHisCardWhenOthersAddBeforeIt) {
  StartBoth();
  ClickRow(2);
  OtherAdds("AARON");
  PaintAfter(10);
  EXPECT_EQ(List()->CurrentRow(), 3);
  EXPECT_EQ(Text(150), "BRAVO");
  EXPECT_EQ(Text(181), "4 / 5");
}

TEST_F(Seats, NothingComesIntoViewWhileACardIsKeyed) {
  StartBoth();
  TypeInto(156, "Lyon");
  OtherAdds("AARON");
  PaintAfter(10);
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_EQ(Text(156), "Lyon");
  EXPECT_EQ(Focus(), 156);
  Press(1008);
  PaintAfter(10);
  EXPECT_EQ(Rows().front(), "AARON");
  EXPECT_EQ(Text(150), "ALPHA");
}

TEST_F(Seats, NothingComesIntoViewWhileANewCardIsKeyed) {
  StartBoth();
  Key(Qt::Key_Insert);
  OtherAdds("AARON");
  PaintAfter(10);
  EXPECT_EQ(Rows().size(), 4U);
  Type("NEUVE");
  Key(Qt::Key_Return);
  EXPECT_EQ(SavedCompanies(), (Texts{"AARON", "ALPHA", "BETA", "BRAVO", "CHARLIE", "NEUVE"}));
}

TEST_F(Seats, NothingComesIntoViewUnderADialog) {
  StartBoth();
  Expect(109, [this](QDialog& dialog) {
    OtherAdds("AARON");
    PaintAfter(10);
    EXPECT_EQ(Rows().size(), 4U);
    dialog.reject();
  });
  Choose(215);
  Paint();
  EXPECT_EQ(Rows().front(), "AARON");
}

// The question names a card: it must be that one still when the answer comes.
TEST_F(Seats, ALookThatIsDueWaitsWhenAMessageOpensFirst) {
  WindowMessages real;
  boxes = &real;
  StartBoth();
  OtherAdds("AARON");
  clock.Advance(10);
  Q_EMIT List()->painted();
  Expect(DialogUser::kMessageBox, [this](QDialog& dialog) {
    Settle();
    EXPECT_EQ(Rows().size(), 4U);
    dialog.reject();
  });
  Key(Qt::Key_Delete);
  EXPECT_TRUE(user.IsDone());
  PaintAfter(10);
  EXPECT_EQ(Rows().front(), "AARON");
}

TEST_F(Seats, NothingComesIntoViewUnderAnOpenMenu) {
  StartBoth();
  OtherAdds("AARON");
  QTest::keyClick(window.get(), Qt::Key_F, Qt::AltModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  PaintAfter(10);
  EXPECT_EQ(Rows().size(), 4U);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  Settle();
  Paint();
  EXPECT_EQ(Rows().front(), "AARON");
}

// ---- a card under edit ----

TEST_F(Seats, ACardUnderEditIsHeldUntilItIsSavedOrLetGo) {
  StartBoth();
  ClickRow(1);
  TypeInto(156, "Lyon");
  EXPECT_FALSE(OtherMayEdit("BETA"));
  EXPECT_TRUE(OtherMayEdit("ALPHA"));
  Press(1008);
  EXPECT_TRUE(OtherMayEdit("BETA"));
  TypeInto(156, "Lyon");
  EXPECT_FALSE(OtherMayEdit("BETA"));
  Key(Qt::Key_Return);
  EXPECT_TRUE(OtherMayEdit("BETA"));
  EXPECT_EQ(Saved()[1].Field(kVille), "Lyon");
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(Seats, ACardThatAnotherSeatEditsIsNotSaved) {
  StartBoth();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  TypeInto(156, "Lyon");
  EXPECT_EQ(Asked(), Texts{});
  Key(Qt::Key_Return);
  ExpectHeldBox();
  EXPECT_EQ(Saved()[0].Field(kVille), "");
  // Nothing was typed in vain: it is saved as soon as the other one has let go.
  EXPECT_EQ(Text(156), "Lyon");
  other().UnlockCard();
  Press(1006);
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Saved()[0].Field(kVille), "Lyon");
}

TEST_F(Seats, ACardThatAnotherSeatHasChangedMeanwhileIsNotSavedOver) {
  StartBoth();
  TypeInto(156, "Lyon");
  OtherSets("ALPHA", kVille, "Nice");
  Key(Qt::Key_Return);
  ExpectHeldBox();
  EXPECT_EQ(Saved()[0].Field(kVille), "Nice");
}

TEST_F(Seats, ARefusedSaveFillsTheListAgainAndKeepsWhatWasTyped) {
  StartBoth();
  TypeInto(156, "Lyon");
  OtherDeletes("CHARLIE");
  OtherSets("ALPHA", kVille, "Nice");
  Key(Qt::Key_Return);
  ExpectHeldBox();
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BETA", "BRAVO"}));
  EXPECT_EQ(Text(156), "Lyon");
  PaintAfter(10);
  EXPECT_EQ(Text(156), "Lyon");
  ClickRow(1);
  ClickRow(0);
  EXPECT_EQ(Text(156), "Nice");
}

TEST_F(Seats, ACardThatAnotherSeatEditsIsNotDeleted) {
  StartBoth();
  ASSERT_TRUE(other().LockCard(OffsetOf("BETA")));
  ClickRow(1);
  Key(Qt::Key_Delete);
  ExpectHeldBox();
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA", "BRAVO", "CHARLIE"}));
  other().UnlockCard();
  Answer(MessageButton::kOk);
  Key(Qt::Key_Delete);
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BRAVO", "CHARLIE"}));
}

TEST_F(Seats, OfTheMarkedCardsThoseUnderEditStay) {
  StartBoth();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  Choose(218);
  ASSERT_EQ(MarkedRows().size(), 4U);
  Answer(MessageButton::kOk);
  Choose(210);
  EXPECT_EQ(Asked(), (Texts{kAllGo, kHeld}));
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
  EXPECT_EQ(SavedCompanies(), Texts{"ALPHA"});
}

// A deleted card's place is taken by the last one, which must not move while it is edited.
TEST_F(Seats, ACardUnderEditKeepsTheOneInWhosePlaceItWouldMove) {
  StartBoth();
  ASSERT_TRUE(other().LockCard(OffsetOf("CHARLIE")));
  ClickRow(1);
  Key(Qt::Key_Space);
  Answer(MessageButton::kOk);
  Choose(210);
  EXPECT_EQ(Asked(), (Texts{kAllGo, kHeld}));
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA", "BRAVO", "CHARLIE"}));
  EXPECT_EQ(MarkedRows(), Numbers{1});
}

TEST_F(Seats, TheMessageIsAnErrorBoxOverTheWindow) {
  WindowMessages real;
  boxes = &real;
  StartBoth();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  TypeInto(156, "Lyon");
  Expect(DialogUser::kMessageBox, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Erreur");
    EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).text(), kHeld);
    dialog.accept();
  });
  Key(Qt::Key_Return);
  EXPECT_TRUE(user.IsDone());
  EXPECT_EQ(Saved()[0].Field(kVille), "");
}

// ---- marks ----

TEST_F(Seats, MarksOfTheSeatsStayApart) {
  StartBoth();
  ClickRow(1);
  Key(Qt::Key_Space);
  ChangeMark(other(), 0, true);
  OtherAdds("AARON");
  PaintAfter(10);
  EXPECT_EQ(Rows().front(), "AARON");
  EXPECT_EQ(MarkedRows(), Numbers{2});
  EXPECT_EQ(Text(183), "1");
  EXPECT_TRUE(other().address().Entry(1).bit(other().selection_bit()));
  EXPECT_EQ(CountMarks(other()), 1);
}

// ---- owners ----

class SeatOwners : public Seats {
 protected:
  void GiveTo(const std::string& stem, uint8_t seat) {
    Build(stem, {CardWith({{kSte1, "SECRETE"}})});
    std::vector<std::byte> bytes = files.Contents(stem + ".DAN");
    bytes[MainHeader::kOwnerOffset] = std::byte{seat};
    files.SetContents(stem + ".DAN", bytes);
  }
};

TEST_F(SeatOwners, APrivateDirectoryOfAnotherSeatIsRefusedByTheChooser) {
  BuildCompanies(3);
  GiveTo(home + "PRIVE", 7);
  StartWithSeats();
  Expect(128, [](QDialog& dialog) { ClickText(FilesOf(dialog), "PRIVE.DAN", true); });
  Press(1010);
  EXPECT_EQ(Asked(), Texts{"Accès refusé, Carnetel privé de:   (Poste N° 07)"});
  EXPECT_EQ(script.shown.back().title_id, kErrorTitle);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BETA", "BRAVO"}));
}

TEST_F(SeatOwners, AtTheStartTheDefaultDirectoryIsOfferedInItsPlace) {
  BuildCompanies(3);
  GiveTo(home + "PRIVE", 7);
  SetProfile("File1", "&1 " + home + "PRIVE.DAN");
  Answer(MessageButton::kOk);
  StartWithSeats();
  EXPECT_EQ(Asked(), Texts{"Accès a " + home +
                           "PRIVE.DAN refusé. \nCarnetel privé de:   (Poste N° "
                           "07)\nCharger l'carnetel défaut ?"});
  EXPECT_EQ(script.shown.back().style, MessageStyle::kOkCancel);
  EXPECT_EQ(Rows(), (Texts{"ALPHA", "BETA", "BRAVO"}));
  EXPECT_EQ(window->windowTitle().toStdString(), "Carnetel -  " + home + "CARNETEL.DAN");
}

TEST_F(SeatOwners, TheOwnerItselfIsLetIn) {
  GiveTo(DefaultPath(), 3);
  StartWithSeats();
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Rows(), Texts{"SECRETE"});
}

// ---- where files cannot be shared ----

TEST_F(Seats, WithoutLocksNoWindowOpens) {
  GatedFileSystem gate(files);
  gate.may_lock = [] { return false; };
  StartupRequest request;
  request.workstation_number = 3;
  request.exchange_file_path = home + "ECHANGE.DAT";
  session = std::make_unique<Session>(SessionServices{gate, clock, progress, *boxes, profile},
                                      request, home);
  session->Start();
  RunWindows windows(*session, busy, 32767);
  std::ostringstream told;
  RunSession(*session, windows, CallerNotifier(0, told, {}));
  EXPECT_EQ(Asked(), Texts{"L'utilisation de l'carnetel sous Réseau nécéssite le SHARE Dos"});
  EXPECT_EQ(script.shown.back().style, MessageStyle::kError);
  EXPECT_EQ(told.str(), "");
  EXPECT_EQ(files.List(home), Texts{});
  session.reset();
}

}  // namespace
}  // namespace carnetel::desktop
