// dBase III and IV tables: one record a card. Which column goes with which card field is told by a
// mapping of 31 rows, kept in the parameter file; the notes take no part, and no memo file is read
// or written. The layout of a table is in transfer/dbase_format.h.
//
// A field without a column is mapped to the number of columns, the empty entry at the end of the
// form's lists, for 0 is a column like any other. A map outside the 31 rows is no column either.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "base/messages.h"
#include "storage/directory.h"
#include "transfer/delimited.h"
#include "transfer/parameter_file.h"
#include "transfer/transfer.h"

namespace carnetel {

// The card fields that take part, in the order of the columns of an exported table.
inline constexpr auto kDbaseFields =
    std::span(kDelimitedFields).first<kDelimitedFields.size() - 1>();
static_assert(kDelimitedFields.back() == kNotes);

// Number of columns of the table that the rows of an import mapping describe.
[[nodiscard]] size_t DbaseColumnCount(const DbaseMapping& mapping);

// The stored mapping of a direction, or an empty one, which the engines refuse.
[[nodiscard]] DbaseMapping ReadStoredMapping(ParameterFile& parameters, TransferFileType type,
                                             TransferDirection direction);

// What an export takes when none was ever confirmed: a column for each field, in its size and under
// its long name.
[[nodiscard]] DbaseMapping DefaultExportMapping();

// The file name under which a mapping is stored: name and extension, OEM, cut at 12 characters.
[[nodiscard]] OemText StoredDbaseName(const std::string& path);

struct DbaseHeaderOutcome {
  enum class Result { kRead = 0, kUnreadable = -1, kDeclined = -2 };
  Result result = Result::kRead;
  std::string message;  // UTF-8, of kUnreadable
  int title_id = 0;     // of the message, in the string table
};

// Prepares the live import mapping of `parameters` for the table at `path`. A table of the name
// that the stored mapping was made for keeps it, wherever it lies; for any other one the rows
// become its columns, mapped to nothing. `*type` follows the table when the user agrees; kDeclined
// when not.
[[nodiscard]] DbaseHeaderOutcome ReadDbaseHeader(FileSystem& files, ParameterFile& parameters,
                                                 MessageForm& messages, const std::string& path,
                                                 TransferFileType* type);

// Adds a card for every record of the source, unmarked, deleted records included and without any
// test for duplicates. Opens the destination itself and has closed it when it returns. Result -1:
// there is no mapping, the source is no table or cannot be opened, the destination cannot be opened
// or a write failed. A directory that is full ends the run as if the table had ended, by design.
[[nodiscard]] TransferOutcome ImportDbase(const DirectoryServices& services,
                                          const DbaseMapping& mapping,
                                          const ImportRequest& request);

// A text that an import of a table comes upon.
struct DbaseText {
  uint32_t record = 0;  // from 0
  int field = 0;        // the card field it is for
  std::string read;     // as it stands in the table, without the blanks behind it
  std::string taken;    // as it goes into the card, which cuts it at the size of the field
};
// Walks over the texts of a table as an import into a directory with that key field does; false
// when it is none.
bool ForEachDbaseText(ReadableFile& table, const DbaseMapping& mapping, int key_field,
                      const std::function<void(const DbaseText& text)>& visit);

// Writes a record for every card marked in the displayed group of an open directory, in the order
// of the list. Into an existing table it writes records of that table's length, with the columns
// of `mapping` all the same. Result -1: there is no mapping, the table cannot be opened or written,
// a card cannot be read, or no card is marked; that is silent and comes after a new table was made.
[[nodiscard]] TransferOutcome ExportDbase(Directory& source, const DbaseMapping& mapping,
                                          TransferFileType type, const ExportRequest& request);

}  // namespace carnetel
