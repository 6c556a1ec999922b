// The composition of the printed list: up to twelve columns, each a field and a width. It stands in
// a file of the directory's family, extension ".LST", 368 bytes, twice: as it came and as the user
// has made it.
//
//   0    32   banner "CARNETEL DROV SOFTW. VER 05.00", zero filled
//   32   2    CR LF
//   77   3    CR LF 1Ah
//   80   u32  magic 0106A9D6h
//   84   u32  131123
//   88   u32  96
//   92   u32  128
//   102  u16  6
//   104  u16  23
//   128  120  composition as it came
//   248  120  composition of the user
//
// everything else is zero. A composition is 15 pairs of u32, field choice and width in characters;
// the first 12 are used, a choice of 0 ends it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/file_system.h"

namespace carnetel {

struct ColumnSpec {
  uint32_t choice = 0;  // from 1, see printing/list_layout.h
  uint32_t width = 0;

  friend bool operator==(const ColumnSpec&, const ColumnSpec&) = default;
};

inline constexpr size_t kStoredColumns = 15;
inline constexpr size_t kMaxColumns = 12;
using Composition = std::array<ColumnSpec, kStoredColumns>;

// Ste1 30, Adr1 30, CP 5, Fax 12.
[[nodiscard]] Composition FactoryComposition();

enum class CompositionCopy { kUser = 0, kFactory = 1 };

class LayoutFile {
 public:
  static constexpr size_t kSize = 368;

  // `path` need not exist.
  LayoutFile(FileSystem& files, std::string path) : files_(&files), path_(std::move(path)) {}

  // A file that is missing, of another size or not readable is made anew, whatever the user had
  // composed in it: the answer is then the factory composition.
  [[nodiscard]] Composition LoadComposition(CompositionCopy copy);
  // Writes the user's copy. False when there is no file (none is made here) or it cannot be
  // written.
  bool SaveComposition(const Composition& composition);

 private:
  void CreateLayoutFile();

  FileSystem* files_;
  std::string path_;
};

}  // namespace carnetel
