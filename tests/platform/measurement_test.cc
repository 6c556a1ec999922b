// The measurement system by the territory of the locale that the environment names.
#include "platform/measurement.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace carnetel {
namespace {

class Measurement : public ::testing::Test {
 protected:
  Measurement() {
    for (const char* name : {"LC_ALL", "LC_MEASUREMENT", "LANG"}) {
      const char* value = std::getenv(name);
      before_[name] = value == nullptr ? std::optional<std::string>() : value;
      ::unsetenv(name);
    }
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

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(Measurement, WithoutALocaleItIsMetric) {
  EXPECT_TRUE(LocaleIsMetric());
  ::setenv("LANG", "C.UTF-8", 1);
  EXPECT_TRUE(LocaleIsMetric());
}

TEST_F(Measurement, TheTerritoryTells) {
  for (const char* locale : {"fr_FR.UTF-8", "de_CH@euro", "en_GB", "en_USA", "us"}) {
    ::setenv("LANG", locale, 1);
    EXPECT_TRUE(LocaleIsMetric()) << locale;
  }
  for (const char* locale : {"en_US.UTF-8", "es_US", "en_LR@x", "my_MM"}) {
    ::setenv("LANG", locale, 1);
    EXPECT_FALSE(LocaleIsMetric()) << locale;
  }
}

TEST_F(Measurement, ItsOwnVariableComesBeforeTheGeneralOneAndBehindThatForAll) {
  ::setenv("LANG", "en_US.UTF-8", 1);
  ::setenv("LC_MEASUREMENT", "fr_FR.UTF-8", 1);
  EXPECT_TRUE(LocaleIsMetric());
  ::setenv("LC_ALL", "en_US.UTF-8", 1);
  EXPECT_FALSE(LocaleIsMetric());
}

TEST_F(Measurement, AnEmptyVariableIsNone) {
  ::setenv("LC_ALL", "", 1);
  ::setenv("LANG", "en_US.UTF-8", 1);
  EXPECT_FALSE(LocaleIsMetric());
}

}  // namespace
}  // namespace carnetel
