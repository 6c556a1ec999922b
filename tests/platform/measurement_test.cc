// The measurement system of locales that the test makes: a locale's file holds the system in one
// byte and the name of its code page.
#include "platform/measurement.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include "base/bytes.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

class Measurement : public ::testing::Test {
 protected:
  Measurement() {
    for (const char* name : {"LC_ALL", "LC_MEASUREMENT", "LANG", "LOCPATH"}) {
      const char* value = std::getenv(name);
      before_[name] = value == nullptr ? std::optional<std::string>() : value;
      ::unsetenv(name);
    }
    ::setenv("LOCPATH", folder_.path().c_str(), 1);
  }
  ~Measurement() override {
    for (const auto& [name, value] : before_) {
      if (value) {
        ::setenv(name.c_str(), value->c_str(), 1);
      } else {
        ::unsetenv(name.c_str());
      }
    }
  }

  // Each name is used once in a process: loaded locales are kept.
  void MakeLocale(const std::string& name, uint8_t system) {
    constexpr uint32_t kMagic = 0x20031115 ^ 11;  // 11 is the category
    std::array<std::byte, 24> bytes{};
    StoreLe32(bytes, 0, kMagic);
    StoreLe32(bytes, 4, 2);   // texts
    StoreLe32(bytes, 8, 16);  // where they lie
    StoreLe32(bytes, 12, 18);
    StoreU8(bytes, 16, system);
    StorePadded(bytes, 18, 6, "UTF-8");
    std::filesystem::create_directory(folder_.path() + name);
    std::ofstream(folder_.path() + name + "/LC_MEASUREMENT", std::ios::binary) << AsChars(bytes);
  }

  FreshFolder folder_;

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(Measurement, OneIsMetric) {
  MakeLocale("carnetel_metric", 1);
  ::setenv("LC_ALL", "carnetel_metric", 1);
  EXPECT_TRUE(LocaleIsMetric());
}

TEST_F(Measurement, TwoIsInches) {
  MakeLocale("carnetel_inches", 2);
  ::setenv("LC_ALL", "carnetel_inches", 1);
  EXPECT_FALSE(LocaleIsMetric());
}

TEST_F(Measurement, ItsOwnVariableGoesBeforeTheLanguage) {
  MakeLocale("carnetel_own", 2);
  MakeLocale("carnetel_language", 1);
  ::setenv("LANG", "carnetel_language", 1);
  EXPECT_TRUE(LocaleIsMetric());
  ::setenv("LC_MEASUREMENT", "carnetel_own", 1);
  EXPECT_FALSE(LocaleIsMetric());
}

TEST_F(Measurement, ALocaleThatIsNotInstalledIsMetric) {
  ::setenv("LC_ALL", "carnetel_nowhere", 1);
  EXPECT_TRUE(LocaleIsMetric());
}

}  // namespace
}  // namespace carnetel
