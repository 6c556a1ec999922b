#include "link/sibling.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/path.h"
#include "link/append_block.h"
#include "link/hand_off_record.h"

namespace carnetel {
namespace {

constexpr int kErrorTitle = 79;
constexpr int kAttentionTitle = 80;
constexpr int kNoAccess = 43;
constexpr int kCannotStart = 201;
constexpr int kFieldEmpty = 202;
constexpr int kSaveFirst = 206;

constexpr int kSection = 230;
constexpr int kFolderKey = 276;
constexpr int kVoiceProgram = 277;
constexpr int kVoiceFile = 278;
constexpr int kHandOffFile = 257;
// Made of a hand-off file of its own, so that the Minitel program finds one record there.
constexpr std::string_view kMinitelFile = "MINITNUM.DAT";

int ProfileKeyOf(Sibling sibling) {
  switch (sibling) {
    case Sibling::kVoice:
      return 234;
    case Sibling::kFax:
      return 232;
    case Sibling::kFiles:
      return 233;
    case Sibling::kMinitel:
      return 235;
    case Sibling::kIsdn:
      break;
  }
  return 236;
}

std::string WithoutLastSeparator(std::string folder) {
  if (folder.ends_with('/') || folder.ends_with('\\')) folder.pop_back();
  return folder;
}

std::string InFolder(const std::string& folder, int name) {
  return FormatPrintf("%s/%s", {folder, LoadText(name)});
}

const std::string& FileOf(const SiblingApps& apps, Sibling sibling) {
  return sibling == Sibling::kVoice ? apps.voice_file() : apps.hand_off_file();
}

std::string CommandLineOf(const SiblingApps& apps, const SiblingCall& call) {
  const std::string& command = apps.command(call.sibling);
  switch (call.sibling) {
    case Sibling::kFax:
      return FormatPrintf("%s /X", {command});
    case Sibling::kFiles:
      return FormatPrintf("%s /F", {command});
    case Sibling::kMinitel:
      return FormatPrintf("%s /H=%u", {command, call.window});
    case Sibling::kVoice:
    case Sibling::kIsdn:
      break;
  }
  return apps.voice_command();
}

void RenameForMinitel(const Directory& directory, const std::string& hand_off_file) {
  FileSystem& files = directory.files();
  const std::string own = PathMerge(hand_off_file, kMinitelFile);
  if (hand_off_file.empty() || hand_off_file == own) return;
  // The caller named a file of the directory, into which nothing was written.
  if (directory.paths().Holds(FindAnyCase(files, hand_off_file))) return;
  if (files.Exists(own)) files.Remove(own);
  files.Rename(hand_off_file, own);
}

}  // namespace

SiblingInfo InfoOf(Sibling sibling) {
  switch (sibling) {
    case Sibling::kVoice:
      return {1014, 158, kTel1, 145};
    case Sibling::kFax:
      return {1015, 160, kFax, 149};
    case Sibling::kFiles:
      return {1016, 161, kModem, 151};
    case Sibling::kMinitel:
      return {1017, 162, kMtel, 147};
    case Sibling::kIsdn:
      break;
  }
  // Its button shows and does nothing, by design.
  return {1019, 159, kTel2, 0};
}

bool FindSibling(int button, Sibling* sibling) {
  const auto* found = std::ranges::find(kSiblings, button,
                                        [](Sibling candidate) { return InfoOf(candidate).button; });
  if (found == kSiblings.end()) return false;
  *sibling = *found;
  return true;
}

SiblingApps::SiblingApps(const UserProfile& profile, FileSystem& files, std::string exchange_file)
    : hand_off_file_(std::move(exchange_file)) {
  for (const Sibling sibling : kSiblings) {
    commands_[static_cast<size_t>(sibling)] =
        profile.Text(LoadText(kSection), LoadText(ProfileKeyOf(sibling)), "");
  }
  const std::string folder = profile.Text(LoadText(kSection), LoadText(kFolderKey), "");
  if (!folder.empty()) {
    const std::string bare = WithoutLastSeparator(folder);
    voice_command_ = FormatPrintf("%s /U", {FindAnyCase(files, InFolder(bare, kVoiceProgram))});
    voice_file_ = InFolder(bare, kVoiceFile);
  }
  for (const Sibling sibling : {Sibling::kFax, Sibling::kFiles, Sibling::kVoice}) {
    if (command(sibling).empty()) continue;
    hand_off_file_ = PathMerge(command(sibling), LoadText(kHandOffFile));
    break;
  }
}

int WriteHandOffRecord(Directory& directory, uint32_t card_offset, const LabelStyles& styles,
                       int field, const std::string& path, MessageForm& messages) {
  const std::unique_ptr<File> file = OpenToAppend(directory, path);
  if (file == nullptr) {
    messages.ShowMessage(MessageStyle::kInformation, kAttentionTitle, kNoAccess, path);
    return 1;
  }
  CardRecord card;
  if (!directory.main().ReadCard(card_offset, card)) return 0;
  const AnsiText main_file = RecordPath(directory.paths().Main());
  const HandOffSource source{card, card_offset, field, main_file};
  const auto record = MakeHandOffRecord(source, RecordForm::kLongAsItIs, styles);
  if (!record) return 0;
  (void)AppendBlock(*file, file->Size(), *record);
  return 1;
}

void CallSibling(Directory& directory, const SiblingApps& apps, const SiblingCall& call,
                 MessageForm& messages, const ProgramStarter& start) {
  const SiblingInfo info = InfoOf(call.sibling);
  if (info.label_id == 0) return;
  if (!call.form_at_rest) {
    messages.ShowMessage(MessageStyle::kInformation, kAttentionTitle, kSaveFirst);
    return;
  }
  const std::string& path = FileOf(apps, call.sibling);
  // One record for the voice program; the former one goes even when no new one comes.
  if (call.sibling == Sibling::kVoice) directory.files().Remove(path);
  if (call.number_text.empty()) {
    messages.ShowMessage(MessageStyle::kError, kErrorTitle, kFieldEmpty, LoadText(info.label_id));
    return;
  }
  const int written =
      WriteHandOffRecord(directory, call.card_offset, call.styles, info.field, path, messages);
  if (written == 0) return;
  if (call.sibling == Sibling::kMinitel) RenameForMinitel(directory, path);
  LaunchProgram(CommandLineOf(apps, call), messages, start);
}

bool LaunchProgram(const std::string& command_line, MessageForm& messages,
                   const ProgramStarter& start) {
  if (start && start(command_line)) return true;
  messages.ShowMessage(MessageStyle::kError, kErrorTitle, kCannotStart,
                       command_line.substr(0, command_line.find(' ')));
  return false;
}

}  // namespace carnetel
