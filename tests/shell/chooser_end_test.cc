// How the chooser ends: the extractions with what they leave in the caller's file and what they
// answer, quitting, and the directories that it opens in between.
#include "shell/file_picker.h"
#include "tests/shell/chooser_fixture.h"

namespace carnetel {
namespace {

class ChooserEnds : public ChooserTest {
 protected:
  void ExpectEnd(int32_t result) {
    EXPECT_EQ(view.ends, 1);
    EXPECT_EQ(chooser->result(), result);
    EXPECT_EQ(session->directory(), nullptr);
    EXPECT_EQ(messages.TakeShown(), Shown());
  }
  // Makes the caller's file one that cannot be opened: its name is a folder's.
  void BlockExchangeFile() { memory.MakeFolder(ExchangeFile()); }
  [[nodiscard]] std::string ExchangeText() const {
    return std::string(AsChars(memory.Contents(ExchangeFile())));
  }
  [[nodiscard]] static size_t Count(const std::string& text, const std::string& part) {
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }
};

// ---- one card ----

TEST_F(ChooserEnds, ACardIsHandedOutByEveryWayOfIt) {
  BuildFour();
  for (const int type : {kSingle, kMany}) {
    for (const int command : {1, 221, 1030}) {
      SCOPED_TRACE(command);
      memory.Remove(ExchangeFile());
      StartChooser(type);
      chooser->list().SetCurrentRow(1);
      chooser->Dispatch(command);
      ExpectEnd(1);
      EXPECT_EQ(Extracted(), Texts{"0340000003"});
      // The offset of the card.
      EXPECT_EQ(LoadLe32(memory.Contents(ExchangeFile()), 30), 3U * 768);
      Exit();
    }
  }
}

TEST_F(ChooserEnds, ALongRecordIsAskedForByTheLaunchType) {
  BuildFour();
  StartChooser(kManyLong);
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_EQ(Extracted(161), Texts{"0140000001"});
}

TEST_F(ChooserEnds, WhatTheCallerLeftInItsFileStays) {
  BuildFour();
  memory.SetContents(ExchangeFile(), AsBytes("PREFIX"));
  StartChooser(kMany);
  chooser->Dispatch(223);
  ExpectEnd(2);
  EXPECT_EQ(ExchangeText().size(), 6U + 3 * 149);
  EXPECT_TRUE(ExchangeText().starts_with("PREFIX0140000001"));
}

TEST_F(ChooserEnds, ACardWithoutANumberIsToldAndTheWindowStays) {
  // A number of one character counts as none in a long record.
  Build({CardWith({{kSte1, "ALPHA"}, {kFax, "1"}}), CardWith({{kSte1, "BETA"}, {kFax, "22"}})});
  StartChooser(11);
  chooser->Dispatch(1);
  EXPECT_EQ(
      messages.TakeShown(),
      (Shown{{MessageStyle::kError, 79, "La fiche sélectionnée ne comporte pas de numéro..."}}));
  EXPECT_EQ(view.ends, 0);
  EXPECT_NE(session->directory(), nullptr);
  chooser->Step(1);
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_EQ(Extracted(161), Texts{"22"});
}

TEST_F(ChooserEnds, AFileThatCannotBeOpenedIsToldAndTheWindowClosesAsByQuitting) {
  BuildFour();
  BlockExchangeFile();
  SetProfile("File3", "&3 " + home + "AUTRE.DAN");
  for (const int type : {kMany, kViafax}) {
    StartChooser(type);
    chooser->Dispatch(1);
    EXPECT_EQ(messages.TakeShown(),
              (Shown{{MessageStyle::kInformation, 80,
                      "Accès au fichier " + ExchangeFile() + " impossible"}}));
    EXPECT_EQ(view.ends, 1);
    EXPECT_EQ(chooser->result(), 0);
    EXPECT_EQ(Profile("File2"), "&2 " + home + "AUTRE.DAN");
    Exit();
  }
}

// ---- several cards ----

TEST_F(ChooserEnds, TheSelectionIsHandedOut) {
  BuildFour();
  for (const int command : {222, 1032}) {
    memory.Remove(ExchangeFile());
    // BETA is marked as well, and is not listed.
    WithDirectory([](Directory& directory) { ChangeMark(directory, 1, true); });
    StartChooser(kMany);
    if (Marked().empty()) {
      chooser->ToggleRow(0);
      chooser->ToggleRow(2);
    }
    ASSERT_EQ(view.marked, 2);
    chooser->Dispatch(command);
    ExpectEnd(2);
    EXPECT_EQ(Extracted(), (Texts{"0140000001", "0440000004"}));
    Exit();
  }
}

TEST_F(ChooserEnds, AnEmptySelectionCannotBeHandedOut) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_FALSE(view.enabled.contains(1032));
  for (const int command : {222, 1032}) chooser->Dispatch(command);
  EXPECT_EQ(view.ends, 0);
  EXPECT_FALSE(memory.Exists(ExchangeFile()));
}

TEST_F(ChooserEnds, AGroupIsHandedOutAsItIsShown) {
  BuildFour();
  MakeGroup("Divers", {1, 2, 3});
  for (const int command : {223, 1031}) {
    memory.Remove(ExchangeFile());
    StartChooser(kMany);
    chooser->PickGroup(1);
    chooser->Dispatch(command);
    ExpectEnd(2);
    EXPECT_EQ(Extracted(), (Texts{"0340000003", "0440000004"}));
    Exit();
  }
}

TEST_F(ChooserEnds, WhoPicksOneCardHandsOutNoGroupAndNoSelection) {
  BuildFour();
  WithDirectory([](Directory& directory) { ChangeMark(directory, 0, true); });
  StartChooser(kSingle);
  for (const int command : {222, 223, 1031, 1032}) chooser->Dispatch(command);
  EXPECT_EQ(view.ends, 0);
  EXPECT_FALSE(memory.Exists(ExchangeFile()));
}

// ---- Viafax ----

TEST_F(ChooserEnds, AViafaxJobAnswersWithItsCards) {
  BuildFour();
  StartChooser(kViafax);
  EXPECT_TRUE(chooser->viafax_output());
  chooser->Dispatch(223);
  ExpectEnd(3);
  EXPECT_EQ(Count(ExchangeText(), "ADR01="), 3U);
  EXPECT_TRUE(ExchangeText().starts_with("NOM CLIENT\r\n\r\nADMIN BL=2345,"));
  Exit();
  StartChooser(kViafax);
  chooser->ToggleRow(0);
  chooser->ToggleRow(2);
  chooser->Dispatch(222);
  ExpectEnd(2);
  Exit();
  StartChooser(kViafax);
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_EQ(Count(ExchangeText(), "ADR01="), 6U);
  EXPECT_EQ(Count(ExchangeText(), "NOM CLIENT"), 1U);
  EXPECT_EQ(Count(ExchangeText(), "NNNN"), 1U);
}

TEST_F(ChooserEnds, TheViafaxLineIsThatOfTheProfileAndOfTheDialog) {
  BuildFour();
  SetProfile("ViafaxOption", "6");
  StartChooser(kViafax);
  int asked = 0;
  dialogs.viafax_option = [&](ViafaxOptionForm& form) {
    EXPECT_EQ(form.option(), 6);
    form.Choose(5);
    return ++asked > 1;
  };
  chooser->Dispatch(235);
  EXPECT_EQ(Profile("ViafaxOption"), "6");
  chooser->Dispatch(235);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(Profile("ViafaxOption"), "5");
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_NE(ExchangeText().find("ADR08=\"M.-DURAND-Jean\","), std::string::npos);
}

TEST_F(ChooserEnds, TheDialogOfTheViafaxLineRemembersBothChoices) {
  BuildFour();
  StartChooser(kViafax);
  dialogs.viafax_option = [](ViafaxOptionForm& form) {
    EXPECT_EQ(form.option(), 0);
    form.Choose(2);
    form.set_subject(ViafaxSubject::kName);
    form.Choose(4);
    return true;
  };
  chooser->Dispatch(235);
  dialogs.viafax_option = [](ViafaxOptionForm& form) {
    EXPECT_EQ(form.option(), 4);
    EXPECT_EQ(form.option(ViafaxSubject::kCompany), 2);
    return false;
  };
  chooser->Dispatch(235);
  EXPECT_EQ(Profile("ViafaxOption"), "4");
}

TEST_F(ChooserEnds, TheViafaxSenderStandsInTheCallersSettings) {
  BuildFour();
  memory.SetContents(home + "VIAFAX.INI", AsBytes("[General]\r\nUserName=Anne\r\n"));
  StartupRequest request = Request(kViafax);
  request.appli_name = "VIAFAX";
  StartChooser(request);
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_NE(ExchangeText().find("FROM=\"Anne\","), std::string::npos);
}

TEST_F(ChooserEnds, TheSettingsOfTheCallerAreFoundWhateverTheirCase) {
  BuildFour();
  memory.SetContents(home + "viafax.ini", AsBytes("[General]\r\nUserName=Paul\r\n"));
  StartupRequest request = Request(kViafax);
  request.appli_name = "VIAFAX";
  StartChooser(request);
  chooser->Dispatch(1);
  EXPECT_NE(ExchangeText().find("FROM=\"Paul\","), std::string::npos);
}

// ---- quitting and recent directories ----

class ChooserRecents : public ChooserEnds {
 protected:
  void SetUp() override {
    BuildFour();
    for (const char* name : {"A", "B"}) {
      Build(home + name, {CardWith({{kSte1, name}, {kFax, "99"}})});
    }
    SetProfile("File1", "&1 " + DefaultPath() + ".DAN");
    SetProfile("File2", Item(2, "A"));
    SetProfile("File3", Item(3, "B"));
  }
  [[nodiscard]] std::string Item(int number, const std::string& name) const {
    return "&" + std::to_string(number) + " " + home + name + ".DAN";
  }
};

TEST_F(ChooserRecents, QuittingByEveryWayOfItAnswersNothing) {
  for (const int command : {2, 206, 1012}) {
    StartChooser(kMany);
    chooser->Dispatch(command);
    ExpectEnd(0);
    EXPECT_FALSE(memory.Exists(ExchangeFile()));
    Exit();
  }
}

TEST_F(ChooserRecents, AreSavedByQuittingOnly) {
  StartChooser(kMany);
  EXPECT_EQ(view.recents, (Texts{Item(1, "CARNETEL"), Item(2, "A"), Item(3, "B")}));
  chooser->Dispatch(227);
  EXPECT_EQ(view.recents, (Texts{Item(1, "B"), Item(2, "CARNETEL"), Item(3, "A")}));
  EXPECT_EQ(Companies(), Texts{"B"});
  chooser->Dispatch(1);
  ExpectEnd(1);
  EXPECT_EQ(Profile("File2"), Item(2, "A"));
  Exit();
  // That is written for every role.
  EXPECT_EQ(Profile("File1"), Item(1, "B"));
  SetProfile("File3", Item(3, "CARNETEL"));
  StartChooser(kMany);
  chooser->Dispatch(226);
  EXPECT_EQ(Companies(), Texts{"A"});
  chooser->Dispatch(206);
  ExpectEnd(0);
  EXPECT_EQ(Profile("File2"), Item(2, "B"));
  EXPECT_EQ(Profile("File3"), Item(3, "CARNETEL"));
}

TEST_F(ChooserRecents, TheOpenOneDoesNothing) {
  StartChooser(kMany);
  chooser->list().SetCurrentRow(2);
  const int refills = view.refills;
  for (const int command : {225, 228}) chooser->Dispatch(command);
  EXPECT_EQ(view.refills, refills);
  EXPECT_EQ(chooser->list().current_row(), 2);
}

TEST_F(ChooserRecents, AnotherSeatsDirectoryIsPassedOverSilently) {
  memory.MakeFolder(home + "seat/");
  std::vector<std::byte> bytes = memory.Contents(home + "A.DAN");
  bytes[MainHeader::kOwnerOffset] = std::byte{5};
  memory.SetContents(home + "A.DAN", bytes);
  StartupRequest request = Request(kMany);
  request.exchange_file_path = home + "seat/FAX1.DAT";
  request.workstation_number = 3;
  StartChooser(request);
  chooser->Dispatch(226);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(session->current_path(), DefaultPath());
}

TEST_F(ChooserRecents, AFailedOneTellsItAndTheFormerDirectoryStays) {
  memory.SetContents(home + "A.DAN", AsBytes("no directory"));
  StartChooser(kMany);
  chooser->Dispatch(226);
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kError, 79, "Carnetel non valide - Choisissez un autre..."}}));
  EXPECT_EQ(Companies(), (Texts{"ALPHA", "GAMMA", "ZETA"}));
  EXPECT_EQ(view.recents, (Texts{Item(1, "CARNETEL"), Item(2, "A"), Item(3, "B")}));
}

TEST_F(ChooserRecents, AChosenDirectoryTakesThePlaceOfTheOpenOne) {
  for (const int command : {201, 1010}) {
    StartChooser(kMany);
    dialogs.file_picker = [this](FilePicker& picker) {
      picker.SetName("B");
      return picker.Accept() == PickerAnswer::kAccepted;
    };
    chooser->Dispatch(command);
    EXPECT_EQ(Companies(), Texts{"B"});
    EXPECT_EQ(view.recents.front(), Item(1, "B"));
    dialogs.file_picker = [](FilePicker&) { return false; };
    chooser->Dispatch(command);
    EXPECT_EQ(Companies(), Texts{"B"});
    chooser->Quit();
    Exit();
    SetProfile("File1", "&1 " + DefaultPath() + ".DAN");
  }
}

}  // namespace
}  // namespace carnetel
