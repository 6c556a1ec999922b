// Whole files of a directory as the tests write them down: main file, address file and criteria
// file composed from the numbers of their formats, and nothing of the code under test but the card.
#pragma once

#include <vector>

#include "tests/storage/store_fixture.h"

namespace carnetel {

// The 768 bytes in front of the cards.
FileBytes MainHeaderBytes(uint16_t count, uint32_t stamp);

// A card and the second in which it was last written.
struct WrittenCard {
  CardRecord card;
  uint32_t write_time = 0;
};
FileBytes MainFileBytes(const std::vector<WrittenCard>& cards, uint32_t stamp);
// The same with one time for everything.
FileBytes MainFileBytes(const std::vector<CardRecord>& cards, uint32_t time);

// One entry of the address file: `marks` is its first mark byte, `flags` its last byte.
struct ExpectedEntry {
  uint32_t card_offset = 0;
  uint8_t marks = 0x01;
  uint8_t flags = 0;
};
// The entries of these cards, marked nowhere and without numbers.
std::vector<ExpectedEntry> PlainEntries(const std::vector<uint32_t>& card_offsets);

// Counters are zero but that of the whole file's selection.
FileBytes ExpectedAddressFile(const std::vector<ExpectedEntry>& entries, uint32_t stamp,
                              uint16_t marked = 0);

// The criteria file that is made with a directory.
FileBytes DefaultCriteriaBytes();

}  // namespace carnetel
