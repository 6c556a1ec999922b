// What the tests of the card form share: three cards, and the state it is expected in.
#pragma once

#include "tests/shell/window_fixture.h"

namespace carnetel {

using Shown = std::vector<QueuedMessages::Entry>;

inline const Shown kDiscardQuestion = {
    {MessageStyle::kYesNoDefaultNo, 80, "Voulez vous quitter sans sauver les dernières saisies ?"}};

class CardFormTest : public WindowFixture {
 protected:
  void BuildThree() {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}}), CardWith({{kSte1, "CESAR"}})});
  }
  void StartWithThree() {
    BuildThree();
    Start();
  }
  void ExpectState(FormMode mode, FormPurpose purpose) {
    EXPECT_EQ(form().mode(), mode);
    EXPECT_EQ(form().purpose(), purpose);
  }
  void ExpectAtRest(const std::string& company) {
    ExpectState(FormMode::kRest, FormPurpose::kCard);
    EXPECT_FALSE(view.edit_look);
    EXPECT_FALSE(view.cancel_face);
    EXPECT_FALSE(view.IsEnabled(1006));
    EXPECT_EQ(view.Text(150), company);
  }
};

}  // namespace carnetel
