// What all transfers have in common: how a directory's cards come in from a foreign file or go out
// to one. A request names the two sides, an engine does the work and answers an outcome; engines
// show progress but never a message, the caller does that.
#pragma once

#include <cstdint>
#include <string>

#include "base/text.h"
#include "storage/directory.h"

namespace carnetel {

// These values are on disk.
enum class TransferDirection : uint8_t { kImport = 0, kExport = 1 };

// In the order of the form's list; these values are on disk.
enum class TransferFileType : int16_t {
  kDelimited = 0,
  kFixed = 1,
  kDirectory = 2,
  kDbase3 = 3,
  kDbase4 = 4,
};

[[nodiscard]] constexpr bool IsDbase(TransferFileType type) {
  return type == TransferFileType::kDbase3 || type == TransferFileType::kDbase4;
}

// Of the foreign file, in the order of the form's list. Cards are OEM text. Never stored.
enum class CharacterSet { kOem = 0, kAnsi = 1 };

struct TransferOutcome {
  int result = 0;        // 0 or -1, as the transfer form takes it
  uint32_t cards = 0;    // cards that really are in the destination
  std::string message;   // UTF-8; empty also for failures that are silent by design
  int title_id = 0;      // of the message, in the string table
  bool aborted = false;  // the user stopped it; what was transferred before stays
  // Import: lines behind the last one that a run takes, empty ones counted.
  uint32_t lines_left_out = 0;
  // The message is due to a directory that holds all the cards it can.
  bool directory_full = false;
  // Export to a text or to fixed records: the destination could not be opened, which has no
  // message.
  bool not_opened = false;

  // A failure without a message.
  static TransferOutcome SilentFailure() {
    TransferOutcome outcome;
    outcome.result = -1;
    return outcome;
  }
};

struct ImportRequest {
  std::string source;  // path of the foreign file
  // The directory, made when missing, with its seat's folder and key field.
  DirectoryOptions destination;
  bool replace = false;  // deletes the directory with its family first
  CharacterSet charset = CharacterSet::kOem;
};

struct ExportRequest {
  std::string destination;  // path of the foreign file, made when missing
  bool replace = false;     // deletes it first; otherwise the cards go behind what is there
  CharacterSet charset = CharacterSet::kOem;
};

}  // namespace carnetel
