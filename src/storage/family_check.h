// Reads a whole family without changing anything and tells every inconsistency: what the next
// opening would heal, and what it would not.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "storage/family_files.h"

namespace carnetel {

struct Finding {
  std::string file;  // extension without its dot: "DAN", "I01", ...
  std::string text;  // French, UTF-8
  // Where in the file, in bytes, when it is one place.
  std::optional<uint32_t> offset;
};

// `key_field` is that of the active index, which the address file has to mirror. Of findings of one
// kind at most 20 a file are told one by one; the last of them says how many more there are.
[[nodiscard]] std::vector<Finding> CheckFamily(FileSystem& files, const FamilyPaths& paths,
                                               int key_field);

}  // namespace carnetel
