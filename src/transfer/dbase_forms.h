// The rules of the two dBase parameter forms, without their dialogs: 120 says which column of a
// table goes into which card field, 121 which columns an exported table has. Fields are those of
// kDbaseFields and known by their numbers. The six references share one place in a form: a list
// chooses the one that is shown.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "transfer/dbase.h"

namespace carnetel {

// Which reference a form shows.
class ReferenceChoice {
 public:
  // 0 to 5.
  [[nodiscard]] int chosen() const { return chosen_; }
  void Choose(int reference) { chosen_ = reference; }
  // The card field that is shown.
  [[nodiscard]] int field() const { return kRef1 + chosen_; }

 private:
  int chosen_ = 0;
};

class DbaseImportForm {
 public:
  // `parameters` holds what ReadDbaseHeader found in the table at `source`, whose type is `type`.
  DbaseImportForm(ParameterFile& parameters, std::string source, TransferFileType type);

  // What the list of every field offers: the columns of the table, UTF-8, and an empty last entry.
  [[nodiscard]] std::vector<std::string> Entries() const;
  [[nodiscard]] int position(int field) const { return positions_[static_cast<size_t>(field)]; }
  // A position outside the list is its last entry.
  void SetPosition(int field, int position);
  // "Précédente Config": goes back to the stored mapping, columns included. False when there is
  // none; nothing changes then.
  bool TakePrevious();
  // Stores the mapping for the table.
  void Confirm();

  ReferenceChoice& reference() { return reference_; }

 private:
  void Fill();
  [[nodiscard]] int LastEntry() const;
  DbaseMapping& mapping() { return parameters_.mapping(TransferDirection::kImport); }

  ParameterFile& parameters_;
  std::string source_;
  TransferFileType type_;
  std::array<int, kFieldCount> positions_{};
  ReferenceChoice reference_;
};

class DbaseExportForm {
 public:
  static constexpr size_t kMaxName = DbaseColumn::kMaxName;
  // The list of types; its positions are the values of DbaseType.
  static constexpr std::array<std::string_view, 3> kTypeTexts = {" C ", " N ", " D "};

  // Takes the stored columns, or those that an export has by default.
  DbaseExportForm(ParameterFile& parameters, TransferFileType type);

  // UTF-8. A field whose name is empty has no column.
  [[nodiscard]] std::string name(int field) const;
  void SetName(int field, const std::string& utf8);
  // Position in the list of types.
  [[nodiscard]] int type(int field) const;
  void SetType(int field, int position);
  void Confirm();

  ReferenceChoice& reference() { return reference_; }

 private:
  [[nodiscard]] DbaseColumn& row(int field) { return columns_[static_cast<size_t>(field)]; }
  [[nodiscard]] const DbaseColumn& row(int field) const {
    return columns_[static_cast<size_t>(field)];
  }

  ParameterFile& parameters_;
  TransferFileType type_;
  std::array<DbaseColumn, kFieldCount> columns_;
  ReferenceChoice reference_;
};

}  // namespace carnetel
