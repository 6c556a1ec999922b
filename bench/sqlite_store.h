// The opponent: the same cards in one SQLite table of 31 text columns with an index on company and
// one on surname, used through its C API with prepared statements and its default settings.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "storage/card_record.h"

namespace carnetel::bench {

class SqliteStore {
 public:
  explicit SqliteStore(const std::string& path);
  ~SqliteStore();
  SqliteStore(const SqliteStore&) = delete;
  SqliteStore& operator=(const SqliteStore&) = delete;

  void Execute(const char* sql);
  // One prepared insert of already parsed fields.
  void Insert(const CardRecord& card);
  void Delete(int64_t row);
  // Answers whether a company starts with `prefix`, reading its row.
  bool FindCompany(const std::string& prefix);
  // Steps through a query and touches every column; returns the number of rows.
  size_t ReadAll(const char* sql);

 private:
  sqlite3* database_ = nullptr;
  sqlite3_stmt* insert_ = nullptr;
  sqlite3_stmt* delete_ = nullptr;
  sqlite3_stmt* find_ = nullptr;
};

}  // namespace carnetel::bench
