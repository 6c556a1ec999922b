#include "shell/settings.h"

#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kSection = 231;
constexpr int kIdindex = 261;
constexpr int kShowRefCor = 256;
constexpr int kStyleAffList = 266;
constexpr int kStyleAffSte = 281;
constexpr int kDebutSaisie = 280;
constexpr int kBalloons = 263;
constexpr int kFile1 = 237;
constexpr int kDefaultName = 52;

// The recent directories are stored as texts of a menu: "&1 /path".
constexpr size_t kMenuPrefixSize = 3;

}  // namespace

LabelStyles Settings::Labels() const {
  LabelStyles styles;
  styles.active_index = key_field == kNom ? 2 : 1;
  styles.style_aff_ste = style_aff_ste;
  styles.style_aff_list = style_aff_list;
  styles.style_aff_emi = style_aff_list;
  return styles;
}

Settings ReadSettings(const UserProfile& profile) {
  const auto number = [&profile](int key, int fallback) {
    return profile.Int(LoadText(kSection), LoadText(key), fallback);
  };
  Settings settings;
  // Only 0 and 10 are ever stored; anything else counts as the side of 1 it lies on.
  settings.key_field = number(kIdindex, kSte1) < 1 ? kSte1 : kNom;
  settings.shows_references = number(kShowRefCor, 1) != 0;
  settings.style_aff_list = number(kStyleAffList, 1);
  settings.style_aff_ste = number(kStyleAffSte, 0);
  settings.starts_at_first = number(kDebutSaisie, 0) != 0;
  settings.balloons = number(kBalloons, 1) != 0;
  settings.recent_directory = profile.Text(LoadText(kSection), LoadText(kFile1), "");
  if (settings.recent_directory.starts_with('&')) {
    settings.recent_directory.erase(0, kMenuPrefixSize);
  }
  return settings;
}

std::string DefaultDirectory(const Settings& settings, const std::string& home_folder) {
  if (!settings.recent_directory.empty()) return settings.recent_directory;
  return home_folder + std::string(LoadText(kDefaultName));
}

}  // namespace carnetel
