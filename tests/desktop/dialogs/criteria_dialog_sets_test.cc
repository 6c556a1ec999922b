// Criteria kept and loaded under names by way of the three dialogs, the keyboard in the first of
// them, and pictures of all three for eyes, with ordinary letters and with letters twice as large:
// dialog_*.png beside the test program.
#include "desktop/dialogs/name_dialog.h"

#include <QTimer>

#include "desktop/dialogs/named_sets_dialog.h"
#include "tests/desktop/dialogs/criteria_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

class CriteriaSets : public CriteriaDialogTest {
 protected:
  // `user` works on the dialog that keeps sets, which names them with `typed`.
  void Manage(const std::function<void(NamedSetsDialog&)>& user, const QString& typed = {}) {
    manage_sets = [this, user](NamedSetsForm& sets) {
      NamedSetsDialog managed(SetsDialog::kCriteria, sets, dialog.get());
      Run(managed, [&] { user(managed); });
    };
    ask_name = [typed](const std::string& offered) -> std::optional<std::string> {
      NameDialog asked(SetsDialog::kCriteria, offered, QApplication::activeModalWidget());
      Run(asked, [&] {
        Type(typed);
        Press(asked, 1);
      });
      if (asked.name().empty()) return {};
      return asked.name();
    };
    Press(*dialog, 213);
    // What a window manager does.
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return dialog->isActiveWindow(); }));
  }

 private:
  // Shows a dialog over the others until `user` has worked on it.
  static void Run(QDialog& above, const std::function<void()>& user) {
    QTimer::singleShot(0, &above, [&] {
      ASSERT_TRUE(QTest::qWaitFor([&above] { return above.isActiveWindow(); }));
      user();
      above.close();
    });
    above.exec();
  }
};

TEST_F(CriteriaSets, SavesTheValidRowsUnderAName) {
  Open();
  Fill(0, "STE1", "=", "DU");
  Fill(2, "VILLE", "~", "Évry");
  Manage([](NamedSetsDialog& managed) { Press(managed, 208); }, "Banlieue à l'été");
  EXPECT_EQ(Saved(1, 0), "10DU");
  EXPECT_EQ(Saved(1, 1), "76\x90vry");
  CriteriaFile file(memory, kPath);
  EXPECT_EQ(file.ListCriteriaSets(), std::vector<OemText>{OemFromUtf8Lossy("Banlieue à l'été")});
}

// The gap between rows is gone when they are shown again; the set in memory keeps its name.
TEST_F(CriteriaSets, ShowsTheRowsInMemoryAfterwards) {
  Open();
  Fill(0, "STE1", "=", "DU");
  Fill(2, "VILLE", "~", "Lyon");
  Fill(4, "NOM", "~", "");
  Manage([](NamedSetsDialog& managed) { Press(managed, 2); });
  EXPECT_EQ(SeenRows(), (QStringList{"STE1|=|DU", "VILLE|~|Lyon", "|=|", "|=|", "|=|", "|=|"}));
  EXPECT_EQ(Name(), "Dernière Sélection");
  EXPECT_EQ(Ends(), QList<int>());
}

TEST_F(CriteriaSets, ShowsALoadedSetWithItsName) {
  Build({{"Dernière Sélection", {Row(1, '0', "a")}},
         {"Nord", {Row(11, '3', "n")}},
         {"Été à Évian & <b>", {Row(19, '6', "04"), Row(6, '9', "69")}}});
  Open();
  Manage([](NamedSetsDialog& managed) {
    PressKey(Qt::Key_Down);
    Press(managed, 1);
    EXPECT_FALSE(managed.isVisible());
  });
  ASSERT_EQ(script.shown.size(), 1u);
  EXPECT_EQ(script.shown[0].text, "Charger \"Été à Évian & <b>\" en mémoire ?");
  EXPECT_EQ(Name(), "Été à Évian & <b>");
  EXPECT_EQ(SeenRows(), (QStringList{"TEL1|~|04", "||69", "|=|", "|=|", "|=|", "|=|"}));
  Value(0)->setFocus();
  Type("é5");
  EXPECT_EQ(Value(0)->text(), "504");
  EXPECT_EQ(beeps, 1);
  Press(*dialog, 188);
  EXPECT_EQ(Saved(0, 0), "196504");
  EXPECT_EQ(Name(), "Été à Évian & <b>");
  Open();
  EXPECT_EQ(Name(), "Dernière Sélection");
}

TEST_F(CriteriaSets, WithoutAValidRowNothingCanBeSaved) {
  Build({{"Dernière Sélection", {Row(1, '0', "a")}}, {"Nord", {Row(1, '3', "n")}}});
  Open();
  Press(*dialog, 212);
  Manage([](NamedSetsDialog& managed) {
    EXPECT_TRUE(Find(managed, 1)->isEnabled());
    EXPECT_FALSE(Find(managed, 208)->isEnabled());
    EXPECT_FALSE(Find(managed, 209)->isEnabled());
    EXPECT_TRUE(Find(managed, 228)->isEnabled());
  });
}

TEST_F(CriteriaSets, QuitAfterManagingKeepsOnlyWhatReachedASet) {
  Build({{"Dernière Sélection", {Row(1, '0', "a")}}});
  Open();
  Fill(0, "NOM", "=", "b");
  Manage([](NamedSetsDialog& managed) { Press(managed, 208); }, "Nom b");
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(Saved(0, 0), "10a");
  EXPECT_EQ(Saved(1, 0), "110b");
}

// ---- keyboard and help ----

TEST_F(CriteriaSets, TabComesByEveryRowAndButton) {
  Open();
  QList<int> expected;
  for (int row = 0; row < 6; ++row) expected += {520 + row, 510 + row, 540 + row};
  expected += {188, 208, 211, 212, 213, 2, 500, 520};
  QList<int> walk = {FocusId()};
  while (walk.size() < expected.size()) {
    PressKey(Qt::Key_Tab);
    walk += FocusId();
    const QAccessibleInterface* told =
        QAccessible::queryAccessibleInterface(QApplication::focusWidget());
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << FocusId();
  }
  EXPECT_EQ(walk, expected);
}

TEST_F(CriteriaSets, EnterReplacesFromEveryRow) {
  for (const int id : {520, 512, 545}) {
    Open();
    Fill(0, "NOM", "=", "b");
    Find(*dialog, id)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted}) << id;
    EXPECT_EQ(dialog->end(), CriteriaEnd::kReplace) << id;
  }
}

TEST_F(CriteriaSets, EnterOnAButtonPressesThatButton) {
  Open();
  Fill(0, "NOM", "=", "b");
  Find(*dialog, 208)->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(dialog->end(), CriteriaEnd::kAdd);
}

TEST_F(CriteriaSets, LettersWithAltPress) {
  Open();
  Fill(0, "NOM", "=", "b");
  Fill(1, "NOM", "=", "c");
  Value(1)->setFocus();
  PressMnemonic(*dialog, Qt::Key_L, 211);
  EXPECT_EQ(SeenRows().first(2), (QStringList{"NOM|=|b", "|=|"}));
  int managed = 0;
  manage_sets = [&managed](NamedSetsForm&) { ++managed; };
  PressMnemonic(*dialog, Qt::Key_S, 213);
  EXPECT_EQ(managed, 1);
  PressMnemonic(*dialog, Qt::Key_T, 212);
  EXPECT_EQ(SeenRows(), kEmptyRows);
  PressMnemonic(*dialog, Qt::Key_Q, 2);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  for (const auto& [letter, id] : {std::pair(Qt::Key_R, 188), std::pair(Qt::Key_A, 208)}) {
    Open();
    Fill(0, "NOM", "=", "b");
    PressMnemonic(*dialog, letter, id);
    EXPECT_EQ(static_cast<int>(dialog->end()), id);
  }
}

TEST_F(CriteriaSets, HelpComesByButtonAndKey) {
  Open();
  QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
  Press(*dialog, 500);
  ASSERT_EQ(help.count(), 1);
  EXPECT_EQ(help.takeFirst().at(0).toInt(), 56);
  for (const int id : {520, 515, 543, 213}) {
    Find(*dialog, id)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 1) << id;
    EXPECT_EQ(help.takeFirst().at(0).toInt(), 56);
  }
  EXPECT_EQ(Ends(), QList<int>());
}

// ---- pictures ----

class CriteriaPictures : public CriteriaDialogTest, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    QFont font = former_;
    font.setPointSizeF(former_.pointSizeF() * GetParam() / 100);
    QApplication::setFont(font);
  }
  void TearDown() override { QApplication::setFont(former_); }

  // Lists have parts that are not shown.
  static void ExpectControlsFit(const QDialog& dialog) {
    EXPECT_EQ(dialog.size(), dialog.sizeHint());
    for (const QWidget* control :
         dialog.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      const QSize needed = control->minimumSizeHint();
      EXPECT_EQ(control->size().expandedTo(needed), control->size())
          << control->objectName().toStdString();
      EXPECT_TRUE(dialog.rect().contains(control->geometry()))
          << control->objectName().toStdString();
    }
  }
  static void Save(QDialog& dialog, const QString& name) {
    Show(dialog);
    ExpectControlsFit(dialog);
    EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
    const QSize largest(1000, 700);
    EXPECT_EQ(dialog.size().boundedTo(largest * GetParam() / 100), dialog.size());
    const QString file = QStringLiteral("dialog_%1_%2.png").arg(name).arg(GetParam());
    EXPECT_TRUE(dialog.grab().save(file));
  }

 private:
  QFont former_ = QApplication::font();
};

TEST_P(CriteriaPictures, Criteria) {
  Build({{"Clients de la région été",
          {Row(1, '0', "ÉTABLISSEMENTS DURAND"), Row(10, '6', "Jean"), Row(26, '3', "69000"),
           Row(19, '1', "04"), Row(27, '9', "rappeler")}}});
  Open();
  Save(*dialog, QStringLiteral("criteria"));
}

TEST_P(CriteriaPictures, NamedSets) {
  Build({{"Dernière Sélection", {Row(1, '0', "a")}},
         {"Nord", {}},
         {"Clients & fournisseurs", {}},
         {"WWWWWWWWWWWWWWWWWWWWWWW", {}}});
  SavedCriteria saved(criteria, 1);
  NamedSetsForm sets(saved, messages, {});
  NamedSetsDialog criteria_sets(SetsDialog::kCriteria, sets, nullptr);
  Save(criteria_sets, QStringLiteral("named_sets"));
  memory.Remove(kPath);
  SavedCriteria none(criteria, 1);
  NamedSetsForm no_sets(none, messages, {});
  NamedSetsDialog imports(SetsDialog::kImport, no_sets, nullptr);
  Save(imports, QStringLiteral("named_sets_empty"));
}

TEST_P(CriteriaPictures, Name) {
  NameDialog criteria_name(SetsDialog::kCriteria, "WWWWWWWWWWWWWWWWWWWWWWW", nullptr);
  Save(criteria_name, QStringLiteral("name"));
  NameDialog transfer_name(SetsDialog::kExport, "", nullptr);
  Save(transfer_name, QStringLiteral("name_empty"));
}

INSTANTIATE_TEST_SUITE_P(Letters, CriteriaPictures, ::testing::Values(100, 200));

}  // namespace
}  // namespace carnetel::desktop
