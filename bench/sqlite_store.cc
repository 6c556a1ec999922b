#include "bench/sqlite_store.h"

#include <cstdlib>
#include <iostream>

namespace carnetel::bench {
namespace {

void Check(int status, sqlite3* database) {
  if (status == SQLITE_OK || status == SQLITE_DONE || status == SQLITE_ROW) return;
  std::cerr << "SQLite: " << sqlite3_errmsg(database) << '\n';
  std::abort();
}

}  // namespace

SqliteStore::SqliteStore(const std::string& path) {
  Check(sqlite3_open(path.c_str(), &database_), database_);
  std::string create = "CREATE TABLE IF NOT EXISTS cards (id INTEGER PRIMARY KEY";
  std::string insert = "INSERT INTO cards VALUES (NULL";
  for (int field = 0; field < kFieldCount; ++field) {
    create += ", f" + std::to_string(field) + " TEXT";
    insert += ", ?";
  }
  Execute((create + ")").c_str());
  Execute("CREATE INDEX IF NOT EXISTS by_company ON cards (f0)");
  Execute("CREATE INDEX IF NOT EXISTS by_name ON cards (f10)");
  insert += ")";
  Check(sqlite3_prepare_v2(database_, insert.c_str(), -1, &insert_, nullptr), database_);
  Check(sqlite3_prepare_v2(database_, "DELETE FROM cards WHERE id = ?", -1, &delete_, nullptr),
        database_);
  Check(sqlite3_prepare_v2(database_, "SELECT * FROM cards WHERE f0 >= ? ORDER BY f0 LIMIT 1", -1,
                           &find_, nullptr),
        database_);
}

SqliteStore::~SqliteStore() {
  sqlite3_finalize(insert_);
  sqlite3_finalize(delete_);
  sqlite3_finalize(find_);
  sqlite3_close(database_);
}

void SqliteStore::Execute(const char* sql) {
  Check(sqlite3_exec(database_, sql, nullptr, nullptr, nullptr), database_);
}

void SqliteStore::Insert(const CardRecord& card) {
  for (int field = 0; field < kFieldCount; ++field) {
    const std::string_view area = AsChars(card.FieldBytes(field));
    const size_t length = std::min(area.find('\0'), area.size());
    Check(
        sqlite3_bind_text(insert_, field + 1, area.data(), static_cast<int>(length), SQLITE_STATIC),
        database_);
  }
  Check(sqlite3_step(insert_), database_);
  sqlite3_reset(insert_);
}

void SqliteStore::Delete(int64_t row) {
  Check(sqlite3_bind_int64(delete_, 1, row), database_);
  Check(sqlite3_step(delete_), database_);
  sqlite3_reset(delete_);
}

bool SqliteStore::FindCompany(const std::string& prefix) {
  Check(sqlite3_bind_text(find_, 1, prefix.data(), static_cast<int>(prefix.size()), SQLITE_STATIC),
        database_);
  const bool found = sqlite3_step(find_) == SQLITE_ROW && sqlite3_column_text(find_, 1) != nullptr;
  sqlite3_reset(find_);
  return found;
}

size_t SqliteStore::ReadAll(const char* sql) {
  sqlite3_stmt* query = nullptr;
  Check(sqlite3_prepare_v2(database_, sql, -1, &query, nullptr), database_);
  size_t rows = 0;
  while (sqlite3_step(query) == SQLITE_ROW) {
    ++rows;
    for (int column = 0; column < sqlite3_column_count(query); ++column) {
      (void)sqlite3_column_text(query, column);
    }
  }
  sqlite3_finalize(query);
  return rows;
}

}  // namespace carnetel::bench
