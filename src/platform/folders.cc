#include "platform/folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace carnetel {
namespace {

std::string WithSlash(std::string folder) {
  if (!folder.ends_with('/')) folder += '/';
  return folder;
}

// By the rules of the desktop a relative path in such a variable counts as not set.
std::string DesktopFolder(const Environment& environment, const std::string& variable,
                          const std::string& below_home) {
  const std::string value = environment(variable);
  return WithSlash(value.starts_with('/') ? value : WithSlash(environment("HOME")) + below_home);
}

}  // namespace

std::string SystemEnvironment(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  if (value != nullptr && *value != '\0') return value;
  if (name != "HOME") return {};
  const passwd* const user = ::getpwuid(::getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

std::string ExecutableFolder() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : WithSlash(executable.parent_path().string());
}

std::string ProfilePath(const Environment& environment) {
  const std::string chosen = environment("CARNETEL_PROFILE");
  if (!chosen.empty()) return chosen;
  return DesktopFolder(environment, "XDG_CONFIG_HOME", ".config") + "carnetel/profile.ini";
}

std::string HomeFolder(FileSystem& files, const Environment& environment,
                       const std::string& executable_folder) {
  const std::string chosen = environment("CARNETEL_HOME");
  if (!chosen.empty()) return WithSlash(chosen);
  if (!executable_folder.empty()) {
    const std::string folder = WithSlash(executable_folder);
    if (files.Exists(folder + "carnetel.portable")) return folder;
  }
  return DesktopFolder(environment, "XDG_DATA_HOME", ".local/share") + "carnetel/";
}

}  // namespace carnetel
