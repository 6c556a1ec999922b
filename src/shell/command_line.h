// What a start of the program asks for. The command line is one string that is searched, not
// tokenised: a directory to open (`/X path`), or what a sibling application wants
// (`-APP text -FILE path -TYPE n -HWND n -NUM n -APPLI word -NUMP n`).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace carnetel {

struct StartupRequest {
  // `/X` was given: settings then have no section, so every one reads as its default and none is
  // written, for the whole run.
  bool direct_open = false;
  std::string direct_path;

  std::string app_argument;        // -APP, for capture enrichment; a first '?' means none
  std::string exchange_file_path;  // -FILE, without blanks at its end
  int32_t launch_type = 0;         // -TYPE, selects the role
  uint32_t caller_window = 0;      // -HWND, 0 when stand-alone
  int32_t caller_argument = 0;     // -NUM, passed through to the role
  std::string appli_name;          // -APPLI, base name of the caller's settings file
  int32_t workstation_number = 0;  // -NUMP, the seat; 1 or more means several seats
};

// The arguments of the process, joined as the search wants them.
[[nodiscard]] std::string JoinArguments(int count, const char* const* arguments);

// Matching is case-sensitive. `/X` wins over everything else, but counts only at the start or after
// a blank, since `/` separates folders here; the character behind it is skipped unseen. Without all
// three of -APP, -FILE and -TYPE, in this order, nothing is taken. The values behind -TYPE are read
// up to the first one that does not fit; the rest keep their defaults.
[[nodiscard]] StartupRequest ParseCommandLine(std::string_view command_line);

}  // namespace carnetel
