// Comparison of whole files that shows where they differ.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/bytes.h"

namespace carnetel {

using FileBytes = std::vector<std::byte>;

// Bytes as text: "00" pairs with a blank between.
std::string Hex(ByteView bytes);

// Whether two files are equal; the failure shows the first rows of 16 bytes that differ.
::testing::AssertionResult SameBytes(ByteView expected, ByteView actual);

}  // namespace carnetel
