// Saving from the card form, looked at in the files.
#include <algorithm>

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Companies = std::vector<std::string>;
using Shown = std::vector<QueuedMessages::Entry>;

const Shown kNoKeyMessage = {
    {MessageStyle::kError, 79, "Fiche incomplète : le champ d'index est obligatoire "}};
const Shown kFailedMessage = {{MessageStyle::kError, 79, "Création ou modification impossible"}};

class CardFormSave : public WindowFixture {
 protected:
  void StartWithThree() {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}}), CardWith({{kSte1, "CESAR"}})});
    Start();
  }
  std::string SavedText(size_t row, int field) {
    return Saved().at(row).card.FieldText(field).bytes();
  }
};

// ---- new cards ----

TEST_F(CardFormSave, NewCardsAreChainedUntilTheUserCancels) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "DELTA");
  view.Type(158, "0140000001");
  view.Run(1);
  // Saved, and the form is ready for the next one.
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR", "DELTA"}));
  EXPECT_EQ(SavedText(3, kTel1), "0140000001");
  EXPECT_EQ(list().current_row(), 3);
  EXPECT_EQ(form().purpose(), FormPurpose::kNewCard);
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_EQ(view.Text(150), "");
  EXPECT_EQ(view.Text(158), "");
  EXPECT_EQ(view.focus, 150);
  EXPECT_TRUE(view.cancel_face);
  view.Type(150, "AVANT");
  view.Press(1007);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "AVANT", "BETA", "CESAR", "DELTA"}));
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_EQ(form().purpose(), FormPurpose::kNewCard);
  view.Press(1008);
  EXPECT_EQ(form().purpose(), FormPurpose::kCard);
  EXPECT_EQ(view.Text(150), "AVANT");
  EXPECT_EQ(view.position, "2 / 5");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(CardFormSave, TheNextNewCardComesByAPostedCommand) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "DELTA");
  window().Dispatch(1007);
  // The list has the focus and the buttons are at rest before the next card opens.
  EXPECT_EQ(view.posted, std::deque<int>{1008});
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_FALSE(view.cancel_face);
  EXPECT_EQ(form().purpose(), FormPurpose::kCard);
  EXPECT_EQ(view.Text(150), "DELTA");
}

TEST_F(CardFormSave, ANewCardIsUnmarkedAndInTheWholeFile) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "DELTA");
  view.Run(1);
  EXPECT_TRUE(Saved()[3].entry.bit(0));
  EXPECT_FALSE(Saved()[3].marked());
  EXPECT_FALSE(list().IsMarked(3));
}

TEST_F(CardFormSave, SaveNewAtRestAddsACopy) {
  StartWithThree();
  view.Press(1007);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "ALPHA", "BETA", "CESAR"}));
  EXPECT_EQ(SavedText(0, kVille), "PARIS");
  EXPECT_EQ(SavedText(1, kVille), "PARIS");
  EXPECT_EQ(form().purpose(), FormPurpose::kCard);
}

TEST_F(CardFormSave, SaveNewDuringAChangeLeavesTheOldCard) {
  StartWithThree();
  view.Type(150, "DELTA");
  view.Press(1007);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR", "DELTA"}));
  EXPECT_EQ(SavedText(3, kVille), "PARIS");
  EXPECT_EQ(form().purpose(), FormPurpose::kCard);
  EXPECT_EQ(view.Text(150), "DELTA");
  EXPECT_FALSE(view.edit_look);
}

TEST_F(CardFormSave, TypingIntoAnEmptyDirectoryAddsTheFirstCard) {
  Start();
  view.Type(150, "SEULE");
  EXPECT_FALSE(view.IsEnabled(1006));
  EXPECT_TRUE(view.IsEnabled(1007));
  view.Run(1);
  EXPECT_EQ(SavedCompanies(), Companies{"SEULE"});
  EXPECT_EQ(view.position, "1 / 1");
  EXPECT_EQ(view.Text(150), "SEULE");
}

TEST_F(CardFormSave, ANewCardOutsideOfTheTabIsSaved) {
  StartWithThree();
  view.Run(656);
  view.Run(207);
  view.Type(150, "DELTA");
  view.Run(1);
  view.Press(1008);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR", "DELTA"}));
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(view.position, "1 / 1");
}

// ---- changes ----

TEST_F(CardFormSave, AChangeOutsideOfTheKeysStaysInPlace) {
  StartWithThree();
  list().ToggleMark(1);
  list().SetCurrentRow(1);
  const uint32_t offset = list().current_card();
  view.Type(158, "0240000002");
  view.Run(1);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR"}));
  const SavedCard saved = Saved()[1];
  EXPECT_EQ(saved.card.FieldText(kTel1).bytes(), "0240000002");
  EXPECT_EQ(saved.card.FieldText(kNom).bytes(), "MARTIN");
  EXPECT_EQ(saved.entry.card_offset(), offset);
  EXPECT_EQ(saved.entry.number_flags(), kHasTel1);
  EXPECT_TRUE(saved.marked());
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_FALSE(view.edit_look);
}

TEST_F(CardFormSave, AChangedKeyMovesTheRowAndKeepsMarksAndGroups) {
  Build({CardWith({{kSte1, "ALPHA"}, {kTel1, "01"}}), CardWith({{kSte1, "BETA"}}),
         CardWith({{kSte1, "CESAR"}})});
  // Marked, with bits of groups up to the last byte.
  std::vector<std::byte> bytes = memory.Contents(home + "CARNETEL.ADR");
  const size_t marks = EntryPosition(0) + EntrySlot::kMarksOffset;
  bytes[marks] = std::byte{0x17};
  bytes[marks + 5] = std::byte{0xA5};
  bytes[marks + 10] = std::byte{0xC0};
  memory.SetContents(home + "CARNETEL.ADR", bytes);
  Start();
  view.Type(150, "ZULU");
  view.Run(1);
  EXPECT_EQ(SavedCompanies(), (Companies{"BETA", "CESAR", "ZULU"}));
  const EntrySlot entry = Saved()[2].entry;
  std::vector<std::byte> expected(11);
  expected[0] = std::byte{0x17};
  expected[5] = std::byte{0xA5};
  expected[10] = std::byte{0xC0};
  EXPECT_TRUE(std::ranges::equal(entry.bytes().subspan(EntrySlot::kMarksOffset, 11), expected));
  EXPECT_EQ(entry.number_flags(), kHasTel1);
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_TRUE(list().IsMarked(2));
  EXPECT_EQ(view.marked, 1);
  EXPECT_EQ(view.Text(150), "ZULU");
}

TEST_F(CardFormSave, TheOtherKeyMovesACardToo) {
  StartWithThree();
  list().SetCurrentRow(1);
  view.Type(172, "BRUN");
  view.Run(1);
  EXPECT_EQ(SavedText(1, kNom), "BRUN");
  // Between the companies that stand in for the names of the others.
  const std::vector<SavedCard> by_name = Saved(kNom);
  EXPECT_EQ(by_name[1].card.FieldText(kSte1).bytes(), "BETA");
}

TEST_F(CardFormSave, AfterTheAnswerNoTheEditedCardIsSaved) {
  StartWithThree();
  view.Type(156, "LYON");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(2);
  view.Run(1);
  EXPECT_EQ(SavedText(0, kVille), "LYON");
  EXPECT_EQ(SavedText(2, kVille), "");
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR"}));
  EXPECT_EQ(list().current_row(), 0);
}

TEST_F(CardFormSave, TheMenuItemAndTheButtonSaveAlike) {
  StartWithThree();
  view.Type(156, "LYON");
  view.Run(208);
  EXPECT_EQ(SavedText(0, kVille), "LYON");
  view.Type(156, "NICE");
  view.Press(1006);
  EXPECT_EQ(SavedText(0, kVille), "NICE");
}

// ---- key fields ----

TEST_F(CardFormSave, EitherKeyIsEnough) {
  SetProfile("Idindex", "10");
  StartWithThree();
  view.Run(207);
  view.Type(150, "SEULE");
  view.Run(1);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(Saved(kNom).size(), 4u);
}

TEST_F(CardFormSave, KeyFieldsLoseWhatNoKeyBeginsWith) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "DELTA");
  view.Type(172, "  Durand");
  view.Type(156, "  Nantes");
  view.Run(1);
  EXPECT_EQ(SavedText(3, kNom), "Durand");
  EXPECT_EQ(SavedText(3, kVille), "  Nantes");
}

TEST_F(CardFormSave, AKeyOfBlanksIsNoneAndTheTextIsLost) {
  StartWithThree();
  view.Type(156, "LYON");
  view.Type(150, "   ");
  view.Run(1);
  EXPECT_EQ(messages.TakeShown(), kNoKeyMessage);
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_EQ(form().purpose(), FormPurpose::kCard);
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(view.Text(156), "PARIS");
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_FALSE(view.edit_look);
  EXPECT_EQ(SavedText(0, kVille), "PARIS");
}

TEST_F(CardFormSave, ANewCardWithoutKeyIsLostAndTheNextOneOpens) {
  StartWithThree();
  view.Run(207);
  view.Type(150, " ");
  view.Type(156, "LYON");
  view.Press(1007);
  EXPECT_EQ(messages.TakeShown(), kNoKeyMessage);
  EXPECT_EQ(form().purpose(), FormPurpose::kNewCard);
  EXPECT_EQ(view.Text(156), "");
  EXPECT_EQ(SavedCompanies().size(), 3u);
}

TEST_F(CardFormSave, AnAccentedCapitalSurvivesAChangeOfAnotherField) {
  Build({CardWith({{kSte1, "\x99stra"}, {kNom, "DURAND"}}), CardWith({{kSte1, "ALPHA"}})});
  Start();
  // In no view: the card is reached by going over the files.
  EXPECT_EQ(list().row_count(), 1);
  Quit();
  SetProfile("Idindex", "10");
  Start();
  list().FindCardRow(768);
  EXPECT_EQ(view.Text(150), "Östra");
  view.Type(158, "01");
  view.Run(1);
  EXPECT_EQ(SavedText(0, kSte1), "\x99stra");
  EXPECT_EQ(SavedText(0, kTel1), "01");
}

TEST_F(CardFormSave, AnUneditedKeyLosesItsForeignStartOnSaving) {
  Build({CardWith({{kSte1, "ALPHA"}, {kNom, "(Durand)"}})});
  Start();
  view.Type(158, "01");
  view.Run(1);
  EXPECT_EQ(SavedText(0, kNom), "Durand)");
}

// ---- failures ----

TEST_F(CardFormSave, AFailedAddKeepsTheText) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "DELTA");
  view.Type(156, "LYON");
  session->directory()->main().SetCount(kMaxCards);  // full
  view.Run(1);
  session->directory()->main().SetCount(3);
  EXPECT_EQ(messages.TakeShown(), kFailedMessage);
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_EQ(form().purpose(), FormPurpose::kNewCard);
  EXPECT_EQ(view.Text(150), "DELTA");
  EXPECT_EQ(view.Text(156), "LYON");
  EXPECT_EQ(list().row_count(), 3);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR"}));
  // With room again, Enter saves it.
  view.Run(1);
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR", "DELTA"}));
  EXPECT_EQ(SavedText(3, kVille), "LYON");
}

TEST_F(CardFormSave, AFailedAddToAnEmptyDirectoryKeepsTheText) {
  Start();
  view.Type(150, "SEULE");
  files.FillDisk();
  view.Run(1);
  EXPECT_EQ(messages.TakeShown(), kFailedMessage);
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_EQ(view.Text(150), "SEULE");
  files.Heal();
  view.Press(1007);
  EXPECT_EQ(SavedCompanies(), Companies{"SEULE"});
}

TEST_F(CardFormSave, AFailedChangeKeepsTheText) {
  for (const auto& [control, text] : {std::pair{156, "LYON"}, std::pair{150, "ZULU"}}) {
    StartWithThree();
    view.Type(control, text);
    files.FillDisk();
    view.Run(1);
    files.Heal();
    EXPECT_EQ(messages.TakeShown(), kFailedMessage);
    EXPECT_EQ(form().mode(), FormMode::kRest);
    EXPECT_EQ(view.Text(control), text);
    EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "BETA", "CESAR"}));
    EXPECT_EQ(SavedText(0, kVille), "PARIS");
    // With room again, the button saves it into its own card.
    view.Press(1006);
    EXPECT_EQ(SavedCompanies().size(), 3u);
    EXPECT_EQ(view.Text(control), text);
    Quit();
    memory.Remove(home + "CARNETEL.DAN");
  }
}

TEST_F(CardFormSave, AChangeCutShortAnywhereNeverCostsAnotherCard) {
  const auto one_more = [this](int changes) {
    StartWithThree();
    view.Type(150, "ZULU");
    files.StopAfter(changes);
    view.Run(1);
    files.Heal();
    // The user tries again, with what is still in the form.
    const bool failed = !messages.TakeShown().empty();
    if (failed) view.Run(1006);
    Quit();
    Companies saved = SavedCompanies();
    EXPECT_EQ(std::ranges::count(saved, "BETA"), 1) << changes;
    EXPECT_EQ(std::ranges::count(saved, "CESAR"), 1) << changes;
    EXPECT_GE(std::ranges::count(saved, "ZULU") + std::ranges::count(saved, "ALPHA"), 1) << changes;
    messages.TakeShown();
    for (const std::string& name : memory.List(home)) memory.Remove(home + name);
  };
  for (int changes = 0; changes < 40; ++changes) one_more(changes);
}

}  // namespace
}  // namespace carnetel
