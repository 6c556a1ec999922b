// The window at one of several seats: cards are held while they are edited, what another seat holds
// or has changed is left alone, and the list follows what the others do.
#include "storage/card_dispatch.h"
#include "tests/shell/window_fixture.h"
#include "tests/support/gated_file_system.h"

namespace carnetel {
namespace {

using Companies = std::vector<std::string>;
using Shown = std::vector<QueuedMessages::Entry>;

const QueuedMessages::Entry kHeld = {MessageStyle::kError, 79,
                                     "Fiche en cours de modification par un autre poste"};

class SeatsTest : public WindowFixture {
 protected:
  void TearDown() override { other_.reset(); }
  [[nodiscard]] std::string Stem() const { return home + "seat/CARNETEL"; }
  static StartupRequest FromSeat(const std::string& folder) {
    StartupRequest request;
    request.workstation_number = 3;
    request.exchange_file_path = folder + "ECHANGE.DAT";
    return request;
  }
  // ALPHA, BETA and CESAR, shown at seat 3; seat 4 has them open too.
  void StartAtSeat() {
    memory.MakeFolder(home + "seat/");
    Build(Stem(), {CardWith({{kSte1, "ALPHA"}, {kVille, "PARIS"}}),
                   CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}}), CardWith({{kSte1, "CESAR"}})});
    DirectoryOptions options;
    options.path = Stem();
    options.shared_dir = home + "other/";
    options.lock_wait = std::chrono::milliseconds(0);
    other_ = std::make_unique<Directory>(DirectoryServices{memory, clock, silent_}, options);
    ASSERT_EQ(other_->OpenDirectory(), OpenResult::kOpened);
    ASSERT_TRUE(Start(FromSeat(home + "seat/")));
  }
  Directory& other() { return *other_; }
  uint32_t OffsetOf(std::string_view company) {
    CardRecord card;
    for (uint32_t offset = 768; other().main().ReadCard(offset, card); offset += 768) {
      if (card.FieldText(kSte1).bytes() == company) return offset;
    }
    ADD_FAILURE() << "no " << company;
    return 0;
  }
  bool OthersMayEdit(std::string_view company) { return other().TestCardLock(OffsetOf(company)); }
  void OtherSets(std::string_view company, int field, std::string_view text) {
    const uint32_t offset = OffsetOf(company);
    CardRecord card;
    ASSERT_TRUE(other().main().ReadCard(offset, card));
    card.SetField(field, OemText(std::string(text)));
    ASSERT_NE(ChangeCard(other(), offset, card).result, ChangeResult::kNotPossible);
  }
  void OtherAdds(std::string_view company) {
    other().context().current = CardWith({{kSte1, company}});
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(other()).Add(false, &position), 0);
  }
  void OtherDeletes(std::string_view company) {
    uint32_t moved_from = 0;
    ASSERT_TRUE(carnetel::DeleteCard(other(), OffsetOf(company), &moved_from));
  }
  // What the files hold, by company.
  std::string SavedText(std::string_view company, int field) {
    CardRecord card;
    EXPECT_TRUE(other().main().ReadCard(OffsetOf(company), card));
    return card.FieldText(field).bytes();
  }
  Companies All() {
    EXPECT_TRUE(ChangeScope(other()));
    Companies companies;
    for (uint32_t row = 0; row < other().address().entry_count(); ++row) {
      CardRecord card;
      EXPECT_TRUE(other().main().ReadCard(other().address().CardOffsetAt(row), card));
      companies.push_back(card.FieldText(kSte1).bytes());
    }
    return companies;
  }
  // Companies in the list; the cards have no names.
  Companies InList() {
    Companies companies = Rows();
    for (std::string& label : companies) label.resize(label.find_last_not_of(' ') + 1);
    return companies;
  }
  void PaintAfter(int64_t seconds) {
    clock.Advance(seconds);
    window().ListPainted();
    view.DeliverPosted();
  }
  void ExpectRefusedAtRest() {
    EXPECT_EQ(messages.TakeShown(), Shown{kHeld});
    EXPECT_EQ(form().mode(), FormMode::kRest);
  }

 private:
  SilentProgress silent_;
  std::unique_ptr<Directory> other_;
};

// ---- a card under edit ----

TEST_F(SeatsTest, TheFirstKeystrokeHoldsTheCardAndGoingToAFieldDoesNot) {
  StartAtSeat();
  view.Focus(158);
  EXPECT_TRUE(OthersMayEdit("ALPHA"));
  view.Type(158, "0");
  EXPECT_FALSE(OthersMayEdit("ALPHA"));
  EXPECT_TRUE(OthersMayEdit("BETA"));
}

TEST_F(SeatsTest, CancellingLetsTheCardGo) {
  StartAtSeat();
  view.Type(158, "0");
  view.Press(1008);
  EXPECT_TRUE(OthersMayEdit("ALPHA"));
}

TEST_F(SeatsTest, DiscardingLetsTheCardGo) {
  StartAtSeat();
  view.Type(158, "0");
  messages.Answer(MessageButton::kYes);
  view.Run(2);
  EXPECT_TRUE(OthersMayEdit("ALPHA"));
}

TEST_F(SeatsTest, StayingWithTheChangesKeepsTheCard) {
  StartAtSeat();
  view.Type(158, "0");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(1);
  EXPECT_FALSE(OthersMayEdit("ALPHA"));
}

TEST_F(SeatsTest, SavingLetsTheCardGo) {
  StartAtSeat();
  view.Type(158, "0140");
  view.Press(1006);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(SavedText("ALPHA", kTel1), "0140");
  EXPECT_TRUE(OthersMayEdit("ALPHA"));
}

TEST_F(SeatsTest, ClosingTheDirectoryLetsTheCardGo) {
  StartAtSeat();
  view.Type(158, "0");
  window().QuitUnasked();
  session->CloseDirectory();
  EXPECT_TRUE(OthersMayEdit("ALPHA"));
}

TEST_F(SeatsTest, ANewCardHoldsNothing) {
  StartAtSeat();
  view.Run(207);
  view.Type(150, "DELTA");
  for (const char* company : {"ALPHA", "BETA", "CESAR"}) EXPECT_TRUE(OthersMayEdit(company));
  view.Run(1);
  EXPECT_EQ(All(), (Companies{"ALPHA", "BETA", "CESAR", "DELTA"}));
}

// ---- saving ----

TEST_F(SeatsTest, ACardThatAnotherSeatHoldsIsNotSaved) {
  StartAtSeat();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  view.Type(158, "0140");
  EXPECT_EQ(messages.TakeShown(), Shown());
  view.Press(1006);
  ExpectRefusedAtRest();
  EXPECT_EQ(view.Text(158), "0140");
  EXPECT_EQ(SavedText("ALPHA", kTel1), "");
}

TEST_F(SeatsTest, ACardThatAnotherSeatHasLetGoUnchangedIsSaved) {
  StartAtSeat();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  view.Type(158, "0140");
  other().UnlockCard();
  view.Press(1006);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(SavedText("ALPHA", kTel1), "0140");
}

// Shown before the other seat's change: saving would undo it.
TEST_F(SeatsTest, ACardThatAnotherSeatHasChangedIsNotSaved) {
  StartAtSeat();
  OtherSets("ALPHA", kVille, "LYON");
  view.Type(158, "0140");
  view.Press(1006);
  ExpectRefusedAtRest();
  EXPECT_EQ(view.Text(158), "0140");
  EXPECT_EQ(SavedText("ALPHA", kVille), "LYON");
  EXPECT_EQ(SavedText("ALPHA", kTel1), "");
}

TEST_F(SeatsTest, ACardIsNotSavedOverAnotherOneThatHasTakenItsPlace) {
  StartAtSeat();
  OtherDeletes("ALPHA");
  view.Type(158, "0140");
  view.Press(1006);
  ExpectRefusedAtRest();
  EXPECT_EQ(All(), (Companies{"BETA", "CESAR"}));
  EXPECT_EQ(SavedText("CESAR", kTel1), "");
}

TEST_F(SeatsTest, ANewKeyWaitsWhileTheLastCardIsEdited) {
  StartAtSeat();
  ASSERT_TRUE(other().LockCard(OffsetOf("CESAR")));
  view.Type(150, "ZORRO");
  view.Press(1006);
  ExpectRefusedAtRest();
  EXPECT_EQ(All(), (Companies{"ALPHA", "BETA", "CESAR"}));
  EXPECT_EQ(view.Text(150), "ZORRO");
}

TEST_F(SeatsTest, AfterARefusalTheListShowsWhatTheOthersDid) {
  StartAtSeat();
  OtherSets("ALPHA", kSte1, "OMEGA");
  view.Type(158, "0140");
  view.Press(1006);
  ExpectRefusedAtRest();
  EXPECT_EQ(InList(), (Companies{"BETA", "CESAR", "OMEGA"}));
}

// ---- deleting ----

TEST_F(SeatsTest, ACardThatAnotherSeatHoldsIsNotDeletedNorAskedAbout) {
  StartAtSeat();
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  view.Run(209);
  EXPECT_EQ(messages.TakeShown(), Shown{kHeld});
  EXPECT_EQ(All().size(), 3U);
  other().UnlockCard();
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  EXPECT_EQ(All(), (Companies{"BETA", "CESAR"}));
}

TEST_F(SeatsTest, NothingIsLockedWhileTheUserThinksAboutADeletion) {
  StartAtSeat();
  bool free = false;
  messages.while_shown = [&] { free = OthersMayEdit("ALPHA") && ChangeScope(other()); };
  messages.Answer(MessageButton::kCancel);
  view.Run(209);
  EXPECT_TRUE(free);
}

TEST_F(SeatsTest, ACardThatChangesWhileTheUserThinksIsNotDeleted) {
  StartAtSeat();
  int boxes = 0;
  messages.while_shown = [&] {
    if (++boxes == 1) OtherDeletes("ALPHA");
  };
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  const Shown shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(shown[1], kHeld);
  EXPECT_EQ(All(), (Companies{"BETA", "CESAR"}));
  EXPECT_EQ(InList(), (Companies{"BETA", "CESAR"}));
}

TEST_F(SeatsTest, OfTheMarkedCardsThoseThatOthersEditStay) {
  StartAtSeat();
  view.Run(218);
  ASSERT_EQ(MarkedRows().size(), 3U);
  ASSERT_TRUE(other().LockCard(OffsetOf("ALPHA")));
  messages.Answer(MessageButton::kOk);
  view.Run(210);
  const Shown shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(shown[1], kHeld);
  EXPECT_EQ(All(), (Companies{"ALPHA"}));
  EXPECT_EQ(InList(), (Companies{"ALPHA"}));
}

// ---- following the others ----

TEST_F(SeatsTest, TheListLooksEveryTenSecondsForChangesOfOthers) {
  StartAtSeat();
  PaintAfter(0);
  OtherAdds("BRAVO");
  PaintAfter(9);
  EXPECT_EQ(Rows().size(), 3U);
  PaintAfter(1);
  EXPECT_EQ(InList(), (Companies{"ALPHA", "BETA", "BRAVO", "CESAR"}));
  OtherDeletes("BETA");
  PaintAfter(9);
  EXPECT_EQ(Rows().size(), 4U);
  PaintAfter(1);
  EXPECT_EQ(InList(), (Companies{"ALPHA", "BRAVO", "CESAR"}));
}

TEST_F(SeatsTest, MarksOfCardsThatAreStillThereStay) {
  StartAtSeat();
  list().SetCurrentRow(1);
  view.Run(218);
  OtherAdds("BRAVO");
  PaintAfter(10);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 1, 3}));
}

TEST_F(SeatsTest, NothingIsTakenOverWhileACardIsKeyed) {
  StartAtSeat();
  view.Type(158, "0140");
  OtherAdds("AAA");
  PaintAfter(10);
  EXPECT_EQ(view.Text(158), "0140");
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_FALSE(OthersMayEdit("ALPHA"));
  view.Press(1008);
  PaintAfter(10);
  EXPECT_EQ(InList().front(), "AAA");
}

TEST_F(SeatsTest, NothingIsTakenOverWhileANewCardIsEntered) {
  StartAtSeat();
  view.Run(207);
  OtherAdds("AAA");
  PaintAfter(10);
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_EQ(form().purpose(), FormPurpose::kNewCard);
}

TEST_F(SeatsTest, WithoutAChangeTheListIsNotFilledAgain) {
  StartAtSeat();
  list().SetCurrentRow(2);
  view.Type(158, "0");
  view.Press(1008);
  PaintAfter(10);
  EXPECT_EQ(list().current_row(), 2);
}

TEST_F(SeatsTest, TheFormShowsTheCardAsTheOtherSeatHasLeftIt) {
  StartAtSeat();
  OtherSets("ALPHA", kVille, "LYON");
  OtherAdds("ZOULOU");
  PaintAfter(10);
  EXPECT_EQ(view.Text(156), "LYON");
}

TEST_F(SeatsTest, TheOtherSeatsOwnAddressFileIsItsOwn) {
  StartAtSeat();
  view.Run(218);
  EXPECT_EQ(MarkedRows().size(), 3U);
  { EXPECT_TRUE(ChangeScope(other())); }
  EXPECT_EQ(CountMarks(other()), 0);
}

// ---- without seats ----

TEST_F(SeatsTest, WithoutSeatsNothingIsLockedAndNothingLookedFor) {
  Build({CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "BETA"}})});
  memory.ResetCounts();
  ASSERT_TRUE(Start());
  view.Type(158, "0140");
  view.Press(1006);
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  clock.Advance(60);
  window().ListPainted();
  EXPECT_TRUE(view.posted.empty());
  view.Run(kEventCheckSeats);
  EXPECT_EQ(InList(), Companies{"BETA"});
  EXPECT_EQ(memory.counts().locks, 0);
}

// ---- the start ----

class SharingStart : public SeatsTest {
 protected:
  void StartOver(FileSystem& disk) {
    memory.MakeFolder(home + "seat/");
    session = std::make_unique<Session>(SessionServices{disk, clock, progress, messages, profile},
                                        FromSeat(home + "seat/"), home);
    session->Start();
  }
};

TEST_F(SharingStart, EndsWhereFilesCannotBeLocked) {
  GatedFileSystem gate(memory);
  gate.may_lock = [] { return false; };
  StartOver(gate);
  EXPECT_TRUE(session->sharing_failed());
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kError, 51,
                    "L'utilisation de l'carnetel sous Réseau nécéssite le SHARE Dos"}}));
  EXPECT_TRUE(memory.List(home + "seat").empty());
  session.reset();
}

TEST_F(SharingStart, GoesOnWhereTheyCan) {
  StartOver(memory);
  EXPECT_FALSE(session->sharing_failed());
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_TRUE(memory.List(home + "seat").empty());
}

TEST_F(SharingStart, TriesNothingWithoutSeats) {
  GatedFileSystem gate(memory);
  gate.may_lock = [] {
    ADD_FAILURE() << "a lock without seats";
    return false;
  };
  session = std::make_unique<Session>(SessionServices{gate, clock, progress, messages, profile},
                                      StartupRequest{}, home);
  session->Start();
  EXPECT_FALSE(session->sharing_failed());
  session.reset();
}

// No table of names: a seat is its number, however large.
TEST_F(SharingStart, SeatsAreTheirNumbers) {
  StartOver(memory);
  EXPECT_EQ(session->OwnerLine(3), "  (Poste N° 03)");
  EXPECT_EQ(session->OwnerLine(300), "  (Poste N° 300)");
  EXPECT_EQ(session->OwnerLine(0), "Carnetel Public");
}

// The wish to own a directory comes after another seat's that was quicker.
TEST_F(SharingStart, ADirectoryThatAnotherSeatHasJustTakenStaysThatSeats) {
  Build(home + "seat/CARNETEL", {CardWith({{kSte1, "ALPHA"}})});
  GatedFileSystem gate(memory);
  StartOver(gate);
  session->set_private_requested(true);
  int locks = 0;
  gate.may_lock = [&] {
    // The second change is that of the owner.
    if (++locks == 2) {
      std::vector<std::byte> bytes = memory.Contents(home + "seat/CARNETEL.DAN");
      StoreLe16(bytes, MainHeader::kOwnerOffset, 9);
      memory.SetContents(home + "seat/CARNETEL.DAN", bytes);
    }
    return true;
  };
  EXPECT_TRUE(session->OpenDirectoryChecked(home + "seat/CARNETEL", false));
  EXPECT_EQ(locks, 2);
  EXPECT_EQ(ReadMainHeader(memory, home + "seat/CARNETEL.DAN")->owner(), 9);
  session.reset();
}

}  // namespace
}  // namespace carnetel
