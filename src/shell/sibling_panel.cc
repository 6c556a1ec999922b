#include "shell/sibling_panel.h"

namespace carnetel {

SiblingPanel::SiblingPanel(CardFormView& view, const Session& session)
    : view_(view), has_caller_(session.request().caller_window != 0) {
  if (session.exchange_launch()) return;
  apps_ = SiblingApps(session.services().profile, session.services().files,
                      session.request().exchange_file_path);
}

// Minitel and ISDN have no say in it.
bool SiblingPanel::AnyMainButtonShown() const {
  const auto shown = [this](Sibling sibling) { return shown_[static_cast<size_t>(sibling)]; };
  return shown(Sibling::kVoice) || shown(Sibling::kFax) || shown(Sibling::kFiles);
}

void SiblingPanel::Show(Sibling sibling, bool visible) {
  shown_[static_cast<size_t>(sibling)] = visible;
  const SiblingInfo info = InfoOf(sibling);
  view_.SetSiblingButton(info.button, visible, visible && !view_.FieldText(info.control).empty());
}

void SiblingPanel::HideAll() {
  for (const Sibling sibling : kSiblings) Show(sibling, false);
}

void SiblingPanel::FieldFocused() {
  if (!has_caller_ || AnyMainButtonShown()) HideAll();
}

void SiblingPanel::ListFocused() {
  if (!has_caller_) {
    HideAll();
  } else if (!AnyMainButtonShown()) {
    for (const Sibling sibling : kSiblings) Show(sibling, !apps_.command(sibling).empty());
  }
}

void SiblingPanel::NumbersChanged() {
  for (const Sibling sibling : kSiblings) {
    if (shown_[static_cast<size_t>(sibling)]) Show(sibling, true);
  }
}

}  // namespace carnetel
