#include "shell/transfer_command.h"

#include "base/format_text.h"
#include "selection/named_sets.h"
#include "shell/directory_chooser.h"
#include "shell/transfer_run.h"
#include "transfer/dbase.h"
#include "transfer/dbase_forms.h"
#include "transfer/fixed_layout_form.h"
#include "transfer/rank_form.h"
#include "transfer/saved_profiles.h"

namespace carnetel {
namespace {

constexpr const char* kParameterFileName = "CARNETEL.TRS";
constexpr int kNoAccess = 43;
constexpr int kNoAccessToSource = 157;
constexpr int kNameForNew = 100;
constexpr std::chrono::milliseconds kGuardWait{2000};

// The saved profiles for the dialog that keeps sets. There is always something to store.
class ProfileStore : public SetStore {
 public:
  ProfileStore(ParameterFile& parameters, TransferDirection direction)
      : profiles_(parameters, direction) {}

  [[nodiscard]] std::vector<std::string> Names() override { return profiles_.Names(); }
  [[nodiscard]] bool HasContent() const override { return true; }
  bool Load(size_t position) override { return profiles_.Load(position); }
  bool Add(const std::string& name) override { return profiles_.Add(name); }
  bool Replace(size_t position, const std::string& name) override {
    return profiles_.Replace(position, name);
  }
  bool Rename(size_t position, const std::string& name) override {
    return profiles_.Rename(position, name);
  }
  bool Delete(size_t position) override { return profiles_.Delete(position); }
  [[nodiscard]] bool MayLoad(size_t position) override { return profiles_.CanLoad(position); }
  [[nodiscard]] std::string NameForNew() const override {
    return std::string(LoadText(kNameForNew));
  }
  [[nodiscard]] bool LoadQuestionEnds() const override { return true; }
  [[nodiscard]] bool DeletionSelectsFirst() const override { return true; }

 private:
  SavedProfiles profiles_;
};

ChooserMode ModeOf(TransferCallbacks::Filter filter) {
  switch (filter) {
    case TransferCallbacks::Filter::kDirectories:
      return ChooserMode::kDirectories;
    case TransferCallbacks::Filter::kDbase:
      return ChooserMode::kDbase;
    case TransferCallbacks::Filter::kAny:
      break;
  }
  return ChooserMode::kAny;
}

TransferOutcome NoAccess(TransferDirection direction, const std::string& path) {
  TransferOutcome outcome;
  outcome.result = -1;
  outcome.message = FormatText(kNoAccess, path);
  outcome.title_id = direction == TransferDirection::kImport ? 92 : 104;
  return outcome;
}

}  // namespace

TransferCommand::TransferCommand(Session& session, DialogHost& dialogs, CharacterSet* charset)
    : session_(session),
      dialogs_(dialogs),
      charset_(charset),
      parameters_(session.services().files, session.module_dir() + kParameterFileName) {}

void TransferCommand::Run(TransferDirection direction) {
  parameters_.StartTransfer(direction);
  TransferForm form(direction, session_.services().files, parameters_, session_.services().messages,
                    Callbacks(direction),
                    {session_.CurrentMainFile(), session_.workstation_number(),
                     session_.lan_on() ? session_.shared_dir() : std::string()},
                    *charset_);
  dialogs_.RunTransfer(form);
  *charset_ = form.charset();
}

TransferCallbacks TransferCommand::Callbacks(TransferDirection direction) {
  TransferCallbacks callbacks;
  callbacks.browse = [this](TransferCallbacks::Filter filter) { return Browse(filter); };
  callbacks.set_parameters = [this](TransferForm& form) { SetParameters(form); };
  callbacks.manage_profiles = [this](TransferForm& form) { ManageProfiles(form); };
  callbacks.ask_replace = [this, direction] {
    return dialogs_.AskReplace(direction == TransferDirection::kImport);
  };
  callbacks.run = [this](const TransferJob& job) { return RunJob(job); };
  return callbacks;
}

std::optional<std::string> TransferCommand::Browse(TransferCallbacks::Filter filter) {
  const Choice choice =
      ChooseDirectory(session_, dialogs_, ChooserTemplate::kOther, ModeOf(filter), false);
  if (!choice.confirmed || choice.paths.empty()) return {};
  return choice.paths.front();
}

void TransferCommand::SetParameters(TransferForm& form) {
  MessageForm& messages = session_.services().messages;
  if (form.type() == TransferFileType::kDelimited) {
    RankForm ranks(parameters_, messages, form.direction());
    dialogs_.RunRanks(ranks);
  } else if (form.type() == TransferFileType::kFixed) {
    FixedLayoutForm layout(parameters_, messages, form.direction());
    dialogs_.RunFixedLayout(layout);
  } else if (form.imports()) {
    SetDbaseImport(form);
  } else {
    DbaseExportForm columns(parameters_, form.type());
    dialogs_.RunDbaseExport(columns);
  }
}

void TransferCommand::SetDbaseImport(TransferForm& form) {
  const SessionServices& services = session_.services();
  const std::string& source = form.source();
  if (source.empty() || !services.files.Exists(source) || services.files.IsFolder(source)) {
    services.messages.ShowMessage(MessageStyle::kError, form.title_id(), kNoAccessToSource);
    return;
  }
  TransferFileType type = form.type();
  const DbaseHeaderOutcome header =
      ReadDbaseHeader(services.files, parameters_, services.messages, source, &type);
  if (header.result == DbaseHeaderOutcome::Result::kUnreadable) {
    services.messages.Show(MessageStyle::kError, header.title_id, header.message);
  }
  if (header.result != DbaseHeaderOutcome::Result::kRead) return;
  form.set_type(type);
  DbaseImportForm columns(parameters_, source, type);
  dialogs_.RunDbaseImport(columns);
}

void TransferCommand::ManageProfiles(TransferForm& form) {
  const SetsDialog which = form.imports() ? SetsDialog::kImport : SetsDialog::kExport;
  ProfileStore store(parameters_, form.direction());
  NamedSetsForm sets(
      store, session_.services().messages,
      [this, which](const std::string& offered) { return dialogs_.AskName(which, offered); });
  dialogs_.RunNamedSets(which, sets);
}

DirectoryServices TransferCommand::Services() const {
  const SessionServices& services = session_.services();
  return {services.files, services.clock, services.progress};
}

DirectoryOptions TransferCommand::OptionsOf(const std::string& main_file) const {
  DirectoryOptions options;
  options.path = main_file;
  if (session_.lan_on()) options.shared_dir = session_.shared_dir();
  options.key_field = session_.settings().key_field;
  return options;
}

bool TransferCommand::IsOpen(const std::string& main_file) const {
  return session_.directory() != nullptr &&
         session_.SamePath(main_file, session_.CurrentMainFile());
}

TransferOutcome TransferCommand::RunJob(const TransferJob& job) {
  return job.direction == TransferDirection::kImport ? Import(job) : Export(job);
}

TransferOutcome TransferCommand::Import(const TransferJob& job) {
  if (IsOpen(job.destination)) session_.CloseDirectory();
  ImportRequest request;
  request.source = job.source;
  request.destination = OptionsOf(job.destination);
  request.replace = job.replace;
  request.charset = job.charset;
  FileSystem& files = session_.services().files;
  const FamilyPaths family(files, job.destination, request.destination.shared_dir);
  const auto guard = DirectoryGuard::Take(files.Canonical(family.Of(".ADR")), kGuardWait);
  if (guard == nullptr) return NoAccess(job.direction, job.destination);
  return ImportFile(Services(), parameters_, job.type, request);
}

TransferOutcome TransferCommand::Export(const TransferJob& job) {
  if (IsOpen(job.source)) return ExportFrom(*session_.directory(), job);
  DirectoryOptions options = OptionsOf(job.source);
  options.may_create = false;
  FileSystem& files = session_.services().files;
  const FamilyPaths family(files, job.source, options.shared_dir);
  const auto guard = DirectoryGuard::Take(files.Canonical(family.Of(".ADR")), kGuardWait);
  Directory source(Services(), options);
  if (guard == nullptr || !carnetel::IsOpen(source.OpenDirectory())) {
    return NoAccess(job.direction, job.source);
  }
  return ExportFrom(source, job);
}

TransferOutcome TransferCommand::ExportFrom(Directory& source, const TransferJob& job) {
  std::unique_ptr<DirectoryGuard> guard;
  if (job.type == TransferFileType::kDirectory) {
    // With seats a directory of the same name shares the source's address file, and its guard.
    const FamilyPaths family(source.files(), job.destination, source.paths().shared_dir());
    const std::string address = family.Of(".ADR");
    if (address != source.paths().Of(".ADR")) {
      guard = DirectoryGuard::Take(source.files().Canonical(address), kGuardWait);
      if (guard == nullptr) return NoAccess(job.direction, job.destination);
    }
  }
  const ExportRequest request{job.destination, job.replace, job.charset};
  return ExportFile(source, parameters_, job.type, request);
}

}  // namespace carnetel
