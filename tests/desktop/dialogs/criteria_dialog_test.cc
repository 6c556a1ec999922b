// The dialog in which criteria are typed, as its user meets it: what it shows of a file, what its
// edits take, what its buttons empty and store.
#include <QWheelEvent>

#include "tests/desktop/dialogs/criteria_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

// ---- what it shows ----

TEST_F(CriteriaDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog->objectName(), "107");
  EXPECT_EQ(dialog->windowTitle(), "Saisie des critères de sélection");
  EXPECT_EQ(Name(), "Dernière Sélection");
  const std::pair<int, const char*> texts[] = {{188, "&Remplacer sél. courante"},
                                               {208, "&Ajouter  à sél. courante"},
                                               {211, "Effacer &Ligne"},
                                               {212, "Effacer &Tout"},
                                               {213, "&Sauver/Charger critères"},
                                               {2, "&Quitter"},
                                               {500, "?"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(Find<QPushButton>(*dialog, id)->text(), text);
  EXPECT_EQ(dialog->findChildren<QPushButton*>().size(), 7);
}

TEST_F(CriteriaDialogTest, OffersFieldsAndComparatorsInTheirOrder) {
  Open();
  const QStringList fields = {"",     "PRENOM", "NOM",  "STE1", "STE2", "ADR1", "ADR2",
                              "CP",   "VILLE",  "PAYS", "TEL1", "TEL2", "FAX",  "MODEM",
                              "REF1", "REF2",   "REF3", "REF4", "REF5", "REF6", "NOTES"};
  const QStringList comparators = {"=", "<>", "<=", ">=", "<", ">", "~"};
  for (int row = 0; row < 6; ++row) {
    QStringList shown;
    for (int i = 0; i < Field(row)->count(); ++i) shown += Field(row)->itemText(i);
    EXPECT_EQ(shown, fields);
    shown.clear();
    for (int i = 0; i < ComparatorOf(row)->count(); ++i) shown += ComparatorOf(row)->itemText(i);
    EXPECT_EQ(shown, comparators);
  }
}

TEST_F(CriteriaDialogTest, ShowsTheWorkingSet) {
  Build({{"Dernière Sélection",
          {Row(1, '0', "DU"), Row(8, '6', "été"), Row(26, '3', "69000"), Row(27, '1', "")}}});
  Open();
  EXPECT_EQ(SeenRows(),
            (QStringList{"STE1|=|DU", "PAYS|~|été", "CP|>=|69000", "NOTES|<>|", "|=|", "|=|"}));
}

TEST_F(CriteriaDialogTest, WithoutAFileItIsEmptyAndMakesOne) {
  Open();
  EXPECT_EQ(SeenRows(), kEmptyRows);
  EXPECT_EQ(memory.Contents(kPath).size(), kCriteriaHeaderSize + kCriteriaRecordSize);
}

// As another program may have written them.
TEST_F(CriteriaDialogTest, AFieldThatIsNotOfferedShowsAsTheEmptyEntry) {
  Build({{"Dernière Sélection",
          {Row(6, '0', "69"), Row(-1, '1', "a"), Row(99, '2', "b"), Row(1, '0', "DU")}}});
  Open();
  EXPECT_EQ(SeenRows(), (QStringList{"|=|69", "|<>|a", "|<=|b", "STE1|=|DU", "|=|", "|=|"}));
  Press(*dialog, 188);
  EXPECT_EQ(Saved(0, 0), "10DU");
  EXPECT_EQ(Saved(0, 1), std::string("0\0", 2));
}

TEST_F(CriteriaDialogTest, AComparatorBelowTheListShowsTheFirstOne) {
  Build({{"Dernière Sélection",
          {Row(1, '\0', "a"), Row(1, '/', "b"), Row(1, '\xFF', "c"), Row(1, '6', "d")}}});
  Open();
  EXPECT_EQ(SeenRows(),
            (QStringList{"STE1|=|a", "STE1|=|b", "STE1|=|c", "STE1|~|d", "|=|", "|=|"}));
}

TEST_F(CriteriaDialogTest, AComparatorBehindTheListShowsNoneAndStaysUntilOneIsChosen) {
  Build({{"Dernière Sélection", {Row(1, '7', "a"), Row(1, '9', "b"), Row(1, 'z', "c")}}});
  Open();
  EXPECT_EQ(SeenRows().first(3), (QStringList{"STE1||a", "STE1||b", "STE1||c"}));
  ComparatorOf(1)->setCurrentText(">");
  Press(*dialog, 188);
  EXPECT_EQ(Saved(0, 0), "17a");
  EXPECT_EQ(Saved(0, 1), "15b");
  EXPECT_EQ(Saved(0, 2), "1zc");
}

// It has no terminator in the file, where the next row follows.
TEST_F(CriteriaDialogTest, AValueOfTwentyOneCharactersEndsThere) {
  const std::string longest = "abcdefghijklmnopqrstu";
  Build({{"Dernière Sélection", {Row(1, '0', longest), Row(65, '0', "x")}}});
  Open();
  EXPECT_EQ(Value(0)->text(), QString::fromStdString(longest));
}

// ---- the value edits ----

TEST_F(CriteriaDialogTest, TheFieldSetsHowMuchCanBeTyped) {
  const std::pair<const char*, int> limits[] = {
      {"", 21},     {"PRENOM", 24}, {"NOM", 24},   {"STE1", 32}, {"STE2", 32}, {"ADR1", 32},
      {"ADR2", 32}, {"CP", 21},     {"VILLE", 32}, {"PAYS", 32}, {"TEL1", 24}, {"TEL2", 24},
      {"FAX", 21},  {"MODEM", 21},  {"REF1", 24},  {"REF2", 21}, {"REF3", 21}, {"REF4", 21},
      {"REF5", 21}, {"REF6", 21},   {"NOTES", 21}};
  Open();
  for (const auto& [field, limit] : limits) {
    Field(2)->setCurrentText(field);
    Value(2)->clear();
    Value(2)->setFocus();
    beeps = 0;
    Type(QString(limit, u'1'));
    EXPECT_EQ(beeps, 0) << field;
    Type("1");
    EXPECT_EQ(Value(2)->text().size(), limit) << field;
    EXPECT_EQ(beeps, 1) << field;
  }
}

TEST_F(CriteriaDialogTest, NumberFieldsRefuseLetters) {
  Open();
  for (const char* field : {"TEL1", "TEL2", "FAX", "MODEM"}) {
    Field(0)->setCurrentText(field);
    Value(0)->clear();
    Value(0)->setFocus();
    beeps = 0;
    Type("0e4-a:+b");
    EXPECT_EQ(Value(0)->text(), "04-A:+B") << field;
    EXPECT_EQ(beeps, 1) << field;
  }
  for (const char* field : {"", "CP", "NOTES"}) {
    Field(0)->setCurrentText(field);
    Value(0)->clear();
    Value(0)->setFocus();
    beeps = 0;
    Type("eÉ€");
    EXPECT_EQ(Value(0)->text(), "eÉ") << field;
    EXPECT_EQ(beeps, 1) << field;
  }
}

TEST_F(CriteriaDialogTest, AFieldChosenByKeysSetsItsRowOnly) {
  Open();
  PressKey(Qt::Key_T);
  EXPECT_EQ(Field(0)->currentText(), "TEL1");
  Value(0)->setFocus();
  Type("e");
  EXPECT_EQ(Value(0)->text(), "");
  Value(1)->setFocus();
  Type("e");
  EXPECT_EQ(Value(1)->text(), "e");
}

TEST_F(CriteriaDialogTest, ANewFieldLeavesWhatIsTyped) {
  Open();
  Field(0)->setCurrentText("STE1");
  Value(0)->setText("Etablissements Durand et Fils");
  Field(0)->setCurrentText("TEL1");
  EXPECT_EQ(Value(0)->text(), "Etablissements Durand et Fils");
  Press(*dialog, 188);
  EXPECT_EQ(Saved(0, 0), "190Etablissements Durand");
}

TEST_F(CriteriaDialogTest, ALoadedRowIsLimitedByItsField) {
  Build({{"Dernière Sélection", {Row(19, '0', "04")}}});
  Open();
  Value(0)->setFocus();
  Value(0)->end(false);
  Type("x7");
  EXPECT_EQ(Value(0)->text(), "047");
}

TEST_F(CriteriaDialogTest, TheWheelChangesNoList) {
  Build({{"Dernière Sélection", {Row(1, '3', "a")}}});
  Open();
  for (QWidget* list : {static_cast<QWidget*>(Field(0)), static_cast<QWidget*>(ComparatorOf(0))}) {
    list->setFocus();
    QWheelEvent event(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list, &event);
  }
  EXPECT_EQ(Seen(0), "STE1|>=|a");
}

// ---- emptying ----

TEST_F(CriteriaDialogTest, ClearLineEmptiesTheRowThatHadTheFocusLast) {
  Build({{"Dernière Sélection",
          {Row(1, '0', "a"), Row(2, '1', "b"), Row(3, '2', "c"), Row(4, '9', "d")}}});
  const auto former = memory.Contents(kPath);
  Open();
  Value(1)->setFocus();
  Press(*dialog, 211);
  EXPECT_EQ(SeenRows().first(3), (QStringList{"STE1|=|a", "|=|", "ADR1|<=|c"}));
  EXPECT_EQ(FocusId(), 521);
  ComparatorOf(2)->setFocus();
  Press(*dialog, 211);
  EXPECT_EQ(Seen(2), "|=|");
  EXPECT_EQ(FocusId(), 522);
  Field(3)->setFocus();
  Press(*dialog, 211);
  EXPECT_EQ(Seen(3), "|=|");
  EXPECT_EQ(FocusId(), 523);
  EXPECT_EQ(Seen(0), "STE1|=|a");
  ExpectOpenAndUnsaved(former);
}

TEST_F(CriteriaDialogTest, AtFirstTheCurrentRowIsTheFirst) {
  Build({{"Dernière Sélection", {Row(19, '0', "1"), Row(2, '1', "b")}}});
  Open();
  EXPECT_EQ(FocusId(), 520);
  PressMnemonic(*dialog, Qt::Key_L, 211);
  EXPECT_EQ(SeenRows().first(2), (QStringList{"|=|", "STE2|<>|b"}));
  // The limits of the empty entry.
  Value(0)->setFocus();
  Type("e");
  EXPECT_EQ(Value(0)->text(), "e");
}

TEST_F(CriteriaDialogTest, ClearAllEmptiesEveryRow) {
  Build({{"Dernière Sélection", std::vector<CriteriaRow>(6, Row(1, '3', "a"))}});
  const auto former = memory.Contents(kPath);
  Open();
  Value(4)->setFocus();
  Press(*dialog, 212);
  EXPECT_EQ(SeenRows(), kEmptyRows);
  EXPECT_EQ(FocusId(), 520);
  ExpectOpenAndUnsaved(former);
  Fill(0, "NOM", "=", "x");
  Press(*dialog, 211);
  EXPECT_EQ(SeenRows(), kEmptyRows);
}

// ---- select ----

TEST_F(CriteriaDialogTest, ReplaceStoresTheRowsAndEnds) {
  Build({{"Dernière Sélection", {}}, {"Nord", {Row(2, '0', "n")}}});
  Open();
  Fill(0, "STE1", "~", "été");
  Fill(2, "TEL1", "<>", "");
  Fill(3, "NOM", "~", "");
  Press(*dialog, 188);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  EXPECT_EQ(dialog->end(), CriteriaEnd::kReplace);
  EXPECT_EQ(Saved(0, 0), "16\x82t\x82");
  EXPECT_EQ(Saved(0, 1), "191");
  EXPECT_EQ(Saved(0, 2), std::string("0\0", 2));
  EXPECT_EQ(Saved(1, 0), "20n");
  EXPECT_EQ(form->row_count(), 2u);
}

TEST_F(CriteriaDialogTest, AddStoresTheRowsAndEnds) {
  Open();
  Fill(5, "CP", ">", "69");
  Press(*dialog, 208);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  EXPECT_EQ(dialog->end(), CriteriaEnd::kAdd);
  EXPECT_EQ(Saved(0, 0), "26569");
}

TEST_F(CriteriaDialogTest, WithoutAValidRowBothSayItAndStay) {
  Open();
  Fill(1, "", "=", "no field");
  Fill(2, "NOM", "~", "");
  const auto former = memory.Contents(kPath);
  for (const int id : {188, 208}) {
    script.shown.clear();
    Press(*dialog, id);
    ASSERT_EQ(script.shown.size(), 1u);
    EXPECT_EQ(script.shown[0].style, MessageStyle::kInformation);
    EXPECT_EQ(script.shown[0].title_id, 80);
    EXPECT_EQ(script.shown[0].text, "Sélection impossible : Absence de critères valides");
    ExpectOpenAndUnsaved(former);
    EXPECT_EQ(dialog->end(), CriteriaEnd::kQuit);
    EXPECT_EQ(Seen(2), "NOM|~|");
  }
}

TEST_F(CriteriaDialogTest, QuitEscapeAndTheCrossStoreNothing) {
  Build({{"Dernière Sélection", {Row(1, '0', "a")}}});
  const auto former = memory.Contents(kPath);
  const std::function<void()> ways[] = {
      [this] { Press(*dialog, 2); }, [] { PressKey(Qt::Key_Escape); }, [this] { dialog->close(); }};
  for (const auto& way : ways) {
    Open();
    Fill(0, "NOM", "=", "b");
    way();
    EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
    EXPECT_EQ(dialog->end(), CriteriaEnd::kQuit);
    EXPECT_EQ(memory.Contents(kPath), former);
  }
  Open();
  EXPECT_EQ(Seen(0), "STE1|=|a");
}

}  // namespace
}  // namespace carnetel::desktop
