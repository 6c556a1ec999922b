#include "transfer/structure_lines.h"

#include "base/dialog_template.h"
#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kDialog = 111;
constexpr int kExportTitle = 107;
constexpr int kPersonLabels = 117;     // title, first name, surname
constexpr int kReferenceLabels = 121;  // "Réf. 1" and on

struct Label {
  int field;
  std::string_view text;
};

constexpr std::array<Label, 13> kLabels = {{{kSte1, "Société1"},
                                            {kSte2, "Société2"},
                                            {kAdr1, "Adresse1"},
                                            {kAdr2, "Adresse2"},
                                            {kPostalCode, "Cde postal"},
                                            {kVille, "Ville"},
                                            {kPays, "Pays"},
                                            {kTel1, "Tél1"},
                                            {kTel2, "Tél2"},
                                            {kFax, "N° Fax"},
                                            {kModem, "N° Modem"},
                                            {kMtel, "Minitel"},
                                            {kNotes, "Notes"}}};

}  // namespace

std::string_view StructureLabel(int field) {
  if (field >= kRef1 && field <= kRef6) return LoadText(kReferenceLabels + field - kRef1);
  if (field >= kQualite && field <= kNom) return LoadText(kPersonLabels + field - kQualite);
  const auto* label = std::ranges::find(kLabels, field, &Label::field);
  return label == kLabels.end() ? std::string_view() : label->text;
}

std::string_view StructureTitle(TransferDirection direction) {
  return direction == TransferDirection::kImport ? DialogTitle(kDialog) : LoadText(kExportTitle);
}

}  // namespace carnetel
