// The commands about a directory as a whole: create, info, check, describe, destroy.

#include <ostream>

#include "base/code_page.h"
#include "base/path.h"
#include "cli/card_arguments.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "platform/file_system.h"
#include "selection/group_file.h"
#include "selection/marks.h"
#include "storage/family_check.h"

namespace carnetel {
namespace {

constexpr int kToBeDestroyed = 179;
constexpr int kNoAccess = 43;
constexpr int kHeldByOther = 177;
constexpr std::chrono::milliseconds kCheckWait{5000};
constexpr size_t kDescriptionLimit = kDescriptionSize - 1;

// In the order in which `info` tells them.
constexpr std::array<std::string_view, 7> kToldExtensions = {".DAN", ".I01", ".I02", ".ADR",
                                                             ".CRT", ".GRP", ".LST"};

constexpr const char* kNeedsSeat =
    "--private demande un numéro de poste : un carnetel privé appartient au poste qui le crée";

std::optional<OemText> Description(CliSession& session, const std::string& text) {
  return ToOem(session, text, "description", kDescriptionLimit);
}

int RunCreate(CliSession& session, const Arguments& arguments) {
  const int32_t seat = session.options().seat;
  if (arguments.Has("--private") && seat == 0) return session.Fail(kNeedsSeat);
  const std::optional<OemText> description =
      Description(session, arguments.Value("--description").value_or(""));
  if (!description) return kRefused;
  if (!session.CloseStores()) return kRefused;
  const uint16_t owner = arguments.Has("--private") ? static_cast<uint16_t>(seat) : uint16_t{0};
  const Directory* directory = session.Create(*description, owner);
  if (directory == nullptr) return kRefused;
  session.messages().Inform("Carnetel créé : " + directory->paths().Main());
  return kDone;
}

std::vector<std::pair<std::string, uint64_t>> FileSizes(FileSystem& files,
                                                        const FamilyPaths& paths) {
  std::vector<std::pair<std::string, uint64_t>> sizes;
  for (const std::string_view extension : kToldExtensions) {
    const std::unique_ptr<File> file = files.Open(paths.Of(extension), OpenMode::kRead);
    if (file != nullptr) sizes.emplace_back(extension.substr(1), file->Size());
  }
  return sizes;
}

void PrintInfo(std::ostream& out, const DirectoryInfo& info) {
  const auto line = [&out](const std::string& term, const std::string& text) {
    out << term << " : " << text << '\n';
  };
  line("Chemin     ", info.path);
  line("Version    ", info.version);
  line("Description", info.description);
  line("Poste      ", info.owner == 0 ? std::string("public") : std::to_string(info.owner));
  line("Fiches     ", std::to_string(info.cards));
  line("Index      ", info.key == "nom" ? "nom" : "société");
  line("Marquées   ", std::to_string(info.marked));
  line("Groupes    ", std::to_string(info.groups));
  std::string sizes;
  for (const auto& [extension, size] : info.files) {
    sizes += (sizes.empty() ? "" : ", ") + extension + ' ' + std::to_string(size);
  }
  line("Fichiers   ", sizes + " octets");
}

int RunInfo(CliSession& session, const Arguments& /*arguments*/) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const MainHeader& header = directory->main().header();
  DirectoryInfo info;
  info.path = directory->paths().Main();
  info.version = header.Version().value_or("");
  info.description = Utf8FromOem(header.description());
  info.owner = header.owner();
  info.cards = directory->main().count();
  info.key = directory->key_field() == kNom ? "nom" : "societe";
  info.marked = CountMarks(*directory);
  info.groups = GroupFile(*directory).Groups().size();
  info.files = FileSizes(session.files(), directory->paths());
  if (session.options().json) {
    session.out() << InfoLine(info) << '\n';
  } else {
    PrintInfo(session.out(), info);
  }
  return kDone;
}

void PrintFinding(CliSession& session, const Finding& finding) {
  if (session.options().json) {
    session.out() << FindingLine(finding.file, finding.text, finding.offset) << '\n';
    return;
  }
  session.out() << finding.file;
  if (finding.offset) session.out() << " @" << *finding.offset;
  session.out() << " : " << finding.text << '\n';
}

// What others have changed since a seat was last there, its address file cannot know.
bool IsBehindOthers(FileSystem& files, const FamilyPaths& family) {
  AddressHeader address;
  const std::vector<std::byte> start = ReadStart(files, family.Of(".ADR"), AddressHeader::kSize);
  std::ranges::copy(start, address.bytes().begin());
  const std::optional<MainHeader> main = ReadMainHeader(files, family.Main());
  return main && main->stamp() != address.stamp();
}

int RunCheck(CliSession& session, const Arguments& /*arguments*/) {
  const FamilyPaths* family = session.Family();
  if (family == nullptr) return kRefused;
  if (!session.files().Exists(family->Main())) {
    return session.Fail(FormatText(kNoAccess, family->Main()) + " : il n'existe pas");
  }
  // What a script changed so far counts, so it goes to the disk first.
  if (!session.TakeDirectory() || !session.CloseStores()) return kRefused;
  // Another seat's change under way is no inconsistency.
  const bool has_seat = session.options().seat != 0;
  const auto held = has_seat ? HoldChanges(session.files(), family->Main(), kCheckWait) : nullptr;
  if (has_seat && held == nullptr) return session.Fail(std::string(LoadText(kHeldByOther)));
  std::vector<Finding> findings =
      CheckFamily(session.files(), *family, session.settings().key_field);
  if (has_seat && IsBehindOthers(session.files(), *family)) {
    std::erase_if(findings, [](const Finding& finding) { return finding.file == "ADR"; });
  }
  for (const Finding& finding : findings) PrintFinding(session, finding);
  if (session.options().json) {
    session.out() << ConsistentLine(findings.empty()) << '\n';
  } else if (findings.empty()) {
    session.out() << "Aucune incohérence.\n";
  }
  return findings.empty() ? kDone : kRefused;
}

int RunDescribe(CliSession& session, const Arguments& arguments) {
  if (arguments.Has("--private") && arguments.Has("--public")) {
    return session.WrongUsage("--private et --public s'excluent");
  }
  const int32_t seat = session.options().seat;
  if (arguments.Has("--private") && seat == 0) return session.Fail(kNeedsSeat);
  const std::optional<OemText> description = Description(session, arguments.positionals.front());
  if (!description) return kRefused;
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  std::optional<uint16_t> owner;
  if (arguments.Has("--public")) owner = uint16_t{0};
  if (arguments.Has("--private")) owner = static_cast<uint16_t>(seat);
  const ChangeScope change(*directory);
  if (change && directory->main().Describe(*description, owner)) return kDone;
  if (directory->lock_refused()) return session.Fail(std::string(LoadText(kHeldByOther)));
  return session.Fail(FormatText(kNoAccess, directory->paths().Main()));
}

// Any other file of a family does not name it here: too much goes by a slip of the hand.
bool NamesMainFile(const std::string& path) {
  const PathPieces pieces = PathSplit(path);
  const auto is = [&pieces](std::string_view extension) {
    return CompareKey(pieces.extension, extension, extension.size() + 1) == 0;
  };
  return !pieces.name.empty() && (is(".DAN") || std::ranges::none_of(kFamilyExtensions, is));
}

// Why a path is not destroyed; empty when it may be.
std::string NotDestroyable(FileSystem& files, const std::string& path, const FamilyPaths& family) {
  const std::string main = family.Main();
  if (!NamesMainFile(path)) return "« " + path + " » ne nomme pas un carnetel";
  if (!files.Exists(main)) return FormatText(kNoAccess, main) + " : il n'existe pas";
  std::array<std::byte, MainHeader::kSize> header{};
  const std::vector<std::byte> start = ReadStart(files, main, header.size());
  std::ranges::copy(start, header.begin());
  if (LoadLe32(header, MainHeader::kMagicOffset) != kStoreMagic) {
    return main + " n'est pas un fichier de carnetel, rien n'est détruit";
  }
  return {};
}

int DestroyOne(CliSession& session, const FamilyPaths& family) {
  const std::string main = family.Main();
  if (session.IsOwn(main) && !session.Close()) return kRefused;
  const std::shared_ptr<void> guard =
      session.environment().take_guard(session.files().Canonical(family.Of(".ADR")));
  if (guard == nullptr) return session.Fail(main + " est ouvert par un autre programme");
  const std::optional<MainHeader> header = ReadMainHeader(session.files(), main);
  if (header && !session.MayOpenAs(header->owner())) return kRefused;
  if (!session.Confirm(kToBeDestroyed, main)) return session.Fail(main + " n'est pas détruit");
  if (!DeleteDirectoryFiles(session.files(), main, family.shared_dir())) {
    return session.Fail(main + " n'a pas pu être détruit");
  }
  session.messages().Inform("Carnetel détruit : " + main);
  return kDone;
}

int RunDestroy(CliSession& session, const Arguments& arguments) {
  std::vector<FamilyPaths> families;
  for (const std::string& path : arguments.positionals) {
    const FamilyPaths& family =
        families.emplace_back(session.files(), path, session.options().shared_dir);
    const std::string reason = NotDestroyable(session.files(), path, family);
    if (!reason.empty()) return session.Fail(reason);
  }
  int status = kDone;
  for (const FamilyPaths& family : families) {
    if (session.interrupted()) break;
    if (DestroyOne(session, family) != kDone) status = kRefused;
  }
  return status;
}

Command CreateCommand() {
  return {.name = "create",
          .summary = "Crée le carnetel nommé par --directory",
          .details = "Refusé quand il existe déjà. Un dossier qui manque est créé.",
          .options = {{"--description", "TEXTE", "description, 41 caractères au plus"},
                      {"--private", "", "carnetel privé de ce poste"}},
          .run = RunCreate};
}

Command InfoCommand() {
  return {.name = "info",
          .summary = "Affiche l'état du carnetel",
          .details =
              "Chemin, version, description, poste propriétaire, nombre de fiches, index "
              "actif, fiches marquées, groupes et tailles des fichiers.",
          .run = RunInfo};
}

Command CheckCommand() {
  return {.name = "check",
          .summary = "Vérifie la famille de fichiers sans rien changer",
          .details =
              "Signale chaque incohérence avec son fichier et sa position ; le code de "
              "retour est 1 quand il y en a. L'ouverture par une autre commande répare les "
              "fichiers dérivés.",
          .run = RunCheck};
}

Command DescribeCommand() {
  return {
      .name = "describe",
      .summary = "Change la description du carnetel et son propriétaire",
      .usage = "TEXTE",
      .least = 1,
      .most = 1,
      .options = {{"--private", "", "le réserve à ce poste"}, {"--public", "", "le rend public"}},
      .run = RunDescribe};
}

Command DestroyCommand() {
  return {.name = "destroy",
          .summary = "Détruit des carnetels avec leurs fichiers associés",
          .details = "Demande une confirmation pour chacun.",
          .usage = "CHEMIN…",
          .least = 1,
          .most = kManyArguments,
          .run = RunDestroy};
}

}  // namespace

std::vector<Command> DirectoryCommands() {
  return {CreateCommand(), InfoCommand(), CheckCommand(), DescribeCommand(), DestroyCommand()};
}

}  // namespace carnetel
