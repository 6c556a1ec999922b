#include "tests/support/fresh_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <system_error>

namespace carnetel {

FreshFolder::FreshFolder() {
  std::string pattern = ::testing::TempDir() + "carnetel-XXXXXX";
  EXPECT_NE(::mkdtemp(pattern.data()), nullptr) << "no folder can be made: " << pattern;
  path_ = pattern + "/";
}

FreshFolder::~FreshFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace carnetel
