// What the user has chosen once and for all: which index names cards, how lists show them, what the
// form does first, and the directory worked on last. All of it stands in the user profile; a value
// that is missing there has the default told here.
#pragma once

#include <string>

#include "platform/user_profile.h"
#include "storage/card_key.h"

namespace carnetel {

struct Settings {
  int key_field = kSte1;         // Idindex: the field of the active index, kSte1 or kNom
  bool shows_references = true;  // ShowRefCor: references first, else notes
  int style_aff_list = 1;        // StyleAffList, see LabelStyles
  int style_aff_ste = 0;         // StyleAffSte, see LabelStyles
  bool starts_at_first = false;  // DebutSaisie: a new card starts at its first field, not its key
  bool balloons = true;          // Balloons: tooltips
  std::string recent_directory;  // File1, without its menu prefix; empty when there is none

  [[nodiscard]] LabelStyles Labels() const;
};

[[nodiscard]] Settings ReadSettings(const UserProfile& profile);

// The directory that is opened when none is named, without its extension or with it: the one worked
// on last, else the one in the home folder (which ends in '/').
[[nodiscard]] std::string DefaultDirectory(const Settings& settings,
                                           const std::string& home_folder);

}  // namespace carnetel
