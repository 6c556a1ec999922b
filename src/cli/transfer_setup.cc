#include "cli/transfer_setup.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/path.h"
#include "cli/transfer_parameters.h"
#include "transfer/dbase_format.h"
#include "transfer/saved_profiles.h"

namespace carnetel {
namespace {

constexpr int kTitle = 80;
constexpr int kNoAccess = 43;
constexpr int kNotDbase = 159;
constexpr int kOntoItself = 181;
constexpr int kWrongType = 182;
constexpr int kDoubtfulType = 183;

bool IsFile(FileSystem& files, const std::string& path) {
  return files.Exists(path) && !files.IsFolder(path);
}

TransferFileType StoredType(int16_t stored) {
  constexpr auto kLast = static_cast<int16_t>(TransferFileType::kDbase4);
  return static_cast<TransferFileType>(std::clamp<int16_t>(stored, 0, kLast));
}

class Preparation {
 public:
  Preparation(CliSession& session, const Arguments& arguments, TransferSetup& setup)
      : session_(session), arguments_(arguments), setup_(setup) {}

  // The exit status.
  int Run() {
    setup_.file = setup_.options.file;
    if (!MayBegin()) return kRefused;
    setup_.parameters.StartTransfer(setup_.direction);
    if (!LoadProfile() || !TakeType() || !TakeFile()) return kRefused;
    const std::string foreign = OptionOfOtherType(arguments_, setup_.type);
    if (!foreign.empty()) {
      return session_.WrongUsage("l'option " + foreign + " n'a pas de sens avec le type " +
                                 TypeWord(setup_.type));
    }
    TellStoredType();
    if (!Apply()) return kRefused;
    Store();
    return kDone;
  }

 private:
  bool Refuse(const std::string& text) {
    session_.Fail(text);
    return false;
  }
  [[nodiscard]] bool imports() const { return setup_.direction == TransferDirection::kImport; }
  [[nodiscard]] FileSystem& files() const { return session_.files(); }

  // What can be told before the parameter file is made.
  bool MayBegin() {
    const std::string& file = setup_.file;
    if (session_.Family()->Holds(setup_.file)) return Refuse(FormatText(kOntoItself, file));
    const bool there = IsFile(files(), file) || files().Exists(FamilyPaths(files(), file).Main());
    if (imports() && !there) return Refuse(FormatText(kNoAccess, file));
    const auto given = setup_.options.type;
    const bool other = given && *given != TransferFileType::kDirectory;
    // Text or records would ruin a main file.
    return !other || !HasExtension(file, ".DAN") || Refuse(FormatText(kWrongType, file));
  }

  bool LoadProfile() {
    if (!setup_.options.load) return true;
    SavedProfiles profiles(setup_.parameters, setup_.direction);
    std::vector<OemText> names;
    for (const std::string& name : profiles.Names()) names.push_back(OemFromUtf8Lossy(name));
    const auto place = FindName(session_, kProfileKind, names, *setup_.options.load);
    if (!place) return false;
    if (!profiles.CanLoad(*place)) {
      return Refuse("le jeu de paramètres « " + *setup_.options.load + " » sert à " +
                    (imports() ? "l'exportation" : "l'importation"));
    }
    return profiles.Load(*place) || Refuse("le fichier des paramètres n'a pas pu être écrit");
  }

  // The line decides before a profile loaded by it, that before the extension, that before what was
  // used last; but a ".DAN" is a directory whatever the last ones say.
  bool TakeType() {
    const TransferFileType stored = setup_.options.load
                                        ? StoredType(setup_.parameters.header().last_type())
                                        : StoredType(setup_.parameters.profile().type());
    setup_.type = setup_.options.type.value_or(stored);
    if (HasExtension(setup_.file, ".DAN")) setup_.type = TransferFileType::kDirectory;
    if (!HasExtension(setup_.file, ".DBF") || IsDbase(setup_.type)) return true;
    if (!setup_.options.type && !setup_.options.load) {
      setup_.type = TransferFileType::kDbase3;
      return true;
    }
    const MessageButton answer = session_.messages().ShowMessage(
        MessageStyle::kYesNoDefaultNo, kTitle, kDoubtfulType, setup_.file);
    return answer == MessageButton::kYes || Refuse("rien n'est transféré");
  }

  // The extension of a directory's file, and whether the file is there at last.
  bool TakeFile() {
    if (setup_.type == TransferFileType::kDirectory) {
      const bool has_extension = PathSplit(setup_.file).extension.size() > 1;
      const bool is_main = HasExtension(setup_.file, ".DAN");
      if (imports() && has_extension && !is_main) {
        return Refuse(FormatText(kWrongType, setup_.file));
      }
      // An export gets the extension whatever was given.
      const std::string main = is_main ? setup_.file : PathMerge(setup_.file, ".DAN");
      setup_.file = FamilyPaths(files(), main).Main();
      if (session_.Family()->Holds(setup_.file))
        return Refuse(FormatText(kOntoItself, setup_.options.file));
    }
    const bool usable = imports() ? IsFile(files(), setup_.file) : !files().IsFolder(setup_.file);
    if (!usable) return Refuse(FormatText(kNoAccess, setup_.file));
    return !RuinsAnotherFile() || Refuse(setup_.file + " : " + std::string(LoadText(kNotDbase)));
  }

  // Records behind what is no table would come with a count written into its start.
  bool RuinsAnotherFile() {
    const bool adds = !imports() && !setup_.options.replace && files().Exists(setup_.file);
    if (!adds || !IsDbase(setup_.type)) return false;
    const std::vector<std::byte> start = ReadStart(files(), setup_.file, DbaseHeader::kSize);
    DbaseHeader header;
    std::ranges::copy(start, header.bytes().begin());
    return start.size() < DbaseHeader::kSize || !header.IsTable();
  }

  // A type other than that of most files, which nothing on the line tells.
  void TellStoredType() {
    const bool told = setup_.options.type || setup_.options.load ||
                      HasExtension(setup_.options.file, ".DAN") ||
                      HasExtension(setup_.options.file, ".DBF");
    if (told || setup_.type == TransferFileType::kDelimited) return;
    session_.messages().Inform("type " + TypeWord(setup_.type) +
                               ", celui du dernier transfert (--type en donne un autre)");
  }

  bool Apply() {
    TransferProfile& profile = setup_.parameters.profile();
    switch (setup_.type) {
      case TransferFileType::kDelimited:
        ApplyDelimitedOptions(setup_.options, &profile);
        return true;
      case TransferFileType::kFixed:
        return ApplyFixedOptions(session_, setup_.options, setup_.direction, &profile);
      case TransferFileType::kDirectory:
        return true;
      case TransferFileType::kDbase3:
      case TransferFileType::kDbase4:
        break;
    }
    if (imports()) return ApplyDbaseImport(session_, &setup_);
    ApplyDbaseExport(&setup_);
    return true;
  }

  // Reading a mapping takes the header from the file: what this transfer is stands there anew.
  void Store() {
    ParameterFile& parameters = setup_.parameters;
    parameters.header().set_last_type(setup_.type);
    parameters.header().set_direction(setup_.direction);
    parameters.profile().set_type(setup_.type);
    (void)parameters.AccessParameterFile(ParameterFile::Access::kWrite,
                                         TransferFileType::kDelimited, setup_.direction);
  }

  CliSession& session_;
  const Arguments& arguments_;
  TransferSetup& setup_;
};

}  // namespace

std::optional<TransferSetup> PrepareTransfer(CliSession& session, const Arguments& arguments,
                                             TransferDirection direction, int* status) {
  TransferOptions options;
  const std::string usage = ParseTransferOptions(arguments, &options);
  if (!usage.empty()) {
    *status = session.WrongUsage(usage);
    return {};
  }
  std::optional<TransferSetup> setup(
      TransferSetup{.direction = direction,
                    .options = std::move(options),
                    .parameters = ParameterFile(session.files(), session.ParameterFile()),
                    .file = {}});
  *status = Preparation(session, arguments, *setup).Run();
  if (*status != kDone) setup.reset();
  return setup;
}

}  // namespace carnetel
