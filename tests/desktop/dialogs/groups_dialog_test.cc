// "Gestion de Groupe" as its user meets it, over the files of a directory in memory.
#include "desktop/dialogs/groups_dialog.h"

#include <deque>

#include "base/code_page.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Shown = std::vector<QueuedMessages::Entry>;
using Names = std::vector<std::string>;

const char* const kMembersText = "Fiches du groupe uniquement";
const char* const kWholeFileText = "Fichier entier plus groupe sélectionné";
const Shown kNoMarks = {{MessageStyle::kError, 79, "Pas de sélection disponible"}};
const Shown kListFull = {
    {MessageStyle::kError, 79, "Création de groupe impossible. La liste est saturée !"}};

class GroupsDialogTest : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "BETA"}}), CardWith({{kSte1, "CESAR"}}),
           CardWith({{kSte1, "DELTA"}})});
    ASSERT_TRUE(Start());
  }
  ~GroupsDialogTest() override { dialog.reset(); }

  void OpenForm() {
    dialog.reset();
    form = std::make_unique<GroupsForm>(
        *session->directory(), messages,
        [this](const GroupDescription& group) { return Describe(group); },
        GroupsForm::Place{0, AnsiText("Sans Nom")});
  }
  void OpenDialog() {
    OpenForm();
    dialog = std::make_unique<GroupsDialog>(*form, nullptr);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    dialog->SetBeeper([this] { ++beeps; });
    Show(*dialog);
  }
  // The user of the dialog for one group.
  std::optional<GroupDescription> Describe(const GroupDescription& group) {
    offered.push_back(group);
    if (answers.empty()) return {};
    const std::optional<GroupDescription> answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void Mark(std::initializer_list<int> rows) {
    for (const int row : rows) ASSERT_TRUE(list().ToggleMark(row));
  }
  // Makes these groups of the marked cards and opens the dialog on them.
  void OpenWith(const std::vector<GroupDescription>& groups) {
    OpenForm();
    for (const GroupDescription& group : groups) {
      answers.push_back(group);
      form->Create();
    }
    offered.clear();
    OpenDialog();
  }

  QListWidget* Groups() { return Find<QListWidget>(*dialog, 195); }
  Names Listed() {
    Names names;
    for (int row = 0; row < Groups()->count(); ++row) {
      names.push_back(Groups()->item(row)->text().toStdString());
    }
    return names;
  }
  QString Mode() { return Find<QLabel>(*dialog, 312)->text(); }
  // Numbers of the buttons that are on.
  QList<int> On() {
    QList<int> on;
    for (const int id : {208, 209, 227, 231, 210, 2, 500}) {
      if (Find<QPushButton>(*dialog, id)->isEnabled()) on += id;
    }
    return on;
  }
  // Rows of the whole file whose cards are members of the group at this place of the dialog's list.
  std::vector<int> Members(size_t place) {
    const auto group = GroupFile(*session->directory()).ReadRow(place + 1);
    std::vector<int> members;
    if (!group) return {-1};
    for (uint32_t row = 0; row < session->directory()->address().entry_count(); ++row) {
      if (session->directory()->address().Entry(row).bit(group->slot())) {
        members.push_back(static_cast<int>(row));
      }
    }
    return members;
  }
  GroupDescription OnDisk(size_t place) {
    const auto group = GroupFile(*session->directory()).ReadRow(place + 1);
    if (!group) return {"(missing)"};
    return {Utf8FromOem(group->name()), group->mode()};
  }
  size_t CountOnDisk() { return GroupFile(*session->directory()).Rows().size() - 1; }

  std::unique_ptr<GroupsForm> form;
  std::unique_ptr<GroupsDialog> dialog;
  std::unique_ptr<QSignalSpy> help;
  std::deque<std::optional<GroupDescription>> answers;
  std::vector<GroupDescription> offered;
  int beeps = 0;
};

// ---- what it shows ----

TEST_F(GroupsDialogTest, HasItsTitleAndTexts) {
  OpenDialog();
  EXPECT_EQ(dialog->objectName(), "122");
  EXPECT_EQ(dialog->windowTitle(), "Gestion de Groupe ");
  const std::pair<int, const char*> texts[] = {
      {208, "&Créer"},     {209, "&Remplacer"}, {227, "&Fusionner"}, {231, "Re&nommer"},
      {210, "&Supprimer"}, {2, "&Quitter"},     {500, "?"}};
  for (const auto& [id, text] : texts) {
    EXPECT_EQ(Find<QPushButton>(*dialog, id)->text(), QString::fromUtf8(text)) << id;
  }
  ExpectNames(*dialog);
}

TEST_F(GroupsDialogTest, OpensOnTheFirstGroup) {
  Mark({0});
  OpenWith({{"Été", kWholeFileFlagged}, {"Lyon", kMembersOnly}});
  EXPECT_EQ(Listed(), (Names{"Été", "Lyon"}));
  EXPECT_EQ(Groups()->currentRow(), 0);
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(FocusId(), 195);
}

TEST_F(GroupsDialogTest, TheModeFollowsTheSelectedGroup) {
  Mark({0});
  OpenWith({{"Été", kWholeFileFlagged}, {"Lyon", kMembersOnly}});
  const QSize size = dialog->size();
  PressKey(Qt::Key_Down);
  EXPECT_EQ(Mode(), kMembersText);
  EXPECT_EQ(form->selected(), 1);
  QTest::mouseClick(Groups()->viewport(), Qt::LeftButton, Qt::NoModifier,
                    Groups()->visualItemRect(Groups()->item(0)).center());
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(form->selected(), 0);
  QApplication::processEvents();
  EXPECT_EQ(dialog->size(), size);
}

TEST_F(GroupsDialogTest, ButtonsFollowMarksAndGroups) {
  OpenDialog();
  EXPECT_EQ(On(), (QList<int>{2, 500}));
  EXPECT_EQ(Mode(), "");
  EXPECT_EQ(FocusId(), 195);
  Mark({0});
  OpenDialog();
  EXPECT_EQ(On(), (QList<int>{208, 2, 500}));
  OpenWith({{"Lyon"}});
  EXPECT_EQ(On(), (QList<int>{208, 209, 227, 231, 210, 2, 500}));
  list().DeselectListed();
  OpenDialog();
  EXPECT_EQ(On(), (QList<int>{231, 210, 2, 500}));
}

TEST_F(GroupsDialogTest, TabComesByEveryButtonThatIsOn) {
  Mark({0});
  OpenWith({{"Lyon"}});
  EXPECT_EQ(TabWalk(), (QList<int>{195, 208, 209, 227, 231, 210, 2, 500}));
  list().DeselectListed();
  OpenDialog();
  EXPECT_EQ(TabWalk(), (QList<int>{195, 231, 210, 2, 500}));
}

// ---- create ----

TEST_F(GroupsDialogTest, CreerMakesAGroupOfTheMarkedCards) {
  Mark({1, 3});
  OpenDialog();
  answers = {GroupDescription{"Été à Lyon", kWholeFileFlagged}};
  Press(*dialog, 208);
  EXPECT_EQ(offered, (std::vector<GroupDescription>{{"", kMembersOnly}}));
  EXPECT_EQ(Listed(), Names{"Été à Lyon"});
  EXPECT_EQ(Groups()->currentRow(), 0);
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(On(), (QList<int>{208, 209, 227, 231, 210, 2, 500}));
  EXPECT_EQ(OnDisk(0), (GroupDescription{"Été à Lyon", kWholeFileFlagged}));
  EXPECT_EQ(Members(0), (std::vector<int>{1, 3}));
  EXPECT_EQ(MarkedRows(), (std::vector<int>{1, 3}));
}

TEST_F(GroupsDialogTest, ANewGroupIsTheSelectedOneAndItsNameMayBeAnothers) {
  Mark({2});
  OpenWith({{"Lyon"}, {"Nord"}});
  answers = {GroupDescription{"Lyon", kMembersOnly}};
  Press(*dialog, 208);
  EXPECT_EQ(Listed(), (Names{"Lyon", "Nord", "Lyon"}));
  EXPECT_EQ(Groups()->currentRow(), 2);
  EXPECT_EQ(Members(2), std::vector<int>{2});
}

TEST_F(GroupsDialogTest, CreerThatIsAbandonedMakesNone) {
  Mark({2});
  OpenDialog();
  answers = {std::nullopt};
  Press(*dialog, 208);
  EXPECT_EQ(offered.size(), 1u);
  EXPECT_EQ(Listed(), Names());
  EXPECT_EQ(CountOnDisk(), 0u);
}

TEST_F(GroupsDialogTest, TheListHas44Groups) {
  Mark({0});
  std::vector<GroupDescription> groups;
  for (int i = 1; i <= 43; ++i) groups.push_back({"Groupe " + std::to_string(i), kMembersOnly});
  OpenWith(groups);
  answers = {GroupDescription{"Groupe 44", kMembersOnly}};
  Press(*dialog, 208);
  EXPECT_EQ(Listed().size(), 44u);
  EXPECT_EQ(messages.TakeShown(), Shown());
  offered.clear();
  Press(*dialog, 208);
  EXPECT_EQ(messages.TakeShown(), kListFull);
  EXPECT_EQ(offered.size(), 0u);
  EXPECT_EQ(Listed().size(), 44u);
  EXPECT_EQ(CountOnDisk(), 44u);
  // A full list comes before marks that are gone.
  list().DeselectListed();
  Press(*dialog, 208);
  EXPECT_EQ(messages.TakeShown(), kListFull);
}

TEST_F(GroupsDialogTest, MarksThatWentMeanwhileAreMissed) {
  Mark({0});
  OpenWith({{"Lyon"}});
  list().DeselectListed();
  Press(*dialog, 208);
  EXPECT_EQ(messages.TakeShown(), kNoMarks);
  EXPECT_EQ(On(), (QList<int>{231, 210, 2, 500}));
  EXPECT_EQ(FocusId(), 195);
  Mark({0});
  OpenDialog();
  list().DeselectListed();
  Press(*dialog, 209);
  EXPECT_EQ(messages.TakeShown(), kNoMarks);
  EXPECT_EQ(offered.size(), 0u);
}

// ---- replace, rename, merge ----

TEST_F(GroupsDialogTest, RemplacerGivesTheGroupTheMarkedCards) {
  Mark({0, 1});
  OpenWith({{"Lyon", kWholeFileFlagged}, {"Nord", kMembersOnly}});
  list().DeselectListed();
  Mark({1, 2});
  answers = {GroupDescription{"Sud", kWholeFileFlagged}};
  PressKey(Qt::Key_Down);
  Press(*dialog, 209);
  EXPECT_EQ(offered, (std::vector<GroupDescription>{{"Nord", kMembersOnly}}));
  EXPECT_EQ(Listed(), (Names{"Lyon", "Sud"}));
  EXPECT_EQ(Groups()->currentRow(), 1);
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(Members(0), (std::vector<int>{0, 1}));
  EXPECT_EQ(Members(1), (std::vector<int>{1, 2}));
}

TEST_F(GroupsDialogTest, RenommerKeepsTheCards) {
  Mark({0, 1});
  OpenWith({{"Lyon", kMembersOnly}});
  list().DeselectListed();
  OpenDialog();
  answers = {GroupDescription{"Rhône", kWholeFileFlagged}};
  Press(*dialog, 231);
  EXPECT_EQ(offered, (std::vector<GroupDescription>{{"Lyon", kMembersOnly}}));
  EXPECT_EQ(Listed(), Names{"Rhône"});
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(OnDisk(0), (GroupDescription{"Rhône", kWholeFileFlagged}));
  EXPECT_EQ(Members(0), (std::vector<int>{0, 1}));
}

TEST_F(GroupsDialogTest, FusionnerAsksAndAddsTheMarkedCards) {
  const Shown question = {{MessageStyle::kYesNo, 80,
                           "Confirmez-vous la fusion des fiches sélectionnées au groupe\n Lyon ?"}};
  Mark({0});
  OpenWith({{"Lyon"}});
  list().DeselectListed();
  Mark({2});
  messages.Answer(MessageButton::kNo);
  Press(*dialog, 227);
  EXPECT_EQ(messages.TakeShown(), question);
  EXPECT_EQ(Members(0), std::vector<int>{0});
  messages.Answer(MessageButton::kYes);
  Press(*dialog, 227);
  EXPECT_EQ(messages.TakeShown(), question);
  EXPECT_EQ(Members(0), (std::vector<int>{0, 2}));
  EXPECT_EQ(offered.size(), 0u);
}

// ---- delete ----

TEST_F(GroupsDialogTest, SupprimerAsksAndEmptiesTheGroup) {
  const Shown question = {{MessageStyle::kOkCancel, 80, "Le jeu \"Nord\" va être supprimé..."}};
  Mark({0});
  OpenWith({{"Lyon", kMembersOnly}, {"Nord", kMembersOnly}, {"Sud", kWholeFileFlagged}});
  PressKey(Qt::Key_Down);
  messages.Answer(MessageButton::kCancel);
  Press(*dialog, 210);
  EXPECT_EQ(messages.TakeShown(), question);
  EXPECT_EQ(Listed(), (Names{"Lyon", "Nord", "Sud"}));
  messages.Answer(MessageButton::kOk);
  Press(*dialog, 210);
  EXPECT_EQ(messages.TakeShown(), question);
  EXPECT_EQ(Listed(), (Names{"Lyon", "Sud"}));
  EXPECT_EQ(Groups()->currentRow(), 1);
  EXPECT_EQ(Mode(), kWholeFileText);
  EXPECT_EQ(CountOnDisk(), 2u);
}

TEST_F(GroupsDialogTest, TheSelectionGoesToTheLastGroupAndThenAway) {
  Mark({0});
  OpenWith({{"Lyon"}, {"Nord"}});
  PressKey(Qt::Key_Down);
  messages.Answer(MessageButton::kOk);
  Press(*dialog, 210);
  EXPECT_EQ(Listed(), Names{"Lyon"});
  EXPECT_EQ(Groups()->currentRow(), 0);
  EXPECT_EQ(FocusId(), 210);
  messages.Answer(MessageButton::kOk);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Listed(), Names());
  EXPECT_EQ(Mode(), "");
  EXPECT_EQ(On(), (QList<int>{208, 2, 500}));
  EXPECT_EQ(FocusId(), 195);
}

// ---- keys ----

TEST_F(GroupsDialogTest, WithoutASelectedGroupTheButtonsBeep) {
  Mark({0});
  OpenWith({{"Lyon"}});
  QTest::mouseClick(Groups()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    Groups()->visualItemRect(Groups()->item(0)).center());
  EXPECT_EQ(form->selected(), -1);
  EXPECT_EQ(Mode(), "");
  for (const int id : {209, 231, 227, 210}) Press(*dialog, id);
  EXPECT_EQ(beeps, 4);
  EXPECT_EQ(offered.size(), 0u);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(Listed(), Names{"Lyon"});
}

TEST_F(GroupsDialogTest, LettersWithAltPressTheButtons) {
  Mark({0});
  OpenWith({{"Lyon"}});
  PressMnemonic(*dialog, Qt::Key_C, 208);
  PressMnemonic(*dialog, Qt::Key_R, 209);
  PressMnemonic(*dialog, Qt::Key_N, 231);
  EXPECT_EQ(offered, (std::vector<GroupDescription>{{""}, {"Lyon"}, {"Lyon"}}));
  messages.Answer(MessageButton::kNo);
  PressMnemonic(*dialog, Qt::Key_F, 227);
  messages.Answer(MessageButton::kCancel);
  PressMnemonic(*dialog, Qt::Key_S, 210);
  EXPECT_EQ(messages.TakeShown().size(), 2u);
  PressMnemonic(*dialog, Qt::Key_Q, 2);
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GroupsDialogTest, EnterPressesTheButtonWithTheFocusAndNoneFromTheList) {
  Mark({0});
  OpenWith({{"Lyon"}});
  PressKey(Qt::Key_Return);
  EXPECT_EQ(offered.size(), 0u);
  EXPECT_TRUE(dialog->isVisible());
  for (const QPushButton* button : dialog->findChildren<QPushButton*>()) {
    EXPECT_FALSE(button->isDefault()) << button->objectName().toStdString();
  }
  Find(*dialog, 231)->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_EQ(offered, (std::vector<GroupDescription>{{"Lyon"}}));
  Find(*dialog, 500)->setFocus();
  PressKey(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(help->count(), 1);
  Find(*dialog, 2)->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GroupsDialogTest, QuitterEscapeAndTheCrossClose) {
  OpenDialog();
  Press(*dialog, 2);
  EXPECT_FALSE(dialog->isVisible());
  OpenDialog();
  PressKey(Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  OpenDialog();
  EXPECT_TRUE(dialog->close());
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GroupsDialogTest, HelpByButtonAndKey) {
  Mark({0});
  OpenWith({{"Lyon"}});
  Press(*dialog, 500);
  for (const int id : {195, 208, 2, 500}) {
    Find(*dialog, id)->setFocus();
    PressKey(Qt::Key_F1);
  }
  ASSERT_EQ(help->count(), 5);
  for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 63);
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(GroupsDialogTest, Pictures) {
  Mark({0});
  OpenWith({{"Lyon", kWholeFileFlagged},
            {"Les fournisseurs de Lyo", kMembersOnly},
            {"MMMMMMMMMMMMMMMMMMMMMMM", kMembersOnly}});
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    GroupsDialog pictured(*form, nullptr);
    SavePicture(pictured, QStringLiteral("groups"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
