#include "cli/import_trial.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "cli/json_form.h"
#include "shell/field_names.h"
#include "transfer/dbase.h"
#include "transfer/delimited.h"
#include "transfer/delimited_line.h"
#include "transfer/field_text.h"
#include "transfer/fixed_record.h"
#include "transfer/line_reader.h"
#include "transfer/record_reader.h"

namespace carnetel {
namespace {

using Findings = std::vector<TrialFinding>;

bool HoldsText(std::string_view text) {
  return text.find_first_not_of(' ') != std::string_view::npos;
}

// What becomes of a text on its way into a card field, where `taken` stands at last.
void ExamineText(uint32_t line, int field, std::string_view text, std::string_view taken,
                 TrialKind too_long, Findings* findings) {
  if (HoldsText(text) && taken.empty()) {
    findings->push_back({line, TrialKind::kEmptied, field, {}});
  } else if (text.size() > kFieldTable[field].size) {
    findings->push_back({line, too_long, field, {}});
  }
}

std::string Cleaned(std::string_view text, int field) {
  std::string cleaned(text.substr(0, text.find('\0')));
  CleanFieldText(cleaned, field);
  return cleaned;
}

void ExamineLines(ReadableFile& file, const TransferProfile& profile, Findings* findings) {
  const DelimitedLine format(profile);
  LineReader lines(file, format.card_separator(),
                   static_cast<size_t>(std::min<uint64_t>(file.Size(), kMaxLineSize)));
  const auto refuse = [findings](uint32_t line, const std::string& reason) {
    findings->push_back({line, TrialKind::kNoCard, -1, reason});
  };
  uint64_t seen = 0;
  bool all_seen = true;
  uint32_t number = 0;
  while (lines.Next()) {
    ++number;
    // Lines that the import leaves out are counted by it.
    if (number > kMaxImportedLines) return;
    if (lines.too_long()) {
      refuse(number, "plus de " + std::to_string(kMaxLineSize) + " caractères");
    } else if (!lines.empty()) {
      const bool any = format.ForEachField(lines.line(), [&](int field, std::string_view text) {
        const std::string cut = Cleaned(text.substr(0, kFieldTable[field].size), field);
        ExamineText(number, field, text, cut, TrialKind::kCut, findings);
      });
      if (!any) refuse(number, "aucun champ à prendre");
    }
    all_seen = all_seen && !lines.too_long();
    if (!lines.too_long()) seen += lines.line().size();
  }
  if (all_seen && seen < file.Size()) {
    refuse(number + 1, "pas de séparateur de fiches à la fin");
  }
}

void ExamineRecords(ReadableFile& file, const TransferProfile& profile, Findings* findings) {
  const FixedRecord format(profile);
  RecordReader records(file, format.first(), format.size());
  uint32_t number = 0;
  for (std::string_view record = records.Next(); !record.empty(); record = records.Next()) {
    ++number;
    format.ForEachField(record, [&](int field, std::string_view text) {
      const std::string_view trimmed = text.substr(0, text.find_last_not_of(' ') + 1);
      ExamineText(number, field, trimmed, Cleaned(trimmed, field), TrialKind::kOverrun, findings);
    });
  }
  const uint64_t begun = format.first() + uint64_t{number} * format.size();
  if (begun < file.Size()) {
    findings->push_back({number + 1, TrialKind::kNoCard, -1, "enregistrement incomplet"});
  }
}

void ExamineTable(ReadableFile& file, const DbaseMapping& mapping, int key_field,
                  Findings* findings) {
  std::vector<bool> has_label;
  (void)ForEachDbaseText(file, mapping, key_field, [&](const DbaseText& text) {
    if (has_label.size() <= text.record) has_label.resize(text.record + 1);
    const bool is_label = text.field == kSte1 || text.field == kNom;
    if (is_label && !text.taken.empty()) has_label[text.record] = true;
    ExamineText(text.record + 1, text.field, text.read, text.taken, TrialKind::kCut, findings);
  });
  for (uint32_t record = 0; record < has_label.size(); ++record) {
    if (has_label[record]) continue;
    findings->push_back({record + 1, TrialKind::kNoCard, -1, "ni société ni nom"});
  }
}

std::string KindText(const TrialFinding& finding) {
  switch (finding.kind) {
    case TrialKind::kCut:
      return FieldName(finding.field) + " coupé à " +
             std::to_string(kFieldTable[finding.field].size) + " caractères";
    case TrialKind::kEmptied:
      return FieldName(finding.field) + " vidé : rien de son texte ne peut y rester";
    case TrialKind::kOverrun:
      return FieldName(finding.field) + " dépasse et déborde sur les champs suivants";
    case TrialKind::kNoCard:
      break;
  }
  return "refusée, " + finding.reason;
}

std::string KindWord(TrialKind kind) {
  constexpr std::array<const char*, 4> kWords = {"cut", "emptied", "overrun", "refused"};
  return kWords[static_cast<size_t>(kind)];
}

std::string Counted(int64_t count, const std::string& one, const std::string& several) {
  return std::to_string(count) + ' ' + (count > 1 ? several : one);
}

}  // namespace

std::vector<TrialFinding> ExamineSource(FileSystem& files, TransferSetup& setup, int key_field) {
  Findings findings;
  const std::unique_ptr<File> file = files.Open(setup.file, OpenMode::kRead);
  if (file == nullptr || setup.type == TransferFileType::kDirectory) return findings;
  if (setup.type == TransferFileType::kDelimited) {
    ExamineLines(*file, setup.parameters.profile(), &findings);
  } else if (setup.type == TransferFileType::kFixed) {
    ExamineRecords(*file, setup.parameters.profile(), &findings);
  } else {
    const DbaseMapping mapping =
        ReadStoredMapping(setup.parameters, setup.type, TransferDirection::kImport);
    ExamineTable(*file, mapping, key_field, &findings);
  }
  std::ranges::stable_sort(findings, {}, &TrialFinding::line);
  return findings;
}

void PrintTrial(CliSession& session, const TransferSetup& setup, const TransferOutcome& outcome,
                const std::vector<TrialFinding>& findings) {
  const auto count = [&](TrialKind kind) -> int64_t {
    const int64_t named = std::ranges::count(findings, kind, &TrialFinding::kind);
    return kind == TrialKind::kNoCard ? named + outcome.lines_left_out : named;
  };
  std::ostream& out = session.out();
  if (session.options().json) {
    TrialView view{outcome.cards, {}, {}};
    for (const TrialKind kind :
         {TrialKind::kCut, TrialKind::kEmptied, TrialKind::kOverrun, TrialKind::kNoCard}) {
      view.counts.emplace_back(KindWord(kind), count(kind));
    }
    for (const TrialFinding& finding : findings) {
      const bool named = finding.field >= 0;
      view.lines.push_back({finding.line, KindWord(finding.kind),
                            named ? FieldName(finding.field) : std::string(), finding.reason});
    }
    out << TrialLine(view) << '\n';
    return;
  }
  const bool text = setup.type == TransferFileType::kDelimited;
  for (const TrialFinding& finding : findings) {
    out << (text ? "Ligne " : "Fiche ") << finding.line << " : " << KindText(finding) << '\n';
  }
  out << Counted(outcome.cards, "fiche serait ajoutée", "fiches seraient ajoutées") << " ; "
      << Counted(count(TrialKind::kCut) + count(TrialKind::kOverrun), "champ trop long",
                 "champs trop longs")
      << ", " << Counted(count(TrialKind::kEmptied), "champ vidé", "champs vidés") << ", "
      << (text ? Counted(count(TrialKind::kNoCard), "ligne refusée", "lignes refusées")
               : Counted(count(TrialKind::kNoCard), "fiche refusée", "fiches refusées"))
      << '\n';
}

}  // namespace carnetel
