#include "shell/recents.h"

#include <array>

#include "base/format_text.h"
#include "shell/command_table.h"

namespace carnetel {
namespace {

constexpr size_t kMostRecents = 4;
// "&1 " in front of the path in a recent directory's menu text.
constexpr size_t kMenuPrefixSize = 3;
constexpr std::array<int, kMostRecents> kRecentKeys = {237, 238, 239, 240};

std::string RecentText(size_t index, const std::string& path) {
  return FormatPrintf("&%c %s", {static_cast<int>('1' + index), path});
}

}  // namespace

void Recents::Read() {
  paths_.clear();
  for (size_t i = 1; i < kMostRecents; ++i) {
    const std::string text = session_.ProfileText(kRecentKeys[i], "");
    if (text.size() > kMenuPrefixSize) paths_.push_back(text.substr(kMenuPrefixSize));
  }
}

std::vector<std::string> Recents::Rebuild() {
  const std::string current = session_.CurrentMainFile();
  std::erase_if(paths_, [this, &current](const std::string& path) {
    return session_.SamePath(path, current);
  });
  paths_.insert(paths_.begin(), current);
  if (paths_.size() > kMostRecents) paths_.resize(kMostRecents);
  std::vector<std::string> texts;
  for (size_t i = 0; i < paths_.size(); ++i) texts.push_back(RecentText(i, paths_[i]));
  return texts;
}

void Recents::Write() {
  for (size_t i = 1; i < paths_.size(); ++i) {
    session_.ProfileWrite(kRecentKeys[i], RecentText(i, paths_[i]));
  }
}

std::string Recents::PathToOpen(int command) const {
  const auto index = static_cast<size_t>(command - kCommandRecent1);
  if (index >= paths_.size()) return {};
  return session_.SamePath(paths_[index], session_.CurrentMainFile()) ? "" : paths_[index];
}

}  // namespace carnetel
