// The buttons beside the numbers of the form, one a sibling program: which of them show and which
// are grey. They are there only when a sibling has started this program, show while the focus is in
// the list, and go while somebody edits.
#pragma once

#include <array>

#include "link/sibling.h"
#include "shell/card_form.h"
#include "shell/session.h"

namespace carnetel {

class SiblingPanel {
 public:
  // Reads the siblings' commands from the profile, but for an exchange launch.
  SiblingPanel(CardFormView& view, const Session& session);

  void FieldFocused();
  void ListFocused();
  void NumbersChanged();

  [[nodiscard]] const SiblingApps& apps() const { return apps_; }

 private:
  [[nodiscard]] bool AnyMainButtonShown() const;
  void Show(Sibling sibling, bool visible);
  void HideAll();

  CardFormView& view_;
  bool has_caller_;
  SiblingApps apps_;
  std::array<bool, kSiblings.size()> shown_{};
};

}  // namespace carnetel
