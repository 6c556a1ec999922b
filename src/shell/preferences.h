// The preferences without their dialog: what it shows, what of it is enabled, and what "Ok" does to
// settings, profile and the open directory. Each of the two indexes has display styles of its own;
// only those of the chosen index can be chosen from, and only theirs is taken over.
#pragma once

#include "shell/dialog_host.h"
#include "shell/session.h"
#include "shell/settings.h"

namespace carnetel {

// The values the dialog shows.
class PreferencesForm {
 public:
  // `has_caller`: a sibling program has started this one; tooltips are the suite's choice then.
  PreferencesForm(const Settings& settings, bool has_caller);

  // kSte1 or kNom.
  [[nodiscard]] int key_field() const { return shown_.key_field; }
  void set_key_field(int field) { shown_.key_field = field; }
  [[nodiscard]] bool shows_references() const { return shown_.shows_references; }
  void set_shows_references(bool references) { shown_.shows_references = references; }
  [[nodiscard]] bool starts_at_first() const { return shown_.starts_at_first; }
  void set_starts_at_first(bool first) { shown_.starts_at_first = first; }

  // See LabelStyles. A profile edited by hand may hold a number that no style has: the dialog shows
  // none chosen then, and without a choice the number stays.
  [[nodiscard]] int style_aff_list() const { return shown_.style_aff_list; }
  void set_style_aff_list(int style) { shown_.style_aff_list = style; }
  [[nodiscard]] int style_aff_ste() const { return shown_.style_aff_ste; }
  void set_style_aff_ste(int style) { shown_.style_aff_ste = style; }
  [[nodiscard]] bool person_styles_enabled() const { return key_field() == kNom; }
  [[nodiscard]] bool company_styles_enabled() const { return key_field() != kNom; }

  // Off while it is greyed, whatever the setting.
  [[nodiscard]] bool balloons() const { return balloons_enabled() && shown_.balloons; }
  void set_balloons(bool balloons) { shown_.balloons = balloons; }
  [[nodiscard]] bool balloons_enabled() const { return !has_caller_; }

  // `settings` with what was chosen; what was greyed keeps its value.
  [[nodiscard]] Settings TakenOver(const Settings& settings) const;

 private:
  Settings shown_;
  bool has_caller_;
};

// What the list has to follow; the numbers are those the dialog answers.
enum class PreferencesResult { kNothing = 0, kIndexChanged = 1, kStyleChanged = 2 };

// What "Ok" does: settings and profile; with another index the address file of the open directory
// is brought along as well, with the box that asks for patience in front of it. An address file
// that cannot be made is told; its order stays the former one until the directory is opened again,
// which makes it anew.
PreferencesResult ApplyPreferences(Session& session, DialogHost& dialogs,
                                   const PreferencesForm& form);

}  // namespace carnetel
