#include "transfer/transfer_form.h"

#include <algorithm>
#include <utility>

#include "base/path.h"
#include "storage/directory_file.h"
#include "storage/family_files.h"

namespace carnetel {
namespace {

constexpr int kImportTitle = 92;
constexpr int kExportTitle = 104;
constexpr int kExportCaption = 105;
constexpr int kNoAccess = 43;
constexpr int kOntoItself = 181;
constexpr int kWrongType = 182;
constexpr int kDoubtfulType = 183;
constexpr int kPrivateOfOther = 189;

TransferFileType TypeOf(int16_t stored) {
  constexpr auto kLast = static_cast<int16_t>(TransferFileType::kDbase4);
  return static_cast<TransferFileType>(std::clamp<int16_t>(stored, 0, kLast));
}

}  // namespace

TransferForm::TransferForm(TransferDirection direction, FileSystem& files,
                           ParameterFile& parameters, MessageForm& messages,
                           TransferCallbacks callbacks, TransferPlace place, CharacterSet charset)
    : direction_(direction),
      files_(files),
      parameters_(parameters),
      messages_(messages),
      callbacks_(std::move(callbacks)),
      place_(std::move(place)),
      type_(TypeOf(parameters.profile().type())),
      charset_(charset) {
  (imports() ? destination_ : source_) = place_.directory;
}

int TransferForm::title_id() const {
  return imports() ? kImportTitle : kExportTitle;
}

std::string TransferForm::ActionCaption() const {
  return imports() ? "&Importer" : std::string(LoadText(kExportCaption));
}

TransferSide TransferForm::foreign_side() const {
  return imports() ? TransferSide::kSource : TransferSide::kDestination;
}

TransferSide TransferForm::directory_side() const {
  return imports() ? TransferSide::kDestination : TransferSide::kSource;
}

std::string& TransferForm::foreign() {
  return imports() ? source_ : destination_;
}

const std::string& TransferForm::foreign_path() const {
  return imports() ? source_ : destination_;
}

const std::string& TransferForm::directory_path() const {
  return imports() ? destination_ : source_;
}

bool TransferForm::IsDbase() const {
  return type_ == TransferFileType::kDbase3 || type_ == TransferFileType::kDbase4;
}

void TransferForm::SetForeignPath(const std::string& utf8) {
  foreign() = utf8;
  if (HasExtension(utf8, ".DAN")) type_ = TransferFileType::kDirectory;
  if (HasExtension(utf8, ".DBF") && type_ != TransferFileType::kDbase4) {
    type_ = TransferFileType::kDbase3;
  }
}

bool TransferForm::Browse(TransferSide side) {
  auto filter = TransferCallbacks::Filter::kAny;
  if (side == directory_side() || type_ == TransferFileType::kDirectory) {
    filter = TransferCallbacks::Filter::kDirectories;
  } else if (IsDbase()) {
    filter = TransferCallbacks::Filter::kDbase;
  }
  const std::optional<std::string> path = callbacks_.browse(filter);
  if (!path) return false;
  if (side == foreign_side()) {
    SetForeignPath(*path);
  } else {
    (imports() ? destination_ : source_) = *path;
  }
  return true;
}

void TransferForm::SetParameters() {
  if (may_set_parameters()) callbacks_.set_parameters(*this);
}

void TransferForm::ManageProfiles() {
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kRead, type_, direction_);
  parameters_.header().set_last_type(type_);
  parameters_.profile().set_type(type_);
  callbacks_.manage_profiles(*this);
  type_ = TypeOf(parameters_.header().last_type());
}

template <class... Args>
bool TransferForm::Refuse(int text_id, const Args&... args) {
  messages_.ShowMessage(MessageStyle::kError, title_id(), text_id, args...);
  return false;
}

// What the extension of the foreign file says about the type; false when it is refused.
bool TransferForm::TakeExtension() {
  const bool has_extension = PathSplit(foreign()).extension.size() > 1;
  if (HasExtension(foreign(), ".DAN")) {
    type_ = TransferFileType::kDirectory;
  } else if (has_extension && type_ == TransferFileType::kDirectory && imports()) {
    return Refuse(kWrongType, foreign());
  }
  if (!IsDbase() && HasExtension(foreign(), ".DBF")) {
    const MessageButton answer =
        messages_.ShowMessage(MessageStyle::kYesNoDefaultNo, title_id(), kDoubtfulType, foreign());
    if (answer != MessageButton::kYes) return false;
  }
  // An export gets the extension without a word, whatever was typed. A directory that is there in
  // another case is the one the engine will take: the checks and the question must be about it.
  if (type_ == TransferFileType::kDirectory) {
    foreign() = FamilyPaths(files_, PathMerge(foreign(), ".DAN")).Main();
  }
  if (imports()) destination_ = FamilyPaths(files_, destination_).Main();
  return true;
}

// Onto itself, or onto another file of the directory's own family.
bool TransferForm::LeadsToItself() const {
  if (source_ == destination_) return true;
  const bool own = FamilyPaths(files_, directory_path(), place_.shared_dir).Holds(foreign_path());
  const auto stem = [this](const std::string& path) {
    PathPieces pieces = PathSplit(files_.Canonical(path));
    pieces.extension.clear();
    return ComposePath(pieces);
  };
  const bool directories = type_ == TransferFileType::kDirectory;
  return own || (directories && stem(source_) == stem(destination_));
}

bool TransferForm::BelongsToAnotherSeat() {
  if (type_ != TransferFileType::kDirectory) return false;
  const FamilyPaths family(files_, foreign_path());
  const std::optional<MainHeader> header = ReadMainHeader(files_, family.Main());
  if (!header || header->owner() == 0 || place_.workstation == 0) return false;
  if (header->owner() == place_.workstation) return false;
  // Seats have no names beside their numbers.
  (void)Refuse(kPrivateOfOther, "", header->owner());
  return true;
}

bool TransferForm::MayRun() {
  if (!TakeExtension()) return false;
  const bool there = files_.Exists(source_) && !files_.IsFolder(source_);
  if (!there) return Refuse(kNoAccess, source_);
  if (LeadsToItself()) return Refuse(kOntoItself, source_);
  return !BelongsToAnotherSeat();
}

TransferForm::Outcome TransferForm::Act() {
  if (!may_act() || !MayRun()) return Outcome::kStays;
  // A reading on the way, for a dBase mapping, may have brought the file's direction along.
  parameters_.header().set_direction(direction_);
  parameters_.header().set_last_type(type_);
  parameters_.profile().set_type(type_);
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kWrite, TransferFileType::kDelimited,
                                        direction_);
  return Run();
}

TransferForm::Outcome TransferForm::Run() {
  TransferJob job{direction_, type_, charset_, source_, destination_, true};
  if (files_.Exists(destination_)) {
    const std::optional<bool> replace = callbacks_.ask_replace();
    if (!replace) return Outcome::kStays;
    job.replace = *replace;
  }
  const TransferOutcome outcome = callbacks_.run(job);
  if (!outcome.message.empty()) {
    messages_.Show(MessageStyle::kError, outcome.title_id, outcome.message);
  }
  return outcome.result < 0 ? Outcome::kFailed : Outcome::kFinished;
}

}  // namespace carnetel
