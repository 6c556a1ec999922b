#include "shell/preferences.h"

#include "storage/address_reorder.h"

namespace carnetel {
namespace {

constexpr int kTextNoAccess = 43;
constexpr int kTitleError = 79;

// The style by which lists show cards under these settings.
int DisplayStyle(const Settings& settings) {
  return settings.key_field == kNom ? settings.style_aff_list : settings.style_aff_ste;
}

void BringAddressFileAlong(Session& session, DialogHost& dialogs) {
  Directory* directory = session.directory();
  if (directory == nullptr) return;
  // Shows the progress of every rebuild: the box that asks for patience comes after it.
  AddressReorder reorder(*directory, session.settings().key_field);
  if (!reorder.built()) {
    session.services().messages.ShowMessage(MessageStyle::kError, kTitleError, kTextNoAccess,
                                            directory->address().path());
    return;
  }
  dialogs.ShowPatience(true);
  reorder.CarryOver();
  dialogs.ShowPatience(false);
}

}  // namespace

PreferencesForm::PreferencesForm(const Settings& settings, bool has_caller)
    : shown_(settings), has_caller_(has_caller) {}

Settings PreferencesForm::TakenOver(const Settings& settings) const {
  Settings taken = settings;
  taken.key_field = shown_.key_field;
  if (person_styles_enabled()) taken.style_aff_list = shown_.style_aff_list;
  if (company_styles_enabled()) taken.style_aff_ste = shown_.style_aff_ste;
  taken.shows_references = shown_.shows_references;
  taken.starts_at_first = shown_.starts_at_first;
  if (balloons_enabled()) taken.balloons = shown_.balloons;
  return taken;
}

PreferencesResult ApplyPreferences(Session& session, DialogHost& dialogs,
                                   const PreferencesForm& form) {
  const Settings former = session.settings();
  session.StoreSettings(form.TakenOver(former));
  const Settings& chosen = session.settings();
  if (chosen.key_field != former.key_field) {
    BringAddressFileAlong(session, dialogs);
    return PreferencesResult::kIndexChanged;
  }
  return DisplayStyle(chosen) != DisplayStyle(former) ? PreferencesResult::kStyleChanged
                                                      : PreferencesResult::kNothing;
}

}  // namespace carnetel
