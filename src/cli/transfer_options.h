// The options of a transfer as they stand on the line of `import` and `export`, taken apart and
// checked as far as that goes without any file. What they mean for the stored parameters is in
// cli/transfer_setup.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "transfer/dbase_mapping.h"
#include "transfer/transfer_profile.h"

namespace carnetel {

struct TransferOptions {
  struct Place {
    int field = 0;
    FixedPlace place;
  };
  // Of a dBase table.
  struct Column {
    int field = 0;
    std::string name;  // on import it may be the column's number
    DbaseType type = DbaseType::kCharacter;
  };

  std::string file;
  std::optional<TransferFileType> type;
  CharacterSet charset = CharacterSet::kOem;
  bool replace = false;
  std::optional<std::string> load;
  // Separators as the form keeps them.
  std::optional<std::string> field_separator;
  std::optional<std::string> card_separator;
  // The field of each rank from 1 on, nothing for an empty rank.
  std::optional<std::vector<std::optional<int>>> ranks;
  std::optional<int16_t> offset;
  std::optional<int16_t> size;
  std::vector<Place> places;
  std::vector<Column> columns;
};

// In `*options`; answers what is wrong with the line, in French, empty when nothing is.
[[nodiscard]] std::string ParseTransferOptions(const Arguments& arguments,
                                               TransferOptions* options);

// The option of the line that files of this type have no use for; empty when there is none.
[[nodiscard]] std::string OptionOfOtherType(const Arguments& arguments, TransferFileType type);

// The word for a type on the line.
[[nodiscard]] std::string TypeWord(TransferFileType type);

[[nodiscard]] std::vector<OptionSyntax> TransferOptionSyntax(TransferDirection direction);

}  // namespace carnetel
