// A directory in memory and an exchange file composed byte by byte.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/exchange_request.h"
#include "platform/memory_file_system.h"
#include "storage/card_dispatch.h"
#include "tests/support/same_bytes.h"

namespace carnetel {

// Text and field number of the rows of a request, from the first on; ANSI bytes.
using RequestRows = std::vector<std::pair<std::string_view, uint8_t>>;

// 173 bytes; what no reader looks at is filled with "?".
inline std::string RecordBytes(const RequestRows& rows) {
  std::string record(173, '\0');
  record.replace(0, 3, "???");
  for (size_t i = 0; i < rows.size(); ++i) {
    const size_t at = 3 + 34 * i;
    record.replace(at, rows[i].first.size(), rows[i].first);
    record[at + 32] = static_cast<char>(rows[i].second);
    record[at + 33] = '?';
  }
  return record;
}

inline std::string ExchangeBytes(const std::vector<RequestRows>& requests) {
  std::string file = "Demande d'une autre application";
  file.resize(96, '\0');
  for (const RequestRows& rows : requests) file += RecordBytes(rows);
  return file;
}

class ExchangeTest : public testing::Test {
 protected:
  static constexpr char kFile[] = "/echange/NUM.DAT";

  ExchangeTest() { Open(); }

  // Closes what is open and opens the directory.
  OpenResult Open(int key_field = kSte1, const std::string& path = "/carnets/ESSAI.DAN") {
    directory_.reset();
    DirectoryOptions options;
    options.path = path;
    options.key_field = key_field;
    directory_ = std::make_unique<Directory>(DirectoryServices{files_, clock_, progress_}, options);
    return directory_->OpenDirectory();
  }

  // Texts are OEM bytes; the offset of the new card.
  uint32_t Add(std::string_view company, std::string_view surname, std::string_view telephone = {},
               bool marked = false) {
    CardRecord& card = directory_->context().current;
    card.Clear();
    card.SetField(kSte1, OemText(std::string(company)));
    card.SetField(kNom, OemText(std::string(surname)));
    card.SetField(kTel1, OemText(std::string(telephone)));
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(*directory_).Add(marked, &position), 0);
    return directory_->last_inserted().card_offset;
  }

  void SetFile(std::string_view bytes) { files_.SetContents(kFile, AsBytes(bytes)); }
  [[nodiscard]] std::string FileText(const std::string& path = kFile) const {
    return std::string(AsChars(files_.Contents(path)));
  }

  int Serve(ExchangeType type, bool long_records = false) {
    return ServeExchangeRequest(*directory_, {type, kFile, long_records}, messages_);
  }
  int LookUp(std::string_view surname, bool long_records = false) {
    SetFile(ExchangeBytes({{{surname, kNom}}}));
    return Serve(ExchangeType::kLookUp, long_records);
  }

  // The saved current row of the list, on the disk.
  [[nodiscard]] int SavedRow() const {
    return LoadLe16(files_.Contents("/carnets/ESSAI.ADR"), 102);
  }
  // Every file of the family and the exchange file.
  [[nodiscard]] std::vector<std::string> AllFiles() {
    std::vector<std::string> all = {FileText()};
    for (const char* extension : {".DAN", ".I01", ".I02", ".ADR", ".CRT"}) {
      all.push_back(FileText(std::string("/carnets/ESSAI") + extension));
    }
    return all;
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;
  SilentMessages messages_{MessageButton::kYes};
  std::unique_ptr<Directory> directory_;
};

}  // namespace carnetel
