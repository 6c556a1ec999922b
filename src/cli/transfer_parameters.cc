#include "cli/transfer_parameters.h"

#include <algorithm>

#include "base/code_page.h"
#include "platform/memory_file_system.h"
#include "transfer/dbase.h"
#include "transfer/dbase_forms.h"
#include "transfer/fixed_layout_form.h"

namespace carnetel {
namespace {

constexpr NamedKind kColumnKind = {"colonne", "colonnes"};
constexpr auto kImport = TransferDirection::kImport;

// A parameter file of its own, written to nowhere.
class ScratchParameters {
 public:
  explicit ScratchParameters(Clock& clock) : files_(clock) {}
  ParameterFile& parameters() { return parameters_; }

 private:
  MemoryFileSystem files_;
  ParameterFile parameters_{files_, "/SCRATCH.TRS"};
};

// The rules of the form, which shows one reference at a time.
bool HoldsTogether(CliSession& session, const TransferProfile& profile,
                   TransferDirection direction) {
  ScratchParameters scratch(session.environment().clock);
  scratch.parameters().profile() = profile;
  FixedLayoutForm form(scratch.parameters(), session.messages(), direction);
  for (int reference = 0; reference < kStructureReferences; ++reference) {
    form.SelectReference(reference);
    if (!form.Confirm()) return false;
  }
  return true;
}

// The columns that stand in a table, whatever was stored for it before.
bool ReadTable(CliSession& session, TransferSetup* setup, ParameterFile& scratch) {
  SilentMessages agree(MessageButton::kOk);
  const bool chosen = setup->options.type.has_value();
  MessageForm& messages = chosen ? static_cast<MessageForm&>(session.messages()) : agree;
  const DbaseHeaderOutcome header =
      ReadDbaseHeader(session.files(), scratch, messages, setup->file, &setup->type);
  if (header.result == DbaseHeaderOutcome::Result::kRead) return true;
  const bool refused = header.result == DbaseHeaderOutcome::Result::kDeclined;
  session.Fail(refused ? "rien n'est transféré" : setup->file + " : " + header.message);
  return false;
}

std::vector<OemText> ColumnNames(const DbaseMapping& table) {
  std::vector<OemText> names;
  for (size_t column = 0; column < DbaseColumnCount(table); ++column) {
    names.push_back(table.columns[column].name);
  }
  return names;
}

bool SameTable(const DbaseMapping& a, const DbaseMapping& b) {
  return std::ranges::equal(a.columns, b.columns, [](const DbaseColumn& x, const DbaseColumn& y) {
    return x.name == y.name && x.length == y.length && x.offset == y.offset;
  });
}

// By its number from 1, or by its name; nothing when it is not there (told).
std::optional<size_t> FindColumn(CliSession& session, const std::vector<OemText>& names,
                                 const std::string& wanted) {
  const bool number =
      !wanted.empty() && std::ranges::all_of(wanted, [](char c) { return c >= '0' && c <= '9'; });
  if (!number) return FindName(session, kColumnKind, names, wanted);
  const size_t place = wanted.size() > 3 ? 0 : std::stoul(wanted);
  if (place >= 1 && place <= names.size()) return place - 1;
  session.Fail("pas de colonne n° " + wanted + " : le fichier en a " +
               std::to_string(names.size()));
  return {};
}

bool MapColumns(CliSession& session, const DbaseMapping& table, TransferSetup* setup) {
  const std::vector<OemText> names = ColumnNames(table);
  setup->parameters.mapping(kImport) = table;
  DbaseImportForm form(setup->parameters, setup->file, setup->type);
  for (const int field : kDbaseFields) form.SetPosition(field, static_cast<int>(names.size()));
  for (const TransferOptions::Column& column : setup->options.columns) {
    const std::optional<size_t> place = FindColumn(session, names, column.name);
    if (!place) return false;
    form.SetPosition(column.field, static_cast<int>(*place));
  }
  form.Confirm();
  return true;
}

}  // namespace

void ApplyDelimitedOptions(const TransferOptions& options, TransferProfile* profile) {
  if (options.field_separator) profile->set_field_separator(*options.field_separator);
  if (options.card_separator) profile->set_card_separator(*options.card_separator);
  if (!options.ranks) return;
  profile->ClearRanks();
  for (size_t i = 0; i < options.ranks->size(); ++i) {
    const std::optional<int>& field = (*options.ranks)[i];
    if (field) profile->set_rank(*field, static_cast<int16_t>(i + 1));
  }
}

bool ApplyFixedOptions(CliSession& session, const TransferOptions& options,
                       TransferDirection direction, TransferProfile* profile) {
  if (options.offset) profile->set_first_card_offset(*options.offset);
  if (options.size) profile->set_card_size(*options.size);
  if (!options.places.empty()) {
    // Their positions go too: the form refuses one behind the end of a record, whatever its size.
    for (int field = 0; field < kFieldCount; ++field) profile->set_place(field, {});
  }
  for (const auto& [field, place] : options.places) profile->set_place(field, place);
  if (profile->card_size() <= 0) {
    session.Fail("la taille d'une fiche est 0 : --size donne celle du fichier");
    return false;
  }
  const bool changed = options.size || !options.places.empty();
  return !changed || HoldsTogether(session, *profile, direction);
}

// A stored mapping serves every table that has the same columns, and no other: it would take texts
// from places that have nothing to do with them.
bool ApplyDbaseImport(CliSession& session, TransferSetup* setup) {
  ScratchParameters scratch(session.environment().clock);
  if (!ReadTable(session, setup, scratch.parameters())) return false;
  const DbaseMapping& table = scratch.parameters().mapping(kImport);
  if (!setup->options.columns.empty()) return MapColumns(session, table, setup);
  const DbaseMapping stored = ReadStoredMapping(setup->parameters, setup->type, kImport);
  if (stored.kind == kDbaseImportKind && SameTable(stored, table)) return true;
  std::string columns;
  for (const OemText& name : ColumnNames(table)) {
    columns += (columns.empty() ? "" : ", ") + Utf8FromOem(name);
  }
  session.Fail("aucune correspondance n'est connue pour " + setup->file +
               " : --map CHAMP=COLONNE en donne une. Colonnes : " + columns);
  return false;
}

void ApplyDbaseExport(TransferSetup* setup) {
  DbaseExportForm form(setup->parameters, setup->type);
  const std::vector<TransferOptions::Column>& columns = setup->options.columns;
  if (!columns.empty()) {
    for (const int field : kDbaseFields) form.SetName(field, {});
  }
  for (const TransferOptions::Column& column : columns) {
    form.SetName(column.field, column.name);
    form.SetType(column.field, static_cast<int>(column.type));
  }
  form.Confirm();
}

}  // namespace carnetel
