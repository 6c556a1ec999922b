// Which control of a card form shows which field. The same table serves the main form, the search,
// consultation and enrichment; each uses the controls that it has.
#pragma once

#include <array>
#include <span>

#include "storage/card_record.h"

namespace carnetel {

enum FormControl : int {
  kControlSte1 = 150,
  kControlPostalCode = 155,
  kControlTel1 = 158,
  kControlMtel = 162,
  kControlReferences = 164,
  kControlQualite = 170,
  kControlPrenom = 171,
  kControlNom = 172,
  kControlComposedName = 173,
  kControlNotes = 174,
  kLabelNotes = 2007,
  kLabelReferences = 2009,
};

struct FormField {
  int control;
  int field;
};

// Controls with one field each, in tab order. The references have one control for six fields, the
// composed name has no field of its own.
inline constexpr std::array<FormField, 16> kFormFields = {{{150, kSte1},
                                                           {151, kSte2},
                                                           {152, kAdr1},
                                                           {153, kAdr2},
                                                           {155, kPostalCode},
                                                           {156, kVille},
                                                           {157, kPays},
                                                           {158, kTel1},
                                                           {159, kTel2},
                                                           {160, kFax},
                                                           {161, kModem},
                                                           {162, kMtel},
                                                           {170, kQualite},
                                                           {171, kPrenom},
                                                           {172, kNom},
                                                           {174, kNotes}}};
inline constexpr int kReferenceCount = 6;

// A field that a sibling program can take a number from.
[[nodiscard]] constexpr bool IsNumberControl(int control) {
  return control >= kControlTel1 && control <= kControlMtel;
}

}  // namespace carnetel
