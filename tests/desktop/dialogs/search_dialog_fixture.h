// "Recherche" run by the main window's command over a directory in memory, with a test in place of
// its user.
#pragma once

#include <functional>
#include <memory>

#include "desktop/controls/match_notes_edit.h"
#include "desktop/controls/match_reference_combo.h"
#include "desktop/dialogs/search_dialog.h"
#include "tests/desktop/dialogs/dialog_testing.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {

using ShownBoxes = std::vector<QueuedMessages::Entry>;

inline const ShownBoxes kNoExample = {
    {MessageStyle::kInformation, 80, "Il faut définir un ou plusieurs champs pour la recherche"}};
inline const ShownBoxes kNothingFound = {
    {MessageStyle::kInformation, 80, "Aucune fiche trouvée..."}};

class SearchDialogTest : public WindowFixture {
 protected:
  void StartWithCards() {
    StartWith({CardWith({{kSte1, "ALPHA"}, {kVille, "Paris"}}),
               CardWith({{kSte1, "BANQUE"}, {kVille, "Lyon"}, {kNom, "Durand"}}),
               CardWith({{kSte1, "Barbier"}, {kSte2, "Groupe BA"}, {kVille, "Lyon 3"}}),
               CardWith({{kSte1, "CESAR"}, {kVille, "Villa Lyonnaise"}})});
  }
  void StartWith(const std::vector<CardRecord>& cards) {
    Build(cards);
    ASSERT_TRUE(Start());
  }
  // The command opens the dialog, the user does this and leaves it.
  void Run(const std::function<void()>& user) {
    bool ran = false;
    dialogs.search = [&](SearchForm& form) {
      ran = true;
      SearchDialog shown(form, nullptr);
      dialog = &shown;
      help = std::make_unique<QSignalSpy>(dialog, &FixedDialog::helpWanted);
      shown.SetBeeper([this] { ++beeps; });
      Show(shown);
      user();
      shown.close();
      return 0;
    };
    view.Run(kCommandSearch);
    EXPECT_TRUE(ran);
    dialog = nullptr;
  }

  QWidget* Control(int id) { return dialog->panel().Control(id); }
  MatchEdit* Edit(int id) { return qobject_cast<MatchEdit*>(Control(id)); }
  MatchNotesEdit* Notes() { return qobject_cast<MatchNotesEdit*>(Control(174)); }
  MatchReferenceCombo* References() { return qobject_cast<MatchReferenceCombo*>(Control(164)); }
  std::string Text(int id) { return dialog->panel().FieldText(id).toStdString(); }
  void TypeInto(int id, const QString& text) {
    Control(id)->setFocus();
    Type(text);
  }
  // Numbers of the buttons that are on.
  QList<int> On() {
    QList<int> on;
    for (const int id : {1, 216, 217, 2, 500}) {
      if (Find<QPushButton>(*dialog, id)->isEnabled()) on += id;
    }
    return on;
  }
  void ExpectNotFound() {
    EXPECT_EQ(messages.TakeShown(), kNothingFound);
    EXPECT_EQ(FocusId(), 150);
    EXPECT_EQ(On(), (QList<int>{1, 2, 500}));
  }

  SearchDialog* dialog = nullptr;
  std::unique_ptr<QSignalSpy> help;
  int beeps = 0;
};

}  // namespace carnetel::desktop
