// The sibling programs that a number is handed to with one button: voice, fax, file transfer,
// Minitel. A record goes into a small file, then the sibling starts with a short command line and
// reads it. Nothing comes back.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "base/messages.h"
#include "platform/user_profile.h"
#include "storage/card_key.h"
#include "storage/directory.h"

namespace carnetel {

// In the order of their buttons 1014 to 1017, then 1019.
enum class Sibling { kVoice, kFax, kFiles, kMinitel, kIsdn };
inline constexpr std::array<Sibling, 5> kSiblings = {
    Sibling::kVoice, Sibling::kFax, Sibling::kFiles, Sibling::kMinitel, Sibling::kIsdn};

struct SiblingInfo {
  int button;
  int control;  // of the form, with the number
  int field;
  int label_id;  // in the string table; 0 when the button does nothing
};
[[nodiscard]] SiblingInfo InfoOf(Sibling sibling);
// The sibling of a button; false for any other number.
[[nodiscard]] bool FindSibling(int button, Sibling* sibling);

// The commands of the siblings and their files, as the suite's section of the profile tells them.
class SiblingApps {
 public:
  SiblingApps() = default;
  // `exchange_file` stays the hand-off file when no sibling gives a place for one.
  SiblingApps(const UserProfile& profile, FileSystem& files, std::string exchange_file);

  // The value of its key; empty: its button is never shown.
  [[nodiscard]] const std::string& command(Sibling sibling) const {
    return commands_[static_cast<size_t>(sibling)];
  }
  // "TFCOM.EXE" with its option, and "NUM.DAT", in the folder of the key TDF; empty without it.
  [[nodiscard]] const std::string& voice_command() const { return voice_command_; }
  [[nodiscard]] const std::string& voice_file() const { return voice_file_; }
  // "NUMEMI.DAT" of the others.
  [[nodiscard]] const std::string& hand_off_file() const { return hand_off_file_; }

 private:
  std::array<std::string, kSiblings.size()> commands_;
  std::string voice_command_;
  std::string voice_file_;
  std::string hand_off_file_;
};

// Appends the record of a card to a file; 0 when the card has no such number, 1 in every other
// case: a file that cannot be opened is told, and the sibling starts all the same.
[[nodiscard]] int WriteHandOffRecord(Directory& directory, uint32_t card_offset,
                                     const LabelStyles& styles, int field, const std::string& path,
                                     MessageForm& messages);

// What a press of a button works with.
struct SiblingCall {
  Sibling sibling = Sibling::kVoice;
  bool form_at_rest = true;
  std::string number_text;  // of the form's control, UTF-8
  uint32_t card_offset = 0;
  uint64_t window = 0;  // of the main window, for the Minitel program
  LabelStyles styles;
};

// Starts a command line; false when it cannot be started.
using ProgramStarter = std::function<bool(const std::string& command_line)>;

// The whole press of a sibling's button. A program that cannot be started is told.
void CallSibling(Directory& directory, const SiblingApps& apps, const SiblingCall& call,
                 MessageForm& messages, const ProgramStarter& start);

// Starts a command line; one that cannot be started is told, with its text up to the first blank.
bool LaunchProgram(const std::string& command_line, MessageForm& messages,
                   const ProgramStarter& start);

}  // namespace carnetel
