// The command about groups.

#include <ostream>

#include "base/code_page.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "selection/criteria_file.h"

namespace carnetel {
namespace {

constexpr int kSetToBeDeleted = 36;
constexpr int kNoSelection = 50;
constexpr int kNoSetName = 165;
constexpr int kListFull = 197;
constexpr int kToBeMerged = 245;
constexpr int kMembersText = 273;
constexpr int kWholeFileText = 274;

// What an action on groups works with.
struct GroupWork {
  CliSession& session;
  Directory& directory;
  GroupFile groups;
  const Arguments& arguments;

  [[nodiscard]] const std::string& word(size_t place) const { return arguments.positionals[place]; }
};

int FailToWrite(const GroupWork& work) {
  return work.session.Fail("le fichier des groupes n'a pas pu être écrit");
}

int ListGroups(GroupWork& work) {
  std::ostream& out = work.session.out();
  for (const GroupRecord& group : work.groups.Groups()) {
    const GroupView view = {Utf8FromOem(group.name()), group.slot(), group.mode(),
                            CountMembers(work.directory, group.slot())};
    if (work.session.options().json) {
      out << GroupLine(view) << '\n';
      continue;
    }
    out << Shown(view.name) << " : " << CardCount(view.members) << " ("
        << LoadText(view.mode == kMembersOnly ? kMembersText : kWholeFileText) << ")\n";
  }
  return kDone;
}

// The entry that the window shows as the active criteria set.
AnsiText ActiveSetName(const GroupWork& work) {
  CriteriaFile criteria(work.session.files(), work.directory.paths().Of(".CRT"));
  (void)criteria.ReadCriteriaHeader();
  const int number = criteria.active_set();
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  const bool saved = number >= 1 && static_cast<size_t>(number) <= names.size();
  return saved ? OemToAnsi(names[static_cast<size_t>(number) - 1])
               : AnsiFromUtf8Lossy(LoadText(kNoSetName));
}

bool TellNoMarks(const GroupWork& work) {
  if (work.directory.marked_count() != 0) return false;
  work.session.Fail(std::string(LoadText(kNoSelection)));
  return true;
}

int TellMembers(GroupWork& work, size_t row) {
  const std::optional<GroupRecord> record = work.groups.ReadRow(row);
  if (!record) return FailToWrite(work);
  work.session.messages().Inform("Groupe « " + Utf8FromOem(record->name()) +
                                 " » : " + CardCount(CountMembers(work.directory, record->slot())));
  return kDone;
}

int CreateGroup(GroupWork& work, size_t from) {
  const std::optional<OemText> name = ToName(work.session, work.word(1));
  if (!name) return kRefused;
  const std::vector<OemText> names = GroupNames(work.groups);
  if (names.size() >= kMostGroups) return work.session.Fail(std::string(LoadText(kListFull)));
  if (TellNoMarks(work) || !IsFreeName(work.session, kGroupKind, names, *name)) return kRefused;
  const uint8_t mode = work.arguments.Has("--whole") ? kWholeFileFlagged : kMembersOnly;
  if (!work.groups.CreateGroup({*name, mode}, ActiveSetName(work), from)) return FailToWrite(work);
  return TellMembers(work, names.size() + 1);
}

// Name and display mode stay.
int ReplaceGroup(GroupWork& work) {
  const std::optional<FoundGroup> group = FindGroup(work.session, work.groups, work.word(1));
  if (!group || TellNoMarks(work)) return kRefused;
  const GroupFile::Description same = {group->record.name(), group->record.mode()};
  const bool done = work.groups.ReplaceGroup(group->row, same, ActiveSetName(work));
  return done ? TellMembers(work, group->row) : FailToWrite(work);
}

int MergeGroup(GroupWork& work) {
  const std::optional<FoundGroup> group = FindGroup(work.session, work.groups, work.word(1));
  if (!group || TellNoMarks(work)) return kRefused;
  if (!work.session.Confirm(kToBeMerged, Utf8FromOem(group->record.name()))) {
    return work.session.Fail("rien n'est changé");
  }
  const bool done = work.groups.MergeGroup(group->row);
  return done ? TellMembers(work, group->row) : FailToWrite(work);
}

int RenameGroup(GroupWork& work) {
  const std::optional<FoundGroup> group = FindGroup(work.session, work.groups, work.word(1));
  const std::optional<OemText> name = group ? ToName(work.session, work.word(2)) : std::nullopt;
  if (!name) return kRefused;
  const std::vector<OemText> names = GroupNames(work.groups);
  if (!IsFreeName(work.session, kGroupKind, names, *name, group->row - 1)) return kRefused;
  uint8_t mode = group->record.mode();
  if (work.arguments.Has("--whole")) mode = kWholeFileFlagged;
  if (work.arguments.Has("--members")) mode = kMembersOnly;
  const bool done = work.groups.RenameGroup(group->row, {*name, mode}, ActiveSetName(work));
  return done ? kDone : FailToWrite(work);
}

int DeleteGroup(GroupWork& work) {
  // One without a bit pair can be deleted too: nothing else gets rid of it.
  const std::optional<size_t> place =
      FindName(work.session, kGroupKind, GroupNames(work.groups), work.word(1));
  if (!place) return kRefused;
  const std::optional<GroupRecord> record = work.groups.ReadRow(*place + 1);
  if (!record) return FailToWrite(work);
  if (!work.session.Confirm(kSetToBeDeleted, Utf8FromOem(record->name()))) {
    return work.session.Fail("rien n'est supprimé");
  }
  return work.groups.DeleteGroup(*place + 1) ? kDone : FailToWrite(work);
}

int RunGroup(CliSession& session, const Arguments& arguments) {
  if (arguments.Has("--whole") && arguments.Has("--members")) {
    return session.WrongUsage("--whole et --members s'excluent");
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  GroupWork work = {session, *directory, GroupFile(*directory), arguments};
  const std::string& action = work.word(0);
  if (action == "list") return ListGroups(work);
  if (action == "rename") return RenameGroup(work);
  if (action == "delete") return DeleteGroup(work);
  const GroupScope from(session, *directory, arguments, "--from");
  if (!from.found()) return kRefused;
  if (action == "create") return CreateGroup(work, from.row());
  return action == "replace" ? ReplaceGroup(work) : MergeGroup(work);
}

std::vector<ActionSyntax> GroupActions() {
  return {
      {.name = "list", .help = "les groupes, avec leur nombre de fiches et leur affichage"},
      {.name = "create",
       .usage = "NOM",
       .help = "un nouveau groupe des fiches marquées",
       .least = 1,
       .most = 1,
       .options = {"--from", "--whole"}},
      {.name = "replace",
       .usage = "NOM",
       .help = "les fiches marquées à la place de celles du groupe",
       .least = 1,
       .most = 1,
       .options = {"--from"}},
      {.name = "merge",
       .usage = "NOM",
       .help = "ajoute les fiches marquées au groupe ; demande une confirmation",
       .least = 1,
       .most = 1,
       .options = {"--from"}},
      {.name = "rename",
       .usage = "NOM NOUVEAU",
       .help = "un autre nom, un autre affichage, les mêmes fiches",
       .least = 2,
       .most = 2,
       .options = {"--whole", "--members"}},
      {.name = "delete",
       .usage = "NOM",
       .help = "supprime le groupe, non ses fiches ; demande une confirmation",
       .least = 1,
       .most = 1},
  };
}

}  // namespace

std::vector<Command> GroupCommands() {
  return {{.name = "group",
           .summary = "Gère les groupes de fiches",
           .details = "Un groupe est fait des fiches qui sont marquées quand on le crée, le "
                      "remplace ou le fusionne. Chaque groupe a ses propres marques, en plus de "
                      "celles du fichier entier.",
           .usage = "ACTION [ARGUMENTS]",
           .least = 1,
           .most = 3,
           .options = {{"--from", "NOM", "les marques de ce groupe, au lieu du fichier entier"},
                       {"--whole", "", "affichage du fichier entier, les membres signalés"},
                       {"--members", "", "affichage des fiches du groupe uniquement"}},
           .actions = GroupActions(),
           .run = RunGroup}};
}

}  // namespace carnetel
