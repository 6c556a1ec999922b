// The profiles saved under names in the parameter file, behind its working slots: plain ones and
// dBase mappings of either direction. Their numbers, from 0, are their places in the file, in the
// order in which they were added; two may have one name. How many there are is found by walking the
// file to its end, never from the count in its header.
//
// Works on the header, profile and mappings of a ParameterFile as they are in memory, so a command
// has read them before. Names are UTF-8 here and cut at 23 characters; what the OEM page lacks
// becomes a look-alike.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "transfer/parameter_file.h"

namespace carnetel {

enum class SavedKind { kPlain, kDbaseImport, kDbaseExport };

class SavedProfiles {
 public:
  // `direction` is that of the transfer for which they are managed.
  SavedProfiles(ParameterFile& parameters, TransferDirection direction)
      : parameters_(parameters), direction_(direction) {}

  [[nodiscard]] std::vector<std::string> Names();
  // Nothing for a number behind the last one.
  [[nodiscard]] std::optional<SavedKind> KindOf(size_t number);
  // A dBase mapping can be loaded in its own direction alone.
  [[nodiscard]] bool CanLoad(size_t number);

  // All answer whether it was done: false for a number that is not there, a file that cannot be
  // opened and writes that failed.

  // Makes a saved profile the working one, in memory and in the file: a plain one the last format,
  // a mapping that of its direction. It decides the last file type, which is dBase III for every
  // mapping.
  bool Load(size_t number);
  // Saves what is worked with under a name: by the last file type the profile or the mapping of
  // the direction.
  bool Add(const std::string& name);
  // The same in the place of another one.
  bool Replace(size_t number, const std::string& name);
  bool Rename(size_t number, const std::string& name);
  // Those behind it move up by one. The count in the header stays.
  bool Delete(size_t number);

 private:
  [[nodiscard]] uint64_t OffsetOf(size_t number);
  // How many there are in `file`: those of which the name is there.
  [[nodiscard]] size_t CountIn(File& file);
  // The file, when it has that many.
  [[nodiscard]] std::unique_ptr<File> OpenWith(size_t number, OpenMode mode);
  [[nodiscard]] ProfileSlot WorkingSlot(const std::string& name);

  ParameterFile& parameters_;
  TransferDirection direction_;
};

}  // namespace carnetel
