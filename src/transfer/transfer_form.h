// The rules of the form through which every import and export goes: which file, of which type and
// character set, with what parameters; what is refused before anything is touched; and the run. The
// side of the directory stands for the open one until the user browses for another.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/messages.h"
#include "transfer/parameter_file.h"
#include "transfer/transfer.h"

namespace carnetel {

enum class TransferSide { kSource, kDestination };

// What a confirmed form asks an engine for.
struct TransferJob {
  TransferDirection direction = TransferDirection::kImport;
  TransferFileType type = TransferFileType::kDelimited;
  CharacterSet charset = CharacterSet::kOem;
  std::string source;
  std::string destination;
  bool replace = false;
};

class TransferForm;

// What opens above the form, and the run itself.
struct TransferCallbacks {
  enum class Filter { kAny, kDirectories, kDbase };
  // Asks for a file; nothing when the user leaves.
  std::function<std::optional<std::string>(Filter filter)> browse;
  // Shows the parameters of the form's type.
  std::function<void(TransferForm& form)> set_parameters;
  // Shows the saved profiles.
  std::function<void(TransferForm& form)> manage_profiles;
  // The destination is there: true to replace it, false to add to it, nothing to leave.
  std::function<std::optional<bool>()> ask_replace;
  std::function<TransferOutcome(const TransferJob& job)> run;
};

// What the form has to know of the open directory and its seat.
struct TransferPlace {
  std::string directory;  // its main file
  int32_t workstation = 0;
  std::string shared_dir = {};  // folder of the seat's own files; empty without seats
};

class TransferForm {
 public:
  // `parameters` has started this direction's transfer (ParameterFile::StartTransfer).
  TransferForm(TransferDirection direction, FileSystem& files, ParameterFile& parameters,
               MessageForm& messages, TransferCallbacks callbacks, TransferPlace place,
               CharacterSet charset);

  [[nodiscard]] TransferDirection direction() const { return direction_; }
  [[nodiscard]] bool imports() const { return direction_ == TransferDirection::kImport; }
  // Number of the form's title in the string table: that of its messages too.
  [[nodiscard]] int title_id() const;
  [[nodiscard]] std::string ActionCaption() const;
  [[nodiscard]] TransferSide foreign_side() const;
  [[nodiscard]] TransferSide directory_side() const;

  [[nodiscard]] const std::string& source() const { return source_; }
  [[nodiscard]] const std::string& destination() const { return destination_; }
  [[nodiscard]] const std::string& foreign_path() const;
  [[nodiscard]] const std::string& directory_path() const;
  // The user edited the foreign side's path: its extension may decide the type.
  void SetForeignPath(const std::string& utf8);

  [[nodiscard]] TransferFileType type() const { return type_; }
  void set_type(TransferFileType type) { type_ = type; }
  [[nodiscard]] CharacterSet charset() const { return charset_; }
  void set_charset(CharacterSet charset) { charset_ = charset; }
  ParameterFile& parameters() { return parameters_; }

  [[nodiscard]] bool may_act() const { return !source_.empty() && !destination_.empty(); }
  [[nodiscard]] bool may_set_parameters() const { return type_ != TransferFileType::kDirectory; }

  // For the side that had the focus last; true when a path was chosen: the focus goes to the other
  // side then.
  bool Browse(TransferSide side);
  void SetParameters();
  // Afterwards the type is that of the profile loaded last.
  void ManageProfiles();

  enum class Outcome {
    kStays,     // the focus goes to the path edited last
    kFinished,  // a transfer was made; the form stays for a further one
    kFailed,    // the form closes
  };
  Outcome Act();

 private:
  [[nodiscard]] bool IsDbase() const;
  [[nodiscard]] std::string& foreign();
  template <class... Args>
  bool Refuse(int text_id, const Args&... args);
  [[nodiscard]] bool TakeExtension();
  [[nodiscard]] bool MayRun();
  [[nodiscard]] bool LeadsToItself() const;
  [[nodiscard]] bool BelongsToAnotherSeat();
  [[nodiscard]] Outcome Run();

  TransferDirection direction_;
  FileSystem& files_;
  ParameterFile& parameters_;
  MessageForm& messages_;
  TransferCallbacks callbacks_;
  TransferPlace place_;
  std::string source_;
  std::string destination_;
  TransferFileType type_;
  CharacterSet charset_;
};

}  // namespace carnetel
