// The criteria file of a directory and the working set in memory. Record 0 is the set that the user
// confirmed last, the records behind it are saved ones. The file is opened for one operation at a
// time; one that is missing or cut short is rewritten without a word, from what is in memory.
#pragma once

#include <string>
#include <vector>

#include "platform/file_system.h"
#include "selection/criteria_set.h"

namespace carnetel {

class CriteriaFile {
 public:
  CriteriaFile(FileSystem& files, std::string path);

  [[nodiscard]] const std::string& path() const { return path_; }
  CriteriaRows& rows() { return rows_; }
  [[nodiscard]] const CriteriaRows& rows() const { return rows_; }
  // Of the set in memory.
  [[nodiscard]] const OemText& name() const { return name_; }

  // The entry that the list of sets shows: 0 the working set, else a record. Once set, or taken
  // from the file by the first reading, it lives in memory: it reaches the file when the header is
  // written, and only ReadCriteriaHeader takes that of the file again.
  [[nodiscard]] int16_t active_set() const;
  void set_active_set(int16_t number);

  // Takes header, record size and active set from the file; false when it is too short for one.
  bool ReadCriteriaHeader();
  // Writes the header in memory; nothing when there is no file.
  bool WriteHeader();

  // Names of the records from 1 on; with `with_working_set` from 0 on. Empty, and the file made
  // anew, when it cannot be read.
  std::vector<OemText> ListCriteriaSets(bool with_working_set = false);
  // Reads a record into memory; true when its first row has a field. On a failure the file is made
  // anew and the memory stays.
  bool LoadCriteriaSet(size_t number);
  // Appends the rows in memory under that name and rewrites the header.
  bool AddCriteriaSet(const OemText& name);
  // Writes name and rows in memory over a record, or the name alone.
  bool ReplaceCriteriaSet(size_t number, const OemText& name, bool name_only);
  bool DeleteCriteriaSet(size_t number);
  // Makes the rows in memory the working set of the file, under its own name.
  bool StoreWorkingSet();
  // Writes header, name and rows in memory over the start of the file, made when missing. Records
  // behind the first stay.
  bool CreateCriteriaFile();

 private:
  [[nodiscard]] size_t record_size() const;
  [[nodiscard]] size_t name_size() const;
  [[nodiscard]] uint64_t RecordPosition(size_t number) const;
  [[nodiscard]] std::vector<std::byte> Record(const OemText& name) const;
  // The file with its header read; null when it cannot be opened or has none.
  [[nodiscard]] std::unique_ptr<File> OpenRead();

  FileSystem& files_;
  std::string path_;
  std::array<std::byte, kCriteriaHeaderSize> header_;
  bool active_set_known_ = false;
  OemText name_;
  CriteriaRows rows_;
};

}  // namespace carnetel
