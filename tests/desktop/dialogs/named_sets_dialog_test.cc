// The dialog that keeps sets, as its user meets it: the list, every button and what it leaves
// enabled, beeps, questions and the focus. The sets themselves are kept by the test.
#include "desktop/dialogs/named_sets_dialog.h"

#include <memory>

#include "desktop/controls/window_messages.h"
#include "tests/desktop/dialogs/dialog_testing.h"

namespace carnetel::desktop {
namespace {

using Names = std::vector<std::string>;

// Sets without contents.
class SetsOfTest : public SetStore {
 public:
  [[nodiscard]] std::vector<std::string> Names() override { return names; }
  [[nodiscard]] bool HasContent() const override { return has_content; }
  bool Load(size_t position) override {
    calls += "load " + std::to_string(position);
    return works;
  }
  bool Add(const std::string& name) override {
    calls += "add " + name;
    return works;
  }
  bool Replace(size_t position, const std::string& name) override {
    calls += "replace " + std::to_string(position) + " " + name;
    return works;
  }
  bool Rename(size_t position, const std::string& name) override {
    calls += "rename " + std::to_string(position) + " " + name;
    return works;
  }
  bool Delete(size_t position) override {
    calls += "delete " + std::to_string(position);
    return works;
  }
  // What was called since the last time.
  std::string Calls() { return std::exchange(calls, {}); }

  std::vector<std::string> names;
  bool has_content = true;
  bool works = true;

 private:
  std::string calls;
};

class NamedSetsDialogTest : public ::testing::Test {
 protected:
  void Open(const Names& names, SetsDialog which = SetsDialog::kCriteria) {
    store.names = names;
    dialog.reset();
    form = std::make_unique<NamedSetsForm>(store, messages, [this](const std::string& offered) {
      offered_names.push_back(offered);
      return name;
    });
    dialog = std::make_unique<NamedSetsDialog>(which, *form, nullptr);
    dialog->SetBeeper([this] { ++beeps; });
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    Show(*dialog);
  }
  QListWidget* list() { return Find<QListWidget>(*dialog, 195); }
  QStringList Rows() {
    QStringList rows;
    for (int row = 0; row < list()->count(); ++row) rows += list()->item(row)->text();
    return rows;
  }
  // Place of the selected name, -1 for none.
  int Selected() { return list()->selectedItems().isEmpty() ? -1 : list()->currentRow(); }
  // With the mouse, on its text.
  void Click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    const QPoint place = list()->visualItemRect(list()->item(row)).topLeft() + QPoint(8, 4);
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, keys, place);
  }
  // The second click of a double click; the first one came before.
  void DoubleClick(int row) {
    const QPoint place = list()->visualItemRect(list()->item(row)).topLeft() + QPoint(8, 4);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }
  // Deselecting is done with Ctrl.
  void OpenWithoutSelection() {
    Open({"Nord", "Sud"});
    Click(0, Qt::ControlModifier);
    ASSERT_EQ(Selected(), -1);
  }
  // Those of the five buttons that can be pressed.
  QList<int> Enabled() {
    QList<int> enabled;
    for (const int id : {1, 208, 209, 228, 210}) {
      if (Find(*dialog, id)->isEnabled()) enabled += id;
    }
    return enabled;
  }
  QList<int> Ends() {
    QList<int> ends;
    for (const auto& arguments : *finished) ends += arguments.at(0).toInt();
    return ends;
  }
  // The one message shown since the last time.
  void ExpectShown(MessageStyle style, int title, const std::string& text) {
    ASSERT_EQ(script.shown.size(), 1u);
    EXPECT_EQ(script.shown[0].style, style);
    EXPECT_EQ(script.shown[0].title_id, title);
    EXPECT_EQ(script.shown[0].text, text);
    script.shown.clear();
  }

  SetsOfTest store;
  MessageScript script;
  WindowMessages messages{&script};
  std::optional<std::string> name = "Ouest";
  Names offered_names;
  std::unique_ptr<NamedSetsForm> form;
  std::unique_ptr<NamedSetsDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  int beeps = 0;
};

// ---- what it shows ----

TEST_F(NamedSetsDialogTest, HasItsTitleAndTexts) {
  Open({});
  EXPECT_EQ(dialog->objectName(), "114");
  EXPECT_EQ(dialog->windowTitle(), "Gestion des critères de Sélection");
  const std::pair<int, const char*> texts[] = {
      {1, "&Charger"},     {208, "&Ajouter"}, {209, "&Remplacer"}, {228, "Re&nommer"},
      {210, "&Supprimer"}, {2, "&Quitter"},   {500, "?"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(Find<QPushButton>(*dialog, id)->text(), text);
  EXPECT_EQ(dialog->findChildren<QPushButton*>().size(), 7);
  EXPECT_TRUE(Find<QPushButton>(*dialog, 1)->isDefault());
  ExpectNames(*dialog);
}

TEST_F(NamedSetsDialogTest, IsTitledByWhatItKeeps) {
  Open({}, SetsDialog::kImport);
  EXPECT_EQ(dialog->windowTitle(), "Gestion des paramètres d'import");
  Open({}, SetsDialog::kExport);
  EXPECT_EQ(dialog->windowTitle(), "Gestion des paramètres d'export");
}

TEST_F(NamedSetsDialogTest, ListsTheNamesAsTheyAreInTheirOrder) {
  Open({"Zoé & <b>Cie</b>", "Été", "Zoé & <b>Cie</b>", "%s"});
  EXPECT_EQ(Rows(), (QStringList{"Zoé & <b>Cie</b>", "Été", "Zoé & <b>Cie</b>", "%s"}));
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(FocusId(), 195);
}

// ---- what can be pressed ----

TEST_F(NamedSetsDialogTest, EveryButtonWorksWithASetAndCriteria) {
  Open({"Nord"});
  EXPECT_EQ(Enabled(), (QList<int>{1, 208, 209, 228, 210}));
}

TEST_F(NamedSetsDialogTest, WithoutASetOneCanBeAdded) {
  Open({});
  EXPECT_EQ(Enabled(), QList<int>{208});
}

TEST_F(NamedSetsDialogTest, WithoutCriteriaNothingIsStored) {
  store.has_content = false;
  Open({"Nord"});
  EXPECT_EQ(Enabled(), (QList<int>{1, 228, 210}));
  Open({});
  EXPECT_EQ(Enabled(), QList<int>());
}

TEST_F(NamedSetsDialogTest, TheButtonsFollowTheSelection) {
  Open({"Nord", "Sud"});
  store.has_content = false;
  Click(1);
  EXPECT_EQ(form->selected(), 1);
  EXPECT_EQ(Enabled(), (QList<int>{1, 228, 210}));
  store.has_content = true;
  PressKey(Qt::Key_Up);
  EXPECT_EQ(form->selected(), 0);
  EXPECT_EQ(Enabled(), (QList<int>{1, 208, 209, 228, 210}));
}

// ---- load ----

TEST_F(NamedSetsDialogTest, LoadAsksAndEndsTheDialog) {
  Open({"Nord", "Sud"});
  Click(1);
  Press(*dialog, 1);
  ExpectShown(MessageStyle::kOkCancel, 80, "Charger \"Sud\" en mémoire ?");
  EXPECT_EQ(store.Calls(), "load 1");
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(NamedSetsDialogTest, LoadThatIsCancelledLeavesTheDialogOpen) {
  Open({"Nord"});
  script.answers = {MessageButton::kCancel};
  Press(*dialog, 1);
  EXPECT_EQ(script.shown.size(), 1u);
  EXPECT_EQ(store.Calls(), "");
  EXPECT_EQ(Ends(), QList<int>());
  EXPECT_EQ(beeps, 0);
}

TEST_F(NamedSetsDialogTest, EnterAndADoubleClickLoad) {
  Open({"Nord", "Sud"});
  PressKey(Qt::Key_Down);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(store.Calls(), "load 1");
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  Open({"Nord", "Sud"});
  Click(1);
  DoubleClick(1);
  EXPECT_EQ(store.Calls(), "load 1");
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
}

TEST_F(NamedSetsDialogTest, LoadWithoutASelectionBeepsAfterItsQuestion) {
  OpenWithoutSelection();
  script.answers = {MessageButton::kCancel};
  Press(*dialog, 1);
  EXPECT_EQ(beeps, 0);
  script.shown.clear();
  Press(*dialog, 1);
  ExpectShown(MessageStyle::kOkCancel, 80, "Charger \"\" en mémoire ?");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(store.Calls(), "");
  EXPECT_EQ(Ends(), QList<int>());
}

// ---- add ----

TEST_F(NamedSetsDialogTest, AddAppendsSelectsAndReturnsToTheList) {
  Open({"Nord", "Sud"});
  Press(*dialog, 208);
  EXPECT_EQ(store.Calls(), "add Ouest");
  EXPECT_EQ(offered_names, Names{""});
  EXPECT_EQ(Rows(), (QStringList{"Nord", "Sud", "Ouest"}));
  EXPECT_EQ(Selected(), 2);
  EXPECT_EQ(form->selected(), 2);
  EXPECT_EQ(FocusId(), 195);
  EXPECT_TRUE(script.shown.empty());
}

TEST_F(NamedSetsDialogTest, TheFirstSetEnablesTheOtherButtons) {
  Open({});
  Press(*dialog, 208);
  EXPECT_EQ(Rows(), QStringList{"Ouest"});
  EXPECT_EQ(Enabled(), (QList<int>{1, 208, 209, 228, 210}));
  EXPECT_EQ(FocusId(), 195);
}

TEST_F(NamedSetsDialogTest, AddWithoutANameOrWithoutAFileChangesNothing) {
  Open({"Nord"});
  name.reset();
  Press(*dialog, 208);
  EXPECT_EQ(store.Calls(), "");
  name = "Est";
  store.works = false;
  Press(*dialog, 208);
  EXPECT_EQ(store.Calls(), "add Est");
  EXPECT_EQ(Rows(), QStringList{"Nord"});
  EXPECT_EQ(FocusId(), 208);
}

// The criteria can be gone by the time of the press.
TEST_F(NamedSetsDialogTest, AddAndReplaceSayWhenThereAreNoCriteria) {
  Open({"Nord"});
  store.has_content = false;
  Press(*dialog, 208);
  ExpectShown(MessageStyle::kError, 79, "Aucun critère n'a été crée !");
  EXPECT_EQ(Enabled(), (QList<int>{1, 228, 210}));
  store.has_content = true;
  Open({"Nord"});
  store.has_content = false;
  Press(*dialog, 209);
  ExpectShown(MessageStyle::kError, 79, "Aucun critère n'a été crée !");
  EXPECT_EQ(store.Calls(), "");
  EXPECT_TRUE(offered_names.empty());
}

// ---- replace and rename ----

TEST_F(NamedSetsDialogTest, ReplaceOffersTheNameAndKeepsThePlace) {
  Open({"Nord", "Sud", "Est"});
  Click(1);
  Press(*dialog, 209);
  EXPECT_EQ(offered_names, Names{"Sud"});
  EXPECT_EQ(store.Calls(), "replace 1 Ouest");
  EXPECT_EQ(Rows(), (QStringList{"Nord", "Ouest", "Est"}));
  EXPECT_EQ(Selected(), 1);
}

TEST_F(NamedSetsDialogTest, RenameNeedsNoCriteria) {
  store.has_content = false;
  Open({"Nord", "Sud"});
  Click(1);
  Press(*dialog, 228);
  EXPECT_EQ(offered_names, Names{"Sud"});
  EXPECT_EQ(store.Calls(), "rename 1 Ouest");
  EXPECT_EQ(Rows(), (QStringList{"Nord", "Ouest"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_TRUE(script.shown.empty());
}

TEST_F(NamedSetsDialogTest, ANameThatWasAbandonedOrNotWrittenChangesNothing) {
  Open({"Nord"});
  name.reset();
  Press(*dialog, 209);
  Press(*dialog, 228);
  EXPECT_EQ(store.Calls(), "");
  name = "Est";
  store.works = false;
  Press(*dialog, 209);
  Press(*dialog, 228);
  EXPECT_EQ(Rows(), QStringList{"Nord"});
  EXPECT_EQ(beeps, 0);
}

TEST_F(NamedSetsDialogTest, WithoutASelectionTheyBeep) {
  OpenWithoutSelection();
  for (const int id : {209, 228, 210}) {
    beeps = 0;
    Press(*dialog, id);
    EXPECT_EQ(beeps, 1) << id;
    EXPECT_EQ(Selected(), -1) << id;
  }
  EXPECT_EQ(store.Calls(), "");
  EXPECT_TRUE(script.shown.empty());
  EXPECT_TRUE(offered_names.empty());
}

// ---- delete ----

TEST_F(NamedSetsDialogTest, DeleteAsksAndSelectsTheNextSet) {
  Open({"Nord", "Sud", "Est"});
  Click(1);
  Press(*dialog, 210);
  ExpectShown(MessageStyle::kOkCancel, 80, "Le jeu \"Sud\" va être supprimé...");
  EXPECT_EQ(store.Calls(), "delete 1");
  EXPECT_EQ(Rows(), (QStringList{"Nord", "Est"}));
  EXPECT_EQ(Selected(), 1);
  EXPECT_EQ(form->selected(), 1);
}

TEST_F(NamedSetsDialogTest, DeletingTheLastOneSelectsTheNewLastOne) {
  Open({"Nord", "Sud"});
  Click(1);
  Press(*dialog, 210);
  EXPECT_EQ(Rows(), QStringList{"Nord"});
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(Enabled(), (QList<int>{1, 208, 209, 228, 210}));
}

TEST_F(NamedSetsDialogTest, DeletingTheOnlyOneDisablesTheButtons) {
  Open({"Nord"});
  Press(*dialog, 210);
  EXPECT_EQ(Rows(), QStringList());
  EXPECT_EQ(Selected(), -1);
  EXPECT_EQ(Enabled(), QList<int>{208});
  EXPECT_NE(FocusId(), 210);
  EXPECT_NE(FocusId(), 0);
}

TEST_F(NamedSetsDialogTest, DeleteThatIsCancelledOrFailsChangesNothing) {
  Open({"Nord"});
  script.answers = {MessageButton::kCancel};
  Press(*dialog, 210);
  EXPECT_EQ(store.Calls(), "");
  store.works = false;
  Press(*dialog, 210);
  EXPECT_EQ(store.Calls(), "delete 0");
  EXPECT_EQ(Rows(), QStringList{"Nord"});
  EXPECT_EQ(beeps, 0);
}

// ---- keyboard and end ----

TEST_F(NamedSetsDialogTest, LettersWithAltPress) {
  Open({"Nord"});
  PressMnemonic(*dialog, Qt::Key_A, 208);
  EXPECT_EQ(store.Calls(), "add Ouest");
  PressMnemonic(*dialog, Qt::Key_R, 209);
  EXPECT_EQ(store.Calls(), "replace 1 Ouest");
  PressMnemonic(*dialog, Qt::Key_N, 228);
  EXPECT_EQ(store.Calls(), "rename 1 Ouest");
  PressMnemonic(*dialog, Qt::Key_S, 210);
  EXPECT_EQ(store.Calls(), "delete 1");
  PressKey(Qt::Key_J, Qt::AltModifier);
  EXPECT_EQ(FocusId(), 195);
  PressMnemonic(*dialog, Qt::Key_C, 1);
  EXPECT_EQ(store.Calls(), "load 0");
  Open({"Nord"});
  PressMnemonic(*dialog, Qt::Key_Q, 2);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
}

TEST_F(NamedSetsDialogTest, TabComesByEverything) {
  Open({"Nord"});
  EXPECT_EQ(TabWalk(), (QList<int>{195, 1, 208, 209, 228, 210, 2, 500}));
}

TEST_F(NamedSetsDialogTest, QuitEscapeAndTheCrossLeave) {
  Open({"Nord"});
  Press(*dialog, 2);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  Open({"Nord"});
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  Open({"Nord"});
  dialog->close();
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  EXPECT_EQ(store.Calls(), "");
}

TEST_F(NamedSetsDialogTest, EnterWithoutASetDoesNothing) {
  Open({});
  list()->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_TRUE(script.shown.empty());
  EXPECT_EQ(Ends(), QList<int>());
}

TEST_F(NamedSetsDialogTest, HelpComesByButtonAndKey) {
  Open({"Nord"});
  QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
  Press(*dialog, 500);
  ASSERT_EQ(help.count(), 1);
  EXPECT_EQ(help.takeFirst().at(0).toInt(), 57);
  for (const int id : {195, 210}) {
    Find(*dialog, id)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 1) << id;
    EXPECT_EQ(help.takeFirst().at(0).toInt(), 57);
  }
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(NamedSetsDialogTest, ShowsTheLongestNameWholeAndADozenOfThem) {
  Open(Names(30, std::string(23, 'W')));
  const QRect row = list()->visualItemRect(list()->item(0));
  EXPECT_LE(list()->sizeHintForColumn(0), list()->viewport()->width());
  EXPECT_GT(row.width(), list()->fontMetrics().horizontalAdvance(QString(23, u'W')));
  EXPECT_GE(list()->viewport()->height(), list()->fontMetrics().height() * 12);
}

}  // namespace
}  // namespace carnetel::desktop
