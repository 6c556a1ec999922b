// The settings of one user: an INI file that belongs to the whole suite, so that other programs and
// people with an editor write it too. It is read at each call (it is small, and what another
// program wrote a moment ago counts), and a write changes one line and keeps all others.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace carnetel {

class UserProfile {
 public:
  // `files` outlives this object. `path` need not exist; with an empty one every setting reads as
  // its default and every write fails.
  UserProfile(FileSystem& files, std::string path);

  // The text of a key without the blanks around it and without one pair of quotes (" or '); may be
  // empty. `fallback` when the key is missing or `section` is empty.
  [[nodiscard]] std::string Text(std::string_view section, std::string_view key,
                                 std::string_view fallback) const;
  // The number at the start of the text, with an optional sign, held within 32 bits; 0 when it does
  // not start with one. `fallback` when the key is missing or its text empty.
  [[nodiscard]] int Int(std::string_view section, std::string_view key, int fallback) const;

  // True when the file holds the text afterwards, or `section` is empty: that run has no settings,
  // it reads defaults and writes nowhere. False when the file could not be replaced (it then stays
  // as it was) or the text holds a line end. A file that already holds the text is not touched.
  bool Write(std::string_view section, std::string_view key, std::string_view text);
  bool WriteInt(std::string_view section, std::string_view key, int value);

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  // None when the file is there but cannot be read: it must not be replaced then.
  [[nodiscard]] std::optional<std::string> Load() const;
  [[nodiscard]] bool Replace(std::string_view content);

  FileSystem& files_;
  std::string path_;
};

}  // namespace carnetel
