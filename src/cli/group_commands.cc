// The command about groups.

#include <ostream>

#include "base/code_page.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "cli/json_form.h"
#include "selection/criteria_file.h"
#include "selection/marks.h"

namespace carnetel {
namespace {

constexpr int kSetToBeDeleted = 36;
constexpr int kNoSelection = 50;
constexpr int kNoSetName = 165;
constexpr int kListFull = 197;
constexpr int kToBeMerged = 245;
constexpr const char* kGroupUsage =
    "group list | create NOM | replace NOM | merge NOM | rename NOM NOUVEAU | delete NOM";

uint32_t CountMembers(const Directory& directory, uint8_t slot) {
  uint32_t members = 0;
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    if (directory.address().Entry(row).bit(slot)) ++members;
  }
  return members;
}

int ListGroups(CliSession& session, const Directory& directory, GroupFile& groups) {
  for (const GroupRecord& group : groups.Groups()) {
    const GroupView view = {Utf8FromOem(group.name()), group.slot(), group.mode(),
                            CountMembers(directory, group.slot())};
    if (session.options().json) {
      session.out() << GroupLine(view) << '\n';
      continue;
    }
    session.out() << view.name << " : " << view.members << (view.members > 1 ? " fiches" : " fiche")
                  << ", " << LoadText(view.mode == kMembersOnly ? 273 : 274) << '\n';
  }
  return kDone;
}

// The entry that the window shows as the active criteria set.
AnsiText ActiveSetName(CliSession& session, Directory& directory) {
  CriteriaFile criteria(session.files(), directory.paths().Of(".CRT"));
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  const int number = criteria.active_set();
  const bool saved = number >= 1 && static_cast<size_t>(number) <= names.size();
  return saved ? OemToAnsi(names[static_cast<size_t>(number) - 1])
               : AnsiFromUtf8Lossy(LoadText(kNoSetName));
}

int FailToWrite(CliSession& session) {
  return session.Fail("le fichier des groupes n'a pas pu être écrit");
}

int CreateGroup(CliSession& session, Directory& directory, GroupFile& groups,
                const Arguments& arguments, const GroupScope& from) {
  const std::string& name = arguments.positionals[1];
  const std::optional<OemText> oem = ToName(session, name);
  if (!oem) return kRefused;
  const std::vector<GroupRecord> rows = groups.Rows();
  if (rows.size() > kMostGroups) return session.Fail(std::string(LoadText(kListFull)));
  if (directory.marked_count() == 0) return session.Fail(std::string(LoadText(kNoSelection)));
  const auto same = [&oem](const GroupRecord& row) { return SameName(row.name(), *oem); };
  if (rows.size() > 1 && std::any_of(rows.begin() + 1, rows.end(), same)) {
    return session.Fail("un groupe « " + name + " » existe déjà");
  }
  const GroupFile::Description description = {
      *oem, arguments.Has("--whole") ? kWholeFileFlagged : kMembersOnly};
  const AnsiText set_name = ActiveSetName(session, directory);
  return groups.CreateGroup(description, set_name, from.row()) ? kDone : FailToWrite(session);
}

int ReplaceOrMerge(CliSession& session, Directory& directory, GroupFile& groups,
                   const std::string& verb, const std::string& name) {
  const std::optional<size_t> row = FindGroup(session, groups, name);
  if (!row) return kRefused;
  if (directory.marked_count() == 0) return session.Fail(std::string(LoadText(kNoSelection)));
  const std::optional<GroupRecord> record = groups.ReadRow(*row);
  if (!record) return FailToWrite(session);
  if (verb == "merge") {
    if (!session.Confirm(kToBeMerged, name)) return session.Fail("rien n'est changé");
    return groups.MergeGroup(*row) ? kDone : FailToWrite(session);
  }
  const AnsiText set_name = ActiveSetName(session, directory);
  const bool done = groups.ReplaceGroup(*row, {record->name(), record->mode()}, set_name);
  return done ? kDone : FailToWrite(session);
}

int RenameGroup(CliSession& session, Directory& directory, GroupFile& groups,
                const Arguments& arguments) {
  const std::optional<OemText> name = ToName(session, arguments.positionals[2]);
  const std::optional<size_t> row = FindGroup(session, groups, arguments.positionals[1]);
  if (!name || !row) return kRefused;
  const std::optional<GroupRecord> record = groups.ReadRow(*row);
  if (!record) return FailToWrite(session);
  uint8_t mode = record->mode();
  if (arguments.Has("--whole")) mode = kWholeFileFlagged;
  if (arguments.Has("--members")) mode = kMembersOnly;
  const AnsiText set_name = ActiveSetName(session, directory);
  return groups.RenameGroup(*row, {*name, mode}, set_name) ? kDone : FailToWrite(session);
}

int DeleteGroup(CliSession& session, GroupFile& groups, const std::string& name) {
  const std::optional<size_t> row = FindGroup(session, groups, name);
  if (!row) return kRefused;
  if (!session.Confirm(kSetToBeDeleted, name)) return session.Fail("rien n'est supprimé");
  return groups.DeleteGroup(*row) ? kDone : FailToWrite(session);
}

int RunGroup(CliSession& session, const Arguments& arguments) {
  const std::vector<std::string>& words = arguments.positionals;
  const std::string& verb = words.front();
  const bool known =
      (verb == "list" && words.size() == 1) || (verb == "rename" && words.size() == 3) ||
      ((verb == "create" || verb == "replace" || verb == "merge" || verb == "delete") &&
       words.size() == 2);
  if (!known) return session.WrongUsage(kGroupUsage);
  if (arguments.Has("--whole") && arguments.Has("--members")) {
    return session.WrongUsage("--whole et --members s'excluent");
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  GroupFile groups(*directory);
  const GroupScope from(session, *directory, arguments, "--from");
  if (!from.found()) return kRefused;
  if (verb == "list") return ListGroups(session, *directory, groups);
  if (verb == "create") return CreateGroup(session, *directory, groups, arguments, from);
  if (verb == "rename") return RenameGroup(session, *directory, groups, arguments);
  if (verb == "delete") return DeleteGroup(session, groups, words[1]);
  return ReplaceOrMerge(session, *directory, groups, verb, words[1]);
}

}  // namespace

std::vector<Command> GroupCommands() {
  return {{.name = "group",
           .summary = "Gère les groupes de fiches",
           .details = "list ; create NOM ; replace NOM ; merge NOM ; rename NOM NOUVEAU ; "
                      "delete NOM\nLes fiches d'un groupe sont les fiches marquées au moment de "
                      "le créer, de le remplacer ou de le fusionner.",
           .usage = "ACTION [NOM [NOUVEAU]]",
           .least = 1,
           .most = 3,
           .options = {{"--from", "NOM", "les marques de ce groupe, au lieu du fichier entier"},
                       {"--whole", "", "affiche le fichier entier, les membres signalés"},
                       {"--members", "", "affiche les fiches du groupe uniquement"}},
           .run = RunGroup}};
}

}  // namespace carnetel
